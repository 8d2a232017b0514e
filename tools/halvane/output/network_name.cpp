#include "tools/halvane/output/network_name.h"

#include <string>

namespace halvane::tool {

ShownText shownNameless(bool isCut) {
    ShownText text;
    text.append(isCut ? "(cut)" : "(no name)");
    return text;
}

ShownText networkName(const air::BssProfile& profile, const TextRules& rules) {
    if (!profile.ssid) return shownNameless(profile.isCut);
    const auto octets = (*profile.ssid)->bytes();
    return shownName(std::string(octets.begin(), octets.end()), rules);
}

ShownText networkName(const Network& network, const TextRules& rules) {
    return network.details.meshID ? shownMesh(nameOf(network), rules)
                                  : networkName(network.profile, rules);
}

}  // namespace halvane::tool
