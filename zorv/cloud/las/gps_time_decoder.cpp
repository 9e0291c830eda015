#include <array>

#include "zorv/cloud/las/integer_decoder.h"
#include "zorv/cloud/las/item_decoder.h"

namespace zorv::las {

namespace {

// A time is mostly the last one plus a whole multiple of the usual step. The times themselves decide nothing about the
// stream, so only the steps are kept.
constexpr std::int32_t kMostMultiple = 500;
constexpr int kExtremesUntilNewStep = 3;

std::int32_t Multiple(std::int32_t step, std::int32_t factor) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(step) * static_cast<std::uint32_t>(factor));
}

struct Sequence {
    std::int32_t step = 0;
    int extremes = 0;

    void Take(std::int32_t newStep) {
        step = newStep;
        extremes = 0;
    }
    /// A difference far from any usual one: after several of them the usual step is another.
    void TakeExtreme(std::int32_t difference) {
        if (++extremes > kExtremesUntilNewStep) Take(difference);
    }
};

/// Version 2: four interleaved sequences of times.
class GpsTimeDecoder final : public ItemDecoder {
  public:
    void Start(const std::uint8_t*, LASpoint&) override {
        sequences.fill({});
        current = 0;
        newest = 0;
        still.Begin(6);
        multiples.Begin(kUnchanged + 5);
        differences.Restart();
    }

    void Next(ArithmeticDecoder& outer, LASpoint&) override {
        ArithmeticDecoder decoder = outer;
        // A sequence that is switched to goes on at once; more switches than sequences say nothing.
        for (std::size_t step = 0; step <= sequences.size(); ++step) {
            const unsigned int other = DecodeIn(decoder, sequences[current]);
            if (other == 0) break;
            current = (current + other) % sequences.size();
        }
        outer = decoder;
    }

  private:
    static constexpr std::int32_t kLeastMultiple = -10;
    static constexpr std::uint32_t kUnchanged = kMostMultiple - kLeastMultiple + 1;
    static constexpr std::uint32_t kFull = kUnchanged + 1;

    /// Returns how many sequences further the time is to be found, or 0 when it has been decoded.
    unsigned int DecodeIn(ArithmeticDecoder& decoder, Sequence& sequence) {
        if (sequence.step == 0) {
            const std::uint32_t kind = decoder.Symbol(still);
            if (kind == 1) sequence.Take(differences.Decode(decoder, 0, 0));
            if (kind == 2) BeginSequence(decoder);
            return kind > 2 ? kind - 2 : 0;
        }
        const std::uint32_t symbol = decoder.Symbol(multiples);
        if (symbol == kUnchanged) return 0;
        if (symbol > kFull) return symbol - kFull;
        if (symbol == kFull) {
            BeginSequence(decoder);
        } else if (symbol == 1) {
            // The usual step itself, which stays the usual one however much this one deviates.
            differences.Decode(decoder, sequence.step, 1);
            sequence.extremes = 0;
        } else {
            DecodeMultiple(decoder, sequence, static_cast<std::int32_t>(symbol));
        }
        return 0;
    }

    void DecodeMultiple(ArithmeticDecoder& decoder, Sequence& sequence, std::int32_t symbol) {
        const std::int32_t factor = symbol <= kMostMultiple ? symbol : kMostMultiple - symbol;
        const bool extreme = factor == 0 || factor == kMostMultiple || factor == kLeastMultiple;
        unsigned int context = 0;
        if (factor == 0) {
            context = 7;
        } else if (factor > 0) {
            context = factor < 10 ? 2 : (factor < kMostMultiple ? 3 : 4);
        } else {
            context = factor > kLeastMultiple ? 5 : 6;
        }
        const std::int32_t difference = differences.Decode(decoder, Multiple(sequence.step, factor), context);
        if (extreme) sequence.TakeExtreme(difference);
    }

    /// A whole time: the upper half against the last one, the lower half as it is.
    void BeginSequence(ArithmeticDecoder& decoder) {
        newest = (newest + 1) % sequences.size();
        differences.Decode(decoder, 0, 8);
        decoder.Word();
        current = newest;
        sequences[current] = {};
    }

    std::array<Sequence, 4> sequences{};
    std::size_t current = 0;
    std::size_t newest = 0;
    AdaptiveSymbols<6> still;
    AdaptiveSymbols<kUnchanged + 5> multiples;
    IntegerDecoder differences{32, 9};
};

/// Version 1: one sequence.
class EarlyGpsTimeDecoder final : public ItemDecoder {
  public:
    void Start(const std::uint8_t*, LASpoint&) override {
        sequence = {};
        still.Begin(3);
        multiples.Begin(kSymbols);
        differences.Restart();
    }

    void Next(ArithmeticDecoder& decoder, LASpoint&) override {
        if (sequence.step == 0) {
            const std::uint32_t kind = decoder.Symbol(still);
            if (kind == 1) sequence.step = differences.Decode(decoder, 0, 0);
            if (kind == 2) decoder.SkipLong();
            return;
        }
        const auto symbol = static_cast<std::int32_t>(decoder.Symbol(multiples));
        if (symbol == kFull) decoder.SkipLong();
        if (symbol >= kFull) return;
        if (symbol == 1) {
            sequence.Take(differences.Decode(decoder, sequence.step, 1));
        } else if (symbol == 0) {
            sequence.TakeExtreme(differences.Decode(decoder, sequence.step / 4, 2));
        } else {
            const unsigned int context = symbol < 10 ? 3 : (symbol < 50 ? 4 : 5);
            const std::int32_t difference = differences.Decode(decoder, Multiple(sequence.step, symbol), context);
            if (symbol == kFull - 1) sequence.TakeExtreme(difference);
        }
    }

  private:
    static constexpr std::uint32_t kSymbols = 512;
    static constexpr std::int32_t kFull = kSymbols - 2;  // the last symbol: unchanged

    Sequence sequence;
    AdaptiveSymbols<3> still;
    AdaptiveSymbols<kSymbols> multiples;
    IntegerDecoder differences{32, 6};
};

}  // namespace

std::unique_ptr<ItemDecoder> MakeGpsTimeDecoder(unsigned int version) {
    if (version == 1) return std::make_unique<EarlyGpsTimeDecoder>();
    return std::make_unique<GpsTimeDecoder>();
}

}  // namespace zorv::las
