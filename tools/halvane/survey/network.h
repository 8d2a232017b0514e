// A network that was heard, with everything that the tool tells of it.
//
// Plain values and a pure function. Threads: as for a standard container.
#ifndef TOOLS_HALVANE_SURVEY_NETWORK_H
#define TOOLS_HALVANE_SURVEY_NETWORK_H

#include <optional>
#include <string_view>

#include "halvane/air/bss_profile.h"
#include "halvane/base/mac_address.h"
#include "halvane/base/number.h"
#include "halvane/capture/folded_sighting.h"
#include "halvane/capture/frame_record.h"

#include "tools/halvane/survey/network_details.h"
#include "tools/halvane/survey/network_moment.h"
#include "tools/halvane/survey/network_statistics.h"

namespace halvane::tool {

struct Network {
    MacAddress bssid{};
    air::BssProfile profile{};
    NetworkDetails details{};
    std::optional<Number> beaconInterval{};  // TU (1.024 ms)
    // Borrowed. Those of the network that sent the frames, if others tell of this one.
    const NetworkStatistics* statistics = nullptr;
    // Borrowed; null if only the frames of another network tell of this one (Multiple BSSID).
    const capture::FoldedSighting* heard = nullptr;
    // Borrowed; null where the list is not one of now.
    const NetworkMoment* moment = nullptr;
};

// The octets of the network's name; of the mesh's, if it is one. Valid as long as the network.
std::string_view nameOf(const Network& network);

// Whether the network keeps its name to itself: it is empty or zeros, or there is none that can be
// read. A mesh has another name.
bool isHidden(const Network& network);

// Whether the name was cut off its frame, so that nobody knows whether there is one.
bool isNameCutOff(const Network& network);

// Whether it has a name that can be told.
bool isNamed(const Network& network);

// MHz; absent if the network does not tell it, not even by being one of 20 MHz.
std::optional<int> widthOf(const Network& network);

// Whether something tells the generation: capabilities, or the rates of an older network.
bool tellsGeneration(const Network& network);

// The network's signal now, or else the median of all its frames, dBm.
std::optional<int> signalOf(const Network& network);

// Returns the network of a sighting; `heard` is left null.
Network networkOf(const MacAddress& bssid, const capture::Sighting& sighting,
                  const NetworkStatistics* statistics);

}  // namespace halvane::tool

#endif
