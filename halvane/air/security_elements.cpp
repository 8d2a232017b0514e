#include <cstdint>

#include "halvane/air/element_id.h"
#include "halvane/air/offered_akms_internal.h"
#include "halvane/air/osen.h"
#include "halvane/air/rsn_override.h"
#include "halvane/air/security_elements_internal.h"
#include "halvane/air/wapi.h"
#include "halvane/base/oui.h"

namespace halvane::air {

namespace {

Reading readingOf(bool isThere, const std::optional<SuiteSet>& akms) {
    if (!isThere) return Reading::Missing;
    return akms ? Reading::Whole : Reading::Broken;
}

// Of a vendor element that holds the fields of RSN.
template <typename Holder>
std::optional<Rsn> rsnIn(const ElementIndex& index, VendorKind kind) {
    const auto element = index.decode<Holder>(kind);
    if (!element) return std::nullopt;
    return element->rsn;
}

std::optional<Rsnx> rsnxOverrideIn(const ElementIndex& index) {
    const auto element = index.decode<RsnxOverride>(VendorKind::RsnxOverride);
    if (!element) return std::nullopt;
    return element->rsnx;
}

// Stations that know an override element take it in place of RSN: what it offers is offered too.
void addOverride(SecurityOffer& offer, const std::optional<Rsn>& override) {
    if (!override) return;
    if (const auto akms = akmsOf(*override)) addAll(offer.rsnAkms, *akms);
}

bool hasWapi(const ElementIndex& index) {
    const auto* const element = index.find(Wapi::kId);
    return element != nullptr && Wapi::isWapi(element->body);
}

}  // namespace

SecurityElements::SecurityElements(const ElementIndex& index, bool isPrivacy, bool isOfCutFrame)
    : rsn(index.decode<Rsn>()),
      rsnOverride(rsnIn<RsnOverride>(index, VendorKind::RsnOverride)),
      rsnOverride2(rsnIn<RsnOverride2>(index, VendorKind::RsnOverride2)),
      osen(rsnIn<Osen>(index, VendorKind::Osen)),
      wpa(index.decode<Wpa>(VendorKind::Wpa)),
      wapi(hasWapi(index) ? index.decode<Wapi>() : std::nullopt),
      rsnx(index.decode<Rsnx>()),
      rsnxOverride(rsnxOverrideIn(index)),
      wps(index.decode<WpsSummary>(VendorKind::Wps)),
      isCut(isOfCutFrame) {
    const auto rsnAkms = rsn ? akmsOf(*rsn) : std::nullopt;
    const auto wpaAkms = wpa ? offeredAkms(*wpa, {kWPAOUI, 1}) : std::nullopt;
    offer.rsn = readingOf(index.has(ElementId::Rsn), rsnAkms);
    offer.wpa = readingOf(index.has(VendorKind::Wpa), wpaAkms);
    if (rsnAkms) offer.rsnAkms = *rsnAkms;
    if (wpaAkms) offer.wpaAkms = *wpaAkms;
    if (rsn) offer.pmf = pmfOf(*rsn);
    addOverride(offer, rsnOverride);
    addOverride(offer, rsnOverride2);
    offer.isPrivacy = isPrivacy;
    offer.hasWapi = hasWapi(index);
    offer.hasOsen = index.has(VendorKind::Osen);
    offer.hasOweTransition = index.has(VendorKind::OweTransition);
}

}  // namespace halvane::air
