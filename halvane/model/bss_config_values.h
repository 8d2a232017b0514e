// The fields of a BSS configuration, with their getters and the setters of independent fields.
// Programs use them through HalvaneBSSConfig (halvane/model/bss_config.h).
//
// A skeleton has the fields in this order.
#ifndef HALVANE_MODEL_BSS_CONFIG_VALUES_H
#define HALVANE_MODEL_BSS_CONFIG_VALUES_H

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "halvane/base/boxed.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/model/bss_config_fields.h"
#include "halvane/model/management_frame_protection.h"  // IWYU pragma: export

namespace halvane {

class BSSConfigValues {
  public:
    // The octets of the SSID and of the passphrase, and the 32 of a pre-shared key. Operations of
    // the record change them.
    const std::optional<ByteBuffer>& ssid() const { return fields_->ssid; }
    const std::optional<ByteBuffer>& passphrase() const { return fields_->passphrase; }
    const std::optional<ByteBuffer>& keyMaterial() const { return fields_->keyMaterial; }

    // The position among several configurations.
    std::int64_t preferredOrder() const { return fields_->preferredOrder; }
    void setPreferredOrder(std::int64_t value) { fields_.change().preferredOrder = value; }

    // The primary channel's number, and a width in MHz.
    std::int64_t channel() const { return fields_->channel; }
    void setChannel(std::int64_t value) { fields_.change().channel = value; }
    std::int64_t channelWidth() const { return fields_->channelWidth; }
    void setChannelWidth(std::int64_t value) { fields_.change().channelWidth = value; }

    // The number of retries of a handshake message, the interval between them, and the interval
    // between new group keys.
    std::int64_t eapolRetryCount() const { return fields_->eapolRetryCount; }
    void setEapolRetryCount(std::int64_t value) { fields_.change().eapolRetryCount = value; }
    std::int64_t eapolRetryInterval() const { return fields_->eapolRetryInterval; }
    void setEapolRetryInterval(std::int64_t value) { fields_.change().eapolRetryInterval = value; }
    std::int64_t eapolGTKRotation() const { return fields_->eapolGTKRotation; }
    void setEapolGTKRotation(std::int64_t value) { fields_.change().eapolGTKRotation = value; }

    // Only a skeleton sets this.
    const std::optional<std::string>& country() const { return fields_->country; }

    // Authentication.
    bool allowAuthenticationOpen() const { return fields_->allowAuthenticationOpen; }
    void setAllowAuthenticationOpen(bool value) {
        fields_.change().allowAuthenticationOpen = value;
    }
    bool allowAuthenticationSharedKey() const { return fields_->allowAuthenticationSharedKey; }
    void setAllowAuthenticationSharedKey(bool value) {
        fields_.change().allowAuthenticationSharedKey = value;
    }
    bool allowAuthenticationLEAP() const { return fields_->allowAuthenticationLEAP; }
    void setAllowAuthenticationLEAP(bool value) {
        fields_.change().allowAuthenticationLEAP = value;
    }

    // Security.
    bool allowSecurityOpen() const { return fields_->allowSecurityOpen; }
    void setAllowSecurityOpen(bool value) { fields_.change().allowSecurityOpen = value; }
    bool allowSecurityWEP() const { return fields_->allowSecurityWEP; }
    void setAllowSecurityWEP(bool value) { fields_.change().allowSecurityWEP = value; }
    bool allowSecurityWPA() const { return fields_->allowSecurityWPA; }
    void setAllowSecurityWPA(bool value) { fields_.change().allowSecurityWPA = value; }
    bool allowSecurityWPA2() const { return fields_->allowSecurityWPA2; }
    void setAllowSecurityWPA2(bool value) { fields_.change().allowSecurityWPA2 = value; }
    bool allowSecurityWPS() const { return fields_->allowSecurityWPS; }
    void setAllowSecurityWPS(bool value) { fields_.change().allowSecurityWPS = value; }

    // Ciphers of single stations.
    bool allowUnicastCipherTKIP() const { return fields_->allowUnicastCipherTKIP; }
    void setAllowUnicastCipherTKIP(bool value) { fields_.change().allowUnicastCipherTKIP = value; }
    bool allowUnicastCipherCCMP() const { return fields_->allowUnicastCipherCCMP; }
    void setAllowUnicastCipherCCMP(bool value) { fields_.change().allowUnicastCipherCCMP = value; }
    bool allowUnicastCipherUseGroup() const { return fields_->allowUnicastCipherUseGroup; }
    void setAllowUnicastCipherUseGroup(bool value) {
        fields_.change().allowUnicastCipherUseGroup = value;
    }

    // Ciphers of the group.
    bool allowMulticastCipherWEP40() const { return fields_->allowMulticastCipherWEP40; }
    void setAllowMulticastCipherWEP40(bool value) {
        fields_.change().allowMulticastCipherWEP40 = value;
    }
    bool allowMulticastCipherWEP104() const { return fields_->allowMulticastCipherWEP104; }
    void setAllowMulticastCipherWEP104(bool value) {
        fields_.change().allowMulticastCipherWEP104 = value;
    }
    bool allowMulticastCipherTKIP() const { return fields_->allowMulticastCipherTKIP; }
    void setAllowMulticastCipherTKIP(bool value) {
        fields_.change().allowMulticastCipherTKIP = value;
    }
    bool allowMulticastCipherCCMP() const { return fields_->allowMulticastCipherCCMP; }
    void setAllowMulticastCipherCCMP(bool value) {
        fields_.change().allowMulticastCipherCCMP = value;
    }

