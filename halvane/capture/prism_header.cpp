// Parses the Prism header, in the byte order of the capturing host, and its successor, the AVS
// header, which is always big-endian.
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "halvane/base/byte_cursor.h"
#include "halvane/capture/radio_header.h"
#include "halvane/capture/radio_header_internal.h"

namespace halvane::capture {

namespace {

// The message codes of a received frame. Later drivers use the second. The low byte of each item's
// identifier repeats the code.
constexpr std::uint32_t kMessageCode = 0x0044;
constexpr std::uint32_t kLaterMessageCode = 0x0041;

constexpr std::size_t kLeadSize = 8;  // message code and length
constexpr std::size_t kDeviceNameSize = 16;
constexpr std::size_t kValueSize = 4;
constexpr std::uint16_t kStatusSupplied = 0;
constexpr int kLastChannelNumber = 255;

// A cursor over fields in the header's byte order.
struct HostOrderCursor {
    ByteCursor cursor;
    bool isBigEndian;

    std::optional<std::uint16_t> u16() { return isBigEndian ? cursor.u16be() : cursor.u16le(); }
    std::optional<std::uint32_t> u32() { return isBigEndian ? cursor.u32be() : cursor.u32le(); }
};

void storeChannel(std::int32_t value, std::optional<int>& slot) {
    if (value > 0 && value <= kLastChannelNumber) setIfAbsent(slot, value);
}

// The header does not state the unit, and many drivers give a count of their own, from 0 up. Only a
// negative level can be in dBm.
void storeLevel(std::int32_t value, std::optional<int>& slot) {
    if (value < 0 && value >= INT8_MIN) setIfAbsent(slot, value);
}

struct Item {
    std::uint32_t identifier;
    std::optional<int> RadioInfo::*slot;
    void (*store)(std::int32_t value, std::optional<int>& slot);
};

// RSSI (0x00040044) is ignored: it has no unit.
constexpr std::array<Item, 6> kItems = {{
    {0x00030044, &RadioInfo::channel, storeChannel},
    {0x00003041, &RadioInfo::channel, storeChannel},
    {0x00060044, &RadioInfo::signalDBm, storeLevel},
    {0x00006041, &RadioInfo::signalDBm, storeLevel},
    {0x00070044, &RadioInfo::noiseDBm, storeLevel},
    {0x00007041, &RadioInfo::noiseDBm, storeLevel},
}};

void storeItem(std::uint32_t identifier, std::uint32_t value, RadioInfo& info) {
    for (const Item& item : kItems) {
        if (item.identifier == identifier) {
            item.store(static_cast<std::int32_t>(value), info.*item.slot);
        }
    }
}

// Reads one item of 12 bytes: identifier, status, length of the value, and value. Returns false if
// it does not fit into the header.
bool readItem(HostOrderCursor& header, RadioInfo& info) {
    const auto identifier = header.u32();
    const auto status = header.u16();
    const auto length = header.u16();
    const auto value = header.u32();
    if (!value) return false;
    if (status == kStatusSupplied && length == kValueSize) storeItem(*identifier, *value, info);
    return true;
}

bool isMessageCode(std::optional<std::uint32_t> code) {
    return code && (*code == kMessageCode || *code == kLaterMessageCode);
}

// If the packet starts with a message code, returns whether it is big-endian; otherwise absent.
std::optional<bool> isBigEndianMessage(ByteCursor packet) {
    ByteCursor other = packet;
    if (isMessageCode(packet.u32le())) return false;
    if (isMessageCode(other.u32be())) return true;
    return std::nullopt;
}

bool startsWithAVSMagic(ByteCursor packet) {
    const auto magic = packet.u32be();
    return magic && (*magic & kAVSMagicMask) == kAVSMagic;
}

// The AVS channel field is a number, a frequency in MHz, or a frequency in kHz, depending on the
// driver.
void storeAVSChannel(std::uint32_t value, RadioInfo& info) {
    constexpr std::uint32_t kFirstKHz = 10000;
    if (value == 0) return;
    if (value <= kLastChannelNumber) {
        info.channel = static_cast<int>(value);
    } else {
        info.frequencyMHz = static_cast<int>(value < kFirstKHz ? value : value / 1000);
    }
}

// Stores a level that can be in dBm.
void storeAVSLevel(std::uint32_t value, std::optional<int>& slot) {
    const auto level = static_cast<std::int32_t>(value);
    if (level >= INT8_MIN && level <= INT8_MAX) slot = level;
}

}  // namespace

bool readPrismHeader(std::span<const std::uint8_t> packet, RadioInfo& info) {
    if (startsWithAVSMagic(ByteCursor(packet))) return readAVSHeader(packet, info);

    const auto isBigEndian = isBigEndianMessage(ByteCursor(packet));
    if (!isBigEndian) return false;
    HostOrderCursor start{ByteCursor(packet), *isBigEndian};
    start.cursor.skip(4);  // the message code
    const auto length = start.u32();
    if (!length) return false;

    auto split = splitPacket(packet, *length);
    if (!split || !split->header.skip(kLeadSize + kDeviceNameSize)) return false;
    info.frame = split->frame;
    HostOrderCursor items{split->header, *isBigEndian};
    while (!items.cursor.atEnd()) {
        if (!readItem(items, info)) return false;
    }
    return true;
}

bool readAVSHeader(std::span<const std::uint8_t> packet, RadioInfo& info) {
    constexpr std::size_t kSmallestLength = 64;
    constexpr std::uint32_t kSignalInDBm = 2;  // 1: normalised, 3: raw counts
    ByteCursor start(packet);
    if (!startsWithAVSMagic(start) || !start.skip(4)) return false;
    const auto length = start.u32be();
    if (!length || *length < kSmallestLength) return false;
    auto split = splitPacket(packet, *length);
    if (!split) return false;

    info.frame = split->frame;
    ByteCursor& header = split->header;
    header.skip(28);  // magic, length, MAC time, host time, PHY type
    storeAVSChannel(header.u32be().value_or(0), info);
    header.skip(12);  // data rate, antenna, priority
    const auto signalType = header.u32be();
    const auto signal = header.u32be();
    const auto noise = header.u32be();
    if (signalType != kSignalInDBm) return true;
    storeAVSLevel(signal.value_or(0), info.signalDBm);
    // A card that does not measure the noise gives 0.
    if (noise != 0u) storeAVSLevel(noise.value_or(0), info.noiseDBm);
    return true;
}

}  // namespace halvane::capture
