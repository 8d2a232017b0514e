#include "halvane/capture/radio_header.h"

#include "halvane/capture/radio_header_internal.h"

namespace halvane::capture {

std::optional<LinkType> linkTypeOfNumber(int number) {
    for (const LinkType linkType :
         {LinkType::IEEE80211, LinkType::Prism, LinkType::Radiotap, LinkType::AVS, LinkType::PPI}) {
        if (static_cast<int>(linkType) == number) return linkType;
    }
    return std::nullopt;
}

std::optional<RadioInfo> parseRadioHeader(LinkType linkType, std::span<const std::uint8_t> packet) {
    switch (linkType) {
        case LinkType::IEEE80211:
            return RadioInfo{.frame = packet};
        case LinkType::Prism:
            return parsePrismHeader(packet);
        case LinkType::Radiotap:
            return parseRadiotapHeader(packet);
        case LinkType::AVS:
            return parseAVSHeader(packet);
        case LinkType::PPI:
            return parsePPIHeader(packet);
    }
    return std::nullopt;
}

}  // namespace halvane::capture
