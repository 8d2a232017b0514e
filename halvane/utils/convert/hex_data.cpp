#include "halvane/utils/convert/hex_data.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "halvane/base/ascii_internal.h"
#include "halvane/platform/os/secret_internal.h"
#include "halvane/utils/text/cursor_internal.h"

namespace {

using halvane::digitValue;

// Loops over whole blocks have a fixed count and no branches, so that compilers turn them into
// vector instructions. GCC does so from 32 iterations on, and unrolls shorter loops instead.
constexpr std::size_t kBlockBytes = 32;
constexpr std::size_t kBlockDigits = 2 * kBlockBytes;

// --- From text ---

// Stores bytes as long as there is room, and counts all of them.
class Sink {
  public:
    Sink(void* buffer, std::size_t capacity)
        : buffer_(static_cast<std::uint8_t*>(buffer)),
          capacity_(buffer != nullptr ? capacity : 0) {}

    void put(unsigned byte) {
        if (room() > 0) *place() = static_cast<std::uint8_t>(byte);
        add(1);
    }
    void putBlock(const std::uint8_t (&block)[kBlockBytes]) {
        if (room() >= kBlockBytes) {
            std::memcpy(place(), block, kBlockBytes);
        } else if (room() > 0) {
            std::memcpy(place(), block, room());
        }
        add(kBlockBytes);
    }
    // For code that stores bytes itself.
    std::size_t room() const { return total_ < capacity_ ? capacity_ - total_ : 0; }
    std::uint8_t* place() const { return room() > 0 ? buffer_ + total_ : nullptr; }
    void add(std::size_t count) { total_ += count; }

    void zeroFill() {
        if (room() > 0) std::memset(place(), 0, room());
    }

    std::size_t total() const { return total_; }
    std::size_t written() const { return std::min(total_, capacity_); }

  private:
    std::uint8_t* buffer_;
    std::size_t capacity_;
    std::size_t total_ = 0;
};

struct DecodedBlock {
    std::uint8_t values[kBlockDigits];
    std::uint8_t bytes[kBlockBytes];
};

// Returns whether all characters of a block are digits; `block.bytes` then holds their bytes. The
// text and the block never overlap, which compilers cannot see.
bool decodeBlock(const char* __restrict text, DecodedBlock& __restrict block) {
    auto& [values, bytes] = block;
    std::uint8_t strangers = 0;
    for (std::size_t i = 0; i < kBlockDigits; ++i) {
        const auto character = static_cast<std::uint8_t>(text[i]);
        const auto digit = static_cast<std::uint8_t>(character - '0');
        const auto letter = static_cast<std::uint8_t>((character | 0x20) - 'a');
        const std::uint8_t isDigit = digit < 10 ? UINT8_MAX : 0;
        const std::uint8_t isLetter = letter < 6 ? UINT8_MAX : 0;
        values[i] = static_cast<std::uint8_t>((digit & isDigit) | ((letter + 10) & isLetter));
        strangers |= static_cast<std::uint8_t>(~(isDigit | isLetter));
    }
    for (std::size_t i = 0; i < kBlockBytes; ++i) {
        bytes[i] = static_cast<std::uint8_t>(values[2 * i] << 4 | values[2 * i + 1]);
    }
    return strangers == 0;
}

// Returns the number of pairs of digits, at most `count`, before another character. Stores their
// values in `bytes`, which may be null.
std::size_t decodePairs(const char* text, std::size_t count, std::uint8_t* bytes) {
    std::size_t i = 0;
    for (; i < count; ++i) {
        const unsigned high = digitValue(text[2 * i]);
        const unsigned low = digitValue(text[2 * i + 1]);
        if ((high | low) >= 16) break;
        if (bytes != nullptr) bytes[i] = static_cast<std::uint8_t>(high << 4 | low);
    }
    return i;
}

bool isSkipped(char character, std::uint32_t flags) {
    if (halvane::isSpace(character)) return (flags & kHexToDataFlagSkipSpace) != 0;
    const bool isSeparator = character == '-' || character == ':' || character == '_';
    return isSeparator && (flags & kHexToDataFlagSkipSeparators) != 0;
}

class HexReader {
  public:
    HexReader(std::string_view text, std::uint32_t flags, Sink& sink)
        : at_(text.data()), end_(at_ + text.size()), flags_(flags), sink_(sink) {}

