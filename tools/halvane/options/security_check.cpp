#include "tools/halvane/options/security_check.h"

#include "halvane/model/bss_config.h"

namespace halvane::tool {

namespace {

bool hasWPA(const HalvaneBSSConfig& configuration) {
    return configuration.allowSecurityWPA() || configuration.allowSecurityWPA2();
}

bool usesPassphrase(const HalvaneBSSConfig& configuration) {
    return hasWPA(configuration) || configuration.allowSecurityWEP() ||
           configuration.allowSecurityWPS();
}

// With 802.1X alone a server has the keys, and with WPS the access point makes one.
bool needsPassphrase(const HalvaneBSSConfig& configuration) {
    const bool hasServer =
        configuration.allowKeyManagement8021X() && !configuration.allowKeyManagementPSK();
    return hasWPA(configuration) && !hasServer && !configuration.allowSecurityWPS();
}

}  // namespace

std::optional<UsageError> unprotectedBy(const ConfigOptions& options) {
    const HalvaneBSSConfig& configuration = options.configuration;
    if (options.needsPassphrase && !usesPassphrase(configuration)) {
        return UsageError{"--passphrase without a word of --security makes an open network",
                          "--security=WPA2 makes the passphrase count\n"
                          "--force sends the configuration as it is"};
    }
    if (!options.needsPassphrase && needsPassphrase(configuration)) {
        return UsageError{"a network of WPA or WPA2 with a pre-shared key needs --passphrase",
                          "--key-management=802.1X, if a server has the keys\n"
                          "--force sends the configuration as it is"};
    }
    return std::nullopt;
}

}  // namespace halvane::tool
