#include "tools/halvaned/radio/radio_interface.h"

#include <linux/nl80211.h>
#include <utility>

#include "halvane/base/result.h"

#include "tools/halvane/input/netlink_attributes.h"
#include "tools/halvane/input/told_value.h"

namespace halvane::hosting {

namespace {

struct Told {
    RadioInterface interface {};
    std::optional<std::uint32_t> index{};
    std::optional<std::uint32_t> radio{};
    std::optional<std::uint32_t> mode{};
};

tool::MessageFault readValue(const tool::NetlinkAttribute& attribute, Told& told) {
    switch (attribute.type) {
        case NL80211_ATTR_IFINDEX:
            return tool::keep(told.index, attribute.u32(), attribute, "interface");
        case NL80211_ATTR_IFNAME:
            told.interface.name = tool::toldText(attribute);
            return std::nullopt;
        case NL80211_ATTR_WIPHY:
            return tool::keep(told.radio, attribute.u32(), attribute, "radio");
        case NL80211_ATTR_IFTYPE:
            return tool::keep(told.mode, attribute.u32(), attribute, "interface's type");
        case NL80211_ATTR_MAC:
            return tool::keepAddress(told.interface.address, attribute, "address");
        default:
            return std::nullopt;
    }
}

}  // namespace

tool::ToldBy<RadioInterface> readRadioInterface(std::span<const std::uint8_t> message) {
    const auto generic = tool::readGenericMessage(message);
    if (!generic) return Unexpected(std::string(tool::kShorterThanHeader));
    if (generic->command != NL80211_CMD_NEW_INTERFACE) return std::optional<RadioInterface>();
    Told told;
    const auto fault = tool::readEach(
        generic->attributes,
        [&told](const tool::NetlinkAttribute& attribute) { return readValue(attribute, told); });
    if (fault) return Unexpected(*fault);
    if (!told.index || told.interface.name.empty()) return std::optional<RadioInterface>();
    if (!told.radio) return Unexpected(std::string("it tells no radio"));
    told.interface.index = *told.index;
    told.interface.radio = *told.radio;
    told.interface.mode = static_cast<tool::InterfaceMode>(told.mode.value_or(0));
    return std::optional(std::move(told.interface));
}

}  // namespace halvane::hosting
