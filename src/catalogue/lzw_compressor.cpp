#include "catalogue/lzw_compressor.h"

#include <array>
#include <cstddef>

#include "catalogue/lzw_format.h"

namespace sealkeeper {
namespace {

// Packs codes least-significant bit first.
class CodeWriter {
  public:
    explicit CodeWriter(std::vector<std::uint8_t>& output) : output_(output) {}

    void Write(std::uint16_t code) {
        pendingBits_ |= static_cast<std::uint32_t>(code) << pendingCount_;
        pendingCount_ += lzw::kCodeBits;
        while (pendingCount_ >= kByteBits) {
            FlushByte();
            pendingCount_ -= kByteBits;
        }
    }

    // Writes what is left of the last code, padded with zero bits.
    void Finish() {
        if (pendingCount_ > 0) {
            FlushByte();
            pendingCount_ = 0;
        }
    }

  private:
    static constexpr unsigned kByteBits = 8;

    void FlushByte() {
        output_.push_back(static_cast<std::uint8_t>(pendingBits_));
        pendingBits_ >>= kByteBits;
    }

    std::vector<std::uint8_t>& output_;
    std::uint32_t pendingBits_ = 0;
    unsigned pendingCount_ = 0;
};

// The strings of two bytes and more, as pairs of a shorter string's code and the byte that follows
// it, in an open-addressed table with double hashing.
class CompressorDictionary {
  public:
    // The slot that holds the string, or the free one where it belongs.
    [[nodiscard]] std::size_t FindSlot(std::uint16_t prefix, std::uint8_t next) const {
        const std::uint32_t key = Key(prefix, next);
        std::size_t slot = (static_cast<std::size_t>(next) << kIndexShift) ^ prefix;
        const std::size_t step = slot == 0 ? 1 : kSlots - slot;
        while (slots_[slot].code != kFree && slots_[slot].key != key) {
            slot = slot >= step ? slot - step : slot + kSlots - step;
        }
        return slot;
    }

    [[nodiscard]] bool Holds(std::size_t slot) const { return slots_[slot].code != kFree; }
    [[nodiscard]] std::uint16_t CodeAt(std::size_t slot) const { return slots_[slot].code; }

    // Gives the string the next code, unless all codes are assigned.
    void Add(std::size_t slot, std::uint16_t prefix, std::uint8_t next) {
        if (nextCode_ < lzw::kEndOfCodes) {
            slots_[slot] = {Key(prefix, next), nextCode_++};
        }
    }

  private:
    // A prime well above the number of codes, so that the table never fills and every step visits
    // all slots.
    static constexpr std::size_t kSlots = 5021;
    static constexpr unsigned kIndexShift = 4;
    static constexpr std::uint16_t kFree = 0;
    // The largest index before wrapping: all bits of byte and prefix.
    static_assert((std::size_t{255} << kIndexShift | (lzw::kEndOfCodes - 1)) < kSlots);

    struct Slot {
        std::uint32_t key = 0;
        std::uint16_t code = kFree;
    };

    static std::uint32_t Key(std::uint16_t prefix, std::uint8_t next) {
        return static_cast<std::uint32_t>(prefix) << 8U | next;
    }

    std::array<Slot, kSlots> slots_{};
    std::uint16_t nextCode_ = lzw::kFirstFreeCode;
};

}  // namespace

void CompressLzw(std::span<const std::uint8_t> input, std::vector<std::uint8_t>& output) {
    output.insert(output.end(), lzw::kPrefix.begin(), lzw::kPrefix.end());
    CodeWriter writer(output);
    CompressorDictionary dictionary;
    std::uint16_t matched = input.front();
    for (const std::uint8_t next : input.subspan(1)) {
        const std::size_t slot = dictionary.FindSlot(matched, next);
        if (dictionary.Holds(slot)) {
            matched = dictionary.CodeAt(slot);
            continue;
        }
        writer.Write(matched);
        dictionary.Add(slot, matched, next);
        matched = next;
    }
    writer.Write(matched);
    writer.Finish();
}

}  // namespace sealkeeper
