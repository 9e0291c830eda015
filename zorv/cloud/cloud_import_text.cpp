// Clouds in lines of text: PTS and free columns.

#include <cmath>
#include <cstdint>
#include <new>
#include <string_view>
#include <system_error>

#include "zorv/cloud/cloud_container.h"
#include "zorv/cloud/text_fields.h"
#include "zorv/cloud/text_import.h"
#include "zorv/core/path_tools.h"
#include "zorv/core/profiler.h"

using zorv::detail::CloudLine;
using zorv::detail::DelimiterSet;
using zorv::detail::FieldCursor;
using zorv::detail::ParseDouble;
using zorv::detail::ParseInt;
using zorv::detail::PlainNumbers;
using zorv::detail::TextBlocks;

namespace {

constexpr DelimiterSet kPtsSeparators(" \t\r;");
constexpr DelimiterSet kXyzSeparators(" \t");

std::uint32_t Rgb(int red, int green, int blue) {
    const auto low = [](int value) { return std::uint32_t{static_cast<std::uint8_t>(value)}; };
    return low(red) | low(green) << 8 | low(blue) << 16;
}

std::uint32_t Rgb(const std::string_view* fields) {
    return Rgb(ParseInt(fields[0]), ParseInt(fields[1]), ParseInt(fields[2]));
}

void SetXyz(ZoScanPoint3d& point, const std::string_view* fields) {
    point.x() = ParseDouble(fields[0]);
    point.y() = ParseDouble(fields[1]);
    point.z() = ParseDouble(fields[2]);
}

/// Whether the whole part of the number is an int.
bool HasInt(double value) {
    constexpr double kTooLarge = 2147483648.0;
    return std::fabs(value) < kTooLarge;
}

/// The low byte of the whole part; 0 for what is no int.
std::uint8_t LowByte(double value) {
    return HasInt(value) ? static_cast<std::uint8_t>(static_cast<std::int32_t>(value)) : std::uint8_t{0};
}

/// Intensities of PTS files: from -2000 to 2000, or parts of 1.
std::uint8_t FromRange(int value) {
    return LowByte((value + 2000.0) * 256.0 / 4000.0);
}
std::uint8_t FromFraction(double value) {
    return LowByte(value * 256.0);
}

struct PtsFormat {
    static constexpr std::uint64_t kLeastBytes = 6;  // "0 0 0" and a line feed
    static constexpr bool kTakesOpenLine = true;

    bool ReadPlain(const char*& at, ZoScanPoint3d& point);
    CloudLine Read(std::string_view line, ZoScanPoint3d& point);

    std::uint64_t told = 0;
    bool hasColors = false;
};

bool PtsFormat::ReadPlain(const char*& at, ZoScanPoint3d& point) {
    PlainNumbers<kPtsSeparators> numbers(at);
    if (!numbers.Take(point.x()) || !numbers.Take(point.y()) || !numbers.Take(point.z())) return false;
    if (!numbers.AtLineEnd()) {
        // An intensity or a red, with decimals or without.
        double fourth = 0.0;
        if (!numbers.Take(fourth) || !HasInt(fourth)) return false;
        const auto whole = static_cast<int>(fourth);
        if (numbers.AtLineEnd()) {
            point.SetIntensity(numbers.HasPoint() ? FromFraction(fourth) : FromRange(whole));
        } else {
            int fifth = 0;
            int sixth = 0;
            if (!numbers.Take(fifth) || !numbers.Take(sixth)) return false;
            if (numbers.AtLineEnd()) {
                point.SetColor(Rgb(whole, fifth, sixth));
            } else {
                int seventh = 0;
                if (!numbers.Take(seventh) || !numbers.AtLineEnd()) return false;
                point.SetColor(Rgb(fifth, sixth, seventh));
                point.SetIntensity(FromRange(whole));
            }
            hasColors = true;
        }
    }
    at = numbers.NextLine();
    return true;
}

CloudLine PtsFormat::Read(std::string_view line, ZoScanPoint3d& point) {
    constexpr std::size_t kMost = 8;
    std::string_view fields[kMost];
    std::size_t count = 0;
    // As in all C text, a zero ends the line.
    FieldCursor cursor(line.substr(0, line.find('\0')), kPtsSeparators);
    while (count < kMost && cursor.Next(fields[count]))
        ++count;
    if (count == 1) {
        const int number = ParseInt(fields[0]);
        told = number > 0 ? static_cast<std::uint64_t>(number) : 0;
        return CloudLine::kCount;
    }
    if (count < 3) return CloudLine::kNothing;

    SetXyz(point, fields);
    if (count == 4) {
        const bool isFraction = fields[3].find('.') != std::string_view::npos;
        point.SetIntensity(isFraction ? FromFraction(ParseDouble(fields[3])) : FromRange(ParseInt(fields[3])));
    } else if (count == 6) {
        point.SetColor(Rgb(fields + 3));
    } else if (count == 7) {
        point.SetIntensity(FromRange(ParseInt(fields[3])));
        point.SetColor(Rgb(fields + 4));
    }
    hasColors = hasColors || count == 6 || count == 7;
    return CloudLine::kPoint;
}

struct XyzFormat {
    static constexpr std::uint64_t kLeastBytes = 1;
    static constexpr bool kTakesOpenLine = false;

