#include "halvane/air/multi_link.h"

#include <algorithm>
#include <iterator>

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/multi_link_internal.h"
#include "halvane/base/byte_cursor.h"

namespace halvane::air {

namespace {

// Which bit of the control field says that a field is there.
using PresenceBit = std::int8_t;
constexpr PresenceBit kNever = -1;
constexpr PresenceBit kAlways = -2;

constexpr bool says(const BitOctets<2>& control, PresenceBit bit) {
    return bit == kAlways || (bit >= 0 && control.bit(static_cast<std::size_t>(bit)));
}

// The fields of the Common Info field by the element's type, in the order of MultiLinkType.
struct CommonPresence {
    PresenceBit mldAddress, linkId, changeCount, delay, eml, mld, apMldId, extended;
};
constexpr CommonPresence kCommonPresence[] = {
    {kAlways, 4, 5, 6, 7, 8, 9, 10},
    {kNever, kNever, kNever, kNever, kNever, kNever, 4, kNever},
    {4, kNever, kNever, kNever, 5, 6, kNever, 7},
    {kAlways, kNever, kNever, kNever, kNever, kNever, kNever, kNever},
    {kAlways, kNever, kNever, kNever, kNever, kNever, kNever, kNever},
};
constexpr bool isReserved(MultiLinkType type) {
    return static_cast<std::size_t>(type) >= std::size(kCommonPresence);
}
constexpr bool hasStaInfo(MultiLinkType type) {
    return type == MultiLinkType::Basic || type == MultiLinkType::Reconfiguration;
}

// Calls `use` for each field of the common info and the bit of its presence, in their order.
template <typename Common, typename Use>
void forEachCommonField(Common& common, MultiLinkType type, Use use) {
    const CommonPresence& bits = kCommonPresence[static_cast<std::size_t>(type)];
    use(common.mldAddress, bits.mldAddress,
        [](auto& codec, auto& value) { codec.address("MLD MAC Address", value); });
    use(common.linkIdInfo, bits.linkId,
        [](auto& codec, auto& value) { codec.bits(value, kLinkIdInfo); });
    use(common.bssParametersChangeCount, bits.changeCount,
        [](auto& codec, auto& value) { codec.number("BSS Parameters Change Count", value); });
    use(common.mediumSynchronizationDelay, bits.delay,
        [](auto& codec, auto& value) { codec.bits(value.fields, kMediumSynchronizationDelay); });
    use(common.emlCapabilities, bits.eml, [](auto& codec, auto& value) {
        codec.group("EML Capabilities", [&] { codec.bits(value.fields, kEmlCapabilities); });
    });
    use(common.mldCapabilities, bits.mld, [](auto& codec, auto& value) {
        codec.group("MLD Capabilities And Operations",
                    [&] { codec.bits(value.fields, kMldCapabilities); });
    });
    use(common.apMldId, bits.apMldId,
        [](auto& codec, auto& value) { codec.number("AP MLD ID", value); });
    use(common.extendedMldCapabilities, bits.extended, [](auto& codec, auto& value) {
        codec.group("Extended MLD Capabilities And Operations",
                    [&] { codec.bits(value.fields, kExtendedMldCapabilities); });
    });
}

constexpr auto kCommonInfoLayout = [](auto& codec, auto& common, const BitOctets<2>& control,
                                      MultiLinkType type) {
    codec.template sized<std::uint8_t>("Common Info Length", 1, [&] {
        forEachCommonField(common, type, [&](auto& field, PresenceBit bit, auto layout) {
            if (bit == kNever) return;
            codec.when(says(control, bit), field, [&](auto& value) { layout(codec, value); });
        });
        codec.rest(common.rest);
    });
};

constexpr auto kNstrLayout = [](auto& codec, auto& links, bool isLong) {
    if (isLong) {
        codec.template numberOf<2>("NSTR Indication Bitmap", links);
    } else {
        codec.template numberOf<1>("NSTR Indication Bitmap", links);
    }
};

// The bits of the STA Control field of the type Basic.
enum BasicStaBit : std::uint8_t {
    kComplete = 4,
    kAddress = 5,
    kBeaconInterval = 6,
    kTsfOffset = 7,
    kDtimInfo = 8,
    kNstrPair = 9,
    kNstrIsLong = 10,
    kChangeCount = 11,
};

// The NSTR Indication Bitmap is there in a complete profile only.
constexpr auto kBasicStaInfoLayout = [](auto& codec, auto& sta) {
    const BitOctets<2> control = sta.control;
    codec.when(control.bit(kBeaconInterval), sta.beaconInterval,
               [&](auto& value) { codec.number("Beacon Interval", value, {.unit = "TU"}); });
    codec.when(control.bit(kTsfOffset), sta.tsfOffset,
               [&](auto& value) { codec.number("TSF Offset", value, {.unit = "2 us"}); });
    codec.when(control.bit(kDtimInfo), sta.dtim, [&](auto& dtim) {
        codec.number("DTIM Count", dtim.count);
        codec.number("DTIM Period", dtim.period);
    });
    codec.when(control.bit(kNstrPair) && control.bit(kComplete), sta.nstrLinks,
               [&](auto& links) { kNstrLayout(codec, links, control.bit(kNstrIsLong)); });
    codec.when(control.bit(kChangeCount), sta.bssParametersChangeCount,
               [&](auto& value) { codec.number("BSS Parameters Change Count", value); });
};

constexpr std::size_t kRemovalTimer = 6;  // of the STA Control field of the type Reconfiguration

constexpr auto kStaInfoLayout = [](auto& codec, auto& sta, MultiLinkType type) {
    codec.template sized<std::uint8_t>("STA Info Length", 1, [&] {
        codec.when(sta.control.bit(kAddress), sta.address,
                   [&](auto& value) { codec.address("STA MAC Address", value); });
        if (type == MultiLinkType::Basic) {
            kBasicStaInfoLayout(codec, sta);
        } else {
            codec.when(sta.control.bit(kRemovalTimer), sta.apRemovalTimer, [&](auto& value) {
                codec.number("AP Removal Timer", value, {.unit = "TBTT"});
            });
        }
        codec.rest(sta.infoRest);
    });
};

// The octets of a profile before its elements: Capability Information. An association response has
// the status after it, but the element does not tell of which frame it is.
constexpr std::size_t fixedSizeOf(const BitOctets<2>& control, MultiLinkType type) {
    constexpr std::size_t kCapabilities = 2;
    constexpr auto kAddLink = static_cast<std::uint32_t>(ReconfigurationOperation::AddLink);
    if (type == MultiLinkType::Basic) return kCapabilities;
    const bool isLinkAdded =
        type == MultiLinkType::Reconfiguration && control.bits(7, 4) == kAddLink;
    return isLinkAdded ? kCapabilities : 0;
}

constexpr auto kPerStaProfileLayout = [](auto& codec, auto& sta, MultiLinkType type) {
    codec.group("STA Control", [&] { codec.bits(sta.control, staControlFields(type)); });
    if (hasStaInfo(type)) codec.group("STA Info", [&] { kStaInfoLayout(codec, sta, type); });
    codec.elements("STA Profile", sta.profile, fixedSizeOf(sta.control, type));
};

constexpr auto kSubelementLayout = [](auto& codec, auto& subelement, MultiLinkType type) {
    codec.number("Subelement ID", subelement.id, {.names = kMultiLinkSubelements});
    const bool isLink =
        subelement.id == MultiLinkSubelement::kPerStaProfile && type != MultiLinkType::Tdls;
    codec.joined(MultiLinkSubelement::kFragment, subelement.endsEmpty, [&] {
        if (!isLink) return codec.octets("Data", subelement.body);
        codec.when(true, subelement.link,
                   [&](auto& sta) { kPerStaProfileLayout(codec, sta, type); });
    });
};

constexpr auto kLayout = [](auto& codec, auto& element) {
    const auto first = codec.peek();
    const auto type = first ? static_cast<MultiLinkType>(*first & 7) : element.type();
    codec.group("Multi-Link Control",
                [&] { codec.bits(element.control, multiLinkControlFields(type)); });
    if (!isReserved(type)) {
        codec.group("Common Info",
                    [&] { kCommonInfoLayout(codec, element.common, element.control, type); });
        codec.subelements(element.subelements, [&](auto& subelement) {
            codec.group("Link Info", [&] { kSubelementLayout(codec, subelement, type); });
        });
    }
    codec.rest(element.rest);
};

// Sets the bits of the presence of fields to the fields that are there.
void markCommonInfo(MultiLink& element) {
    forEachCommonField(element.common, element.type(), [&](auto& field, PresenceBit bit, auto) {
        if (bit >= 0) element.control.setBit(static_cast<std::size_t>(bit), field.has_value());
        if (bit == kAlways && !field) field.emplace();
    });
}

void markBasicLink(PerStaProfile& sta) {
    BitOctets<2>& control = sta.control;
    control.setBit(kAddress, sta.address.has_value());
    control.setBit(kBeaconInterval, sta.beaconInterval.has_value());
    control.setBit(kTsfOffset, sta.tsfOffset.has_value());
    control.setBit(kDtimInfo, sta.dtim.has_value());
    control.setBit(kChangeCount, sta.bssParametersChangeCount.has_value());
    if (sta.nstrLinks) control.setBit(kComplete, true);
    if (control.bit(kComplete)) control.setBit(kNstrPair, sta.nstrLinks.has_value());
    if (sta.nstrLinks.value_or(0) > 0xFF) control.setBit(kNstrIsLong, true);
}

void markLink(PerStaProfile& sta, MultiLinkType type) {
    if (type == MultiLinkType::Basic) {
        markBasicLink(sta);
    } else if (type == MultiLinkType::Reconfiguration) {
        sta.control.setBit(kAddress, sta.address.has_value());
        sta.control.setBit(kRemovalTimer, sta.apRemovalTimer.has_value());
    }
}

}  // namespace

std::optional<CapabilityInformation> PerStaProfile::capabilities() const {
    const auto octets = ByteCursor(profile).take(2);
    if (!octets) return std::nullopt;
    CapabilityInformation capabilities;
    std::ranges::copy(*octets, capabilities.fields.octets.begin());
    return capabilities;
}

Octets PerStaProfile::elements(std::size_t fixedOctets) const {
    ByteCursor cursor(profile);
    return cursor.skip(fixedOctets) ? Octets(cursor.rest()) : Octets();
}

const PerStaProfile* MultiLink::link(std::uint8_t linkId) const {
    for (const MultiLinkSubelement& subelement : subelements) {
        if (subelement.link && subelement.link->linkId() == linkId) return &*subelement.link;
    }
    return nullptr;
}

std::optional<MultiLink> MultiLink::decode(Octets body) {
    return decodeBy<MultiLink>(kLayout, body);
}

std::optional<ElementDamage> MultiLink::describe(Octets body, FieldSink& sink) {
    return describeBy<MultiLink>(kLayout, body, sink);
}

std::vector<std::uint8_t> MultiLink::encode() const {
    if (isReserved(type())) return encodeBy(kLayout, *this);
    MultiLink element = *this;
    markCommonInfo(element);
    for (MultiLinkSubelement& subelement : element.subelements) {
        if (subelement.link) markLink(*subelement.link, type());
    }
    return encodeBy(kLayout, element);
}

}  // namespace halvane::air
