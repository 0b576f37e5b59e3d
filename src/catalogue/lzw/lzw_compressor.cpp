#include "catalogue/lzw/lzw_compressor.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstring>
#include <memory>
#include <new>

#include "catalogue/lzw/lzw_format.h"
#include "platform/large_pages.h"

namespace sealkeeper {
namespace {

// Appends codes to a buffer, packed least-significant bit first.
class CodeWriter {
  public:
    explicit CodeWriter(std::vector<std::uint8_t>& output)
        : output_(&output), written_(output.size()) {}

    void Write(std::uint16_t code) {
        if (output_->size() - written_ < sizeof(pending_)) {
            // Grows in small pieces, so that the zeros that resize writes stay in the cache until
            // they are overwritten.
            output_->resize(output_->size() + kPieceBytes);
        }
        pending_ |= static_cast<std::uint64_t>(code) << pendingBits_;
        pendingBits_ += lzw::kCodeBits;
        // Stores all pending bits at once. The bytes past the whole ones are overwritten by the
        // next store.
        static_assert(std::endian::native == std::endian::little);
        std::memcpy(output_->data() + written_, &pending_, sizeof(pending_));
        const unsigned wholeBytes = pendingBits_ / lzw::kByteBits;
        written_ += wholeBytes;
        pending_ >>= wholeBytes * lzw::kByteBits;
        pendingBits_ %= lzw::kByteBits;
    }

    // Cuts the buffer after the last code. Padding bits are zero.
    void Finish() { output_->resize(written_ + (pendingBits_ > 0 ? 1 : 0)); }

  private:
    static constexpr std::size_t kPieceBytes = 65536;

    std::vector<std::uint8_t>* output_;
    std::size_t written_;
    std::uint64_t pending_ = 0;
    unsigned pendingBits_ = 0;
};

// The strings of two or more bytes, each as the code of its prefix and its last byte.
class CompressorDictionary {
  public:
    static constexpr std::uint16_t kNone = 0;

    CompressorDictionary()
        : codes_(std::make_unique_for_overwrite<std::uint16_t[]>(kStringCount)),
          assigned_(kStringCount / kWordBits) {}

    // The code of the string; `kNone` when it is not in the dictionary.
    [[nodiscard]] std::uint16_t Find(std::uint16_t prefix, std::uint8_t next) const {
        if (next == 0) {
            return zeroCodes_[prefix];
        }
        const std::size_t index = IndexOf(prefix, next);
        return IsAssigned(index) ? codes_[index] : kNone;
    }

    // Assigns the next code to the string, unless all codes are assigned.
    void Add(std::uint16_t prefix, std::uint8_t next) {
        if (nextCode_ == lzw::kEndOfCodes) {
            return;
        }
        if (next != 0) {
            const std::size_t index = IndexOf(prefix, next);
            assigned_[index / kWordBits] |= std::uint64_t{1} << index % kWordBits;
            codes_[index] = nextCode_++;
            return;
        }
        if (prefix == zeroStrings_[longestZeros_ - 1]) {
            zeroStrings_[longestZeros_++] = nextCode_;
        }
        zeroCodes_[prefix] = nextCode_++;
    }

    // The length of the longest string of only zero bytes; at least 1.
    [[nodiscard]] std::size_t LongestZeros() const { return longestZeros_; }

    // The code of `count` zero bytes, 1 to `LongestZeros()`.
    [[nodiscard]] std::uint16_t ZerosCode(std::size_t count) const {
        return zeroStrings_[count - 1];
    }

  private:
    static constexpr std::size_t kByteValues = 256;
    static constexpr std::size_t kWordBits = 64;

    // All strings that could be in the dictionary.
    static constexpr std::size_t kStringCount = std::size_t{lzw::kEndOfCodes} * kByteValues;

    [[nodiscard]] bool IsAssigned(std::size_t index) const {
        return (assigned_[index / kWordBits] >> index % kWordBits & 1U) != 0;
    }

    static std::size_t IndexOf(std::uint16_t prefix, std::uint8_t next) {
        return prefix * kByteValues + next;
    }

    // Uninitialised except where `assigned_` says so.
    std::unique_ptr<std::uint16_t[]> codes_;
    // Bitmap of the assigned elements of `codes_`. Most bytes of a digest continue no string: the
    // bitmap answers "absent" without touching the much larger table.
    std::vector<std::uint64_t> assigned_;
    // The codes of strings that end in a zero byte, by prefix. Usually every second byte of a path
    // is zero; this table is small enough to stay in the L1 cache.
    std::array<std::uint16_t, lzw::kEndOfCodes> zeroCodes_{};
    std::uint16_t nextCode_ = lzw::kFirstFreeCode;
    // The codes of the strings of only zero bytes, by length. The first is code 0.
    std::array<std::uint16_t, 1 + lzw::kEndOfCodes - lzw::kFirstFreeCode> zeroStrings_{};
    std::size_t longestZeros_ = 1;
};

}  // namespace

// The state between two pieces of input.
struct LzwCompressor::State {
    explicit State(std::vector<std::uint8_t>& output) : writer(output) {}

