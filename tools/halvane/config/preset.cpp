#include "tools/halvane/config/preset.h"

namespace halvane::tool {

void applyPreset(HalvaneBSSConfig& configuration, const Preset& preset) {
    configuration.setSecurityWithOptionString_error(preset.security);
    configuration.setUnicastCipherWithOptionString_error(preset.cipher);
    configuration.setMulticastCipherWithOptionString_error(preset.cipher);
    configuration.setKeyManagementWithOptionString_error(preset.keyManagement);
    configuration.setAllowKeyManagementSAE(preset.sae);
    configuration.setManagementFrameProtection(preset.protection);
}

void allowWhatSecurityDemands(HalvaneBSSConfig& configuration, bool hasPassphrase) {
    const bool isWPA = configuration.allowSecurityWPA();
    const bool isWPA2 = configuration.allowSecurityWPA2();
    if (!isWPA && !isWPA2) return;
    configuration.setAllowUnicastCipherTKIP(isWPA);
    configuration.setAllowUnicastCipherCCMP(isWPA2);
    configuration.setAllowMulticastCipherTKIP(isWPA);
    configuration.setAllowMulticastCipherCCMP(!isWPA);
    if (hasPassphrase || configuration.allowSecurityWPS()) {
        configuration.setAllowKeyManagementPSK(true);
    }
}

}  // namespace halvane::tool
