#pragma once

#include <string>
#include <vector>

#include "zorv/core/zip.h"
#include "zorv/export.h"

/// Reads a measurement package of a Leica Disto BLK3D (`.cmi`, a ZIP): its name, and its video streams, which are
/// unpacked beside the package into "ZORVSCOPE_10", a folder named after the package, and the stream's file.
///
/// Items whose name leads out of its folder (".." or a drive in it, a separator in front) are passed over.
class ZORV_API ZoLeicaDistoBlk3dCmiUnzipper {
  public:
    /// Unpacks at once.
    explicit ZoLeicaDistoBlk3dCmiUnzipper(const std::wstring& file);

    /// Makes the package's directory the current one and unpacks. False for an empty file name and for a file that is
    /// no ZIP. An item that does not unpack is not in GetExtractedFiles.
    bool UnzipCmiFile();

    /// Full names of the unpacked streams.
    const std::vector<std::wstring>& GetExtractedFiles() const { return extractedFiles; }
    /// Whether the package has its description, which gives the name.
    bool HasDistoFile() const { return hasDistoFile; }
    const std::wstring& GetName() const { return name; }

    std::wstring cmiFile;
    std::vector<std::wstring> extractedFiles;
    bool hasDistoFile = false;
    std::wstring name;

  private:
    void ReadDistoFile(HZIP zip, int index);
};
