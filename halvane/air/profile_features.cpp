#include <optional>

#include "halvane/air/element_id.h"
#include "halvane/air/extended_capabilities.h"
#include "halvane/air/he_mac_capabilities.h"
#include "halvane/air/he_phy_capabilities.h"
#include "halvane/air/profile_features_internal.h"
#include "halvane/air/rsnx.h"
#include "halvane/air/suite_types_internal.h"
#include "halvane/air/vht_capabilities.h"
#include "halvane/air/wmm.h"
#include "halvane/air/wps_summary.h"

namespace halvane::air {

namespace {

// Collects features in the order of their enumerators, which is that of the calls.
class FeatureList {
  public:
    void addIf(bool condition, Feature feature) {
        if (condition) features_.push_back(feature);
    }
    const Features& features() const { return features_; }

  private:
    Features features_;
};

bool isTwtResponder(const CapabilityElements& capabilities, const ExtendedCapabilities& extended) {
    const bool isByHe = capabilities.he && capabilities.he->mac.has(HeMacCapability::TwtResponder);
    return isByHe || extended.has(ExtendedCapability::TwtResponder);
}

bool isMuBeamformer(const CapabilityElements& capabilities) {
    if (capabilities.he && capabilities.he->phy.has(HePhyCapability::MuBeamformer)) return true;
    return capabilities.vht && capabilities.vht->has(VhtCapability::MuBeamformer);
}

void addSecurity(FeatureList& list, const ElementIndex& index, const SecurityElements& security) {
    const auto& akms = security.offer.rsnAkms;
    list.addIf(index.has(ElementId::MobilityDomain) && kFtAkms.isAnyIn(akms),
               Feature::FastTransition);
    list.addIf(index.has(ElementId::FilsIndication) || kFilsAkms.isAnyIn(akms), Feature::Fils);
    list.addIf(security.has(RsnxCapability::SaeHashToElement), Feature::SaeHashToElement);
    list.addIf(security.has(RsnxCapability::SaePk), Feature::SaePk);
}

void addVendor(FeatureList& list, const ElementIndex& index, const std::optional<WpsSummary>& wps) {
    const auto wmm = index.decode<Wmm>(VendorKind::Wmm);
    list.addIf(index.has(VendorKind::Mbo), Feature::Mbo);
    list.addIf(index.has(VendorKind::Wmm), Feature::Wmm);
    list.addIf(wmm && wmm->isUapsdSupported(), Feature::UapsdAvailable);
    list.addIf(index.has(VendorKind::P2p), Feature::WiFiDirect);
    list.addIf(index.has(VendorKind::Wps), Feature::Wps);
    list.addIf(wps && wps->state() == WpsState::Configured, Feature::WpsConfigured);
    list.addIf(index.has(ElementId::MeshId), Feature::Mesh);
    list.addIf(index.has(VendorKind::Hotspot), Feature::Hotspot);
}

}  // namespace

Features featuresOf(const ElementIndex& index, const CapabilityElements& capabilities,
                    const SecurityElements& security) {
    const auto extended = index.decode<ExtendedCapabilities>().value_or(ExtendedCapabilities());
    FeatureList list;
    list.addIf(index.has(ElementId::RmEnabledCapabilities), Feature::RadioMeasurement);
    list.addIf(extended.has(ExtendedCapability::BssTransition), Feature::BssTransition);
    addSecurity(list, index, security);
    addVendor(list, index, security.wps);
    list.addIf(index.has(ElementId::Interworking), Feature::Interworking);
    list.addIf(isTwtResponder(capabilities, extended), Feature::Twt);
    list.addIf(isMuBeamformer(capabilities), Feature::MuBeamformer);
    list.addIf(index.has(ElementId::MultipleBssid), Feature::MultipleBssid);
    list.addIf(index.has(ElementId::MultiLink), Feature::MultiLink);
    list.addIf(extended.has(ExtendedCapability::FtmResponder), Feature::FtmResponder);
    list.addIf(extended.has(ExtendedCapability::ProxyArp), Feature::ProxyArp);
    return list.features();
}

}  // namespace halvane::air
