#include "tools/halvane/input/link_type_name.h"

#include <utility>

#include "tools/halvane/input/libpcap.h"

namespace halvane::tool {

std::string linkTypeName(int linkType) {
    const char* const name = libpcap().pcap_datalink_val_to_name(linkType);
    const char* const description = libpcap().pcap_datalink_val_to_description(linkType);
    std::string text = name ? name : std::to_string(linkType);
    if (description) text += std::string(" (") + description + ")";
    return text;
}

std::string notWiFiText(int linkType) {
    return "its frames are not 802.11, but of link type " + linkTypeName(linkType);
}

ReadingFault notWiFiFault(int linkType) {
    const char* const description = libpcap().pcap_datalink_val_to_description(linkType);
    const std::string number = "link type " + std::to_string(linkType);
    std::string text =
        description ? std::string("holds ") + description + " frames, no 802.11 (" + number + ')'
                    : "holds frames of " + number + ", no 802.11";
    return {std::move(text), "capture in monitor mode: sudo iw dev wlan1 set type monitor"};
}

}  // namespace halvane::tool
