#include "halvane/capture/radio_header.h"

#include "halvane/capture/radio_header_internal.h"

namespace halvane::capture {

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
