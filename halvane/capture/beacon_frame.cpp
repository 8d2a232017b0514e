#include "halvane/capture/beacon_frame.h"

#include "halvane/base/byte_cursor.h"

namespace halvane::capture {

namespace {

// IEEE 802.11-2020 9.2.4.1, Frame Control: protocol version (bits 0-1), type (2-3) and subtype
// (4-7) in its first octet, flags in its second.
constexpr std::uint8_t kBeacon = 0x80;         // version 0, management, subtype 8
constexpr std::uint8_t kProbeResponse = 0x50;  // version 0, management, subtype 5
constexpr std::uint8_t kMoreFragments = 0x04;
constexpr std::uint8_t kProtected = 0x40;
constexpr std::uint8_t kHasHTControl = 0x80;  // +HTC/Order, in a management frame

constexpr std::size_t kTimestampSize = 8;
constexpr std::size_t kHTControlSize = 4;
constexpr std::uint16_t kFragmentNumber = 0x000F;  // of the Sequence Control field, 9.2.4.4

// Reads the frame after Frame Control: 9.3.3.1 (the management header), then 9.3.3.2 and 9.3.3.10.
Result<BeaconFrame, SkipReason> readRest(ByteCursor& cursor, BeaconSubtype subtype,
                                         std::uint8_t flags) {
    if (flags & kMoreFragments) return Unexpected(SkipReason::Fragment);
    if (!cursor.skip(2 + 2 * MacAddress::kSize))
        return Unexpected(SkipReason::Short);  // duration, addresses 1, 2
    const auto bssid = cursor.take(MacAddress::kSize);
    const auto sequenceControl = cursor.u16le();
    if (!sequenceControl) return Unexpected(SkipReason::Short);
    if (*sequenceControl & kFragmentNumber) return Unexpected(SkipReason::Fragment);
    if (flags & kProtected) return Unexpected(SkipReason::Encrypted);
    if ((flags & kHasHTControl) && !cursor.skip(kHTControlSize))
        return Unexpected(SkipReason::Short);

    if (!cursor.skip(kTimestampSize)) return Unexpected(SkipReason::Short);
    const auto interval = cursor.u16le();
    const auto capabilities = cursor.u16le();
    if (!capabilities) return Unexpected(SkipReason::Short);
    const std::size_t elementsOffset = cursor.position();
    return BeaconFrame{.subtype = subtype,
                       .bssid = MacAddress::fromBytes(*bssid).value_or(MacAddress()),
                       .beaconInterval = *interval,
                       .capabilities = *capabilities,
                       .elements = cursor.rest(),
                       .elementsOffset = elementsOffset};
}

}  // namespace

Result<BeaconFrame, SkipReason> parseBeaconFrame(std::span<const std::uint8_t> frame) {
    ByteCursor cursor(frame);
    const auto kind = cursor.u8();
    const auto flags = cursor.u8();
    if (!flags) return Unexpected(SkipReason::Short);
    if (*kind == kBeacon) return readRest(cursor, BeaconSubtype::Beacon, *flags);
    if (*kind == kProbeResponse) return readRest(cursor, BeaconSubtype::ProbeResponse, *flags);
    return Unexpected(SkipReason::OtherFrame);
}

}  // namespace halvane::capture
