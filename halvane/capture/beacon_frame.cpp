#include "halvane/capture/beacon_frame.h"

#include <algorithm>
#include <optional>

#include "halvane/base/byte_cursor.h"
#include "halvane/capture/beacon_frame_internal.h"

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

std::optional<BeaconSubtype> subtypeOf(std::uint8_t kind) {
    if (kind == kBeacon) return BeaconSubtype::Beacon;
    if (kind == kProbeResponse) return BeaconSubtype::ProbeResponse;
    return std::nullopt;
}

// Reads the frame after Frame Control: 9.3.3.1 (the management header), then 9.3.3.2 and 9.3.3.10.
// Returns why it is skipped, if it is.
std::optional<SkipReason> readRest(ByteCursor& cursor, std::uint8_t flags, BeaconFrame& beacon) {
    if (flags & kMoreFragments) return SkipReason::Fragment;
    if (!cursor.skip(2 + 2 * MacAddress::kSize)) return SkipReason::Short;  // duration, addresses
    const auto bssid = cursor.take(MacAddress::kSize);
    const auto sequenceControl = cursor.u16le();
    if (!sequenceControl) return SkipReason::Short;
    if (*sequenceControl & kFragmentNumber) return SkipReason::Fragment;
    if (flags & kProtected) return SkipReason::Encrypted;
    if ((flags & kHasHTControl) && !cursor.skip(kHTControlSize)) return SkipReason::Short;

    if (!cursor.skip(kTimestampSize)) return SkipReason::Short;
    const auto interval = cursor.u16le();
    const auto capabilities = cursor.u16le();
    if (!capabilities) return SkipReason::Short;
    MacAddress::Octets octets{};  // in registers, unlike the optional that fromBytes() returns
    std::ranges::copy(*bssid, octets.begin());
    beacon.bssid = MacAddress(octets);
    beacon.beaconInterval = *interval;
    beacon.capabilities = *capabilities;
    beacon.elementsOffset = cursor.position();
    beacon.elements = cursor.rest();
    return std::nullopt;
}

}  // namespace

void readBeaconFrame(std::span<const std::uint8_t> frame,
                     Result<BeaconFrame, SkipReason>& content) {
    ByteCursor cursor(frame);
    const auto kind = cursor.u8();
    const auto flags = cursor.u8();
    const auto subtype = flags ? subtypeOf(*kind) : std::nullopt;
    if (!subtype) {
        content = Unexpected(flags ? SkipReason::OtherFrame : SkipReason::Short);
        return;
    }
    if (!content) content = BeaconFrame();
    content->subtype = *subtype;
    content->isCut = false;
    if (const auto reason = readRest(cursor, *flags, *content)) content = Unexpected(*reason);
}

Result<BeaconFrame, SkipReason> parseBeaconFrame(std::span<const std::uint8_t> frame) {
    Result<BeaconFrame, SkipReason> content = Unexpected(SkipReason::OtherFrame);
    readBeaconFrame(frame, content);
    return content;
}

}  // namespace halvane::capture