    void read() {
        skipPrefix();
        do {
            // After a block with another character, no block is tried before that block's end.
            if (nextBlock_ == nullptr || at_ >= nextBlock_) {
                if (remaining() >= kBlockDigits) blocks();
                nextBlock_ = at_ + std::min(kBlockDigits, remaining());
            }
            pairs();
        } while (separatedPair());
    }

    const char* position() const { return at_; }

  private:
    std::size_t remaining() const { return static_cast<std::size_t>(end_ - at_); }

    void skipPrefix() {
        while (at_ != end_ && halvane::isSpace(*at_)) ++at_;
        if (remaining() >= 2 && at_[0] == '0' && (at_[1] == 'x' || at_[1] == 'X')) at_ += 2;
    }

    // A separate function, so that short texts do not pay for it.
    [[gnu::noinline]] void blocks() {
        halvane::Secret<DecodedBlock> block;  // keys and passphrases are read here too
        for (; remaining() >= kBlockDigits && decodeBlock(at_, *block); at_ += kBlockDigits) {
            sink_.putBlock(block->bytes);
        }
    }

    // Reads adjacent pairs: up to the end of the buffer if it has room, otherwise only counting
    // them.
    void pairs() {
        const std::size_t left = remaining() / 2;
        const std::size_t room = sink_.room();
        const std::size_t count =
            decodePairs(at_, room > 0 ? std::min(left, room) : left, sink_.place());
        sink_.add(count);
        at_ += 2 * count;
    }

    // Returns the next digit after skipped characters; kNoDigit if there is none.
    unsigned digit() {
        while (at_ != end_ && isSkipped(*at_, flags_)) ++at_;
        return at_ != end_ && halvane::isHexDigit(*at_) ? digitValue(*at_++)
                                                        : unsigned{halvane::kNoDigit};
    }

    // Reads one pair whose digits may be separated. Returns whether more may follow.
    bool separatedPair() {
        if (at_ == end_) return false;
        const unsigned high = digit();
        if (high == halvane::kNoDigit) return false;
        const unsigned low = digit();
        const bool isOdd = low == halvane::kNoDigit;
        if (!isOdd) {
            sink_.put(high << 4 | low);
        } else if ((flags_ & kHexToDataFlagNoOddDigit) == 0) {
            sink_.put(high << 4);
        }
        return !isOdd;
    }

    const char* at_;
    const char* end_;
    const char* nextBlock_ = nullptr;
    std::uint32_t flags_;
    Sink& sink_;
};

// Returns the text of a pointer and a length, as a HexReader reads it. Of a NUL-terminated text it
// returns only the part that the reader would consume, so the rest, however long, is not read.
std::string_view hexIn(const char* text, std::size_t length, std::uint32_t flags) {
    if (length != SIZE_MAX) return {text, length};
    const char* end = text;
    while (halvane::isSpace(*end)) ++end;
    if (end[0] == '0' && (end[1] == 'x' || end[1] == 'X')) end += 2;
    while (halvane::isHexDigit(*end) || isSkipped(*end, flags)) ++end;
    return {text, static_cast<std::size_t>(end - text)};
}

constexpr std::uint32_t kAsPeopleWrite = kHexToDataFlagSkipSpace | kHexToDataFlagSkipSeparators;

// --- To text ---

// Returns whether each character is one more than the character before it, as in "0123456789".
bool areConsecutive(std::string_view characters) {
    for (std::size_t i = 1; i < characters.size(); ++i) {
        if (characters[i] != static_cast<char>(characters[0] + static_cast<char>(i))) return false;
    }
    return true;
}

// A table whose digits up to 9 are consecutive, and so are those from 10 on, as sums.
struct Alphabet {
    explicit Alphabet(const char* digits)
        : zero(static_cast<std::uint8_t>(digits[0])),
          gap(static_cast<std::uint8_t>(digits[10] - 10 - digits[0])) {}

    std::uint8_t digit(unsigned value) const {
        return static_cast<std::uint8_t>(value + zero + (value > 9 ? gap : 0));
    }

