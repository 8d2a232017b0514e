// What an explanation is made of.
#ifndef TOOLS_HALVANE_OUTPUT_EXPLAINED_BSS_H
#define TOOLS_HALVANE_OUTPUT_EXPLAINED_BSS_H

#include <optional>
#include <string>

#include "halvane/air/bit_octets.h"
#include "halvane/air/bss_profile.h"

#include "tools/halvane/output/element_places.h"
#include "tools/halvane/output/shown_text.h"

namespace halvane::tool {

struct ExplainedBss {
    const air::BssProfile& profile;
    air::Octets elements;
    const ElementPlaces& places;             // of `elements`
    std::optional<int> radioFrequency = {};  // MHz
    std::string radioName = "radio";         // of what reports it: "radiotap"
    TextRules rules = {};
};

}  // namespace halvane::tool

#endif
