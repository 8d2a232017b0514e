// A radio as nl80211 describes it (a "wiphy" of <linux/nl80211.h>): its bands and channels, and
// what networks it can host.
//
// Plain values. Threads: as for a standard container.
#ifndef TOOLS_HALVANED_RADIO_RADIO_H
#define TOOLS_HALVANED_RADIO_RADIO_H

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "halvane/air/channel.h"
#include "halvane/air/he_phy_capabilities.h"
#include "halvane/base/mac_address.h"

#include "tools/halvane/input/wireless_interface.h"

namespace halvane::hosting {

// A channel of 20 MHz, with what the regulatory domain allows now.
struct RadioChannel {
    std::uint32_t frequency = 0;               // MHz, of its centre
    std::uint32_t frequencyOffset = 0;         // kHz above it
    std::optional<std::uint32_t> mostPower{};  // hundredths of a dBm
    bool isDisabled = false;
    bool isPassive = false;  // nobody may send first there (no-IR)
    bool isRadarProne = false;
    bool isIndoorOnly = false;
    bool hasNoUpper40 = false;  // no 40 MHz channel with the secondary channel above
    bool hasNoLower40 = false;
    bool hasNo80 = false;
    bool hasNo160 = false;

    std::uint64_t kilohertz() const { return std::uint64_t{frequency} * 1000 + frequencyOffset; }
    // Absent for a frequency without a number.
    std::optional<air::Channel> channel() const;
    // Whether a network may be hosted there. Radar-prone channels are passive too until they have
    // been found free of radar.
    bool canHost() const { return !isDisabled && (!isPassive || isRadarProne); }

    bool operator==(const RadioChannel&) const = default;
};

struct RadioBand {
    std::map<std::uint64_t, RadioChannel> channels{};  // by kilohertz()
    // HT Capability Information and VHT Capabilities Information (IEEE 802.11-2020, 9.4.2.55.2 and
    // 9.4.2.157.2). Absent for a radio without HT or VHT.
    std::optional<std::uint16_t> ht{};
    std::optional<std::uint32_t> vht{};
    // Of an access point.
    std::optional<air::HePhyCapabilities> he{};
    bool hasEHT = false;
    // Of all its sets of MCS. Absent if it has none.
    std::optional<unsigned> streams{};

    // Whether the channel can be a part of one of 40 or 80 MHz. A channel that cannot be used is
    // part of none.
    bool allows40(const RadioChannel& channel) const;
    bool allows80(const RadioChannel& channel) const;

    bool operator==(const RadioBand&) const = default;
};

struct Radio {
    std::uint32_t index = 0;
    std::string name{};                            // "phy0"
    std::map<std::uint16_t, RadioBand> bands{};    // by the kernel's number (NL80211_BAND_...)
    std::set<tool::InterfaceMode> modes{};         // that its interfaces can have
    std::optional<std::uint32_t> mostAPs{};        // at the same time, by its combinations
    std::vector<std::uint32_t> ciphers{};          // suite selectors: 0x000FAC04 is CCMP
    std::optional<std::uint32_t> sendingChains{};  // one bit each
    std::optional<std::uint32_t> receivingChains{};
    std::optional<std::uint16_t> mostStations{};  // of an access point
    bool hasOwnRegulatoryDomain = false;
    // What the system's files tell beside nl80211.
    std::optional<MacAddress> address{};
    std::string driver{};  // of the kernel; empty if it is not known

    // Adds what another message tells of the same radio. What both tell, `part` tells anew.
    void join(Radio part);

    // At least 1.
    unsigned chains() const;
    bool canHost() const { return modes.contains(tool::InterfaceMode::AP); }
    // The networks (BSS) that it can host at the same time. 0 if it cannot host.
    unsigned mostNetworks() const;

    bool operator==(const Radio&) const = default;
};

}  // namespace halvane::hosting

#endif
