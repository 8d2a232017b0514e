// Networks made by hand.
#ifndef TESTS_TOOLS_NETWORKS_NETWORKS_FOR_TESTS_H
#define TESTS_TOOLS_NETWORKS_NETWORKS_FOR_TESTS_H

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include "halvane/air/channel.h"
#include "halvane/air/rule.h"
#include "halvane/air/security.h"
#include "halvane/base/mac_address.h"
#include "halvane/base/ssid.h"

#include "tools/halvane/input/maker_list.h"
#include "tools/halvane/networks/network_columns.h"
#include "tools/halvane/output/glyphs.h"
#include "tools/halvane/survey/network.h"
#include "tools/halvane/survey/network_statistics.h"

namespace halvane::testing {

template <typename T>
air::Derived<T> derived(T value) {
    air::Derived<T> result{};
    result.value = value;
    return result;
}

struct MadeNetwork {
    std::string_view name;
    std::uint8_t lastOctet = 1;
    std::optional<int> signal{};
    air::Band band = air::Band::Ghz2;
    int channel = 1;
    air::Security security = air::Security::Wpa2Personal;
};

// Makes networks, whose statistics it owns.
class NetworkMaker {
  public:
    tool::Network make(const MadeNetwork& made) {
        statistics_.emplace_back(tool::HeardFrame{.number = 1, .signal = made.signal});
        tool::Network network;
        network.bssid = MacAddress({0x02, 0, 0, 0, 0, made.lastOctet});
        network.statistics = &statistics_.back();
        network.profile.ssid = derived(Ssid::fromText(made.name).value_or(Ssid()));
        network.profile.isHidden = made.name.empty();
        network.profile.channel.band = derived(made.band);
        network.profile.channel.primaryChannel = derived(made.channel);
        network.profile.security.name.value = made.security;
        return network;
    }

  private:
    std::deque<tool::NetworkStatistics> statistics_;
};

// Cells of ASCII, and a register of makers without entries.
inline tool::CellSurroundings asciiSurroundings() {
    return {.glyphs = tool::glyphsOf(tool::GlyphSet::ASCII),
            .rules = {.isASCII = true},
            .makers = []() -> const tool::MakerList& {
                static const tool::MakerList none;
                return none;
            }};
}

}  // namespace halvane::testing

#endif
