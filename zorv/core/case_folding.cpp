#include "zorv/core/case_folding.h"

namespace zorv::detail {

namespace {

/// A run of letters: capitals `first` to `last`, each `distance` in front of its small letter. With a distance of 1
/// capitals and small letters take turns.
struct Run {
    wchar_t first;
    wchar_t last;
    wchar_t distance;
};

constexpr Run kRuns[] = {
    {0x0041, 0x005a, 32}, {0x00c0, 0x00d6, 32}, {0x00d8, 0x00de, 32},  // Latin
    {0x0100, 0x012e, 1},  {0x0132, 0x0136, 1},  {0x0139, 0x0147, 1},  {0x014a, 0x0176, 1},  {0x0179, 0x017d, 1},
    {0x0386, 0x0386, 38}, {0x0388, 0x038a, 37}, {0x038c, 0x038c, 64}, {0x038e, 0x038f, 63},  // Greek
    {0x0391, 0x03a1, 32}, {0x03a3, 0x03ab, 32},                                              //
    {0x0400, 0x040f, 80}, {0x0410, 0x042f, 32}, {0x0460, 0x0480, 1},  {0x048a, 0x04be, 1},   // Cyrillic
};

constexpr wchar_t kCapitalYDiaeresis = 0x0178;
constexpr wchar_t kSmallYDiaeresis = 0x00ff;

/// Whether the letters of a run that take turns include c - first as a capital.
bool IsCapitalOf(const Run& run, wchar_t c) {
    return c >= run.first && c <= run.last && (run.distance != 1 || (c - run.first) % 2 == 0);
}

}  // namespace

wchar_t ToLower(wchar_t c) {
    if (c < 0x80) return c >= 'A' && c <= 'Z' ? static_cast<wchar_t>(c + 32) : c;
    if (c == kCapitalYDiaeresis) return kSmallYDiaeresis;
    for (const Run& run : kRuns) {
        if (IsCapitalOf(run, c)) return static_cast<wchar_t>(c + run.distance);
    }
    return c;
}

wchar_t ToUpper(wchar_t c) {
    if (c < 0x80) return c >= 'a' && c <= 'z' ? static_cast<wchar_t>(c - 32) : c;
    if (c == kSmallYDiaeresis) return kCapitalYDiaeresis;
    for (const Run& run : kRuns) {
        if (c >= run.distance && IsCapitalOf(run, static_cast<wchar_t>(c - run.distance)))
            return static_cast<wchar_t>(c - run.distance);
    }
    return c;
}

}  // namespace zorv::detail