    CodeWriter writer;
    CompressorDictionary dictionary;
    bool hasMatch = false;
    // The code of the string at the end of the input so far that is yet to be written.
    std::uint16_t matched = 0;
};

namespace {

// Finds the longest strings of the dictionary in one piece of input and writes their codes.
//
// Works on local copies of the small parts of the state: byte stores may alias members, which the
// compiler would then reload for every code.
class Matcher {
  public:
    Matcher(CompressorDictionary& dictionary, const CodeWriter& writer, std::uint16_t matched,
            std::span<const std::uint8_t> input)
        : dictionary_(dictionary),
          writer_(writer),
          matched_(matched),
          next_(input.data()),
          end_(input.data() + input.size()) {}

    // Begins a match with the next byte. There must be one.
    void StartMatch() {
        const std::size_t zeroWords = CountZeroWords();
        if (zeroWords > 0) {
            MatchZeros(zeroWords);
        } else {
            matched_ = *next_++;
        }
    }

    // Continues the match to the end of the input. The last match is left for the next piece.
    void Run() {
        MatchOn();
        while (next_ != end_) {
            writer_.Write(matched_);
            dictionary_.Add(matched_, *next_);
            StartMatch();
            MatchOn();
        }
    }

    [[nodiscard]] const CodeWriter& Writer() const { return writer_; }
    [[nodiscard]] std::uint16_t Matched() const { return matched_; }

  private:
    // Zero bytes are counted eight at a time.
    using Word = std::uint64_t;

    // How many words of only zero bytes come next.
    [[nodiscard]] std::size_t CountZeroWords() const {
        const std::size_t wordsLeft = static_cast<std::size_t>(end_ - next_) / sizeof(Word);
        for (std::size_t count = 0; count < wordsLeft; ++count) {
            Word word;
            std::memcpy(&word, next_ + count * sizeof(word), sizeof(word));
            if (word != 0) {
                return count;
            }
        }
        return wordsLeft;
    }

    // Takes all zero bytes that come next, at least `words` words of them. The longest string that
    // covers the last of them stays matched.
    void MatchZeros(std::size_t words) {
        const std::uint8_t* const zerosEnd = std::find_if(
            next_ + words * sizeof(Word), end_, [](std::uint8_t byte) { return byte != 0; });
        auto left = static_cast<std::size_t>(zerosEnd - next_);
        next_ = zerosEnd;
        while (left > dictionary_.LongestZeros()) {
            matched_ = dictionary_.ZerosCode(dictionary_.LongestZeros());
            left -= dictionary_.LongestZeros();
            writer_.Write(matched_);
            dictionary_.Add(matched_, 0);
        }
        matched_ = dictionary_.ZerosCode(left);
    }

    // Extends the match as long as the matched string and the byte after it are in the dictionary.
    void MatchOn() {
        for (; next_ != end_; ++next_) {
            const std::uint16_t longer = dictionary_.Find(matched_, *next_);
            if (longer == CompressorDictionary::kNone) {
                return;
            }
            matched_ = longer;
        }
    }

    CompressorDictionary& dictionary_;
    CodeWriter writer_;
    std::uint16_t matched_;
    const std::uint8_t* next_;
    const std::uint8_t* const end_;
};

// Reserves memory past the end of `output`. Best effort; grows on demand otherwise.
void MakeRoom(std::vector<std::uint8_t>& output, std::size_t bytes) {
    const std::size_t before = output.size();
    try {
        output.reserve(before + bytes);
    } catch (const std::bad_alloc&) {
        return;
    }
    PreferLargePages(output.data() + before, bytes);
}

}  // namespace

LzwCompressor::LzwCompressor(std::vector<std::uint8_t>& output, std::size_t expectedBytes) {
    // An entry block shrinks to less than half unless most of it is digests.
    MakeRoom(output, lzw::kPrefix.size() + expectedBytes / 2);
    output.insert(output.end(), lzw::kPrefix.begin(), lzw::kPrefix.end());
    state_ = std::make_unique<State>(output);
}

LzwCompressor::~LzwCompressor() = default;

void LzwCompressor::Append(std::span<const std::uint8_t> input) {
    if (input.empty()) {
        return;
    }
    Matcher matcher(state_->dictionary, state_->writer, state_->matched, input);
    if (!state_->hasMatch) {
        matcher.StartMatch();
        state_->hasMatch = true;
    }
    matcher.Run();
    state_->writer = matcher.Writer();
    state_->matched = matcher.Matched();
}

void LzwCompressor::Finish() {
    state_->writer.Write(state_->matched);
    state_->writer.Finish();
}

}  // namespace sealkeeper
