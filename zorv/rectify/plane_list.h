#pragma once

#include <string>

#include "zorv/core/link.h"
#include "zorv/core/list.h"
#include "zorv/export.h"
#include "zorv/rectify/plane.h"

class CZipWrapper;
class ZoReaderObject;

/// Planes and their file: tagged text with one block for each plane, without keywords.
class ZORV_API ZoPlaneList : public TZoListHeader<ZoPlane>, public LinkHdl {
  public:
    ZoPlaneList() = default;
    /// Reads the file.
    explicit ZoPlaneList(const std::wstring& fileName) { ReadFile(fileName); }

    /// Reads a plane from the tokens at hand and appends it. Throws ZoParserStatus; then nothing is added.
    ZoPlane* AddPlane(ZoReaderObject* object);

    int CountActivePlanes() const;
    /// The first active plane, or null.
    ZoPlane* GetActivePlane() const;

    /// Appends the planes of the file. Returns 1; read errors are logged, and what was read before them stays.
    int ReadFile(const std::wstring& fileName);
    /// Writes a plane file in the place of an old one, which stays when that fails. The number of planes, 0 for a
    /// failure.
    int WriteFile(const std::wstring& fileName) const;

    /// Archive record: the number of planes (8 bytes), then theirs. Reading appends; a record that is cut off ends it.
    void ReadV9(CZipWrapper* archive);
    void WriteV9(CZipWrapper* archive) const;

  private:
    long Read50Plane(ZoReaderObject* object);
};
