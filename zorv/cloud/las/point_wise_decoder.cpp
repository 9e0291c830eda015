#include <vector>

#include "zorv/cloud/las/chunk_decoder.h"
#include "zorv/cloud/las/item_decoder.h"

namespace zorv::las {

namespace {

using detail::ByteView;

class PointWiseDecoder final : public ChunkDecoder {
  public:
    explicit PointWiseDecoder(const LazLayout& layout) {
        for (const LazItem& item : layout.items) {
            items.push_back({MakeDecoder(item), item.size});
            recordLength += item.size;
        }
    }

    bool Begin(ByteView chunk) override {
        if (chunk.size() < recordLength) return false;
        const std::uint8_t* raw = chunk.data();
        last = {};
        for (const Item& item : items) {
            item.decoder->Start(raw, last);
            raw += item.size;
        }
        atFirst = true;
        decoder = ArithmeticDecoder(detail::BytesFrom(chunk, recordLength));
        return true;
    }

    std::size_t Next(std::span<LASpoint> points) override {
        std::size_t count = 0;
        if (atFirst && !points.empty()) {
            points[count++] = last;
            atFirst = false;
        }
        for (; count < points.size(); ++count) {
            for (const Item& item : items)
                item.decoder->Next(decoder, last);
            if (decoder.IsExhausted()) break;
            points[count] = last;
        }
        return count;
    }

    std::size_t Used() const override { return recordLength + decoder.Position(); }

  private:
    struct Item {
        std::unique_ptr<ItemDecoder> decoder;
        std::size_t size;
    };

    static std::unique_ptr<ItemDecoder> MakeDecoder(const LazItem& item) {
        switch (item.type) {
            case LazItem::kPoint10:
                return MakePoint10Decoder(item.version);
            case LazItem::kGpsTime11:
                return MakeGpsTimeDecoder(item.version);
            case LazItem::kRgb12:
                return MakeColorDecoder(item.version);
            case LazItem::kWavePacket13:
                return MakeWavePacketDecoder();
            default:
                return MakeExtraByteDecoder(item.version, item.size);
        }
    }

    std::vector<Item> items;
    std::size_t recordLength = 0;
    ArithmeticDecoder decoder;
    LASpoint last;
    bool atFirst = false;
};

}  // namespace

std::unique_ptr<ChunkDecoder> MakePointWiseDecoder(const LazLayout& layout) {
    return std::make_unique<PointWiseDecoder>(layout);
}

}  // namespace zorv::las
