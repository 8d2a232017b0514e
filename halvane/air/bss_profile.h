// The profile of a BSS: what profileOf() derives.
//
// Plain values. Threads: as for a standard container.
#ifndef HALVANE_AIR_BSS_PROFILE_H
#define HALVANE_AIR_BSS_PROFILE_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "halvane/air/channel_use.h"
#include "halvane/air/feature.h"
#include "halvane/air/finding.h"
#include "halvane/air/generation.h"
#include "halvane/air/max_rates.h"
#include "halvane/air/neighbor.h"
#include "halvane/air/rule.h"
#include "halvane/air/security.h"
#include "halvane/air/source.h"
#include "halvane/air/suite.h"
#include "halvane/base/mac_address.h"
#include "halvane/base/ssid.h"

namespace halvane::air {

// The fields before the elements (IEEE 802.11-2020, 9.4.1.3 and 9.4.1.4), and the sender.
struct FixedFields {
    MacAddress bssid{};
    std::uint16_t capabilities = 0;
    std::uint16_t beaconInterval = 0;  // TU; 0: not known
};

// What the receiving radio knows.
struct RadioHint {
    std::optional<int> frequency{};  // MHz, of the channel on which it listened
    std::optional<int> signal{};     // dBm
    bool isCut = false;              // the capture kept only the start of the frame
};

struct SecurityProfile {
    Derived<Security> name{};
    SuiteSet akms{};             // of RSN, its overrides and WPA
    SuiteSet pairwiseCiphers{};  // of RSN, otherwise of WPA
    std::optional<Suite> groupCipher{};
    std::optional<Suite> groupManagementCipher{};
    Derived<Pmf> pmf{};
};

struct BssLoadProfile {
    int stations = 0;
    int utilization = 0;        // of 255
    int admissionCapacity = 0;  // 32 us/s
};

struct CountryProfile {
    std::string code{};                   // two letters, or what stands in their place, escaped
    std::optional<char> environment{};    // 'I' indoor, 'O' outdoor; absent for both
    std::optional<int> operatingTable{};  // number of the table of Annex E, if it tells one
};

// A link of a multi-link device.
struct MldLink {
    int id = 0;
    std::optional<MacAddress> address{};  // the BSSID of the link
    bool isReporting = false;             // the link that sent the frame
};

struct MldProfile {
    MacAddress address{};
    std::vector<MldLink> links{};
    Sources sources{};
};

struct NontransmittedBss;

struct BssProfile {
    std::optional<Derived<Ssid>> ssid{};  // absent where missing or longer than 32 octets
    bool isHidden = false;                // the name is empty or zeros
    // The capture kept only the start of the frame (RadioHint). What it does not tell was perhaps
    // cut off: nothing is derived from its absence, and no finding rests on it.
    bool isCut = false;
    ChannelUse channel{};
    Derived<Generation> generation{};
    MaxRates rates{};  // none if the width is not told
    SecurityProfile security{};
    std::optional<Derived<CountryProfile>> country{};
    std::optional<Derived<BssLoadProfile>> load{};
    std::optional<Derived<int>> dtimPeriod{};  // beacons
    Features features{};
    Neighbors neighbors{};
    std::optional<MldProfile> mld{};
    std::optional<int> maxBssidIndicator{};  // of Multiple BSSID
    std::vector<NontransmittedBss> nontransmitted;
    std::vector<Finding> findings{};  // the worst first

    // The streams of the latest generation's highest rate; 0 if there is none.
    int streams() const {
        const auto* const rate = rates.latest();
        return rate != nullptr ? (*rate)->inputs.streams : 0;
    }
};

// A network that shares the beacon of another: a nontransmitted BSSID (9.4.2.45).
struct NontransmittedBss {
    MacAddress bssid{};
    int index = 0;
    BssProfile profile{};
};

}  // namespace halvane::air

#endif
