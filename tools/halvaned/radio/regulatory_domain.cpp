#include "tools/halvaned/radio/regulatory_domain.h"

#include <algorithm>
#include <linux/nl80211.h>
#include <utility>

#include "halvane/base/result.h"

namespace halvane::hosting {

namespace {

bool isOfCountry(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

}  // namespace

tool::MessageFault keepCountry(std::optional<std::string>& country,
                               const tool::NetlinkAttribute& attribute) {
    std::string text = tool::toldText(attribute);
    const bool isCountry = text.size() == 2 && std::ranges::all_of(text, isOfCountry);
    if (!isCountry) return "its country has other characters than two letters or digits";
    country = std::move(text);
    return std::nullopt;
}

tool::ToldBy<RegulatoryDomain> readRegulatoryDomain(std::span<const std::uint8_t> message) {
    const auto generic = tool::readGenericMessage(message);
    if (!generic) return Unexpected(std::string(tool::kShorterThanHeader));
    if (generic->command != NL80211_CMD_GET_REG) return std::optional<RegulatoryDomain>();
    std::optional<std::string> country;
    RegulatoryDomain domain;
    const auto fault = tool::readEach(
        generic->attributes, [&](const tool::NetlinkAttribute& attribute) -> tool::MessageFault {
            switch (attribute.type) {
                case NL80211_ATTR_REG_ALPHA2:
                    return keepCountry(country, attribute);
                case NL80211_ATTR_WIPHY:
                    return tool::keep(domain.radio, attribute.u32(), attribute, "radio");
                default:
                    return std::nullopt;
            }
        });
    if (fault) return Unexpected(*fault);
    if (!country) return Unexpected(std::string("it tells no country"));
    domain.country = std::move(*country);
    return std::optional(std::move(domain));
}

}  // namespace halvane::hosting
