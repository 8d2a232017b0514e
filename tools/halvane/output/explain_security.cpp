#include "tools/halvane/output/explain_security.h"

#include <cstddef>
#include <optional>
#include <string>
#include <utility>

#include "halvane/air/bss_profile.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_range.h"
#include "halvane/air/feature.h"
#include "halvane/air/feature_use.h"
#include "halvane/air/mobility_domain.h"
#include "halvane/air/rsn.h"
#include "halvane/air/rule.h"
#include "halvane/air/security.h"
#include "halvane/air/source.h"
#include "halvane/air/suite.h"
#include "halvane/air/wpa.h"

#include "tools/halvane/output/explain_parts.h"
#include "tools/halvane/output/theme.h"

namespace halvane::tool {

namespace {

using air::ElementId;
using air::Rule;

// "RSN @136: AKM PSK and FT-PSK".
template <typename Suites>
std::string akmsText(const std::string& place, const Suites& akms) {
    return akms.empty() ? place : place + ": AKM " + listed(akms, air::akmText);
}

Parts akmReasons(const ExplainedBss& bss) {
    constexpr std::size_t kVendorHead = 4;  // OUI and type
    Parts parts;
    for (const air::Source& source : bss.profile.security.name.sources) {
        const std::string place = bss.places.of(source);
        if (source.id == ElementId::Rsn) {
            const auto rsn = bss.places.decode<air::Rsn>();
            const auto akms = rsn ? air::akmsOf(*rsn) : std::nullopt;
            parts.push_back(part(akms ? akmsText(place, *akms) : place + " cannot be read"));
        } else if (source.id == ElementId::Vendor && place.starts_with("WPA ")) {
            const air::Element* const element = bss.places.elementAt(source.offset);
            const auto wpa = element != nullptr
                                 ? air::Wpa::decode(element->body.subspan(kVendorHead))
                                 : std::nullopt;
            parts.push_back(part(wpa && wpa->akms ? akmsText(place, *wpa->akms) : place));
        } else {
            parts.push_back(part(place));
        }
    }
    return parts;
}

bool isByAkms(Rule rule) {
    return rule == Rule::SecurityRsn || rule == Rule::SecurityRsnWpa ||
           rule == Rule::SecurityRsnOverride || rule == Rule::SecurityWpa;
}

Parts securityReasons(const ExplainedBss& bss) {
    const auto& name = bss.profile.security.name;
    if (isByAkms(name.rule)) {
        Parts reasons = akmReasons(bss);
        if (bss.profile.isCut) reasons.push_back(part("the rest of the frame was cut off"));
        return reasons;
    }
    const std::string sources = bss.places.of(name.sources);
    const std::string rule(air::ruleInfo(name.rule).sentence);
    return {part(sources.empty() ? rule : sources + ": " + rule)};
}

// Fast transition and hash-to-element belong to the security, and to its reasons.
void addFeatures(Parts& value, Parts& because, const ExplainedBss& bss) {
    for (const air::FeatureUse& use : air::featureUsesOf(bss.elements)) {
        if (use.feature == air::Feature::FastTransition) {
            const auto domain = bss.places.decode<air::MobilityDomain>();
            if (!domain) continue;
            const unsigned id = domain->identifier[0] | domain->identifier[1] * 0x100U;
            value.push_back(part("FT", kCommaJoiner));
            because.push_back(part(bss.places.of(use.source) + ": " + hexText(id)));
        } else if (use.feature == air::Feature::SaeHashToElement) {
            value.push_back(part("H2E", kCommaJoiner));
            because.push_back(part(bss.places.of(use.source) + ": SAE hash-to-element"));
        }
    }
}

void addSecurity(std::vector<ReasonRow>& rows, const ExplainedBss& bss) {
    Parts value = {part(air::securityName(*bss.profile.security.name))};
    Parts because = securityReasons(bss);
    addFeatures(value, because, bss);
    rows.push_back({"Security", std::move(value), std::move(because), Meaning::Header});
}

void addCiphers(std::vector<ReasonRow>& rows, const ExplainedBss& bss) {
    const air::SecurityProfile& security = bss.profile.security;
    if (security.pairwiseCiphers.empty()) return;
    Parts value;
    for (const air::Suite& cipher : security.pairwiseCiphers) {
        value.push_back(part(air::cipherText(cipher), " "));
    }
    const auto& group = security.groupCipher;
    const bool isGroupAlike =
        group && security.pairwiseCiphers.size() == 1 && *group == security.pairwiseCiphers[0];
    std::string text = bss.places.of(security.name.sources) + ": pairwise";
    if (isGroupAlike) text += " and group";
    if (group && !isGroupAlike) text += "; group " + air::cipherText(*group);
    Parts because = {part(text)};
    if (security.groupManagementCipher) {
        because.push_back(part("management " + air::cipherText(*security.groupManagementCipher)));
    }
    rows.push_back({"Ciphers", std::move(value), std::move(because)});
}

// Where in the body of RSN the capabilities stand (9.4.2.24.1).
std::size_t placeOfCapabilities(const air::Rsn& rsn) {
    constexpr std::size_t kVersion = 2;
    constexpr std::size_t kCount = 2;
    constexpr std::size_t kSuite = 4;
    const auto sizeOf = [](const auto& suites) {
        return suites ? kCount + kSuite * suites->size() : 0;
    };
    return kVersion + kSuite + sizeOf(rsn.pairwise) + sizeOf(rsn.akms);
}

Parts pmfReasons(const ExplainedBss& bss) {
    const auto rsn = bss.places.decode<air::Rsn>();
    if (!rsn || !rsn->capabilities) return {part("no RSN capabilities")};
    const auto bits = static_cast<unsigned>(rsn->capabilities->bits(0, 16));
    const std::string text = bss.places.inBody(ElementId::Rsn, placeOfCapabilities(*rsn)) +
                             ": capabilities " + hexText(bits);
    if (!rsn->isPmfCapable()) {
        const bool isContradictory = rsn->isPmfRequired();
        return {part(text + (isContradictory ? ", bit 6 without 7" : ", bits 6, 7 clear"))};
    }
    return {part(text + (rsn->isPmfRequired() ? ", bits 6 and 7 set" : ", bit 7 set"))};
}

void addPmf(std::vector<ReasonRow>& rows, const ExplainedBss& bss) {
    if (!bss.profile.security.pmf.isTold()) {
        rows.push_back({"PMF", {part("not told")}, {part(kFrameCut)}, Meaning::Header});
        return;
    }
    rows.push_back(
        {"PMF", {part(air::pmfName(*bss.profile.security.pmf))}, pmfReasons(bss), Meaning::Header});
}

}  // namespace

void addSecurityRows(std::vector<ReasonRow>& rows, const ExplainedBss& bss) {
    addSecurity(rows, bss);
    addCiphers(rows, bss);
    addPmf(rows, bss);
}

}  // namespace halvane::tool
