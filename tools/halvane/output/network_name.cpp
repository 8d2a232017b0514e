#include "tools/halvane/output/network_name.h"

#include <string>

namespace halvane::tool {

ShownText networkName(const air::BssProfile& profile, const TextRules& rules) {
    if (!profile.ssid) {
        ShownText text;
        text.append("(no name)");
        return text;
    }
    const auto octets = (*profile.ssid)->bytes();
    return shownName(std::string(octets.begin(), octets.end()), rules);
}

}  // namespace halvane::tool