    static bool ReadPlain(const char*& at, ZoScanPoint3d& point);
    static CloudLine Read(std::string_view line, ZoScanPoint3d& point);

    std::uint64_t told = 0;
};

bool XyzFormat::ReadPlain(const char*& at, ZoScanPoint3d& point) {
    PlainNumbers<kXyzSeparators> numbers(at);
    if (!numbers.Take(point.x()) || !numbers.Take(point.y()) || !numbers.Take(point.z())) return false;
    if (!numbers.AtLineEnd()) {
        int red = 0;
        int green = 0;
        int blue = 0;
        if (!numbers.Take(red) || !numbers.Take(green) || !numbers.Take(blue) || !numbers.AtLineEnd()) return false;
        point.SetColor(Rgb(red, green, blue));
    }
    at = numbers.NextLine();
    return true;
}

CloudLine XyzFormat::Read(std::string_view line, ZoScanPoint3d& point) {
    std::string_view fields[6];
    FieldCursor cursor(line, kXyzSeparators);
    for (std::string_view& field : fields) {
        if (!cursor.Next(field)) break;
    }
    SetXyz(point, fields);
    point.SetColor(Rgb(fields + 3));
    return CloudLine::kPoint;
}

std::unique_ptr<ZoPointCloud> ImportPts(TextBlocks& text, const std::wstring& name) {
    const ZoProfiler section(L"ReadPTS fp");
    PtsFormat format;
    auto cloud = zorv::detail::ImportText(text, format, name);
    cloud->noColors = format.hasColors ? 0 : 1;
    return cloud;
}

std::unique_ptr<ZoPointCloud> ImportXyz(TextBlocks& text, const std::wstring& name) {
    XyzFormat format;
    return zorv::detail::ImportText(text, format, name);
}

/// The cloud of a file; null, with the system's error, when it cannot be read or does not fit into memory.
template <class Import>
std::unique_ptr<ZoPointCloud> ImportFile(const std::wstring& path, Import import, int& error) {
    try {
        TextBlocks text(path);
        if (text.GetError() == 0) return import(text, ZoGetFilename(path));
        error = text.GetError();
    } catch (const std::bad_alloc&) {
        error = static_cast<int>(std::errc::not_enough_memory);
    }
    return nullptr;
}

}  // namespace

bool ZoPointCloudContainer::ReadPtsFile(const std::wstring& path, ZoPointCloudReadResult& result) {
    return TakeImport(ImportFile(path, ImportPts, result.error), path, result);
}

bool ZoPointCloudContainer::ReadXYZFile(const std::wstring& path, ZoPointCloudReadResult& result) {
    return TakeImport(ImportFile(path, ImportXyz, result.error), path, result);
}

ZoPointCloud* ZoPointCloudContainer::ReadPtsFile(std::FILE* file) {
    if (!file) return nullptr;
    TextBlocks text(file);
    return TakeImport(ImportPts(text, L""));
}

ZoPointCloud* ZoPointCloudContainer::ReadXYZFile(std::ifstream& stream) {
    TextBlocks text(stream);
    return TakeImport(ImportXyz(text, L""));
}
