#include <algorithm>
#include <cmath>
#include <cstdint>
#include <ostream>
#include <vector>

#include "zorv/core/lenient_number.h"
#include "zorv/core/number_format.h"
#include "zorv/core/reader_object.h"
#include "zorv/core/record_text.h"
#include "zorv/core/text_writer.h"
#include "zorv/math/matrix.h"

using zorv::detail::FieldWidth;
using zorv::detail::RecordText;

namespace {

[[noreturn]] void RefuseShape(ZoParser& parser) {
    parser.status.status = eZoParserErrorNotSpecifiedToken;
    throw ZoParserStatus(parser.status);
}

/// Throws for a shape that no matrix has. Whether its elements are really there shows when they are read.
void CheckShape(ZoParser& parser, int rows, int cols) {
    constexpr std::int64_t kLargestEmpty = 0xffff;
    constexpr std::int64_t kLargestCount = 0x7fffffff;
    if (rows < 0 || cols < 0) RefuseShape(parser);
    const std::int64_t count = static_cast<std::int64_t>(rows) * cols;
    if (count > kLargestCount || (count == 0 && std::max(rows, cols) > kLargestEmpty)) RefuseShape(parser);
}

/// Takes elements from the tokens; the memory grows with what is really there. Words and strings count as 0.
std::vector<double> ReadElements(ZoStreamParser& in, std::int64_t count) {
    constexpr std::int64_t kReserved = 256;
    std::vector<double> elements;
    elements.reserve(static_cast<std::size_t>(std::min(count, kReserved)));
    for (std::int64_t i = 0; i < count; ++i) {
        elements.push_back(zorv::detail::TakeLenientNumber(in));
    }
    return elements;
}

/// Elements in columns of 17 digits, broken where a line gets long. Infinities are written as a number too large to
/// hold, since the syntax has no word for them.
void WriteElements(std::ostream& stream, const double* values, int count) {
    constexpr int kOnLine = 16;
    RecordText text;
    for (int i = 0; i < count; ++i) {
        if (i > 0 && i % kOnLine == 0) {
            text.WriteTo(stream);
            stream << Zoendl;
            text.Clear();
        }
        if (std::isinf(values[i])) {
            text.Field(FieldWidth::w19, values[i] < 0.0 ? "-1e999" : "1e999");
        } else if (std::isnan(values[i])) {
            text.Field(FieldWidth::w19, "nan");
        } else {
            text.Field(FieldWidth::w19, values[i], zorv::detail::kExactDigits);
        }
    }
    text.WriteTo(stream);
}

}  // namespace

int ZoMatrix::Read(ZoReaderObject* object) {
    ZoStreamParser in = object->GetStreamParser();
    int lines = 0;
    int columns = 0;
    in >> lines >> columns;
    CheckShape(*in.parser, lines, columns);
    const std::vector<double> values = ReadElements(in, static_cast<std::int64_t>(lines) * columns);
    Set(values.data(), lines, columns);
    return 1;
}

std::ostream& ZoMatrix::Write(std::ostream& stream) const {
    RecordText shape;
    shape.Field(FieldWidth::w4, rows).Field(FieldWidth::w4, cols).WriteTo(stream);
    for (int r = 1; r <= rows; ++r) {
        stream << Zoendl;
        WriteElements(stream, (*this)[r] + 1, cols);
    }
    return stream;
}

int ZoVector::Read(ZoReaderObject* object) {
    ZoStreamParser in = object->GetStreamParser();
    int count = 0;
    in >> count;
    CheckShape(*in.parser, count, 1);
    const std::vector<double> values = ReadElements(in, count);
    Reshape(count);
    std::copy(values.begin(), values.end(), data);
    return 1;
}

std::ostream& ZoVector::Write(std::ostream& stream) const {
    RecordText shape;
    shape.Field(FieldWidth::w4, size).WriteTo(stream);
    WriteElements(stream, data, size);
    return stream;
}
