#include "tools/halvaned/radio/radio_message.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <linux/nl80211.h>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "halvane/air/bit_octets.h"
#include "halvane/air/he_phy_capabilities.h"
#include "halvane/air/ht_mcs_set.h"
#include "halvane/air/mcs_map.h"
#include "halvane/base/result.h"

#include "tools/halvane/input/netlink_attributes.h"
#include "tools/halvane/input/told_value.h"
#include "tools/halvane/input/wireless_interface.h"

namespace halvane::hosting {

namespace {

using tool::InterfaceMode;
using tool::keep;
using tool::NetlinkAttribute;
using tool::NetlinkAttributes;
using tool::readEach;
using Fault = tool::MessageFault;

struct ChannelFlag {
    std::uint16_t type;
    bool RadioChannel::*flag;
};
constexpr ChannelFlag kChannelFlags[] = {
    {NL80211_FREQUENCY_ATTR_DISABLED, &RadioChannel::isDisabled},
    {NL80211_FREQUENCY_ATTR_NO_IR, &RadioChannel::isPassive},
    {NL80211_FREQUENCY_ATTR_RADAR, &RadioChannel::isRadarProne},
    {NL80211_FREQUENCY_ATTR_NO_HT40_MINUS, &RadioChannel::hasNoLower40},
    {NL80211_FREQUENCY_ATTR_NO_HT40_PLUS, &RadioChannel::hasNoUpper40},
    {NL80211_FREQUENCY_ATTR_NO_80MHZ, &RadioChannel::hasNo80},
    {NL80211_FREQUENCY_ATTR_NO_160MHZ, &RadioChannel::hasNo160},
    {NL80211_FREQUENCY_ATTR_INDOOR_ONLY, &RadioChannel::isIndoorOnly},
};

// Octets of a field of the standard. Absent if they have another size.
template <std::size_t Size>
std::optional<air::BitOctets<Size>> fieldOf(std::span<const std::uint8_t> value) {
    if (value.size() != Size) return std::nullopt;
    air::BitOctets<Size> field;
    std::ranges::copy(value, field.octets.begin());
    return field;
}

void addStreams(RadioBand& band, int streams) {
    if (streams < 1) return;
    band.streams = std::max(band.streams.value_or(0), static_cast<unsigned>(streams));
}

Fault readChannel(NetlinkAttributes attributes, RadioBand& band) {
    RadioChannel channel;
    std::optional<std::uint32_t> frequency;
    std::optional<std::uint32_t> offset;
    Fault fault = readEach(attributes, [&](const NetlinkAttribute& attribute) -> Fault {
        switch (attribute.type) {
            case NL80211_FREQUENCY_ATTR_FREQ:
                return keep(frequency, attribute.u32(), attribute, "channel's frequency");
            case NL80211_FREQUENCY_ATTR_OFFSET:
                return keep(offset, attribute.u32(), attribute, "channel's offset");
            case NL80211_FREQUENCY_ATTR_MAX_TX_POWER:
                return keep(channel.mostPower, attribute.u32(), attribute, "channel's power");
            default:
                break;
        }
        const auto* flag = std::ranges::find(kChannelFlags, attribute.type, &ChannelFlag::type);
        if (flag != std::end(kChannelFlags)) channel.*flag->flag = true;
        return std::nullopt;
    });
    if (fault) return fault;
    if (!frequency) return "a channel of it tells no frequency";
    channel.frequency = *frequency;
    channel.frequencyOffset = offset.value_or(0);
    band.channels[channel.kilohertz()] = channel;
    return std::nullopt;
}

// The sets of MCS, whose sizes the standard gives (IEEE 802.11-2020, 9.4.2.55.4 and 9.4.2.157.3).
Fault readHTSet(const NetlinkAttribute& attribute, RadioBand& band) {
    const auto field = fieldOf<16>(attribute.value);
    if (!field) return tool::wrongSize(attribute, "HT MCS set");
    const air::HtMcsSet set{*field};
    addStreams(band, std::max(set.streams(), set.transmitStreams().value_or(0)));
    return std::nullopt;
}

Fault readVHTSet(const NetlinkAttribute& attribute, RadioBand& band) {
    if (attribute.value.size() != 8) return tool::wrongSize(attribute, "VHT MCS set");
    for (const std::size_t place : {0U, 4U}) {
        const auto map = fieldOf<2>(attribute.value.subspan(place, 2));
        addStreams(band, air::VhtMcsMap{*map}.streams());
    }
    return std::nullopt;
}

// What a band can do for interfaces of some modes.
struct ModeData {
    bool isOfAP = false;
    std::optional<air::HePhyCapabilities> he{};
    int streams = 0;
    bool hasEHT = false;
};

Fault readHESet(const NetlinkAttribute& attribute, ModeData& data) {
    // The maps of 80 MHz stand first (802.11ax, 9.4.2.248.4). The kernel always has those of 160
    // and 80+80 MHz too.
    if (attribute.value.size() < 4) return tool::wrongSize(attribute, "HE MCS set");
    for (const std::size_t place : {0U, 2U}) {
        const auto map = fieldOf<2>(attribute.value.subspan(place, 2));
        data.streams = std::max(data.streams, air::HeMcsMap{*map}.streams());
    }
    return std::nullopt;
}

Fault readModeValue(const NetlinkAttribute& attribute, ModeData& data) {
    switch (attribute.type) {
        case NL80211_BAND_IFTYPE_ATTR_IFTYPES:
            return readEach(NetlinkAttributes(attribute.value), [&](const NetlinkAttribute& mode) {
                data.isOfAP = data.isOfAP || mode.type == NL80211_IFTYPE_AP;
                return Fault();
            });
        case NL80211_BAND_IFTYPE_ATTR_HE_CAP_PHY: {
            const auto field = fieldOf<11>(attribute.value);
            if (!field) return tool::wrongSize(attribute, "HE PHY capabilities");
            data.he = air::HePhyCapabilities{*field};
            return std::nullopt;
        }
        case NL80211_BAND_IFTYPE_ATTR_HE_CAP_MCS_SET:
            return readHESet(attribute, data);
        case NL80211_BAND_IFTYPE_ATTR_EHT_CAP_PHY:
            data.hasEHT = true;
            return std::nullopt;
        default:
            return std::nullopt;
    }
}

Fault readModeData(NetlinkAttributes attributes, RadioBand& band) {
    ModeData data;
    Fault fault = readEach(attributes, [&data](const NetlinkAttribute& attribute) {
        return readModeValue(attribute, data);
    });
    if (fault || !data.isOfAP) return fault;
    band.he = data.he;
    band.hasEHT = band.hasEHT || data.hasEHT;
    addStreams(band, data.streams);
    return std::nullopt;
}

Fault readBandValue(const NetlinkAttribute& attribute, RadioBand& band) {
    const NetlinkAttributes nested(attribute.value);
    switch (attribute.type) {
        case NL80211_BAND_ATTR_FREQS:
            return readEach(nested, [&band](const NetlinkAttribute& channel) {
                return readChannel(NetlinkAttributes(channel.value), band);
            });
        case NL80211_BAND_ATTR_HT_CAPA:
            return keep(band.ht, attribute.u16(), attribute, "HT capabilities");
        case NL80211_BAND_ATTR_HT_MCS_SET:
            return readHTSet(attribute, band);
        case NL80211_BAND_ATTR_VHT_CAPA:
            return keep(band.vht, attribute.u32(), attribute, "VHT capabilities");
        case NL80211_BAND_ATTR_VHT_MCS_SET:
            return readVHTSet(attribute, band);
        case NL80211_BAND_ATTR_IFTYPE_DATA:
            return readEach(nested, [&band](const NetlinkAttribute& data) {
                return readModeData(NetlinkAttributes(data.value), band);
            });
        default:
            return std::nullopt;
    }
}

Fault readBands(NetlinkAttributes attributes, Radio& radio) {
    return readEach(attributes, [&radio](const NetlinkAttribute& attribute) {
        RadioBand& band = radio.bands[attribute.type];
        return readEach(NetlinkAttributes(attribute.value), [&band](const NetlinkAttribute& value) {
            return readBandValue(value, band);
        });
    });
}

// How many interfaces of some modes there may be.
struct ModeLimit {
    std::optional<std::uint32_t> most{};
    bool hasAP = false;
};

Fault readLimit(NetlinkAttributes attributes, ModeLimit& limit) {
    return readEach(attributes, [&limit](const NetlinkAttribute& attribute) -> Fault {
        switch (attribute.type) {
            case NL80211_IFACE_LIMIT_MAX:
                return keep(limit.most, attribute.u32(), attribute, "limit of interfaces");
            case NL80211_IFACE_LIMIT_TYPES:
                return readEach(NetlinkAttributes(attribute.value),
                                [&limit](const NetlinkAttribute& mode) {
                                    limit.hasAP = limit.hasAP || mode.type == NL80211_IFTYPE_AP;
                                    return Fault();
                                });
            default:
                return std::nullopt;
        }
    });
}

Fault readCombination(NetlinkAttributes attributes, Radio& radio) {
    std::uint64_t aps = 0;
    std::optional<std::uint32_t> most;
    Fault fault = readEach(attributes, [&](const NetlinkAttribute& attribute) -> Fault {
        switch (attribute.type) {
            case NL80211_IFACE_COMB_MAXNUM:
                return keep(most, attribute.u32(), attribute, "number of interfaces");
            case NL80211_IFACE_COMB_LIMITS:
                return readEach(NetlinkAttributes(attribute.value),
                                [&aps](const NetlinkAttribute& nested) {
                                    ModeLimit limit;
                                    Fault wrong = readLimit(NetlinkAttributes(nested.value), limit);
                                    if (limit.hasAP) aps += limit.most.value_or(0);
                                    return wrong;
                                });
            default:
                return std::nullopt;
        }
    });
    if (fault) return fault;
    const auto allowed = std::min<std::uint64_t>(aps, most.value_or(0));
    radio.mostAPs = std::max(radio.mostAPs.value_or(0), static_cast<std::uint32_t>(allowed));
    return std::nullopt;
}

Fault readCiphers(const NetlinkAttribute& attribute, Radio& radio) {
    constexpr std::size_t kSize = sizeof(std::uint32_t);
    if (attribute.value.size() % kSize != 0) return tool::wrongSize(attribute, "list of ciphers");
    for (std::size_t place = 0; place < attribute.value.size(); place += kSize) {
        const NetlinkAttribute one{0, attribute.value.subspan(place, kSize)};
        radio.ciphers.push_back(*one.u32());
    }
    return std::nullopt;
}

// What it has several of.
Fault readList(const NetlinkAttribute& attribute, Radio& radio) {
    const NetlinkAttributes nested(attribute.value);
    switch (attribute.type) {
        case NL80211_ATTR_WIPHY_BANDS:
            return readBands(nested, radio);
        case NL80211_ATTR_SUPPORTED_IFTYPES:
            return readEach(nested, [&radio](const NetlinkAttribute& mode) {
                radio.modes.insert(static_cast<InterfaceMode>(mode.type));
                return Fault();
            });
        case NL80211_ATTR_INTERFACE_COMBINATIONS:
            return readEach(nested, [&radio](const NetlinkAttribute& combination) {
                return readCombination(NetlinkAttributes(combination.value), radio);
            });
        case NL80211_ATTR_CIPHER_SUITES:
            return readCiphers(attribute, radio);
        default:
            return std::nullopt;
    }
}

Fault readValue(const NetlinkAttribute& attribute, Radio& radio,
                std::optional<std::uint32_t>& index) {
    switch (attribute.type) {
        case NL80211_ATTR_WIPHY:
            return keep(index, attribute.u32(), attribute, "index");
        case NL80211_ATTR_WIPHY_NAME:
            radio.name = tool::toldText(attribute);
            return std::nullopt;
        case NL80211_ATTR_WIPHY_ANTENNA_AVAIL_TX:
            return keep(radio.sendingChains, attribute.u32(), attribute, "sending antennas");
        case NL80211_ATTR_WIPHY_ANTENNA_AVAIL_RX:
            return keep(radio.receivingChains, attribute.u32(), attribute, "receiving antennas");
        case NL80211_ATTR_MAX_AP_ASSOC_STA:
            return keep(radio.mostStations, attribute.u16(), attribute, "number of stations");
        case NL80211_ATTR_WIPHY_SELF_MANAGED_REG:
            radio.hasOwnRegulatoryDomain = true;
            return std::nullopt;
        default:
            return readList(attribute, radio);
    }
}

}  // namespace

tool::ToldBy<Radio> readRadio(std::span<const std::uint8_t> message) {
    const auto generic = tool::readGenericMessage(message);
    if (!generic) return Unexpected(std::string(tool::kShorterThanHeader));
    if (generic->command != NL80211_CMD_NEW_WIPHY) return std::optional<Radio>();
    Radio radio;
    std::optional<std::uint32_t> index;
    const Fault fault = readEach(generic->attributes, [&](const NetlinkAttribute& attribute) {
        return readValue(attribute, radio, index);
    });
    if (fault) return Unexpected(*fault);
    if (!index) return Unexpected(std::string("it tells no index"));
    radio.index = *index;
    return std::optional(std::move(radio));
}

std::vector<Radio> joinedRadios(std::span<const std::vector<std::uint8_t>> messages,
                                std::vector<std::string>& faults) {
    std::map<std::uint32_t, Radio> joined;
    for (const auto& message : messages) {
        auto part = readRadio(message);
        if (!part) {
            faults.push_back(part.error());
        } else if (*part) {
            const auto [place, isNew] = joined.try_emplace((*part)->index);
            place->second.index = (*part)->index;
            place->second.join(std::move(**part));
        }
    }
    std::vector<Radio> radios;
    radios.reserve(joined.size());
    for (auto& [index, radio] : joined) radios.push_back(std::move(radio));
    return radios;
}

}  // namespace halvane::hosting
