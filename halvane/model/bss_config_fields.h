// The fields of a BSS configuration (halvane/model/bss_config.h). Programs use that class and not
// these fields.
#ifndef HALVANE_MODEL_BSS_CONFIG_FIELDS_H
#define HALVANE_MODEL_BSS_CONFIG_FIELDS_H

#include <cstdint>
#include <optional>
#include <string>

#include "halvane/base/byte_buffer.h"
#include "halvane/model/management_frame_protection.h"

namespace halvane {

// A fresh object equals that of an empty skeleton: each field is 0, false or absent.
struct BSSConfigFields {
    // Each is what the function of HalvaneBSSConfig with its name returns.
    std::optional<ByteBuffer> ssid;
    std::optional<ByteBuffer> passphrase;
    std::optional<ByteBuffer> keyMaterial;
    std::int64_t preferredOrder = 0;
    std::int64_t channel = 0;
    std::int64_t channelWidth = 0;
    std::int64_t eapolRetryCount = 0;
    std::int64_t eapolRetryInterval = 0;
    std::int64_t eapolGTKRotation = 0;
    std::optional<std::string> country;
    bool allowAuthenticationOpen = false;
    bool allowAuthenticationSharedKey = false;
    bool allowAuthenticationLEAP = false;
    bool allowSecurityOpen = false;
    bool allowSecurityWEP = false;
    bool allowSecurityWPA = false;
    bool allowSecurityWPA2 = false;
    bool allowSecurityWPS = false;
    bool allowUnicastCipherTKIP = false;
    bool allowUnicastCipherCCMP = false;
    bool allowUnicastCipherUseGroup = false;
    bool allowMulticastCipherWEP40 = false;
    bool allowMulticastCipherWEP104 = false;
    bool allowMulticastCipherTKIP = false;
    bool allowMulticastCipherCCMP = false;
    bool allowKeyManagementPSK = false;
    bool allowKeyManagement8021X = false;
    bool allowPHY80211b = false;
    bool allowPHY80211g = false;
    bool allowPHY80211a = false;
    bool allowPHY80211n = false;
    bool allowPIN = false;
    bool allowPushbutton = false;
    std::optional<std::string> wpsDeviceName;
    std::optional<std::string> wpsManufacturerName;
    std::optional<std::string> wpsModelName;
    std::optional<std::string> wpsModelNumber;
    std::int64_t wpsPIN = 0;
    std::optional<std::string> wpsSerialNumber;
    std::optional<bool> allowKeyManagementSAE;
    std::optional<HalvaneManagementFrameProtection> managementFrameProtection;
    std::optional<bool> hiddenSSID;
    std::optional<bool> stationIsolation;

    friend bool operator==(const BSSConfigFields&, const BSSConfigFields&) = default;
};

}  // namespace halvane

#endif
