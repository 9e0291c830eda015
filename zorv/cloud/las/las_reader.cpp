#include "zorv/cloud/las/las_reader.h"

#include <algorithm>

#include "zorv/core/text_conversion.h"

namespace zorv::las {

namespace {

// Few enough to stay in the innermost cache, many enough that the way to them does not count.
constexpr std::size_t kBlock = 512;

}  // namespace

bool LASreader::Open(const std::wstring& path) {
    file = std::make_unique<detail::FileBytes>(path);
    if (!ReadHeader(file->View(), header)) return false;
    source = header.compressed ? OpenCompressedPoints(file->View(), header) : OpenPlainPoints(file->View(), header);
    if (!source) return false;
    left = header.number_of_point_records;
    npoints = static_cast<std::int64_t>(std::min(left, source->Capacity()));
    return true;
}

bool LASreader::read_point() {
    if (blockNext == blockEnd) {
        if (!source || left == 0) return false;
        if (!block) block = std::make_unique<LASpoint[]>(kBlock);
        blockNext = 0;
        blockEnd = source->Read({block.get(), static_cast<std::size_t>(std::min<std::uint64_t>(kBlock, left))});
        left = blockEnd > 0 ? left - blockEnd : 0;
        if (blockEnd == 0) return false;
    }
    point = block[blockNext++];
    ++p_count;
    return true;
}

std::size_t LASreader::read_points(std::span<LASpoint> points) {
    std::size_t count = std::min(points.size(), blockEnd - blockNext);
    if (count > 0) std::copy_n(block.get() + blockNext, count, points.begin());
    blockNext += count;
    if (source && left > 0 && count < points.size()) {
        const std::uint64_t wanted = std::min<std::uint64_t>(points.size() - count, left);
        const std::size_t more = source->Read(points.subspan(count, static_cast<std::size_t>(wanted)));
        left = more == wanted ? left - more : 0;
        count += more;
    }
    p_count += static_cast<std::int64_t>(count);
    return count;
}

void LASreader::close() {
    source.reset();
    file.reset();
    left = 0;
    blockNext = 0;
    blockEnd = 0;
}

std::unique_ptr<LASreader> LASreadOpener::open() const {
    if (!active()) return nullptr;
    auto reader = std::make_unique<LASreader>();
    if (!reader->Open(string2wstring(fileName))) return nullptr;
    return reader;
}

}  // namespace zorv::las
