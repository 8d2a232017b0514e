// Parses the Per-Packet Information header (PPI specification 1.0.7): a little-endian list of
// fields, each with a type and a length.
#include <cstdint>
#include <optional>
#include <span>

#include "halvane/base/byte_cursor.h"
#include "halvane/capture/link_type.h"
#include "halvane/capture/radio_header.h"
#include "halvane/capture/radio_header_internal.h"

namespace halvane::capture {

namespace {

constexpr std::uint8_t kVersion = 0;
constexpr std::uint8_t kFieldsAre32BitAligned = 0x01;
constexpr std::uint16_t kCommonFieldType = 2;  // 802.11-Common
constexpr std::uint16_t kCommonFieldSize = 20;

// The flags of 802.11-Common. Bit 1 tells the unit of its timer.
constexpr std::uint16_t kFCSPresent = 0x0001;
constexpr std::uint16_t kFCSInvalid = 0x0004;
constexpr std::uint16_t kPHYError = 0x0008;

constexpr int kUnmeasuredLevel = -128;

void storeLevel(std::optional<std::uint8_t> byte, std::optional<int>& slot) {
    const int level = static_cast<std::int8_t>(byte.value_or(0));
    if (level != kUnmeasuredLevel) setIfAbsent(slot, level);
}

void readCommonField(ByteCursor field, RadioInfo& info) {
    field.skip(8);  // timer
    const std::uint16_t flags = field.u16le().value_or(0);
    if (flags & kFCSPresent) info.hasFCS = true;
    if (flags & (kFCSInvalid | kPHYError)) info.isBadFCS = true;
    field.skip(2);  // rate
    const int frequency = field.u16le().value_or(0);
    if (frequency > 0) setIfAbsent(info.frequencyMHz, frequency);
    field.skip(4);  // channel flags, hop set and pattern
    storeLevel(field.u8(), info.signalDBm);
    storeLevel(field.u8(), info.noiseDBm);
}

// Reads one field. Returns false if it does not fit into the header.
bool readField(ByteCursor& header, bool isAligned, RadioInfo& info) {
    const auto type = header.u16le();
    const auto size = header.u16le();
    if (!size) return false;
    const auto body = header.take(*size);
    if (!body) return false;
    if (type == kCommonFieldType && *size >= kCommonFieldSize) {
        readCommonField(ByteCursor(*body), info);
    }
    // The last field may lack its padding.
    if (isAligned && !skipToAlignment(header, 4)) header.rest();
    return true;
}

}  // namespace

bool readPPIHeader(std::span<const std::uint8_t> packet, RadioInfo& info) {
    ByteCursor start(packet);
    const auto version = start.u8();
    const auto flags = start.u8();
    const auto length = start.u16le();
    const auto linkType = start.u32le();
    if (version != kVersion || !linkType) return false;
    if (*linkType != static_cast<std::uint32_t>(LinkType::IEEE80211)) return false;

    auto split = splitPacket(packet, *length);
    if (!split || !split->header.skip(start.position())) return false;
    info.frame = split->frame;
    while (!split->header.atEnd()) {
        if (!readField(split->header, *flags & kFieldsAre32BitAligned, info)) return false;
    }
    return true;
}

}  // namespace halvane::capture
