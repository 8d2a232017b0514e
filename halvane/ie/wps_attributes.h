// Common parts of the Wi-Fi Protected Setup attributes: how a value is read, the types, and a row
// of the table of attributes (halvane/ie/wps_attribute_list.h).
#ifndef HALVANE_IE_WPS_ATTRIBUTES_H
#define HALVANE_IE_WPS_ATTRIBUTES_H

#include <cstddef>
#include <cstdint>

#include "halvane/base/cxx20.h"

namespace halvane {

// How an attribute's value is read and stored.
enum class WPSValueKind : std::uint8_t {
    Integer,  // unsigned, big-endian, as wide as the longest length accepted: 1, 2 or 4 bytes
    Version,  // one byte: the major version in its high four bits, tenths in the low ones
    Bytes,    // stored unchanged
    Vendor,   // a vendor extension: the only item of an array that must already exist
    Devices,  // groups of 8 bytes, each appended to the array of device types
};

// No limit to the length of a value.
inline constexpr std::size_t kWPSAny = SIZE_MAX;

// The first and the last type of the rows. 0x1006, 0x1007, 0x1013, 0x1019, 0x1025, 0x102B, 0x102E,
// 0x1043 and 0x105A to 0x105F are unassigned and have no row.
inline constexpr std::uint16_t kWPSFirstType = 0x1001;
inline constexpr std::uint16_t kWPSLastType = 0x1064;

// In the order of descriptions.
enum class WPSProperty : std::uint8_t {
    apChannel,
    associationState,
    authenticationType,
    authenticationTypeFlags,
    authenticator,
    configMethods,
    configurationError,
    confirmationURL4,
    confirmationURL6,
    connectionType,
    connectionTypeFlags,
    credential,
    deviceName,
    devicePasswordID,
    enrolleeHash1,
    enrolleeHash2,
    enrolleeSNonce1,
    enrolleeSNonce2,
    encryptedSettings,
    encryptionType,
    encryptionTypeFlags,
    enrolleeNonce,
    featureID,
    identity,
    identityProof,
    keyWrapAuthenticator,
    keyIdentifier,
    MACAddress,
    manufacturer,
    messageType,
    modelName,
    modelNumber,
    networkIndex,
    networkKey,
    networkKeyIndex,
    updatedDeviceName,
    updatedPassword,
    oobDevicePassword,
    osVersion,
    powerLevel,
    pskCurrent,
    pskMax,
    publicKey,
    radioEnabled,
    rebootRequest,
    registrarCurrent,
    registrarEstablished,
    registrarList,
    registrarMax,
    registrarNonce,
    requestType,
    responseType,
    rfBands,
    registrarHash1,
    registrarHash2,
    registrarSNonce1,
    registrarSNonce2,
    selectedRegistrar,
    serialNumber,
    wpsSetupState,
    ssid,
    totalNetworks,
    enrolleeUUID,
    registrarUUID,
    vendorExtensions,
    version,
    x509CertificateRequest,
    x509Certificate,
    EAPIdentity,
    messageCounter,
    publicKeyHash,
    rekeyKey,
    keyLifetime,
    permittedConfigMethods,
    selectedRegistrarConfigMethods,
    deviceTypes,
    portableDevice,
    apSetupLocked,
    applicationExtension,
    EAPType,
    initializationVector,
    keyProvidedAutomatically,
    enabled8021X,
    appSessionKey,
    wepTransmitKey,
};

// A row of the table without its names.
struct WPSAttribute {
    std::uint16_t type;    // of the attribute
    WPSValueKind kind;     // how the value is read
    std::size_t shortest;  // bytes
    std::size_t longest;   // bytes
    WPSProperty property;  // where the value is stored
};

}  // namespace halvane

#endif
