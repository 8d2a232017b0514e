#include "tools/halvane/input/link_type_name.h"

#include <pcap/pcap.h>

namespace halvane::tool {

std::string linkTypeName(int linkType) {
    const char* const name = pcap_datalink_val_to_name(linkType);
    const char* const description = pcap_datalink_val_to_description(linkType);
    std::string text = name ? name : std::to_string(linkType);
    if (description) text += std::string(" (") + description + ")";
    return text;
}

std::string notWiFiText(int linkType) {
    return "its frames are not 802.11, but of link type " + linkTypeName(linkType);
}

}  // namespace halvane::tool
