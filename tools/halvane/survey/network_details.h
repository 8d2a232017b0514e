// What the elements of a network tell beside its profile.
//
// A pure function and plain values; any thread may call it.
#ifndef TOOLS_HALVANE_SURVEY_NETWORK_DETAILS_H
#define TOOLS_HALVANE_SURVEY_NETWORK_DETAILS_H

#include <optional>
#include <string>

#include "halvane/air/bit_octets.h"

namespace halvane::tool {

struct NetworkDetails {
    std::optional<std::string> meshID{};  // octets; a mesh has it, and no SSID
    std::string accessPoint{};            // the name that its maker's element tells, as octets
    int highestRate = 0;                  // of (Extended) Supported Rates, in units of 500 kbit/s
    bool hasOFDM = false;                 // has a rate of 6 Mbit/s or more that is no 11b rate
};

NetworkDetails networkDetailsOf(air::Octets elements);

}  // namespace halvane::tool

#endif
