// The neighbours that an access point tells of (IEEE 802.11-2020, 9.4.2.170).
//
// A plain value. Threads: as for an integer.
#ifndef HALVANE_AIR_NEIGHBOR_H
#define HALVANE_AIR_NEIGHBOR_H

#include <cstdint>
#include <optional>

#include "halvane/air/channel.h"
#include "halvane/base/mac_address.h"

namespace halvane::air {

struct Neighbor {
    std::optional<MacAddress> bssid{};
    std::optional<std::uint32_t> shortSsid{};  // CRC-32 of the name
    int operatingClass = 0;                    // of the global table of Annex E
    int channel = 0;
    std::optional<Band> band{};      // of the operating class
    std::optional<int> frequency{};  // MHz, of the channel
    bool isSameSsid = false;
    bool isCoLocated = false;     // in the same device
    std::optional<double> psd{};  // dBm/MHz that the access point allows
    std::optional<int> mldId{};   // 0: the multi-link device that sent the frame
    std::optional<int> linkId{};

    friend bool operator==(const Neighbor&, const Neighbor&) = default;
};

}  // namespace halvane::air

#endif
