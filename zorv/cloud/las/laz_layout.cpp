#include "zorv/cloud/las/laz_layout.h"

#include <algorithm>
#include <cstring>

namespace zorv::las {

namespace {

using detail::ByteView;
using detail::NumberAt;

constexpr std::uint64_t kRecordHeader = 54;
constexpr char kUserId[] = "laszip encoded";
constexpr std::uint16_t kRecordId = 22204;
constexpr std::uint16_t kArithmeticCoder = 0;
constexpr std::uint64_t kItemsAt = 34;
constexpr std::uint64_t kItemSize = 6;

ByteView FindRecord(ByteView file, const LASheader& header) {
    ByteView rest = detail::BytesFrom(file, header.header_size);
    for (std::uint32_t i = 0; i < header.number_of_variable_length_records && rest.size() >= kRecordHeader; ++i) {
        const auto length = NumberAt<std::uint16_t>(rest, 20);
        if (std::memcmp(rest.data() + 2, kUserId, sizeof kUserId) == 0 &&
            NumberAt<std::uint16_t>(rest, 18) == kRecordId) {
            return detail::BytesAt(rest, kRecordHeader, length);
        }
        rest = detail::BytesFrom(rest, kRecordHeader + length);
    }
    return {};
}

/// Whether a reader exists for the item; a size of 0 stands for any.
bool IsKnown(const LazItem& item, bool layered) {
    struct Known {
        std::uint16_t type, size, oldest, newest;
        bool layered;
    };
    // Version 2 of the layered groups was a trial whose stream is that of version 3.
    static constexpr Known kKnown[] = {
        {LazItem::kBytes, 0, 1, 2, false},         {LazItem::kPoint10, 20, 1, 2, false},
        {LazItem::kGpsTime11, 8, 1, 2, false},     {LazItem::kRgb12, 6, 1, 2, false},
        {LazItem::kWavePacket13, 29, 1, 1, false}, {LazItem::kPoint14, 30, 2, 4, true},
        {LazItem::kRgb14, 6, 2, 4, true},          {LazItem::kRgbNir14, 8, 2, 4, true},
        {LazItem::kWavePacket14, 29, 2, 4, true},  {LazItem::kBytes14, 0, 2, 4, true},
    };
    for (const Known& known : kKnown) {
        if (known.type == item.type) {
            return known.layered == layered && item.size > 0 && (known.size == 0 || known.size == item.size) &&
                   item.version >= known.oldest && item.version <= known.newest;
        }
    }
    return false;
}

bool Holds(const LazLayout& layout, std::uint16_t type) {
    return std::any_of(layout.items.begin(), layout.items.end(),
                       [=](const LazItem& item) { return item.type == type; });
}

}  // namespace

bool ReadLazLayout(ByteView file, const LASheader& header, LazLayout& layout) {
    const ByteView record = FindRecord(file, header);
    if (record.size() < kItemsAt) return false;
    layout.compressor = NumberAt<std::uint16_t>(record, 0);
    layout.chunkSize = NumberAt<std::uint32_t>(record, 12);
    if (layout.compressor > LazLayout::kLayered || NumberAt<std::uint16_t>(record, 2) != kArithmeticCoder) return false;
    if (layout.compressor == LazLayout::kNone) return true;
    if (layout.compressor != LazLayout::kPointWise && layout.chunkSize == 0) return false;

    const auto count = NumberAt<std::uint16_t>(record, 32);
    if (count == 0 || record.size() < kItemsAt + kItemSize * count) return false;
    std::uint64_t recordLength = 0;
    for (std::uint64_t at = kItemsAt; at < kItemsAt + kItemSize * count; at += kItemSize) {
        const LazItem item{NumberAt<std::uint16_t>(record, at), NumberAt<std::uint16_t>(record, at + 2),
                           NumberAt<std::uint16_t>(record, at + 4)};
        if (!IsKnown(item, layout.IsLayered()) || Holds(layout, item.type)) return false;
        recordLength += item.size;
        layout.items.push_back(item);
    }
    const std::uint16_t first = layout.IsLayered() ? LazItem::kPoint14 : LazItem::kPoint10;
    return layout.items.front().type == first && recordLength == header.point_data_record_length;
}

}  // namespace zorv::las
