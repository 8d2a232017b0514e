#include "tools/halvane/options/watch_filter.h"

#include <string>
#include <utility>

#include "halvane/air/channel.h"
#include "halvane/ie/fancy_formatting.h"

#include "tools/halvane/options/network_conditions.h"
#include "tools/halvane/output/folded_case.h"
#include "tools/halvane/survey/network.h"

namespace halvane::tool {

namespace {

bool addressBegins(const Network& network, const std::string& text) {
    return foldedCase(FancyFormatting::formattedMAC(network.bssid.buffer())).starts_with(text);
}

}  // namespace

NetworkCondition typedCondition(std::string_view text) {
    const auto name = ssidCondition(text);
    const auto nameSoFar = ssidCondition(std::string(text) + '*');
    const auto address = bssidCondition(text);
    return [=, folded = foldedCase(text)](const Network& network) {
        if (address && (*address)(network)) return true;
        if (addressBegins(network, folded)) return true;
        return (*name)(network) || (*nameSoFar)(network);
    };
}

NetworkFilter watchFilter(const NetworkFilter& options, const WatchChoices& choices) {
    NetworkFilter filter = options;
    const std::string text = choices.filterText();
    if (!text.empty()) filter.add("key /", text, typedCondition(text));
    if (choices.band) {
        const std::string band(air::bandName(*choices.band));
        if (auto condition = bandCondition(band)) filter.add("key b", band, std::move(*condition));
    }
    return filter;
}

}  // namespace halvane::tool
