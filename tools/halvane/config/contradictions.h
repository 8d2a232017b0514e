// What contradicts itself in a BSS configuration.
//
// Free functions without state; any thread may call them.
#ifndef TOOLS_HALVANE_CONFIG_CONTRADICTIONS_H
#define TOOLS_HALVANE_CONFIG_CONTRADICTIONS_H

#include <string>
#include <vector>

#include "halvane/model/bss_config.h"

namespace halvane::tool {

struct Contradiction {
    std::string sentence;  // with a full stop; it never holds the passphrase or the key
    // Whether it stands in the way of Halvane's daemon alone, and not of other programs.
    bool isOursAlone = false;
};

// Returns the contradictions: name, security, secrets, protection, WPS, channel.
std::vector<Contradiction> contradictionsIn(const HalvaneBSSConfig& configuration);

// Those of them that tell why the passphrase of a network with PSK or SAE is none.
std::vector<Contradiction> contradictionsOfPassphrase(const HalvaneBSSConfig& configuration);

}  // namespace halvane::tool

#endif
