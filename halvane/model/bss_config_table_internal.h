// The fields of a BSS configuration as one list, for code that treats all fields alike.
#ifndef HALVANE_MODEL_BSS_CONFIG_TABLE_INTERNAL_H
#define HALVANE_MODEL_BSS_CONFIG_TABLE_INTERNAL_H

#include <string>

#include "halvane/model/management_frame_protection.h"  // IWYU pragma: export

// The fields in the order of a skeleton, each with its key:
//
//   GIVEN(type, getter, key)           may be absent, and is no NAME
//   NUMBER(getter, setter, key, value) signed 64-bit, with its value at init()
//   FLAG(getter, setter, key, value)   likewise
//   NAME(getter, setter, key)          text that may be absent
//
// The keys of two authentication flags have one superfluous word, which the format requires.
#define HALVANE_BSS_CONFIG_FIELDS(GIVEN, NUMBER, FLAG, NAME)                                     \
    GIVEN(ByteBuffer, ssid, "SSID")                                                              \
    GIVEN(ByteBuffer, passphrase, "Passphrase")                                                  \
    GIVEN(ByteBuffer, keyMaterial, "KeyMaterial")                                                \
    NUMBER(preferredOrder, setPreferredOrder, "PreferredOrder", 0)                               \
    NUMBER(channel, setChannel, "channel", 0)                                                    \
    NUMBER(channelWidth, setChannelWidth, "channelWidth", 0)                                     \
    NUMBER(eapolRetryCount, setEapolRetryCount, "eapolRetryCount", 3)                            \
    NUMBER(eapolRetryInterval, setEapolRetryInterval, "eapolRetryInterval", 100)                 \
    NUMBER(eapolGTKRotation, setEapolGTKRotation, "eapolGTKRotation", 300)                       \
    GIVEN(std::string, country, "country")                                                       \
    FLAG(allowAuthenticationOpen, setAllowAuthenticationOpen, "AuthenticationOpen", true)        \
    FLAG(allowAuthenticationSharedKey, setAllowAuthenticationSharedKey,                          \
         "AuthenticationOpenSharedKey", false)                                                   \
    FLAG(allowAuthenticationLEAP, setAllowAuthenticationLEAP, "AuthenticationOpenLEAP", false)   \
    FLAG(allowSecurityOpen, setAllowSecurityOpen, "SecurityOpen", true)                          \
    FLAG(allowSecurityWEP, setAllowSecurityWEP, "SecurityWEP", false)                            \
    FLAG(allowSecurityWPA, setAllowSecurityWPA, "SecurityWPA", false)                            \
    FLAG(allowSecurityWPA2, setAllowSecurityWPA2, "SecurityWPA2", false)                         \
    FLAG(allowSecurityWPS, setAllowSecurityWPS, "SecurityWPS", false)                            \
    FLAG(allowUnicastCipherTKIP, setAllowUnicastCipherTKIP, "CipherUnicastTKIP", false)          \
    FLAG(allowUnicastCipherCCMP, setAllowUnicastCipherCCMP, "CipherUnicastCCMP", false)          \
    FLAG(allowUnicastCipherUseGroup, setAllowUnicastCipherUseGroup, "CipherUnicastUseGroup",     \
         false)                                                                                  \
    FLAG(allowMulticastCipherWEP40, setAllowMulticastCipherWEP40, "CipherMulticastWEP40", false) \
    FLAG(allowMulticastCipherWEP104, setAllowMulticastCipherWEP104, "CipherMulticastWEP104",     \
         false)                                                                                  \
    FLAG(allowMulticastCipherTKIP, setAllowMulticastCipherTKIP, "CipherMulticastTKIP", false)    \
    FLAG(allowMulticastCipherCCMP, setAllowMulticastCipherCCMP, "CipherMulticastCCMP", false)    \
    FLAG(allowKeyManagementPSK, setAllowKeyManagementPSK, "KeyManagementPSK", false)             \
    FLAG(allowKeyManagement8021X, setAllowKeyManagement8021X, "KeyManagement8021X", false)       \
    FLAG(allowPHY80211b, setAllowPHY80211b, "PHYModes80211b", true)                              \
    FLAG(allowPHY80211g, setAllowPHY80211g, "PHYModes80211g", true)                              \
    FLAG(allowPHY80211a, setAllowPHY80211a, "PHYModes80211a", true)                              \
    FLAG(allowPHY80211n, setAllowPHY80211n, "PHYModes80211n", true)                              \
    FLAG(allowPIN, setAllowPIN, "allowPIN", false)                                               \
    FLAG(allowPushbutton, setAllowPushbutton, "allowPushbutton", false)                          \
    NAME(wpsDeviceName, setWpsDeviceName, "wpsDeviceName")                                       \
    NAME(wpsManufacturerName, setWpsManufacturerName, "wpsManufacturerName")                     \
    NAME(wpsModelName, setWpsModelName, "wpsModelName")                                          \
    NAME(wpsModelNumber, setWpsModelNumber, "wpsModelNumber")                                    \
    NUMBER(wpsPIN, setWpsPIN, "wpsPIN", 0)                                                       \
    NAME(wpsSerialNumber, setWpsSerialNumber, "wpsSerialNumber")                                 \
    GIVEN(bool, allowKeyManagementSAE, "KeyManagementSAE")                                       \
    GIVEN(HalvaneManagementFrameProtection, managementFrameProtection,                           \
          "ManagementFrameProtection")                                                           \
    GIVEN(bool, hiddenSSID, "HiddenSSID")                                                        \
    GIVEN(bool, stationIsolation, "StationIsolation")

#endif
