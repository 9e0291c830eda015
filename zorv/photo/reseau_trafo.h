#pragma once

#include "zorv/core/object.h"
#include "zorv/export.h"
#include "zorv/orientation/planar_trafo.h"

/// A photo's planar transformation with a number and a name: from pixels towards image coordinates in mm, or back.
class ZORV_API ZoReseauTrafo : public ZoTrafo2d, public ZoObject {
  public:
    ZoReseauTrafo() = default;
    /// The copy has no number and no name.
    ZoReseauTrafo(const ZoReseauTrafo& other) : ZoTrafo2d(other), ZoObject() {}
    /// Takes transformation and number; the name stays.
    ZoReseauTrafo& operator=(const ZoReseauTrafo& other);

    /// The forms of ZoTrafo2d; number and name are not in them. Handlers for the reader give long.
    long Read(ZoReaderObject* object) { return ZoTrafo2d::Read(object); }
    std::ostream& Write(std::ostream& stream) const { return ZoTrafo2d::Write(stream); }
    void ReadV9(CZipWrapper* archive) { ZoTrafo2d::ReadV9(archive); }
    void WriteV9(CZipWrapper* archive) const { ZoTrafo2d::WriteV9(archive); }
    /// The old form of ZoTrafo2d, then the name.
    long ReadV50(ZoReaderObject* object);
};
