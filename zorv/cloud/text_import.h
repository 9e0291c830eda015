#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "zorv/cloud/cloud_builder.h"
#include "zorv/cloud/read_progress.h"
#include "zorv/cloud/text_blocks.h"

namespace zorv::detail {

/// What a line of a cloud in text is.
enum class CloudLine {
    kNothing,
    kPoint,
    kCount,  ///< tells how many points come
    kEnd,    ///< nothing behind it is looked at
};

/// Imports a cloud whose points stand in lines of text. A format has
/// - `CloudLine Read(std::string_view line, ZoScanPoint3d& point)`: any line, without its line end, LF or CR LF;
/// - `bool ReadPlain(const char*& at, ZoScanPoint3d& point)`: takes the line at hand, which a line feed ends, and moves
///   to the next one when it is of the usual kind; its result is that of Read;
/// - `std::uint64_t told`: the count of the last line of that kind;
/// - `kLeastBytes`: of a line with a point; `kTakesOpenLine`: whether a last line without line feed counts.
///
/// Room is made once: for as many points as are told, no more than the bytes can hold, or as there are lines.
template <class Format>
std::unique_ptr<ZoPointCloud> ImportText(TextBlocks& text, Format& format, const std::wstring& name) {
    CloudBuilder builder;
    ReadProgress progress(name, text.Size());
    const auto mostFrom = [&text](const char* at) { return text.BytesFrom(at) / Format::kLeastBytes + 1; };
    for (std::string_view block; text.Next(block);) {
        const char* const end = block.data() + block.size();
        const bool isEnded = block.back() == '\n';
        if (!isEnded && !Format::kTakesOpenLine) break;
        for (const char* at = block.data(); at != end;) {
            const char* const begin = at;
            ZoScanPoint3d point;
            if (!isEnded || !format.ReadPlain(at, point)) {
                const std::size_t lineFeed = block.find('\n', static_cast<std::size_t>(begin - block.data()));
                const char* const lineEnd = lineFeed == block.npos ? end : block.data() + lineFeed;
                at = lineEnd == end ? end : lineEnd + 1;
                std::string_view line(begin, static_cast<std::size_t>(lineEnd - begin));
                if (line.ends_with('\r')) line.remove_suffix(1);
                const CloudLine kind = format.Read(line, point);
                if (kind == CloudLine::kEnd) return builder.Finish();
                if (kind == CloudLine::kCount && builder.IsEmpty())
                    builder.TryReserve(std::min(format.told, mostFrom(at)));
                if (kind != CloudLine::kPoint) continue;
            }
            // Where the size is not known, the vector grows as it does by itself.
            if (builder.IsFull() && text.Size() >= text.Position())
                builder.TryReserve(
                    std::min(std::max<std::uint64_t>(text.LinesFrom(begin), builder.Size() / 2), mostFrom(begin)));
            builder.Add(std::move(point));
        }
        progress.Reach(text.Position());
    }
    return builder.Finish();
}

}  // namespace zorv::detail
