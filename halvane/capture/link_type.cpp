#include "halvane/capture/link_type.h"

namespace halvane::capture {

std::optional<LinkType> linkTypeOfNumber(int number) {
    for (const LinkType linkType :
         {LinkType::IEEE80211, LinkType::Prism, LinkType::Radiotap, LinkType::AVS, LinkType::PPI}) {
        if (static_cast<int>(linkType) == number) return linkType;
    }
    return std::nullopt;
}

}  // namespace halvane::capture
