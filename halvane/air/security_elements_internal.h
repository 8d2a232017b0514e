// Reads the elements that a BSS's security is derived from.
#ifndef HALVANE_AIR_SECURITY_ELEMENTS_INTERNAL_H
#define HALVANE_AIR_SECURITY_ELEMENTS_INTERNAL_H

#include <optional>

#include "halvane/air/element_index_internal.h"
#include "halvane/air/rsn.h"
#include "halvane/air/rsnx.h"
#include "halvane/air/security.h"
#include "halvane/air/suite_types_internal.h"
#include "halvane/air/wapi.h"
#include "halvane/air/wpa.h"
#include "halvane/air/wps_summary.h"

namespace halvane::air {

// Elements are absent where missing or damaged; the offer tells which of RSN and WPA.
struct SecurityElements {
    SecurityElements(const ElementIndex& index, bool isPrivacy, bool isOfCutFrame = false);

    // Of RSN Extension or of its override.
    bool has(RsnxCapability flag) const {
        return (rsnx && rsnx->has(flag)) || (rsnxOverride && rsnxOverride->has(flag));
    }

    bool offersSaeWithoutH2e() const {
        return !isCut && kSaeAkms.isAnyIn(offer.rsnAkms) && !has(RsnxCapability::SaeHashToElement);
    }

    // Whether an element is missing here that the frame may have had.
    bool mayLack(Reading reading) const { return isCut && reading == Reading::Missing; }

    std::optional<Rsn> rsn;
    std::optional<Rsn> rsnOverride;
    std::optional<Rsn> rsnOverride2;
    std::optional<Rsn> osen;
    std::optional<Wpa> wpa;
    std::optional<Wapi> wapi;
    std::optional<Rsnx> rsnx;
    std::optional<Rsnx> rsnxOverride;
    std::optional<WpsSummary> wps;
    SecurityOffer offer;
    bool isCut;  // further elements may have been cut off
};

}  // namespace halvane::air

#endif
