// Points as lines of text.

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "zorv/cloud/scan_point.h"
#include "zorv/core/number_format.h"

namespace {

constexpr int kNumbers = 7;
/// Room for the widest line: three numbers in fixed form and four of at most eleven characters, with what separates
/// them.
constexpr int kLineSize = 3 * zorv::detail::kFixedTextSize + 4 * zorv::detail::kNumberTextSize + kNumbers;

/// Puts a line together from numbers that are right-aligned in columns.
class LineText {
  public:
    void Fixed(double value, int decimals, int width) {
        Begin();
        Align(zorv::detail::FormatFixed(end, value, decimals), width);
    }
    void Integer(int value, int width) {
        Begin();
        Align(zorv::detail::FormatInt(end, value), width);
    }
    void WriteTo(std::FILE* file) {
        *end++ = '\n';
        std::fwrite(text, 1, static_cast<std::size_t>(end - text), file);
    }

  private:
    void Begin() {
        if (end != text) *end++ = ' ';
    }
    void Align(char* written, int width) {
        const auto length = static_cast<std::size_t>(written - end);
        const auto padding = static_cast<std::size_t>(width) - std::min(static_cast<std::size_t>(width), length);
        std::memmove(end + padding, end, length);
        std::memset(end, ' ', padding);
        end = written + padding;
    }

    char text[kLineSize];
    char* end = text;
};

/// The range of PTS files, -2000 to 2000, of an intensity of 0 to 255.
int ToRange(int intensity) {
    return static_cast<int>((intensity - 128) / 128.0 * 2000.0);
}

}  // namespace

void ZoScanPoint3d::WriteAscii(std::FILE* file, bool aligned, bool colorOnly) const {
    if (!file) return;
    const bool inColumns = aligned && !colorOnly;
    const int decimals = inColumns ? 9 : 6;
    const int width = inColumns ? 18 : 0;
    LineText line;
    line.Fixed(x(), decimals, width);
    line.Fixed(y(), decimals, width);
    line.Fixed(z(), decimals, width);
    if (!colorOnly) line.Integer(ToRange(GetIntensity()), inColumns ? 4 : 0);
    for (const int channel : {GetRed(), GetGreen(), GetBlue()})
        line.Integer(channel, inColumns ? 3 : 0);
    line.WriteTo(file);
}
