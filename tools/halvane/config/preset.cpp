#include "tools/halvane/config/preset.h"

#include "tools/halvane/config/configured_security.h"

namespace halvane::tool {

void applyPreset(HalvaneBSSConfig& configuration, const Preset& preset) {
    configuration.setSecurityWithOptionString_error(preset.security);
    configuration.setUnicastCipherWithOptionString_error(preset.cipher);
    configuration.setMulticastCipherWithOptionString_error(preset.cipher);
    configuration.setKeyManagementWithOptionString_error(preset.keyManagement);
    configuration.setAllowKeyManagementSAE(preset.sae);
    configuration.setManagementFrameProtection(preset.protection);
}

namespace {

// TKIP is no choice under a group with CCMP, which stations with TKIP do not understand.
void allowDemandedUnicast(HalvaneBSSConfig& c) {
    c.setAllowUnicastCipherTKIP(c.allowSecurityWPA() && !c.allowMulticastCipherCCMP());
    c.setAllowUnicastCipherCCMP(c.allowSecurityWPA2());
}

void allowDemandedMulticast(HalvaneBSSConfig& c) {
    const bool isTKIP = c.allowSecurityWPA() || c.allowUnicastCipherTKIP();
    const bool isCCMPAlone = c.allowUnicastCipherCCMP() && !c.allowUnicastCipherTKIP();
    c.setAllowMulticastCipherTKIP(isTKIP && !isCCMPAlone);
    c.setAllowMulticastCipherCCMP(!isTKIP || isCCMPAlone);
}

}  // namespace

UnchosenParts allowWhatSecurityDemands(HalvaneBSSConfig& configuration, UnchosenParts unchosen,
                                       bool hasPassphrase) {
    if (!isWPA(configuration)) return {};
    const bool isKeyKnown = hasPassphrase || configuration.allowSecurityWPS();
    if (unchosen.unicast) allowDemandedUnicast(configuration);
    if (unchosen.multicast) allowDemandedMulticast(configuration);
    if (unchosen.keyManagement && isKeyKnown) configuration.setAllowKeyManagementPSK(true);
    return {.unicast = unchosen.unicast && !hasUnicastCipher(configuration),
            .keyManagement = unchosen.keyManagement && !isKeyKnown};
}

}  // namespace halvane::tool
