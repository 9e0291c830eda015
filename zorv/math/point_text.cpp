#include "zorv/math/point_text.h"

#include <ostream>

#include "zorv/core/number_format.h"
#include "zorv/points/point.h"

namespace zorv::detail {

void WriteExactly(std::ostream& stream, const ZoPoint& point, const TZoFormatTable<eZoPointRWMask>& columns) {
    char text[kNumberTextSize + 1] = {' '};
    const auto put = [&stream, &text](const char* end) { stream.write(text, end - text); };
    const auto number = [&text](double value) { return FormatDouble(text + 1, FiniteOrZero(value), kExactDigits); };
    for (int i = 0; i < columns.Size(); ++i) {
        switch (columns[i]) {
            case eZoRWId:
                put(FormatUnsigned(text + 1, point.GetId()));
                break;
            case eZoRWX:
                put(number(point.x));
                break;
            case eZoRWY:
                put(number(point.y));
                break;
            case eZoRWZ:
                put(number(point.z));
                break;
            default:
                break;
        }
    }
}

}  // namespace zorv::detail
