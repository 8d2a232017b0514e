// Parses the radiotap header (https://www.radiotap.org): a chain of presence words, then the fields
// whose bits are set, each aligned from the header's first byte. All integers are little-endian.
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "halvane/base/byte_cursor.h"
#include "halvane/capture/radio_header.h"
#include "halvane/capture/radio_header_internal.h"

namespace halvane::capture {

namespace {

// Presence bits with a special meaning. Bit 28 (TLV fields follow) has no row in the table below:
// like every bit of unknown size, it ends the walk.
constexpr std::uint32_t kRadiotapNamespace = 1u << 29;  // the next word starts again at bit 0
constexpr std::uint32_t kVendorNamespace = 1u << 30;    // the next word is a vendor's
constexpr std::uint32_t kMoreWords = 1u << 31;
constexpr std::uint32_t kFieldBits = kRadiotapNamespace - 1;
constexpr unsigned kBitsPerWord = 32;

// Flags (field 1) and RX flags (field 14).
constexpr std::uint8_t kFCSAtEnd = 0x10;
constexpr std::uint8_t kBadFCS = 0x40;
constexpr std::uint16_t kBadPLCP = 0x0002;

// The octets of a field, as many as the table below tells.
using Octets = std::span<const std::uint8_t>;

void readFlags(Octets field, RadioInfo& info) {
    const std::uint8_t flags = ByteCursor(field).u8().value_or(0);
    if (flags & kFCSAtEnd) info.hasFCS = true;
    if (flags & kBadFCS) info.isBadFCS = true;
}

void setFrequency(int frequency, RadioInfo& info) {
    if (frequency > 0) setIfAbsent(info.frequencyMHz, frequency);
}

void readChannel(Octets field, RadioInfo& info) {
    setFrequency(ByteCursor(field).u16le().value_or(0), info);
}

void readSignal(Octets field, RadioInfo& info) {
    setIfAbsent(info.signalDBm, static_cast<std::int8_t>(ByteCursor(field).u8().value_or(0)));
}

void readNoise(Octets field, RadioInfo& info) {
    setIfAbsent(info.noiseDBm, static_cast<std::int8_t>(ByteCursor(field).u8().value_or(0)));
}

void readRxFlags(Octets field, RadioInfo& info) {
    if (ByteCursor(field).u16le().value_or(0) & kBadPLCP) info.isBadFCS = true;
}

void readXChannel(Octets field, RadioInfo& info) {
    ByteCursor cursor(field);
    cursor.skip(4);  // channel flags
    setFrequency(cursor.u16le().value_or(0), info);
    const int channel = cursor.u8().value_or(0);
    if (channel > 0) setIfAbsent(info.channel, channel);
}

struct Field {
    std::uint8_t alignment;
    std::uint8_t size;
    // Absent if the field is only skipped. Takes octets, not a cursor, since they stay in
    // registers.
    void (*read)(Octets field, RadioInfo& info) = nullptr;
};

// The fields by presence bit (https://www.radiotap.org/fields/defined).
constexpr std::array<Field, 28> kFields = {{
    {8, 8},                // 0: TSFT
    {1, 1, readFlags},     // 1: flags
    {1, 1},                // 2: rate
    {2, 4, readChannel},   // 3: channel: frequency, flags
    {2, 2},                // 4: FHSS
    {1, 1, readSignal},    // 5: antenna signal, dBm
    {1, 1, readNoise},     // 6: antenna noise, dBm
    {2, 2},                // 7: lock quality
    {2, 2},                // 8: TX attenuation
    {2, 2},                // 9: TX attenuation, dB
    {1, 1},                // 10: TX power, dBm
    {1, 1},                // 11: antenna
    {1, 1},                // 12: antenna signal, dB over an unstated reference
    {1, 1},                // 13: antenna noise, dB over an unstated reference
    {2, 2, readRxFlags},   // 14: RX flags
    {2, 2},                // 15: TX flags
    {1, 1},                // 16: RTS retries
    {1, 1},                // 17: data retries
    {4, 8, readXChannel},  // 18: XChannel: flags, frequency, number, maximum power
    {1, 3},                // 19: MCS
    {4, 8},                // 20: A-MPDU status
    {2, 12},               // 21: VHT
    {8, 12},               // 22: timestamp
    {2, 12},               // 23: HE
    {2, 12},               // 24: HE-MU
    {2, 6},                // 25: HE-MU-other-user
    {1, 1},                // 26: 0-length PSDU
    {2, 4},                // 27: L-SIG
}};

enum class Outcome { Done, UnknownField, Malformed };

Outcome readField(unsigned bit, ByteCursor& data, RadioInfo& info) {
    if (bit >= kFields.size()) return Outcome::UnknownField;
    const Field& field = kFields[bit];
    if (!skipToAlignment(data, field.alignment)) return Outcome::Malformed;
    const auto bytes = data.take(field.size);
    if (!bytes) return Outcome::Malformed;
    if (field.read) field.read(*bytes, info);
    return Outcome::Done;
}

// Reads the fields of one presence word, whose lowest bit has the number `firstBit` in its
// namespace.
Outcome readFields(std::uint32_t word, unsigned firstBit, ByteCursor& data, RadioInfo& info) {
    for (std::uint32_t left = word & kFieldBits; left != 0; left &= left - 1) {
        const auto bit = firstBit + static_cast<unsigned>(std::countr_zero(left));
        const Outcome outcome = readField(bit, data, info);
        if (outcome != Outcome::Done) return outcome;
    }
    return Outcome::Done;
}

// A vendor namespace is an OUI (3), a sub-namespace (1), a length (2) and that many bytes. They
// contain all fields of the vendor's own presence words.
bool skipVendorData(ByteCursor& data) {
    if (!skipToAlignment(data, 2) || !data.skip(4)) return false;
    const auto length = data.u16le();
    return length && data.skip(*length);
}

bool skipPresenceWords(ByteCursor& cursor) {
    for (;;) {
        const auto word = cursor.u32le();
        if (!word) return false;
        if (!(*word & kMoreWords)) return true;
    }
}

// Reads the fields at `data` that the words at `words` announce. UnknownField: the positions of the
// remaining fields are unknown; the fields before them have been read.
Outcome walk(ByteCursor words, ByteCursor data, RadioInfo& info) {
    bool isVendor = false;
    unsigned firstBit = 0;
    while (const auto word = words.u32le()) {
        if (!isVendor) {
            const Outcome outcome = readFields(*word, firstBit, data, info);
            if (outcome != Outcome::Done) return outcome;
        }
        firstBit += kBitsPerWord;
        if (*word & kRadiotapNamespace) {
            isVendor = false;
            firstBit = 0;
        }
        if (*word & kVendorNamespace) {
            isVendor = true;
            if (!skipVendorData(data)) return Outcome::Malformed;
        }
        if (!(*word & kMoreWords)) break;
    }
    return Outcome::Done;
}

// Reads the version (0), a pad octet, and the length of the whole header.
std::optional<std::size_t> headerLength(std::span<const std::uint8_t> packet) {
    ByteCursor cursor(packet);
    const auto version = cursor.u8();
    if (version != 0 || !cursor.skip(1)) return std::nullopt;
    return cursor.u16le();
}

}  // namespace

bool readRadiotapHeader(std::span<const std::uint8_t> packet, RadioInfo& info) {
    constexpr std::size_t kBeforeWords = 4;  // the version, the pad octet and the length
    const auto length = headerLength(packet);
    const auto split = length ? splitPacket(packet, *length) : std::nullopt;
    if (!split) return false;

    ByteCursor words = split->header;
    ByteCursor data = split->header;
    if (!words.skip(kBeforeWords) || !data.skip(kBeforeWords)) return false;
    if (!skipPresenceWords(data)) return false;
    info.frame = split->frame;
    return walk(words, data, info) != Outcome::Malformed;
}

}  // namespace halvane::capture
