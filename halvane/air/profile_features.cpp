#include <optional>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_id.h"
#include "halvane/air/extended_capabilities.h"
#include "halvane/air/feature_use.h"
#include "halvane/air/he_capabilities.h"
#include "halvane/air/he_mac_capabilities.h"
#include "halvane/air/he_phy_capabilities.h"
#include "halvane/air/inheritance.h"
#include "halvane/air/profile_features_internal.h"
#include "halvane/air/rsnx.h"
#include "halvane/air/source.h"
#include "halvane/air/suite_types_internal.h"
#include "halvane/air/vht_capabilities.h"
#include "halvane/air/wmm.h"
#include "halvane/air/wps_summary.h"

namespace halvane::air {

namespace {

// Collects features in the order of their enumerators, which is that of the calls.
class FeatureList {
  public:
    void addIf(bool condition, Feature feature, const Source& source) {
        if (condition) uses_.push_back({feature, source});
    }
    const FeatureUses& uses() const { return uses_; }

  private:
    FeatureUses uses_;
};

void addTwt(FeatureList& list, const ElementIndex& index, const CapabilityElements& capabilities,
            const ExtendedCapabilities& extended) {
    const bool isByHe = capabilities.he && capabilities.he->mac.has(HeMacCapability::TwtResponder);
    list.addIf(
        isByHe || extended.has(ExtendedCapability::TwtResponder), Feature::Twt,
        index.sourceOf(isByHe ? ElementId::HeCapabilities : ElementId::ExtendedCapabilities));
}

void addMuBeamformer(FeatureList& list, const ElementIndex& index,
                     const CapabilityElements& capabilities) {
    const bool isByHe = capabilities.he && capabilities.he->phy.has(HePhyCapability::MuBeamformer);
    const bool isByVht = capabilities.vht && capabilities.vht->has(VhtCapability::MuBeamformer);
    list.addIf(isByHe || isByVht, Feature::MuBeamformer,
               index.sourceOf(isByHe ? ElementId::HeCapabilities : ElementId::VhtCapabilities));
}

// The RSN Extension element that tells the flag: its override, if that alone does.
Source rsnxSource(const ElementIndex& index, const SecurityElements& security,
                  RsnxCapability flag) {
    const bool isByRsnx = security.rsnx && security.rsnx->has(flag);
    return isByRsnx ? index.sourceOf(ElementId::Rsnx) : index.sourceOf(VendorKind::RsnxOverride);
}

void addSecurity(FeatureList& list, const ElementIndex& index, const SecurityElements& security) {
    const auto& akms = security.offer.rsnAkms;
    const auto addRsnx = [&](RsnxCapability flag, Feature feature) {
        list.addIf(security.has(flag), feature, rsnxSource(index, security, flag));
    };
    list.addIf(index.has(ElementId::MobilityDomain) && kFtAkms.isAnyIn(akms),
               Feature::FastTransition, index.sourceOf(ElementId::MobilityDomain));
    const bool hasFils = index.has(ElementId::FilsIndication);
    list.addIf(hasFils || kFilsAkms.isAnyIn(akms), Feature::Fils,
               index.sourceOf(hasFils ? ElementId::FilsIndication : ElementId::Rsn));
    addRsnx(RsnxCapability::SaeHashToElement, Feature::SaeHashToElement);
    addRsnx(RsnxCapability::SaePk, Feature::SaePk);
}

void addVendor(FeatureList& list, const ElementIndex& index, const std::optional<WpsSummary>& wps) {
    const auto wmm = index.decode<Wmm>(VendorKind::Wmm);
    const auto addIf = [&](bool condition, Feature feature, VendorKind kind) {
        list.addIf(condition, feature, index.sourceOf(kind));
    };
    const auto add = [&](Feature feature, VendorKind kind) {
        addIf(index.has(kind), feature, kind);
    };
    add(Feature::Mbo, VendorKind::Mbo);
    add(Feature::Wmm, VendorKind::Wmm);
    addIf(wmm && wmm->isUapsdSupported(), Feature::UapsdAvailable, VendorKind::Wmm);
    add(Feature::WiFiDirect, VendorKind::P2p);
    add(Feature::Wps, VendorKind::Wps);
    addIf(wps && wps->state() == WpsState::Configured, Feature::WpsConfigured, VendorKind::Wps);
    list.addIf(index.has(ElementId::MeshId), Feature::Mesh, index.sourceOf(ElementId::MeshId));
    add(Feature::Hotspot, VendorKind::Hotspot);
}

FeatureUses usesOf(const ElementIndex& index, const CapabilityElements& capabilities,
                   const SecurityElements& security) {
    const auto extended = index.decode<ExtendedCapabilities>().value_or(ExtendedCapabilities());
    FeatureList list;
    const auto add = [&](Feature feature, ElementId id) {
        list.addIf(index.has(id), feature, index.sourceOf(id));
    };
    const auto addExtended = [&](Feature feature, ExtendedCapability flag) {
        list.addIf(extended.has(flag), feature, index.sourceOf(ElementId::ExtendedCapabilities));
    };
    add(Feature::RadioMeasurement, ElementId::RmEnabledCapabilities);
    addExtended(Feature::BssTransition, ExtendedCapability::BssTransition);
    addSecurity(list, index, security);
    addVendor(list, index, security.wps);
    add(Feature::Interworking, ElementId::Interworking);
    addTwt(list, index, capabilities, extended);
    addMuBeamformer(list, index, capabilities);
    add(Feature::MultipleBssid, ElementId::MultipleBssid);
    add(Feature::MultiLink, ElementId::MultiLink);
    addExtended(Feature::FtmResponder, ExtendedCapability::FtmResponder);
    addExtended(Feature::ProxyArp, ExtendedCapability::ProxyArp);
    return list.uses();
}

}  // namespace

Features featuresOf(const ElementIndex& index, const CapabilityElements& capabilities,
                    const SecurityElements& security) {
    Features features;
    for (const FeatureUse& use : usesOf(index, capabilities, security)) {
        features.push_back(use.feature);
    }
    return features;
}

FeatureUses featureUsesOf(Octets octets) {
    const auto elements = elementsIn(octets);
    const ElementIndex index(elements);
    return usesOf(index, CapabilityElements(index), SecurityElements(index, false));
}

}  // namespace halvane::air