    std::uint8_t zero;
    std::uint8_t gap;  // from the successor of the digit 9 to the digit 10
};

// Uses local memory, so that compilers can see that nothing overlaps.
void encodeBlock(const std::uint8_t* bytes, char* text, Alphabet alphabet) {
    std::uint8_t block[kBlockBytes];
    std::uint8_t high[kBlockBytes];
    std::uint8_t low[kBlockBytes];
    std::uint8_t digits[kBlockDigits];
    std::memcpy(block, bytes, kBlockBytes);
    for (std::size_t i = 0; i < kBlockBytes; ++i) {
        high[i] = block[i] >> 4;
        low[i] = block[i] & 0x0F;
    }
    for (std::size_t i = 0; i < kBlockBytes; ++i) {
        high[i] = alphabet.digit(high[i]);
        low[i] = alphabet.digit(low[i]);
    }
    for (std::size_t i = 0; i < kBlockBytes; ++i) {
        digits[2 * i] = high[i];
        digits[2 * i + 1] = low[i];
    }
    std::memcpy(text, digits, kBlockDigits);
}

}  // namespace

HalvaneStatus HexToData(const char* text, std::size_t length, std::uint32_t flags, void* buffer,
                        std::size_t capacity, std::size_t* written, std::size_t* total,
                        const char** end) {
    if (text == nullptr) return kStatusUnsupported;
    Sink sink(buffer, capacity);
    HexReader reader(hexIn(text, length, flags), flags, sink);
    reader.read();
    if ((flags & kHexToDataFlagZeroFill) != 0) sink.zeroFill();
    if (written != nullptr) *written = sink.written();
    if (total != nullptr) *total = sink.total();
    if (end != nullptr) *end = reader.position();
    return kStatusOK;
}

HalvaneStatus HexToDataCopy(const char* text, std::size_t length, std::uint32_t flags,
                            std::uint8_t** data, std::size_t* size, const char** end) {
    if (text == nullptr) return kStatusUnsupported;
    const std::string_view input = hexIn(text, length, flags);
    std::size_t total = 0;
    HexToData(input.data(), input.size(), flags, nullptr, 0, nullptr, &total, nullptr);
    auto* const bytes = static_cast<std::uint8_t*>(std::malloc(std::max<std::size_t>(total, 1)));
    if (bytes == nullptr) return kStatusNoMemory;
    HexToData(input.data(), input.size(), flags, bytes, total, nullptr, nullptr, end);
    *data = bytes;
    if (size != nullptr) *size = total;
    return kStatusOK;
}

HalvaneStatus HexTextToData(const char* text, std::size_t length, void* buffer,
                            std::size_t capacity, std::size_t* size) {
    if (text == nullptr) return kStatusUnsupported;
    const std::string_view input = halvane::textOf(text, length);
    std::size_t total = 0;
    const char* end = nullptr;
    HexToData(input.data(), input.size(), kAsPeopleWrite, nullptr, 0, nullptr, &total, &end);
    if (end != input.data() + input.size()) return kStatusMalformed;
    if (total > capacity) return kStatusNoRoom;
    return HexToData(input.data(), input.size(), kAsPeopleWrite, buffer, capacity, size, nullptr,
                     nullptr);
}

HalvaneStatus HexTextToDataCopy(const char* text, std::size_t length, std::uint8_t** data,
                                std::size_t* size) {
    if (text == nullptr) return kStatusUnsupported;
    const std::string_view input = halvane::textOf(text, length);
    std::uint8_t* bytes = nullptr;
    std::size_t count = 0;
    const char* end = nullptr;
    const HalvaneStatus status =
        HexToDataCopy(input.data(), input.size(), kAsPeopleWrite, &bytes, &count, &end);
    if (status != kStatusOK) return status;
    if (end != input.data() + input.size()) {
        std::free(bytes);
        return kStatusMalformed;
    }
    *data = bytes;
    if (size != nullptr) *size = count;
    return kStatusOK;
}

char* DataToHexCStringEx(const void* data, std::size_t count, char* buffer, const char* digits) {
    const auto* bytes = static_cast<const std::uint8_t*>(data);
    char* to = buffer;
    if (count >= kBlockBytes && areConsecutive({digits, 10}) && areConsecutive({digits + 10, 6})) {
        const Alphabet alphabet(digits);
        for (; count >= kBlockBytes; count -= kBlockBytes) {
            encodeBlock(bytes, to, alphabet);
            bytes += kBlockBytes;
            to += kBlockDigits;
        }
    }
    for (; count > 0; --count, ++bytes) {
        *to++ = digits[*bytes >> 4];
        *to++ = digits[*bytes & 0x0F];
    }
    *to = '\0';
    return buffer;
}
