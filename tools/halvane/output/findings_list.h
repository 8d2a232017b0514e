// What is wrong with the networks of captures: each finding once, with the networks that have it.
//
// For one thread.
#ifndef TOOLS_HALVANE_OUTPUT_FINDINGS_LIST_H
#define TOOLS_HALVANE_OUTPUT_FINDINGS_LIST_H

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "halvane/air/bss_profile.h"
#include "halvane/air/finding.h"

#include "tools/halvane/output/shown_text.h"
#include "tools/halvane/output/text_style.h"

namespace halvane::tool {

class FindingsList {
  public:
    // `signal` is in dBm. The networks that share the network's beacon count as heard like it.
    void add(const air::BssProfile& profile, std::optional<int> signal);

    // The same without the networks that share the network's beacon.
    void addOne(const air::BssProfile& profile, std::optional<int> signal);

    // The findings from `least` on: the worst first, then by the number of networks, then in the
    // order of findingInfos(). Each has a line with severity, count and sentence, the strongest
    // networks, what to do, and the identifier with its clause. Empty if there is none.
    std::string text(air::Severity least, const TextStyle& style) const;

  private:
    struct Named {
        std::optional<std::string> ssid;  // absent without an SSID element
        bool isCut;                       // it may have been cut off
        std::optional<int> signal;
    };
    using Networks = std::vector<Named>;

    std::map<air::FindingKind, Networks> networks_;
};

}  // namespace halvane::tool

#endif
