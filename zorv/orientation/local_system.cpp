#include "zorv/orientation/local_system.h"

#include <cmath>
#include <ostream>

#include "zorv/core/archive.h"
#include "zorv/core/number_format.h"
#include "zorv/core/reader_object.h"
#include "zorv/core/record_text.h"
#include "zorv/core/text_writer.h"
#include "zorv/orientation/similarity.h"
#include "zorv/points/point_list.h"

namespace {

constexpr double kShortestDistance = 1e-10;
constexpr int kScalesInText = 3;
constexpr int kTextPrecision = 16;

}  // namespace

void ZoLokalSystemDef::AdjustPlanebyAxisMode() {
    const bool isAcross = (axisMode == eAxisX && planeMode == ePlaneYZ) ||
                          (axisMode == eAxisY && planeMode == ePlaneZX) ||
                          (axisMode == eAxisZ && planeMode == ePlaneXY);
    if (isAcross) planeMode = axisMode == eAxisZ ? ePlaneYZ : ePlaneXY;
}

void ZoLokalSystemDef::ClearScaleDef() {
    for (ZoScaleDef& record : scale)
        record = ZoScaleDef();
}

void ZoLokalSystemDef::SetInvalid() {
    id0 = 0;
    id2 = 0;
}

bool ZoLokalSystemDef::Suggest(const ZoPointList* list) {
    const ZoPoint* point = list ? list->First() : nullptr;
    if (!point) return false;
    id0 = id3 = point->GetId();
    for (std::uint32_t* id : {&id1, &id2}) {
        point = point->NextConst();
        if (!point) return false;
        *id = point->GetId();
    }
    return true;
}

bool ZoLokalSystemDef::IsValid(eTrafo3DStatus& status, const ZoPointList* list, bool checkScale) const {
    const auto fail = [&status](eTrafo3DStatus reason) {
        status = reason;
        return false;
    };
    for (const ZoScaleDef& record : scale) {
        if (record.idA == record.idB && record.idA != 0) return fail(eTrafo3DBadScaleDef);
    }
    if (id0 == id1 || id1 == id2 || id0 == id2) return fail(eTrafo3DNoSolution);
    if (list) {
        for (const unsigned int id : {id0, id1, id2, id3}) {
            if (!list->Find(id)) return fail(eTrafo3DPointMissing);
        }
        for (const ZoScaleDef& record : scale) {
            for (const unsigned int id : {record.idA, record.idB}) {
                if (checkScale && id != 0 && !list->Find(id)) return fail(eTrafo3DPointMissing);
            }
        }
    }
    if (!checkScale) return true;
    for (const ZoScaleDef& record : scale) {
        if (!record.IsEmpty() && std::fabs(record.distance) > kShortestDistance) return true;
    }
    return fail(eTrafo3DNoScaleDef);
}

int ZoLokalSystemDef::Read(ZoReaderObject* object) {
    ZoStreamParser in = object->GetStreamParser();
    in >> axisMode >> id0 >> id1 >> planeMode >> id2 >> id3 >> x >> y >> z;
    for (int i = 0; i < kScalesInText; ++i)
        in >> scale[i].idA >> scale[i].idB >> scale[i].distance;
    return 1;
}

std::ostream& ZoLokalSystemDef::Write(std::ostream& stream) const {
    using zorv::detail::FieldWidth;
    zorv::detail::RecordText text;
    const auto endLine = [&] {
        text.WriteTo(stream);
        text.Clear();
        stream << Zoendl;
    };
    text.Number(axisMode).Char(' ').Number(id0).Char(' ').Number(id1);
    endLine();
    text.Number(planeMode).Char(' ').Number(id2);
    endLine();
    text.Number(id3);
    for (const double coordinate : {x, y, z})
        text.Field(FieldWidth::w16, zorv::detail::FiniteOrZero(coordinate), kTextPrecision);
    for (int i = 0; i < kScalesInText; ++i) {
        endLine();
        text.Number(scale[i].idA).Char(' ').Number(scale[i].idB);
        text.Field(FieldWidth::w16, zorv::detail::FiniteOrZero(scale[i].distance), kTextPrecision);
    }
    text.WriteTo(stream);
    stream.precision(kTextPrecision);
    return stream;
}

void ZoLokalSystemDef::ReadV9(CZipWrapper* archive) {
    archive->ReadValue(axisMode);
    archive->ReadValue(id0);
    archive->ReadValue(id1);
    archive->ReadValue(planeMode);
    archive->ReadValue(id2);
    archive->ReadValue(id3);
    for (double* coordinate : {&x, &y, &z})
        archive->ReadValue(*coordinate);
    for (ZoScaleDef& record : scale) {
        archive->ReadValue(record.idA);
        archive->ReadValue(record.idB);
        archive->ReadValue(record.distance);
    }
}

void ZoLokalSystemDef::WriteV9(CZipWrapper* archive) const {
    archive->WriteValue(axisMode);
    archive->WriteValue(id0);
    archive->WriteValue(id1);
    archive->WriteValue(planeMode);
    archive->WriteValue(id2);
    archive->WriteValue(id3);
    for (const double coordinate : {x, y, z})
        archive->WriteValue(coordinate);
    for (const ZoScaleDef& record : scale) {
        archive->WriteValue(record.idA);
        archive->WriteValue(record.idB);
        archive->WriteValue(record.distance);
    }
}
