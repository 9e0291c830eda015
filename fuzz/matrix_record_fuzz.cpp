// Matrices and vectors from any text and any archive item. What was read is written and must come back; then the
// solvers run on it. The first byte chooses the form, the rest is the record.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "record_checks.h"

#include "zorv/math/matrix.h"

namespace {

bool Same(const ZoVector& a, const ZoVector& b) {
    return a == b;
}

bool Same(const ZoMatrix& a, const ZoMatrix& b) {
    if (a.rows != b.rows || a.cols != b.cols) return false;
    return std::equal(a[1] + 1, a[1] + 1 + static_cast<std::ptrdiff_t>(a.rows) * a.cols, b[1] + 1);
}

template <class Record>
void TextForm(const std::string& text) {
    Record record, again;
    if (!ReadBareText(text, [&](auto* object) { record.Read(object); })) return;
    Require(ReadBareText(WrittenText(record), [&](auto* object) { again.Read(object); }) && Same(record, again));
    record.AsString();
}

void Solve(ZoMatrix m) {
    constexpr int kLargest = 60;
    const int n = m.rows;
    if (n != m.cols || n > kLargest) return;
    m.Det();
    int status = 0;
    ZoMatrix(m).Invert(&status);
    if (n != 3) return;
    double angles[3];
    m.GetRotAngles(&angles[0], &angles[1], &angles[2]);
    ZoVector line(3);
    ZoVector row(3);
    m.GetLine(1, line);
    m.GetRow(3, row);
    m.CalcRotMatAlignVector(line, row);
    m.MakeRotMatrix(line, row, m * line);
}

void ArchiveForm(const std::string& bytes) {
    ArchiveItem item(bytes);
    while (!item.Eof()) {
        ZoMatrix m(3, 3);
        ZoVector v(3);
        m.ReadV9(&item);
        v.ReadV9(&item);
        Solve(m);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string record(reinterpret_cast<const char*>(data + 1), size - 1);
    switch (data[0]) {
        case 'm':
            TextForm<ZoMatrix>(record);
            break;
        case 'v':
            TextForm<ZoVector>(record);
            break;
        default:
            ArchiveForm(record);
            break;
    }
    return 0;
}
