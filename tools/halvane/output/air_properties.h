// The properties of the profile of a BSS.
//
// Keys are stable, because programs read them.
#ifndef TOOLS_HALVANE_OUTPUT_AIR_PROPERTIES_H
#define TOOLS_HALVANE_OUTPUT_AIR_PROPERTIES_H

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <vector>

#include "halvane/air/bss_profile.h"
#include "halvane/air/channel.h"
#include "halvane/air/channel_use.h"
#include "halvane/air/feature.h"
#include "halvane/air/finding.h"
#include "halvane/air/neighbor.h"
#include "halvane/air/phy_rate.h"
#include "halvane/air/profile.h"
#include "halvane/air/rule.h"
#include "halvane/air/security.h"
#include "halvane/air/suite.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/inline_list.h"
#include "halvane/base/mac_address.h"
#include "halvane/base/number.h"

#include "tools/halvane/output/property_table.h"

namespace halvane::tool {

// --- Readers ---

template <typename T>
std::optional<T> valueIn(const std::optional<air::Derived<T>>& derived) {
    if (!derived) return std::nullopt;
    return derived->value;
}

inline Address addressOf(const MacAddress& address) {
    return {address.octets()};
}

inline std::vector<std::string> akmTexts(const air::SuiteSet& suites) {
    std::vector<std::string> texts;
    for (const air::Suite& suite : suites) texts.push_back(air::akmText(suite));
    return texts;
}

inline std::vector<std::string> cipherTexts(const air::SuiteSet& suites) {
    std::vector<std::string> texts;
    for (const air::Suite& suite : suites) texts.push_back(air::cipherText(suite));
    return texts;
}

inline std::optional<std::string> cipherTextOf(const std::optional<air::Suite>& suite) {
    return suite ? std::optional(air::cipherText(*suite)) : std::nullopt;
}

inline auto featureNames(const air::Features& features) {
    InlineList<std::string_view, air::Features::capacity()> names;
    for (const air::Feature feature : features) names.push_back(air::featureName(feature));
    return names;
}

inline std::optional<std::vector<int>> puncturedIn(const air::ChannelUse& channel) {
    if (!channel.punctured) return std::nullopt;
    std::vector<int> indexes;
    for (int i = 0; i < 16; ++i) {
        if (channel.punctured->value >> i & 1) indexes.push_back(i);
    }
    return indexes;
}

inline std::optional<Number> rateIn(const std::optional<air::Derived<air::PhyRate>>& rate) {
    return rate ? std::optional(Number(rate->value.mbps())) : std::nullopt;
}

// What a profile says about Multiple BSSID.
struct MultipleBssidView {
    const air::BssProfile& profile;
};

template <>
struct KindOf<air::Neighbors> : std::integral_constant<PropertyKind, PropertyKind::Array> {};
template <>
struct ItemOf<air::Neighbors> {
    using Item = air::Neighbor;
};

// --- Tables ---

template <>
inline constexpr std::string_view kTableName<air::MaxRates> = "maxRates";
template <>
inline constexpr auto kProperties<air::MaxRates> = std::tuple{
    Property{"HT", [](const air::MaxRates& rates) { return rateIn(rates.ht); }},
    Property{"VHT", [](const air::MaxRates& rates) { return rateIn(rates.vht); }},
    Property{"HE", [](const air::MaxRates& rates) { return rateIn(rates.he); }},
    Property{"EHT", [](const air::MaxRates& rates) { return rateIn(rates.eht); }},
};

template <>
inline constexpr std::string_view kTableName<air::MldLink> = "mldLink";
template <>
inline constexpr auto kProperties<air::MldLink> = std::tuple{
    Property{"id", [](const air::MldLink& link) { return link.id; }},
    Property{"address",
             [](const air::MldLink& link) {
                 return link.address ? std::optional(addressOf(*link.address)) : std::nullopt;
             }},
    Property{"isReporting", [](const air::MldLink& link) { return link.isReporting; }},
};

template <>
inline constexpr std::string_view kTableName<air::MldProfile> = "mld";
template <>
inline constexpr auto kProperties<air::MldProfile> = std::tuple{
    Property{"address", [](const air::MldProfile& mld) { return addressOf(mld.address); }},
    Property{
        "links",
        [](const air::MldProfile& mld) -> const std::vector<air::MldLink>& { return mld.links; }},
};

template <>
inline constexpr std::string_view kTableName<air::Neighbor> = "neighbor";
template <>
inline constexpr auto kProperties<air::Neighbor> = std::tuple{
    Property{"bssid",
             [](const air::Neighbor& neighbor) {
                 return neighbor.bssid ? std::optional(addressOf(*neighbor.bssid)) : std::nullopt;
             }},
    Property{"shortSsid", [](const air::Neighbor& neighbor) { return neighbor.shortSsid; }},
    Property{"operatingClass",
             [](const air::Neighbor& neighbor) { return neighbor.operatingClass; }},
    Property{"channel", [](const air::Neighbor& neighbor) { return neighbor.channel; }},
    Property{"frequency", [](const air::Neighbor& neighbor) { return neighbor.frequency; }},
    Property{"isSameSsid", [](const air::Neighbor& neighbor) { return neighbor.isSameSsid; }},
    Property{"isCoLocated", [](const air::Neighbor& neighbor) { return neighbor.isCoLocated; }},
    Property{"psd",
             [](const air::Neighbor& neighbor) {
                 return neighbor.psd ? std::optional(Number(*neighbor.psd)) : std::nullopt;
             }},
    Property{"mldId", [](const air::Neighbor& neighbor) { return neighbor.mldId; }},
    Property{"linkId", [](const air::Neighbor& neighbor) { return neighbor.linkId; }},
};

template <>
inline constexpr std::string_view kTableName<air::BssLoadProfile> = "bssLoad";
template <>
inline constexpr auto kProperties<air::BssLoadProfile> = std::tuple{
    Property{"stations", [](const air::BssLoadProfile& load) { return load.stations; }},
    Property{"utilization", [](const air::BssLoadProfile& load) { return load.utilization; }},
    Property{"admissionCapacity",
             [](const air::BssLoadProfile& load) { return load.admissionCapacity; }},
};

template <>
inline constexpr std::string_view kTableName<air::CountryProfile> = "country";
template <>
inline constexpr auto kProperties<air::CountryProfile> = std::tuple{
    Property{"code", [](const air::CountryProfile& country) { return country.code; }},
    Property{"environment",
             [](const air::CountryProfile& country) {
                 return country.environment ? std::optional(std::string(1, *country.environment))
                                            : std::nullopt;
             }},
    Property{"operatingTable",
             [](const air::CountryProfile& country) { return country.operatingTable; }},
};

// The rows of a profile itself and of one that shares its beacon. `profile` reads the profile from
// the record.
template <typename Profile>
constexpr auto networkProperties(Profile profile) {
    return std::tuple{
        Property{"ssid",
                 [profile](const auto& record) -> std::optional<ShownOctets> {
                     const auto& ssid = profile(record).ssid;
                     if (!ssid) return std::nullopt;
                     return ShownOctets{ssid->value.bytes()};
                 }},
        Property{"ssidHex",
                 [profile](const auto& record) -> std::optional<ByteBuffer> {
                     const auto& ssid = profile(record).ssid;
                     if (!ssid) return std::nullopt;
                     return ssid->value.buffer();
                 }},
        Property{"generation",
                 [profile](const auto& record) -> std::optional<int> {
                     const auto& generation = profile(record).generation;
                     if (!generation.isTold()) return std::nullopt;
                     return static_cast<int>(*generation);
                 }},
        Property{"security",
                 [profile](const auto& record) {
                     return air::securityName(profile(record).security.name.value);
                 }},
        Property{"akms",
                 [profile](const auto& record) { return akmTexts(profile(record).security.akms); }},
        Property{"pairwiseCiphers",
                 [profile](const auto& record) {
                     return cipherTexts(profile(record).security.pairwiseCiphers);
                 }},
        Property{"groupCipher",
                 [profile](const auto& record) {
                     return cipherTextOf(profile(record).security.groupCipher);
                 }},
        Property{"groupManagementCipher",
                 [profile](const auto& record) {
                     return cipherTextOf(profile(record).security.groupManagementCipher);
                 }},
        Property{"pmf",
                 [profile](const auto& record) -> std::optional<std::string_view> {
                     const auto& pmf = profile(record).security.pmf;
                     if (!pmf.isTold()) return std::nullopt;
                     return air::pmfName(*pmf);
                 }},
        Property{"streams", [profile](const auto& record) { return profile(record).streams(); }},
        Property{"maxRate",
                 [profile](const auto& record) -> const air::MaxRates& {
                     return profile(record).rates;
                 }},
        Property{"dtimPeriod",
                 [profile](const auto& record) { return valueIn(profile(record).dtimPeriod); }},
        Property{"features",
                 [profile](const auto& record) { return featureNames(profile(record).features); }},
    };
}

template <>
inline constexpr std::string_view kTableName<air::NontransmittedBss> = "sharedBeaconBSS";
template <>
inline constexpr auto kProperties<air::NontransmittedBss> = std::tuple_cat(
    std::tuple{
        Property{"bssid", [](const air::NontransmittedBss& item) { return addressOf(item.bssid); }},
        Property{"index", [](const air::NontransmittedBss& item) { return item.index; }},
    },
    networkProperties([](const air::NontransmittedBss& item) -> const air::BssProfile& {
        return item.profile;
    }),
    std::tuple{
        Property{"findings",
                 [](const air::NontransmittedBss& item) -> const std::vector<air::Finding>& {
                     return item.profile.findings;
                 }},
    });

template <>
inline constexpr std::string_view kTableName<MultipleBssidView> = "multipleBSSID";
template <>
inline constexpr auto kProperties<MultipleBssidView> = std::tuple{
    Property{"maxIndicator",
             [](const MultipleBssidView& view) { return view.profile.maxBssidIndicator; }},
    Property{"profiles",
             [](const MultipleBssidView& view) -> const std::vector<air::NontransmittedBss>& {
                 return view.profile.nontransmitted;
             }},
};

// Without centres if the frame was cut before what decides.
inline air::ChannelSpan toldSpan(const air::BssProfile& profile) {
    return profile.channel.span.isTold() ? *profile.channel.span : air::ChannelSpan();
}

inline const air::BssProfile& itself(const air::BssProfile& profile) {
    return profile;
}

template <>
inline constexpr std::string_view kTableName<air::BssProfile> = "air";
template <>
inline constexpr auto kProperties<air::BssProfile> = std::tuple_cat(
    networkProperties(itself),
    std::tuple{
        Property{"band",
                 [](const air::BssProfile& profile) -> std::optional<std::string_view> {
                     if (!profile.channel.band) return std::nullopt;
                     return air::bandName(profile.channel.band->value);
                 }},
        Property{
            "primaryChannel",
            [](const air::BssProfile& profile) { return valueIn(profile.channel.primaryChannel); }},
        Property{"primaryFrequency",
                 [](const air::BssProfile& profile) { return profile.channel.primaryFrequency; }},
        Property{"width",
                 [](const air::BssProfile& profile) -> std::
                                                        optional<int> {
                                                            if (!profile.channel.span.isTold())
                                                                return std::nullopt;
                                                            return profile.channel.span->width;
                                                        }},
        Property{"center1",
                 [](const air::BssProfile& profile) { return toldSpan(profile).center1; }},
        Property{"center2",
                 [](const air::BssProfile& profile) { return toldSpan(profile).center2; }},
        Property{"puncturedSubchannels",
                 [](const air::BssProfile& profile) { return puncturedIn(profile.channel); }},
        Property{"mld",
                 [](const air::BssProfile& profile) -> const std::optional<air::MldProfile>& {
                     return profile.mld;
                 }},
        Property{"multipleBSSID",
                 [](const air::BssProfile& profile) -> std::optional<MultipleBssidView> {
                     if (!profile.maxBssidIndicator) return std::nullopt;
                     return MultipleBssidView{profile};
                 }},
        Property{"neighbors",
                 [](const air::BssProfile& profile)
                     -> const air::Neighbors& { return profile.neighbors; }},
        Property{"bssLoad", [](const air::BssProfile& profile) { return valueIn(profile.load); }},
        Property{"country",
                 [](const air::BssProfile& profile) { return valueIn(profile.country); }},
    });

// The members of a finding for programs: its row, and the places that it was taken from.
template <>
inline constexpr std::string_view kTableName<air::Source> = "source";
template <>
inline constexpr auto kProperties<air::Source> = std::tuple{
    Property{"element",
             [](const air::Source& source) -> std::optional<int> {
                 if (source.origin != air::Origin::Element) return std::nullopt;
                 return air::idOctetOf(source.id);
             }},
    Property{"extension",
             [](const air::Source& source) -> std::optional<int> {
                 if (source.origin != air::Origin::Element) return std::nullopt;
                 const auto extension = air::extensionOf(source.id);
                 return extension ? std::optional<int>(*extension) : std::nullopt;
             }},
    Property{"offset",
             [](const air::Source& source) -> std::optional<int> {
                 if (source.origin != air::Origin::Element) return std::nullopt;
                 return source.offset;
             }},
    Property{"field",
             [](const air::Source& source) -> std::optional<std::string_view> {
                 if (source.origin == air::Origin::Element) return std::nullopt;
                 return air::originName(source.origin);
             }},
};

template <>
inline constexpr std::string_view kTableName<air::Finding> = "finding";
template <>
inline constexpr auto kProperties<air::Finding> = std::tuple{
    Property{"id", [](const air::Finding& finding) { return finding.info().id; }},
    Property{
        "severity",
        [](const air::Finding& finding) { return air::severityName(finding.info().severity); }},
    Property{"sentence", [](const air::Finding& finding) { return finding.info().sentence; }},
    Property{"advice",
             [](const air::Finding& finding) -> std::optional<std::string_view> {
                 if (finding.info().advice.empty()) return std::nullopt;
                 return finding.info().advice;
             }},
    Property{"clause", [](const air::Finding& finding) { return finding.info().clause; }},
    Property{"sources",
             [](const air::Finding& finding) -> const air::Sources& { return finding.sources; }},
};

}  // namespace halvane::tool

#endif
