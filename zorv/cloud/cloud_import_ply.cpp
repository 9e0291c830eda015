// Clouds of ASCII PLY files of one layout: x y z, three values, red green blue.

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "zorv/cloud/cloud_container.h"
#include "zorv/cloud/text_fields.h"
#include "zorv/cloud/text_import.h"

using zorv::detail::CloudLine;
using zorv::detail::DelimiterSet;
using zorv::detail::FieldCursor;
using zorv::detail::ParseDouble;
using zorv::detail::ParseInt;

namespace {

constexpr DelimiterSet kSeparators(" \t");
constexpr std::size_t kVertexFields = 9;

/// Whether the text holds the word, which is in lower case, in whatever case.
bool Holds(std::string_view text, std::string_view word) {
    const auto isSame = [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b; };
    return std::search(text.begin(), text.end(), word.begin(), word.end(), isSame) != text.end();
}

double SinglePrecision(std::string_view field) {
    return static_cast<double>(static_cast<float>(ParseDouble(field)));
}

std::uint8_t LowByte(std::string_view field) {
    return static_cast<std::uint8_t>(ParseInt(field));
}

class PlyFormat {
  public:
    static constexpr std::uint64_t kLeastBytes = 2 * kVertexFields;
    static constexpr bool kTakesOpenLine = true;

    static bool ReadPlain(const char*&, ZoScanPoint3d&) { return false; }

    CloudLine Read(std::string_view line, ZoScanPoint3d& point) {
        std::string_view fields[kVertexFields];
        std::string_view last;
        std::uint64_t count = 0;
        FieldCursor cursor(line, kSeparators);
        for (std::string_view field; cursor.Next(field); ++count) {
            if (count < kVertexFields) fields[count] = field;
            last = field;
        }
        if (count == 0) return CloudLine::kEnd;
        if (inHeader) return ReadHeader(fields[0], last);
        if (properties < kVertexFields || count < properties) return CloudLine::kNothing;
        point.x() = SinglePrecision(fields[0]);
        point.y() = SinglePrecision(fields[1]);
        point.z() = SinglePrecision(fields[2]);
        point.SetRed(LowByte(fields[6]));
        point.SetGreen(LowByte(fields[7]));
        point.SetBlue(LowByte(fields[8]));
        return CloudLine::kPoint;
    }

    std::uint64_t told = 0;

  private:
    CloudLine ReadHeader(std::string_view keyword, std::string_view last) {
        if (Holds(keyword, "ply") || Holds(keyword, "format")) return CloudLine::kNothing;
        if (Holds(keyword, "element")) {
            told = static_cast<std::uint64_t>(std::max(ParseInt(last), 0));
            return CloudLine::kCount;
        }
        if (Holds(keyword, "faces")) return CloudLine::kNothing;
        if (Holds(keyword, "property")) {
            ++properties;
        } else if (Holds(keyword, "end_header")) {
            inHeader = false;
        }
        return CloudLine::kNothing;
    }

    bool inHeader = true;
    std::uint64_t properties = 0;
};

}  // namespace

ZoPointCloud* ZoPointCloudContainer::ObsolteReadPlyFile(std::ifstream& stream) {
    zorv::detail::TextBlocks text(stream);
    PlyFormat format;
    return TakeImport(zorv::detail::ImportText(text, format, L""));
}
