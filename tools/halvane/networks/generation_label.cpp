#include "tools/halvane/networks/generation_label.h"

#include "halvane/air/channel.h"
#include "halvane/air/generation.h"

namespace halvane::tool {

namespace {

bool isIn(const Network& network, air::Band band) {
    const auto& told = network.profile.channel.band;
    return told && told->value == band;
}

}  // namespace

std::string_view generationLabel(const Network& network) {
    if (!tellsGeneration(network)) return "-";
    switch (network.profile.generation.value) {
        case air::Generation::WiFi7:
            return "7";
        case air::Generation::WiFi6:
            return isIn(network, air::Band::Ghz6) ? "6E" : "6";
        case air::Generation::WiFi5:
            return "5";
        case air::Generation::WiFi4:
            return "4";
        case air::Generation::Legacy:
            break;
    }
    if (!network.details.hasOFDM) return "b";
    return isIn(network, air::Band::Ghz2) ? "g" : "a";
}

}  // namespace halvane::tool
