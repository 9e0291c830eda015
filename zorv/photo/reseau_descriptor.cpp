#include "zorv/photo/reseau_descriptor.h"

#include "zorv/core/archive.h"
#include "zorv/core/string_tools.h"
#include "zorv/core/text_conversion.h"
#include "zorv/photo/reseau_file.h"

void ZoReseauDataDesc::Set(const char* narrowName, unsigned int subId) {
    name = string2wstring(narrowName ? narrowName : "");
    id = subId;
    comment.clear();
}

void ZoReseauDataDesc::Set(const ZoReseauFile* reseau) {
    if (!reseau) return;
    name = reseau->GetName();
    id = reseau->GetSubId();
    comment = reseau->GetComment();
}

bool ZoReseauDataDesc::Match(const ZoReseauDataDesc& other) const {
    return StringEqualsNoCase(name, other.name);
}

void ZoReseauDataDesc::ReadV9(CZipWrapper* archive) {
    archive->ReadValue(id);
    archive->Read(&name);
    archive->Read(&comment);
}

void ZoReseauDataDesc::WriteV9(CZipWrapper* archive) const {
    archive->WriteValue(id);
    archive->Write(name);
    archive->Write(comment);
}
