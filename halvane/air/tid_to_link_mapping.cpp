#include "halvane/air/tid_to_link_mapping.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr ValueName kDirections[] = {
    {0, "downlink"}, {1, "uplink"}, {2, "downlink and uplink"}, {3, "reserved"}};

enum ControlBit : std::uint8_t { kDefault = 2, kSwitchTime = 3, kDuration = 4, kIsShort = 5 };

constexpr BitField kControl[] = {
    {0, 2, "Direction", {.names = kDirections}},
    {kDefault, 1, "Default Link Mapping"},
    {kSwitchTime, 1, "Mapping Switch Time Present"},
    {kDuration, 1, "Expected Duration Present"},
    {kIsShort, 1, "Link Mapping Size"},
    {6, 2, "Reserved"},
};
constexpr BitField kPresence[] = {{0, 8, "Link Mapping Presence Indicator"}};

constexpr std::string_view kLabels[TidToLinkMapping::kTids] = {
    "Link Mapping Of TID 0", "Link Mapping Of TID 1", "Link Mapping Of TID 2",
    "Link Mapping Of TID 3", "Link Mapping Of TID 4", "Link Mapping Of TID 5",
    "Link Mapping Of TID 6", "Link Mapping Of TID 7",
};

constexpr auto kLinksLayout = [](auto& codec, auto& element, std::size_t tid) {
    const bool isPresent = element.presence && element.presence->bit(tid);
    codec.when(isPresent, element.links[tid], [&](auto& links) {
        if (element.control.bit(kIsShort)) {
            codec.template numberOf<1>(kLabels[tid], links);
        } else {
            codec.template numberOf<2>(kLabels[tid], links);
        }
    });
};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.group("TID-To-Link Control", [&] {
        codec.bits(element.control, kControl);
        codec.when(!element.control.bit(kDefault), element.presence,
                   [&](auto& value) { codec.bits(value, kPresence); });
    });
    codec.when(element.control.bit(kSwitchTime), element.switchTime,
               [&](auto& value) { codec.number("Mapping Switch Time", value, {.unit = "TU"}); });
    codec.when(element.control.bit(kDuration), element.expectedDuration, [&](auto& value) {
        codec.template numberOf<3>("Expected Duration", value, {.unit = "TU"});
    });
    for (std::size_t tid = 0; tid < TidToLinkMapping::kTids; ++tid) {
        kLinksLayout(codec, element, tid);
    }
    codec.rest(element.rest);
};

void markPresence(TidToLinkMapping& element) {
    bool isLong = false;
    for (std::size_t tid = 0; tid < TidToLinkMapping::kTids; ++tid) {
        const auto& links = element.links[tid];
        if (links && !element.presence) element.presence.emplace();
        if (element.presence) element.presence->setBit(tid, links.has_value());
        isLong = isLong || links.value_or(0) > 0xFF;
    }
    if (isLong) element.control.setBit(kIsShort, false);
    element.control.setBit(kDefault, !element.presence);
    element.control.setBit(kSwitchTime, element.switchTime.has_value());
    element.control.setBit(kDuration, element.expectedDuration.has_value());
}

}  // namespace

std::optional<TidToLinkMapping> TidToLinkMapping::decode(Octets body) {
    return decodeBy<TidToLinkMapping>(kLayout, body);
}

std::optional<ElementDamage> TidToLinkMapping::describe(Octets body, FieldSink& sink) {
    return describeBy<TidToLinkMapping>(kLayout, body, sink);
}

std::vector<std::uint8_t> TidToLinkMapping::encode() const {
    TidToLinkMapping element = *this;
    markPresence(element);
    return encodeBy(kLayout, element);
}

}  // namespace halvane::air
