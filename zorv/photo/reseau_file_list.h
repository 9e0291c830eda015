#pragma once

#include <iosfwd>
#include <string>

#include "zorv/core/link.h"
#include "zorv/core/list.h"
#include "zorv/export.h"
#include "zorv/photo/reseau_file.h"

class ZoReseauDataDesc;

/// The reseaus that a host knows, and the files that they come from.
class ZORV_API ZoReseaufileList : public TZoListHeader<ZoReseauFile>, public LinkHdl {
  public:
    /// Adds what the file holds: a reseau file (.res) takes the place of one of the same name, of a list of digital
    /// cameras (.dres) all valid records are added. 1; 0 for a file of another kind, one without data, or null.
    int ReadReseauFile(const std::wstring& fileName);
    int ReadReseauFile(const wchar_t* fileName);
    /// Writes a list of digital cameras in the place of an old one, which stays when that fails. Reseaus that do not
    /// have just four marks are left out. False for a failure.
    bool WriteDigitalCameraFormat(const std::wstring& fileName) const;

    /// The first reseau of that name, without regard to case, and number; null when there is none.
    ZoReseauFile* FindReseauFile(const ZoReseauDataDesc& desc) const;
    /// The reseau of a photo; null for null.
    ZoReseauFile* FindReseauFile(const ZoPhoto* photo) const;

  protected:
    long ReadDigitalCameraFormat(ZoReaderObject* object);
    std::ostream& WriteDigitalCameraFormat(std::ostream& stream) const;
    static std::ostream& WriteDigitalCameraFormatHeaderComment(std::ostream& stream);
};
