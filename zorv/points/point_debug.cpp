#include "zorv/core/debug_output.h"
#include "zorv/core/text_conversion.h"
#include "zorv/points/point_list.h"

void ZoPoint::DbgPrintf(const char* prefix) const {
    dbgprintf("%s%s%d-%s %s %.4f %.4f %.4f  %.4f %.4f %.4f ", prefix ? prefix : "", prefix ? ": " : "",
              static_cast<int>(id), wstring2string(name).c_str(), GetControlFlagsAsXYZ(), x, y, z, dx, dy, dz);
}

void ZoPointList::DbgPrintf(const char* prefix) const {
    for (const ZoPoint* point = First(); point; point = point->NextConst()) {
        point->DbgPrintf(prefix);
        dbgputs("\n");
    }
}

void ZoPointList::DbgPrintfId(const char* prefix) const {
    if (prefix) dbgprintf("%s: ", prefix);
    for (const ZoPoint* point = First(); point; point = point->NextConst())
        dbgprintf("%3d ", static_cast<int>(point->id));
    dbgputs("\n");
}
