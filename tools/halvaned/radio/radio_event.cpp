#include "tools/halvaned/radio/radio_event.h"

#include <algorithm>
#include <iterator>
#include <linux/nl80211.h>
#include <utility>

#include "halvane/base/result.h"

#include "tools/halvane/input/netlink_attributes.h"
#include "tools/halvane/input/told_value.h"
#include "tools/halvaned/radio/regulatory_domain.h"

namespace halvane::hosting {

namespace {

struct CommandKind {
    std::uint8_t command;
    RadioEvent::Kind kind;
};
constexpr CommandKind kKinds[] = {
    {NL80211_CMD_NEW_WIPHY, RadioEvent::Kind::Radio},
    {NL80211_CMD_SET_WIPHY, RadioEvent::Kind::Radio},
    {NL80211_CMD_DEL_WIPHY, RadioEvent::Kind::RadioGone},
    {NL80211_CMD_NEW_INTERFACE, RadioEvent::Kind::Interface},
    {NL80211_CMD_SET_INTERFACE, RadioEvent::Kind::Interface},
    {NL80211_CMD_DEL_INTERFACE, RadioEvent::Kind::InterfaceGone},
    {NL80211_CMD_REG_CHANGE, RadioEvent::Kind::Regulatory},
    {NL80211_CMD_WIPHY_REG_CHANGE, RadioEvent::Kind::Regulatory},
    {NL80211_CMD_REG_BEACON_HINT, RadioEvent::Kind::Regulatory},
};

tool::MessageFault readValue(const tool::NetlinkAttribute& attribute, RadioEvent& event) {
    switch (attribute.type) {
        case NL80211_ATTR_WIPHY:
            return tool::keep(event.radio, attribute.u32(), attribute, "radio");
        case NL80211_ATTR_IFINDEX:
            return tool::keep(event.interface, attribute.u32(), attribute, "interface");
        case NL80211_ATTR_IFNAME:
            event.name = tool::toldText(attribute);
            return std::nullopt;
        case NL80211_ATTR_WIPHY_NAME:
            if (!event.name) event.name = tool::toldText(attribute);
            return std::nullopt;
        case NL80211_ATTR_REG_ALPHA2:
            return keepCountry(event.country, attribute);
        case NL80211_ATTR_REG_INITIATOR:
            return tool::keep(event.initiator, attribute.u8(), attribute, "initiator");
        default:
            return std::nullopt;
    }
}

}  // namespace

tool::ToldBy<RadioEvent> readRadioEvent(std::span<const std::uint8_t> message) {
    const auto generic = tool::readGenericMessage(message);
    if (!generic) return Unexpected(std::string(tool::kShorterThanHeader));
    const auto* row = std::ranges::find(kKinds, generic->command, &CommandKind::command);
    if (row == std::end(kKinds)) return std::optional<RadioEvent>();
    RadioEvent event{.kind = row->kind};
    const auto fault = tool::readEach(
        generic->attributes,
        [&event](const tool::NetlinkAttribute& attribute) { return readValue(attribute, event); });
    if (fault) return Unexpected(*fault);
    return std::optional(std::move(event));
}

}  // namespace halvane::hosting
