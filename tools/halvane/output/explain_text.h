// A network for people, each value with its reason.
//
// Free functions without state; any thread may call them.
#ifndef TOOLS_HALVANE_OUTPUT_EXPLAIN_TEXT_H
#define TOOLS_HALVANE_OUTPUT_EXPLAIN_TEXT_H

#include <optional>
#include <string>

#include "halvane/capture/frame_record.h"

#include "tools/halvane/output/text_style.h"

namespace halvane::tool {

struct ExplainedNetwork {
    const capture::Sighting& sighting;
    std::string maker = {};          // of its address; empty: not told
    std::optional<int> signal = {};  // dBm
    std::string file = {};           // of the frame, as given; empty: not told
};

// Two lines that say which network it is and which frame explains it; a row for each value: what,
// the value, and why; the findings, the worst first, each with its advice, its identifier, its
// clause and its elements; and the findings of the networks that share the beacon. "@N" is the
// octet N of the 802.11 frame, or of the elements if they come from no frame.
std::string explainText(const ExplainedNetwork& network, const TextStyle& style);

}  // namespace halvane::tool

#endif
