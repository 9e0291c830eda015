#include "zorv/photo/reseau_file_list.h"

#include <ostream>

#include "zorv/core/file_type.h"
#include "zorv/core/platform/files.h"
#include "zorv/core/reader.h"
#include "zorv/photo/reseau_descriptor.h"

int ZoReseaufileList::ReadReseauFile(const wchar_t* fileName) {
    return fileName ? ReadReseauFile(std::wstring(fileName)) : 0;
}

int ZoReseaufileList::ReadReseauFile(const std::wstring& fileName) {
    switch (ZoDetectZorvFiles(fileName).IsValidZorvFile()) {
        case eZorvFileRes: {
            const ZoReseauFile reseau(fileName);
            if (!reseau.IsValid()) return 0;
            delete Subtract(reseau.GetName());
            Add(reseau);
            return 1;
        }
        case eZorvFileDres: {
            ZoReader reader(fileName);
            reader.RegisterObject(ZoReaderObject(Link(this, &ZoReseaufileList::ReadDigitalCameraFormat)));
            reader.DoProcess(false);
            reader.LogErrorsToApplicationLogger();
            return 1;
        }
        default:
            return 0;
    }
}

long ZoReseaufileList::ReadDigitalCameraFormat(ZoReaderObject* object) {
    ZoReseauFile reseau;
    reseau.ReadDigitalCameraFormat(object);
    if (reseau.IsValid()) Add(reseau);
    return 1;
}

bool ZoReseaufileList::WriteDigitalCameraFormat(const std::wstring& fileName) const {
    zorv::detail::FileReplacement file(fileName);
    WriteDigitalCameraFormatHeaderComment(file.Stream());
    WriteDigitalCameraFormat(file.Stream()) << "\n; EOF\n";
    return file.Commit();
}

std::ostream& ZoReseaufileList::WriteDigitalCameraFormat(std::ostream& stream) const {
    for (const ZoReseauFile* reseau = First(); reseau; reseau = reseau->NextConst())
        reseau->WriteDigitalCameraFormat(stream);
    return stream;
}

std::ostream& ZoReseaufileList::WriteDigitalCameraFormatHeaderComment(std::ostream& stream) {
    return stream << "; \n"
                     "; ZORVSCOPE 10 Version 9.050 Digital Camera Reseau File\n"
                     "; \n"
                     "; File Format:\n"
                     ";  { \"ExifKameraType\"  SubId \"Comment\"              Pixel_X  Pixel_Y   CCD_X    CCD_Y    }\n"
                     "; \n"
                     "\n";
}

ZoReseauFile* ZoReseaufileList::FindReseauFile(const ZoReseauDataDesc& desc) const {
    for (ZoReseauFile* reseau = First(); reseau; reseau = reseau->Next()) {
        if (ZoReseauDataDesc(reseau->GetName(), reseau->GetSubId()).ExactMatch(desc)) return reseau;
    }
    return nullptr;
}
