#pragma once

#include <iosfwd>
#include <string>

#include "zorv/core/link.h"
#include "zorv/core/list.h"
#include "zorv/export.h"
#include "zorv/photo/camera.h"

class ZoReaderObject;

/// The cameras of a project and their file.
///
/// The simple form holds classic cameras, a block of values for each; the full form any camera, a block CAMERA of
/// keywords for each. A third form is written only, for the adjustment program Gentri.
class ZORV_API ZoCameraList : public TZoListHeader<ZoCamera>, public LinkHdl {
  public:
    ZoCameraList() = default;
    /// Reads the file.
    explicit ZoCameraList(const std::wstring& fileName) { Read(fileName); }

    /// Appends the cameras of a file in the full form or, when it has none, in the simple one, and warns of ids that
    /// stand three times. Returns 1; read errors are logged, and what was read before them stays.
    int Read(const std::wstring& fileName);
    /// The two forms alone. Both return 1, the first 0 for a file that is not there.
    int ReadFileFormatFull(const std::wstring& fileName);
    int ReadFileFormatSimple(const std::wstring& fileName);
    /// Handlers of a reader, for a keyword and for the `{` of a block. Throw ZoParserStatus; then nothing is added.
    long ReadFormatFull(ZoReaderObject* object);
    long ReadFormatSimple(ZoReaderObject* object);
    /// Reads a camera from the tokens at hand and appends it. Throws ZoParserStatus; then nothing is added.
    ZoCamera* AddCamera(ZoReaderObject* object, bool fullData);

    /// Beeps and writes a line on the debug channel for every id that more than two cameras have. Returns the number
    /// of such ids.
    int TestForMultipleCameras() const;
    /// Whether all cameras are classic ones (mode 0).
    bool ContainsOnlyGentriCams() const;

    /// Writes the Gentri form, or else the simple one for classic cameras alone and the full one for others, in the
    /// place of an old file, which stays when that fails. Returns 1; 0 for a null name.
    int WriteFile(const std::wstring& fileName, bool gentri) const;
    int WriteFile(const wchar_t* fileName, bool gentri) const;
    int WriteFileFormatFull(const std::wstring& fileName) const;
    /// The Gentri or the simple form. Returns 1; failure shows in the stream's state.
    int WriteFile(std::ostream& stream, bool gentri) const;
    std::ostream& WriteSimpleHeaderComment(std::ostream& stream) const;
    std::ostream& WriteSimpleFormat(std::ostream& stream) const;
};
