// Planar transformations from any text, in the present and the old numbering, and from any archive item. What was read
// is written and must come back. The first byte chooses the form, the rest is the record.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>

#include "record_checks.h"

#include "zorv/math/matrix.h"
#include "zorv/orientation/planar_trafo.h"

namespace {

bool ReadText(ZoTrafo2d& trafo, const std::string& text, bool old) {
    return ReadBareText(text, [&](auto* object) { Require((old ? trafo.ReadV50(object) : trafo.Read(object)) == 1); });
}

bool IsFinite(const ZoTrafo2d& trafo) {
    return std::all_of(std::begin(trafo.coef), std::end(trafo.coef), [](double value) { return std::isfinite(value); });
}

void Use(const ZoTrafo2d& trafo) {
    double x = 12.5;
    double y = -3.0;
    if (!trafo.Transform(&x, &y)) Require(x == 12.5 && y == -3.0);
    trafo.TransInvHelmert(&x, &y);
    Require(trafo.GetTrafoName() != nullptr);
    trafo.DbgPrintf(nullptr);
    if (!IsFinite(trafo)) return;
    ZoMatrix m;
    trafo.BuildMatrix(&m);
    ZoTrafo2d back(trafo);
    back.SetFromMatrix(m, trafo.type);
    Require(std::equal(std::begin(trafo.coef), std::end(trafo.coef), back.coef));
}

void TextForm(const std::string& text, bool old) {
    constexpr double kSixteenDigits = 1e-15;
    ZoTrafo2d trafo;
    if (!ReadText(trafo, text, old)) {
        Require(trafo.type == eTrafo2DNone && trafo.coef[0] == 0.0);
        return;
    }
    Use(trafo);
    if (!IsFinite(trafo)) return;
    ZoTrafo2d back;
    Require(ReadText(back, WrittenText(trafo), false) && back.type == trafo.type);
    for (int i = 0; i < ZoTrafo2d::kCoefCount; ++i) {
        const double value = trafo.coef[i];
        // The largest number may round to one that is too large.
        Require(std::isinf(back.coef[i]) || std::fabs(back.coef[i] - value) <= kSixteenDigits * std::fabs(value));
    }
}

void ArchiveForm(const std::string& bytes) {
    constexpr std::size_t kSize = 164;
    ZoTrafo2d trafo;
    ReadArchiveBytes(bytes, trafo);
    Use(trafo);
    const std::string written = ArchiveBytes(trafo);
    Require(written.size() == kSize);
    Require(bytes.size() < kSize ? trafo.type == eTrafo2DNone : written == bytes.substr(0, kSize));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string record(reinterpret_cast<const char*>(data + 1), size - 1);
    switch (data[0]) {
        case 't':
            TextForm(record, false);
            break;
        case 'o':
            TextForm(record, true);
            break;
        default:
            ArchiveForm(record);
            break;
    }
    return 0;
}
