#include "tools/halvane/output/reason_code.h"

#include <algorithm>
#include <iterator>

namespace halvane::tool {

namespace {

struct Reason {
    std::uint64_t code;
    const char* brief;
    const char* whole;  // the words of table 9-49
};

constexpr Reason kReasons[] = {
    {1, "unspecified", "Unspecified reason"},
    {2, "authentication expired", "Previous authentication no longer valid"},
    {3, "leaving", "Deauthenticated because sending STA is leaving (or has left) the BSS"},
    {4, "inactive", "Disassociated due to inactivity"},
    {5, "AP is full", "Disassociated because AP is unable to handle all currently associated STAs"},
    {6, "not authenticated", "Class 2 frame received from nonauthenticated STA"},
    {7, "not associated", "Class 3 frame received from nonassociated STA"},
    {8, "leaving", "Disassociated because sending STA is leaving (or has left) BSS"},
    {9, "not authenticated",
     "STA requesting (re)association is not authenticated with responding STA"},
    {10, "power capability",
     "Disassociated because the information in the Power Capability element is unacceptable"},
    {11, "supported channels",
     "Disassociated because the information in the Supported Channels element is unacceptable"},
    {12, "BSS transition", "Disassociated due to BSS transition management"},
    {13, "invalid element", "Invalid element"},
    {14, "MIC failure", "Message integrity code (MIC) failure"},
    {15, "4-way handshake timeout", "4-way handshake timeout"},
    {16, "group key timeout", "Group key handshake timeout"},
    {17, "element differs",
     "Element in 4-way handshake different from (Re)Association Request/Probe Response/Beacon "
     "frame"},
    {18, "invalid group cipher", "Invalid group cipher"},
    {19, "invalid pairwise cipher", "Invalid pairwise cipher"},
    {20, "invalid AKMP", "Invalid AKMP"},
    {21, "RSNE version", "Unsupported RSNE version"},
    {22, "RSNE capabilities", "Invalid RSNE capabilities"},
    {23, "802.1X failed", "IEEE 802.1X authentication failed"},
    {24, "cipher refused", "Cipher suite rejected because of the security policy"},
    {32, "QoS", "Disassociated for unspecified, QoS-related reason"},
    {33, "no bandwidth",
     "Disassociated because QoS AP lacks sufficient bandwidth for this QoS STA"},
    {34, "poor channel",
     "Disassociated because excessive number of frames need to be acknowledged, but are not "
     "acknowledged due to AP transmissions and/or poor channel conditions"},
    {35, "outside its TXOPs",
     "Disassociated because STA is transmitting outside the limits of its TXOPs"},
    {36, "leaving", "Requesting STA is leaving the BSS (or resetting)"},
    {39, "timeout", "Requesting STA is disassociated due to timeout"},
    {45, "cipher not supported", "Peer STA does not support the requested cipher suite"},
};

}  // namespace

std::string reasonText(std::uint64_t code, bool isBrief) {
    const auto* const reason = std::ranges::find(kReasons, code, &Reason::code);
    std::string text = std::to_string(code);
    if (reason == std::end(kReasons)) return text;
    return text.append(" ").append(isBrief ? reason->brief : reason->whole);
}

}  // namespace halvane::tool
