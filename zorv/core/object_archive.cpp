#include "zorv/core/archive.h"
#include "zorv/core/object.h"

void ZoObject::ReadV9(CZipWrapper* archive) {
    archive->ReadValue(id);
    archive->Read(&name);
}

void ZoObject::WriteV9(CZipWrapper* archive) const {
    archive->WriteValue(id);
    archive->Write(name);
}
