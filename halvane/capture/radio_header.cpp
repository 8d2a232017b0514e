#include "halvane/capture/radio_header.h"

#include <utility>

#include "halvane/capture/radio_header_internal.h"

namespace halvane::capture {

bool readRadioHeader(LinkType linkType, std::span<const std::uint8_t> packet, RadioInfo& info) {
    switch (linkType) {
        case LinkType::IEEE80211:
            info.frame = packet;
            return true;
        case LinkType::Prism:
            return readPrismHeader(packet, info);
        case LinkType::Radiotap:
            return readRadiotapHeader(packet, info);
        case LinkType::AVS:
            return readAVSHeader(packet, info);
        case LinkType::PPI:
            return readPPIHeader(packet, info);
    }
    return false;
}

std::optional<RadioInfo> parseRadioHeader(LinkType linkType, std::span<const std::uint8_t> packet) {
    std::optional<RadioInfo> info(std::in_place);
    if (!readRadioHeader(linkType, packet, *info)) info.reset();
    return info;
}

}  // namespace halvane::capture