    // Key management.
    bool allowKeyManagementPSK() const { return fields_->allowKeyManagementPSK; }
    void setAllowKeyManagementPSK(bool value) { fields_.change().allowKeyManagementPSK = value; }
    bool allowKeyManagement8021X() const { return fields_->allowKeyManagement8021X; }
    void setAllowKeyManagement8021X(bool value) {
        fields_.change().allowKeyManagement8021X = value;
    }

    // PHY modes.
    bool allowPHY80211b() const { return fields_->allowPHY80211b; }
    void setAllowPHY80211b(bool value) { fields_.change().allowPHY80211b = value; }
    bool allowPHY80211g() const { return fields_->allowPHY80211g; }
    void setAllowPHY80211g(bool value) { fields_.change().allowPHY80211g = value; }
    bool allowPHY80211a() const { return fields_->allowPHY80211a; }
    void setAllowPHY80211a(bool value) { fields_.change().allowPHY80211a = value; }
    bool allowPHY80211n() const { return fields_->allowPHY80211n; }
    void setAllowPHY80211n(bool value) { fields_.change().allowPHY80211n = value; }

    // Methods of WPS.
    bool allowPIN() const { return fields_->allowPIN; }
    void setAllowPIN(bool value) { fields_.change().allowPIN = value; }
    bool allowPushbutton() const { return fields_->allowPushbutton; }
    void setAllowPushbutton(bool value) { fields_.change().allowPushbutton = value; }

    // The device description that WPS sends.
    const std::optional<std::string>& wpsDeviceName() const { return fields_->wpsDeviceName; }
    void setWpsDeviceName(std::optional<std::string> name) {
        fields_.change().wpsDeviceName = std::move(name);
    }
    const std::optional<std::string>& wpsManufacturerName() const {
        return fields_->wpsManufacturerName;
    }
    void setWpsManufacturerName(std::optional<std::string> name) {
        fields_.change().wpsManufacturerName = std::move(name);
    }
    const std::optional<std::string>& wpsModelName() const { return fields_->wpsModelName; }
    void setWpsModelName(std::optional<std::string> name) {
        fields_.change().wpsModelName = std::move(name);
    }
    const std::optional<std::string>& wpsModelNumber() const { return fields_->wpsModelNumber; }
    void setWpsModelNumber(std::optional<std::string> name) {
        fields_.change().wpsModelNumber = std::move(name);
    }

    // The PIN of 8 digits as a number; 0 if there is none.
    std::int64_t wpsPIN() const { return fields_->wpsPIN; }
    void setWpsPIN(std::int64_t value) { fields_.change().wpsPIN = value; }

    // Of the device, for WPS.
    const std::optional<std::string>& wpsSerialNumber() const { return fields_->wpsSerialNumber; }
    void setWpsSerialNumber(std::optional<std::string> name) {
        fields_.change().wpsSerialNumber = std::move(name);
    }

    // Key management by simultaneous authentication of equals (IEEE 802.11-2020, 12.4), which WPA3
    // takes a passphrase for. Absent: the configuration does not speak of it, and nor does its
    // skeleton.
    std::optional<bool> allowKeyManagementSAE() const { return fields_->allowKeyManagementSAE; }
    void setAllowKeyManagementSAE(std::optional<bool> value) {
        fields_.change().allowKeyManagementSAE = value;
    }

    // The protection of management frames (IEEE 802.11-2020, 9.4.2.24.4). Absent: likewise.
    std::optional<HalvaneManagementFrameProtection> managementFrameProtection() const {
        return fields_->managementFrameProtection;
    }
    void setManagementFrameProtection(std::optional<HalvaneManagementFrameProtection> value) {
        fields_.change().managementFrameProtection = value;
    }

    // Whether beacons leave out the SSID, and probe responses go only to stations that ask for it
    // by name (the wildcard SSID of IEEE 802.11-2020, 9.4.2.2). Absent: likewise.
    std::optional<bool> hiddenSSID() const { return fields_->hiddenSSID; }
    void setHiddenSSID(std::optional<bool> value) { fields_.change().hiddenSSID = value; }

    // Whether the access point keeps the stations of the network from reaching each other. Absent:
    // likewise.
    std::optional<bool> stationIsolation() const { return fields_->stationIsolation; }
    void setStationIsolation(std::optional<bool> value) {
        fields_.change().stationIsolation = value;
    }

  protected:
    using Fields = BSSConfigFields;  // where derived classes find the fields

    BSSConfigValues() = default;
    BSSConfigValues(const BSSConfigValues&) = default;
    BSSConfigValues(BSSConfigValues&&) noexcept = default;
    BSSConfigValues& operator=(const BSSConfigValues&) = default;
    BSSConfigValues& operator=(BSSConfigValues&&) noexcept = default;
    ~BSSConfigValues() = default;

    friend bool operator==(const BSSConfigValues&, const BSSConfigValues&) = default;

    // In a box, since a daemon's reply may hold an almost empty configuration in every few bytes of
    // text.
    Boxed<Fields> fields_;
};

}  // namespace halvane

#endif
