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
    MacAddress bssid{};                // of the sender
    std::uint16_t capabilities = 0;    // the bits of CapabilityInformation
    std::uint16_t beaconInterval = 0;  // TU; 0: not known
};

// What the receiving radio knows.
struct RadioHint {
    std::optional<int> frequency{};  // MHz, of the channel on which it listened
    std::optional<int> signal{};     // dBm
    bool isCut = false;              // the capture kept only the start of the frame
};

// The security of a BSS.
struct SecurityProfile {
    Derived<Security> name{};                      // as the Wi-Fi Alliance has it
    SuiteSet akms{};                               // of RSN, its overrides and WPA
    SuiteSet pairwiseCiphers{};                    // of RSN, otherwise of WPA
    std::optional<Suite> groupCipher{};            // absent if no element names one
    std::optional<Suite> groupManagementCipher{};  // of RSN; absent if it names none
    Derived<Pmf> pmf{};                            // whether management frames are protected
};

// What BSS Load tells.
struct BssLoadProfile {
    int stations = 0;           // that are associated
    int utilization = 0;        // of 255
    int admissionCapacity = 0;  // 32 us/s
};

// What Country tells.
struct CountryProfile {
    std::string code{};                   // two letters, or what stands in their place, escaped
    std::optional<char> environment{};    // 'I' indoor, 'O' outdoor; absent for both
    std::optional<int> operatingTable{};  // number of the table of Annex E, if it tells one
};

// A link of a multi-link device.
struct MldLink {
    int id = 0;                           // of the link within the MLD, 0 to 14
    std::optional<MacAddress> address{};  // the BSSID of the link
    bool isReporting = false;             // the link that sent the frame
};

// The multi-link device that the BSS belongs to.
struct MldProfile {
    MacAddress address{};          // of the MLD
    std::vector<MldLink> links{};  // the reporting one first
    Sources sources{};             // the elements that tell them
};

struct NontransmittedBss;

struct BssProfile {
    std::optional<Derived<Ssid>> ssid{};  // absent where missing or longer than 32 octets
    bool isHidden = false;                // the name is empty or zeros
    // The capture kept only the start of the frame (RadioHint). What it does not tell was perhaps
    // cut off: nothing is derived from its absence, and no finding rests on it.
    bool isCut = false;
    ChannelUse channel{};                              // where the BSS is
    Derived<Generation> generation{};                  // of Wi-Fi
    MaxRates rates{};                                  // none if the width is not told
    SecurityProfile security{};                        // how the BSS protects itself
    std::optional<Derived<CountryProfile>> country{};  // absent without a Country element
    std::optional<Derived<BssLoadProfile>> load{};     // absent without a BSS Load element
    std::optional<Derived<int>> dtimPeriod{};          // beacons
    Features features{};                               // what is offered beyond carrying frames
    Neighbors neighbors{};                             // whom the frame tells of
    std::optional<MldProfile> mld{};                   // absent unless the BSS belongs to one
    std::optional<int> maxBssidIndicator{};            // of Multiple BSSID
    std::vector<NontransmittedBss> nontransmitted;     // the other networks of the beacon
    std::vector<Finding> findings{};                   // the worst first

    // The streams of the latest generation's highest rate; 0 if there is none.
    int streams() const {
        const auto* const rate = rates.latest();
        return rate != nullptr ? (*rate)->inputs.streams : 0;
    }
};

// A network that shares the beacon of another: a nontransmitted BSSID (9.4.2.45).
struct NontransmittedBss {
    MacAddress bssid{};    // computed from the sender's
    int index = 0;         // of Multiple BSSID-Index, from 1
    BssProfile profile{};  // of its own elements and the inherited ones
};

}  // namespace halvane::air

#endif
