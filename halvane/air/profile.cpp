#include "halvane/air/profile.h"

#include <cstddef>
#include <iterator>
#include <utility>

#include "halvane/air/bss_load.h"
#include "halvane/air/channel_use_internal.h"
#include "halvane/air/country.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_index_internal.h"
#include "halvane/air/element_range.h"
#include "halvane/air/generation.h"
#include "halvane/air/inheritance.h"
#include "halvane/air/inherited_elements_internal.h"
#include "halvane/air/max_rates_internal.h"
#include "halvane/air/multiple_bssid_profiles.h"
#include "halvane/air/profile_features_internal.h"
#include "halvane/air/profile_findings_internal.h"
#include "halvane/air/profile_links_internal.h"
#include "halvane/air/rule.h"
#include "halvane/air/security_elements_internal.h"
#include "halvane/air/ssid_element.h"
#include "halvane/air/stack_list_internal.h"
#include "halvane/air/suite.h"
#include "halvane/air/tim.h"
#include "halvane/base/escaped_text.h"
#include "halvane/base/oui.h"
#include "halvane/base/ssid.h"

namespace halvane::air {

namespace {

constexpr std::uint16_t kPrivacy = 0x0010;  // of the capability information field, 9.4.1.4

// --- Name and generation ---

std::optional<Derived<Ssid>> ssidOf(const ElementIndex& index) {
    const auto element = index.decode<SsidElement>();
    if (!element) return std::nullopt;
    return Derived<Ssid>{element->ssid, Rule::SsidElement, {index.sourceOf(ElementId::Ssid)}};
}

struct GenerationRow {
    ElementId id;
    Generation generation;
    Rule rule;
};
constexpr GenerationRow kGenerations[] = {
    {ElementId::EhtCapabilities, Generation::WiFi7, Rule::GenerationEht},
    {ElementId::HeCapabilities, Generation::WiFi6, Rule::GenerationHe},
    {ElementId::VhtCapabilities, Generation::WiFi5, Rule::GenerationVht},
    {ElementId::HtCapabilities, Generation::WiFi4, Rule::GenerationHt},
};

// All but the latest rest on the absence of a later one.
Derived<Generation> generationOf(const ElementIndex& index, bool isCut) {
    for (const GenerationRow& row : kGenerations) {
        if (!index.has(row.id)) continue;
        const bool isLatest = row.id == std::begin(kGenerations)->id;
        return {row.generation,
                isCut && !isLatest ? Rule::FrameCut : row.rule,
                {index.sourceOf(row.id)}};
    }
    return {Generation::Legacy, isCut ? Rule::FrameCut : Rule::GenerationLegacy, {}};
}

// The operation element of the latest generation decides, wherever it stands.
ChannelUse usedChannelOf(const ElementIndex& index, const OperationElements& operation,
                         const RadioHint& radio) {
    ChannelUse use = channelUseOf(index, operation, radio.frequency);
    if (radio.isCut && use.span.rule != Rule::WidthEht) use.span.rule = Rule::FrameCut;
    return use;
}

// --- Security ---

struct SecurityRow {
    Rule rule;
    Sources sources;
};

SecurityRow securityRowOf(const ElementIndex& index, const SecurityOffer& offer, Security name) {
    const Source rsn = index.sourceOf(ElementId::Rsn);
    const Source wpa = index.sourceOf(VendorKind::Wpa);
    if (offer.rsn != Reading::Missing) {
        if (offer.wpa == Reading::Whole) return {Rule::SecurityRsnWpa, {rsn, wpa}};
        for (const auto kind : {VendorKind::RsnOverride, VendorKind::RsnOverride2}) {
            if (index.has(kind)) return {Rule::SecurityRsnOverride, {rsn, index.sourceOf(kind)}};
        }
        return {Rule::SecurityRsn, {rsn}};
    }
    if (offer.wpa != Reading::Missing) return {Rule::SecurityWpa, {wpa}};
    switch (name) {
        case Security::Osen:
            return {Rule::SecurityOsen, {index.sourceOf(VendorKind::Osen)}};
        case Security::Wapi:
            return {Rule::SecurityWapi, {index.sourceOf(ElementId::BssAcAccessDelay)}};
        case Security::Wep:
            return {Rule::SecurityPrivacyBit, {{Origin::Capabilities}}};
        case Security::EnhancedOpenTransition:
            return {Rule::SecurityOweTransition, {index.sourceOf(VendorKind::OweTransition)}};
        default:
            return {Rule::SecurityOpen, {{Origin::Capabilities}}};
    }
}

// RSN and WPA number their suites alike; a suite that RSN has is not told again.
void addSuite(SuiteSet& set, const Suite& suite) {
    const bool isOfWpa = suite.oui == kWPAOUI;
    const bool isThere =
        set.contains(suite) || (isOfWpa && set.contains(Suite{kRSNOUI, suite.type}));
    if (!isThere) set.push_back(suite);
}

void addSuites(SuiteSet& set, const std::optional<Rsn::Suites>& suites) {
    if (!suites) return;
    for (const Suite& suite : *suites) addSuite(set, suite);
}

// The ciphers of an element of either kind; where it leaves one out, the standard's default.
template <typename Element>
void takeCiphers(SecurityProfile& security, const Element& element, const Suite& fallback) {
    security.groupCipher = element.group.value_or(fallback);
    addSuites(security.pairwiseCiphers, element.pairwise);
    if (!element.pairwise) security.pairwiseCiphers.push_back(fallback);
}

// What RSN and WPA offer together, else OSEN or WAPI.
void takeSuites(SecurityProfile& security, const SecurityElements& elements) {
    constexpr Suite kCcmp = {kRSNOUI, 4};
    constexpr Suite kWpaTkip = {kWPAOUI, 2};
    security.akms = elements.offer.rsnAkms;
    for (const Suite& akm : elements.offer.wpaAkms) addSuite(security.akms, akm);
    if (elements.offer.rsn == Reading::Whole) {
        takeCiphers(security, *elements.rsn, kCcmp);
        security.groupManagementCipher = elements.rsn->groupManagement;
        if (elements.offer.wpa == Reading::Whole) {
            addSuites(security.pairwiseCiphers, elements.wpa->pairwise);
        }
    } else if (elements.offer.wpa == Reading::Whole) {
        takeCiphers(security, *elements.wpa, kWpaTkip);
    } else if (*security.name == Security::Osen && elements.osen) {
        takeCiphers(security, *elements.osen, kCcmp);
        addSuites(security.akms, elements.osen->akms);
    } else if (*security.name == Security::Wapi && elements.wapi) {
        security.groupCipher = elements.wapi->multicast;
        addSuites(security.pairwiseCiphers, elements.wapi->unicast);
        addSuites(security.akms, elements.wapi->akms);
    }
}

// Without RSN, whatever else protects the network has not the last word.
Derived<Security> cutSecurityOf(const ElementIndex& index, const SecurityOffer& offer) {
    Sources sources = {{Origin::Capabilities}};
    if (offer.wpa != Reading::Missing) sources.push_back(index.sourceOf(VendorKind::Wpa));
    return {Security::Unknown, Rule::FrameCut, sources};
}

Derived<Security> securityNameOf(const ElementIndex& index, const SecurityElements& elements) {
    const SecurityOffer& offer = elements.offer;
    const Security name = securityOf(offer);
    const bool isOpen = name == Security::Open || name == Security::EnhancedOpenTransition;
    if (elements.mayLack(offer.rsn) && !isOpen) return cutSecurityOf(index, offer);
    const auto row = securityRowOf(index, offer, name);
    return {name, row.rule, row.sources};
}

Derived<Pmf> pmfOf(const ElementIndex& index, const SecurityElements& elements) {
    const Pmf pmf = elements.offer.pmf;
    if (elements.rsn && elements.rsn->capabilities) {
        return {pmf, Rule::PmfRsn, {index.sourceOf(ElementId::Rsn)}};
    }
    return {pmf, elements.mayLack(elements.offer.rsn) ? Rule::FrameCut : Rule::PmfNoRsn, {}};
}

SecurityProfile securityProfileOf(const ElementIndex& index, const SecurityElements& elements) {
    SecurityProfile security;
    security.name = securityNameOf(index, elements);
    takeSuites(security, elements);
    security.pmf = pmfOf(index, elements);
    return security;
}

// --- What the access point tells of itself ---

std::optional<Derived<CountryProfile>> countryOf(const ElementIndex& index) {
    const auto element = index.decode<Country>();
    if (!element) return std::nullopt;
    CountryProfile country;
    country.code = escapedText(Octets(element->countryCode));
    if (element->environment() == Country::Environment::Indoor) country.environment = 'I';
    if (element->environment() == Country::Environment::Outdoor) country.environment = 'O';
    country.operatingTable = element->operatingClassTable();
    return Derived<CountryProfile>{
        std::move(country), Rule::CountryElement, {index.sourceOf(ElementId::Country)}};
}

std::optional<Derived<BssLoadProfile>> loadOf(const ElementIndex& index) {
    const auto element = index.decode<BssLoad>();
    if (!element) return std::nullopt;
    return Derived<BssLoadProfile>{
        {element->stationCount, element->channelUtilization, element->availableAdmissionCapacity},
        Rule::BssLoadElement,
        {index.sourceOf(ElementId::BssLoad)}};
}

// A nontransmitted BSSID tells its DTIM with its index.
std::optional<Derived<int>> dtimOf(const ElementIndex& index) {
    const auto element = index.decode<Tim>();
    if (!element || element->dtimPeriod == 0) return std::nullopt;
    return Derived<int>{element->dtimPeriod, Rule::TimElement, {index.sourceOf(ElementId::Tim)}};
}

// --- One BSS ---

struct Frame {
    const FixedFields& fixed;
    const RadioHint& radio;
    const TrailingOctets& trailing;
};

// The networks that share a frame; only its sender has any.
struct Sharers {
    std::vector<NontransmittedBss> all{};
    std::optional<std::size_t> faultyElement{};  // of Multiple BSSID
};

// Whether an element that may tell of keys was cut off, or is damaged at the end of the frame.
bool mayLackKeys(const Frame& frame) {
    const auto damaged = frame.trailing.id();
    return frame.radio.isCut || damaged == ElementId::Rsn || damaged == ElementId::Vendor;
}

BssProfile profileOfBss(const ElementIndex& index, const Frame& frame, Neighbors neighbors,
                        Sharers sharers) {
    const bool isPrivacy = (frame.fixed.capabilities & kPrivacy) != 0;
    const OperationElements operation(index);
    const CapabilityElements capabilities(index);
    const SecurityElements security(index, isPrivacy, mayLackKeys(frame));
    BssProfile profile;
    profile.isCut = frame.radio.isCut;
    profile.ssid = ssidOf(index);
    profile.isHidden = profile.ssid && (*profile.ssid)->isHidden();
    profile.channel = usedChannelOf(index, operation, frame.radio);
    profile.generation = generationOf(index, profile.isCut);
    if (profile.channel.span.isTold()) {
        profile.rates = maxRatesOf(index, capabilities, profile.channel.span->width);
    }
    profile.security = securityProfileOf(index, security);
    profile.country = countryOf(index);
    profile.load = loadOf(index);
    profile.dtimPeriod = dtimOf(index);
    profile.features = featuresOf(index, capabilities, security);
    profile.neighbors = std::move(neighbors);
    const auto multiLink = basicMultiLinkOf(index);
    if (multiLink) profile.mld = mldOf(*multiLink, frame.fixed.bssid, profile.neighbors);
    profile.maxBssidIndicator = maxBssidIndicatorOf(index);
    profile.nontransmitted = std::move(sharers.all);
    FindingCollector findings(index);
    const ProfileParts parts = {index,     frame.trailing,       frame.fixed, frame.radio,
                                operation, capabilities,         security,    profile,
                                multiLink, sharers.faultyElement};
    findInSecurity(parts, findings);
    findInKeyManagement(parts, findings);
    findInChannel(parts, findings);
    findInRates(parts, findings);
    findInNames(parts, findings);
    findInLinks(parts, findings);
    findInForm(parts, findings);
    profile.findings = findings.take();
    return profile;
}

// The networks of Multiple BSSID, each with the elements that hold for it.
Sharers sharersOf(std::span<const Element> elements, const Frame& frame) {
    const MultipleBssidProfiles profiles(elements, frame.fixed.bssid);
    Sharers sharers{{}, profiles.faultyElement()};
    const TrailingOctets whole;
    InheritedElements inherited(elements);
    sharers.all.reserve(profiles.profiles().size());
    for (const NontransmittedProfile& found : profiles.profiles()) {
        const BssElements own = profiles.elementsOf(found);
        const ElementIndex index = inherited.indexOf(own);
        const FixedFields fixed = {
            found.bssid, static_cast<std::uint16_t>(found.capabilities.fields.bits(0, 16)),
            frame.fixed.beaconInterval};
        const Frame shared = {fixed, frame.radio, whole};
        sharers.all.push_back({found.bssid, found.index.index,
                               profileOfBss(index, shared, inherited.neighborsOf(own, index), {})});
        auto& profile = sharers.all.back().profile;
        if (found.index.dtimPeriod) {
            profile.dtimPeriod = Derived<int>{*found.index.dtimPeriod, Rule::TimElement, {}};
        }
    }
    return sharers;
}

}  // namespace

BssProfile profileOf(Octets octets, const FixedFields& fixed, const RadioHint& radio) {
    constexpr std::size_t kUsualCount = 32;
    StackList<Element, kUsualCount> elements;
    auto element = ElementRange(octets).begin();
    for (; element != std::default_sentinel; ++element) elements->push_back(*element);
    const TrailingOctets trailing = element.rest();
    const ElementIndex index(*elements);
    const Frame frame = {fixed, radio, trailing};
    Sharers sharers;
    if (index.has(ElementId::MultipleBssid)) sharers = sharersOf(*elements, frame);
    return profileOfBss(index, frame, neighborsIn(index), std::move(sharers));
}

}  // namespace halvane::air
