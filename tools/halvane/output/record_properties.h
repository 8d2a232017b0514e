// The properties of BSS records and of the elements in them.
//
// Keys are the names of the properties. They are stable, because programs read them.
#ifndef TOOLS_HALVANE_OUTPUT_RECORD_PROPERTIES_H
#define TOOLS_HALVANE_OUTPUT_RECORD_PROPERTIES_H

#include <optional>
#include <string_view>
#include <tuple>

#include "halvane/base/vendor.h"
#include "halvane/ie/channel_tuple.h"
#include "halvane/ie/country_ie.h"
#include "halvane/ie/dwds_ie.h"
#include "halvane/ie/ht_capabilities_ie.h"
#include "halvane/ie/ht_operation_ie.h"
#include "halvane/ie/mac.h"
#include "halvane/ie/regulatory_tuple.h"
#include "halvane/ie/rsn_ie.h"
#include "halvane/ie/tessic_ie.h"
#include "halvane/ie/wps_device_type.h"
#include "halvane/ie/wps_ie.h"
#include "halvane/ie/wps_tlvs.h"

#include "tools/halvane/output/property_table.h"

namespace halvane::tool {

template <>
inline constexpr std::string_view kTableName<HalvaneRSNIE> = "rsn";
template <>
inline constexpr auto kProperties<HalvaneRSNIE> = std::tuple{
    HALVANE_PROPERTY(oui),
    HALVANE_PROPERTY(rawIE),
    HALVANE_PROPERTY(isValid),
    HALVANE_PROPERTY(version),
    HALVANE_PROPERTY(allowUnicastCipherTKIP),
    HALVANE_PROPERTY(allowUnicastCipherCCMP),
    HALVANE_PROPERTY(allowUnicastCipherUseGroup),
    HALVANE_PROPERTY(allowMulticastCipherWEP40),
    HALVANE_PROPERTY(allowMulticastCipherWEP104),
    HALVANE_PROPERTY(allowMulticastCipherTKIP),
    HALVANE_PROPERTY(allowMulticastCipherCCMP),
    HALVANE_PROPERTY(allowKeyManagementPSK),
    HALVANE_PROPERTY(allowKeyManagement8021X),
    HALVANE_PROPERTY(supportsPreAuthentication),
    HALVANE_PROPERTY(hasNoPairwise),
    HALVANE_PROPERTY(isPeerKeyEnabled),
    HALVANE_PROPERTY(replayCounterPTKSA),
    HALVANE_PROPERTY(replayCounterGTKSA),
    HALVANE_PROPERTY(pmkids),
};

template <>
inline constexpr std::string_view kTableName<HalvaneChannelTuple> = "countryChannels";
template <>
inline constexpr auto kProperties<HalvaneChannelTuple> = std::tuple{
    HALVANE_PROPERTY(firstChannel),
    HALVANE_PROPERTY(numChannels),
    HALVANE_PROPERTY(maxTxPower),
};

template <>
inline constexpr std::string_view kTableName<HalvaneRegulatoryTuple> = "countryRegulation";
template <>
inline constexpr auto kProperties<HalvaneRegulatoryTuple> = std::tuple{
    HALVANE_PROPERTY(extensionIdentifier),
    HALVANE_PROPERTY(regulatoryClass),
    HALVANE_PROPERTY(coverageClass),
};

template <>
inline constexpr std::string_view kTableName<HalvaneCountryIE> = "countryElement";
template <>
inline constexpr auto kProperties<HalvaneCountryIE> = std::tuple{
    HALVANE_PROPERTY(rawIE),
    HALVANE_PROPERTY(isValid),
    HALVANE_PROPERTY(countryCode),
    HALVANE_PROPERTY(channelTuples),
    HALVANE_PROPERTY(regulatoryTuples),
};

template <>
inline constexpr std::string_view kTableName<HalvaneTessicIE> = "tessicElement";
template <>
inline constexpr auto kProperties<HalvaneTessicIE> = std::tuple{
    HALVANE_PROPERTY(rawIE),          HALVANE_PROPERTY(isValid),
    HALVANE_PROPERTY(TessicVersion),  HALVANE_PROPERTY(TessicProductName),
    HALVANE_PROPERTY(isWoWCapable),   HALVANE_PROPERTY(hasInterferenceRobustness),
    HALVANE_PROPERTY(isUnconfigured), HALVANE_PROPERTY(isPPPoEServer),
    HALVANE_PROPERTY(isGuestNetwork), HALVANE_PROPERTY(hasLegacyWDS),
    HALVANE_PROPERTY(isWPSCapable),   HALVANE_PROPERTY(isWPSActive),
    HALVANE_PROPERTY(isSAWCapable),
};

template <>
inline constexpr std::string_view kTableName<HalvaneDWDSIE> = "dwdsElement";
template <>
inline constexpr auto kProperties<HalvaneDWDSIE> = std::tuple{
    HALVANE_PROPERTY(rawIE),
    HALVANE_PROPERTY(isValid),
    HALVANE_PROPERTY(DWDSRole),
    HALVANE_PROPERTY(isAMPDUNotSupportedOverDWDS),
    HALVANE_PROPERTY(isAMPDUWorkaroundOverDWDS),
    HALVANE_PROPERTY(isAMPDUFullSupportOverDWDS),
    HALVANE_PROPERTY(isClosedNetworkOverDWDS),
};

// The company that defines a device type determines its names. The record looks them up on request.
inline HalvaneWPSDeviceType withNames(HalvaneWPSDeviceType deviceType) {
    if (deviceType.companyName() == kVendorCompanyName) {
        deviceType.parseDeviceTypeTessic();
    } else if (deviceType.isValid()) {
        deviceType.parseDeviceTypeWFA();
    }
    return deviceType;
}

template <>
inline constexpr std::string_view kTableName<HalvaneWPSDeviceType> = "wpsDeviceType";
template <>
inline constexpr auto kProperties<HalvaneWPSDeviceType> = std::tuple{
    HALVANE_PROPERTY(rawDeviceType),
    HALVANE_PROPERTY(isValid),
    HALVANE_PROPERTY(categoryID),
    HALVANE_PROPERTY(SMI),
    HALVANE_PROPERTY(subCategoryID),
    HALVANE_PROPERTY(companyName),
    Property{"category",
             [](const HalvaneWPSDeviceType& type) { return withNames(type).category(); }},
    Property{"subCategory",
             [](const HalvaneWPSDeviceType& type) { return withNames(type).subCategory(); }},
};

template <>
inline constexpr std::string_view kTableName<HalvaneWPSTLVs> = "wpsAttributes";
template <>
inline constexpr auto kProperties<HalvaneWPSTLVs> = std::tuple{
    HALVANE_PROPERTY(rawTLVs), HALVANE_PROPERTY(isValid),
// clang-format off
#define HALVANE_WPS_PROPERTY(type, name, kind, shortest, longest, property, setter, label) \
    HALVANE_PROPERTY(property),
#include "halvane/ie/wps_attribute_list.h"
    // clang-format on
};

template <>
inline constexpr std::string_view kTableName<HalvaneWPSIE> = "wpsElement";
template <>
inline constexpr auto kProperties<HalvaneWPSIE> = std::tuple{
    HALVANE_PROPERTY(rawIE),
    HALVANE_PROPERTY(isValid),
    HALVANE_PROPERTY(tlvs),
};

template <>
inline constexpr std::string_view kTableName<HalvaneHTCapabilitiesIE> = "htCapabilities";
template <>
inline constexpr auto kProperties<HalvaneHTCapabilitiesIE> = std::tuple{
    HALVANE_PROPERTY(rawIE),
    HALVANE_PROPERTY(isValid),
    HALVANE_PROPERTY(capabilities),
    HALVANE_PROPERTY(supportsLDPCCoding),
    HALVANE_PROPERTY(supports40MHzOperation),
    HALVANE_PROPERTY(staticSMPowerSaveMode),
    HALVANE_PROPERTY(dynamicSMPowerSaveMode),
    HALVANE_PROPERTY(supportsGreenfield),
    HALVANE_PROPERTY(supports20MHzShortGI),
    HALVANE_PROPERTY(supports40MHzShortGI),
    HALVANE_PROPERTY(supportsTxSTBC),
    HALVANE_PROPERTY(numSupportedRxSTBC),
    HALVANE_PROPERTY(supportsHTDelayedBlockAck),
    HALVANE_PROPERTY(maximumAMSDULength),
    HALVANE_PROPERTY(supportsDSSSCCK40MHz),
    HALVANE_PROPERTY(fortyMHzIntolerant),
    HALVANE_PROPERTY(supportsLSIGTXOPProtectionSupport),
    HALVANE_PROPERTY(paramsAMPDU),
    HALVANE_PROPERTY(supportedMCSSet),
    HALVANE_PROPERTY(mcsRates),
    HALVANE_PROPERTY(extendedCapabilities),
    HALVANE_PROPERTY(transmitBeamformingCapabilities),
    HALVANE_PROPERTY(aselCapability),
};

template <>
inline constexpr std::string_view kTableName<HalvaneHTOperationIE> = "htOperation";
template <>
inline constexpr auto kProperties<HalvaneHTOperationIE> = std::tuple{
    HALVANE_PROPERTY(rawIE),
    HALVANE_PROPERTY(isValid),
    HALVANE_PROPERTY(primaryChannel),
    HALVANE_PROPERTY(capabilities1),
    HALVANE_PROPERTY(capabilities2),
    HALVANE_PROPERTY(capabilities3),
    HALVANE_PROPERTY(secondaryChannelOffset),
    HALVANE_PROPERTY(staChannelWidth),
    HALVANE_PROPERTY(supportsRIFS),
    HALVANE_PROPERTY(htProtectionMode),
    HALVANE_PROPERTY(nonGreenfieldHTSTAsPresent),
    HALVANE_PROPERTY(nonHTSTAsPresentOBSS),
    HALVANE_PROPERTY(transmitsDualBeacon),
    HALVANE_PROPERTY(requiresDualCTSProtection),
    HALVANE_PROPERTY(isSTBCBeacon),
    HALVANE_PROPERTY(supportsLSIGTXOPProtectionFullSupport),
    HALVANE_PROPERTY(hasActivePCO),
    HALVANE_PROPERTY(pcoPhase20MHz),
    HALVANE_PROPERTY(pcoPhase40MHz),
    HALVANE_PROPERTY(basicMCSSet),
};

template <>
inline constexpr std::string_view kTableName<HalvaneMAC> = "bss";
template <>
inline constexpr auto kProperties<HalvaneMAC> = std::tuple{
    Property{"mac", [](const HalvaneMAC& record) { return addressIn(record.mac()); }},
    Property{"SSID", [](const HalvaneMAC& record) { return shownOctetsIn(record.SSID()); }},
    Property{"SSIDHex", &HalvaneMAC::SSID},
    HALVANE_PROPERTY(channel),
    HALVANE_PROPERTY(channelWidth),
    HALVANE_PROPERTY(RSSI),
    HALVANE_PROPERTY(noise),
    HALVANE_PROPERTY(beaconInterval),
    HALVANE_PROPERTY(capabilities),
    HALVANE_PROPERTY(supportedRates),
    HALVANE_PROPERTY(maxPHYRate),
    HALVANE_PROPERTY(securityFriendlyName),
    HALVANE_PROPERTY(invalidIEs),
    HALVANE_PROPERTY(rsn),
    HALVANE_PROPERTY(wpa),
    HALVANE_PROPERTY(countryIE),
    HALVANE_PROPERTY(tessicIE),
    HALVANE_PROPERTY(dwdsIE),
    HALVANE_PROPERTY(wpsIE),
    HALVANE_PROPERTY(HTCaps),
    HALVANE_PROPERTY(HTOperation),
};

// --- Texts of octets ---

// Programs know the order of the properties above, so the texts follow them and do not stand among
// them.

// The attributes of Wi-Fi Protected Setup that are texts, under the keys of their octets.
struct SetupTexts {
    const HalvaneWPSTLVs& attributes;
};

#define HALVANE_SETUP_TEXT(getter)                                                                \
    ::halvane::tool::Property {                                                                   \
#getter, [](const SetupTexts& texts) { return shownOctetsIn(texts.attributes.getter()); } \
    }

template <>
inline constexpr std::string_view kTableName<SetupTexts> = "wpsTexts";
template <>
inline constexpr auto kProperties<SetupTexts> = std::tuple{
    HALVANE_SETUP_TEXT(deviceName),        HALVANE_SETUP_TEXT(manufacturer),
    HALVANE_SETUP_TEXT(modelName),         HALVANE_SETUP_TEXT(modelNumber),
    HALVANE_SETUP_TEXT(serialNumber),      HALVANE_SETUP_TEXT(ssid),
    HALVANE_SETUP_TEXT(identity),          HALVANE_SETUP_TEXT(EAPIdentity),
    HALVANE_SETUP_TEXT(updatedDeviceName), HALVANE_SETUP_TEXT(updatedPassword),
    HALVANE_SETUP_TEXT(confirmationURL4),  HALVANE_SETUP_TEXT(confirmationURL6),
};

inline std::optional<ShownOctets> countryTextOf(const HalvaneMAC& record) {
    const auto& country = record.countryIE();
    if (!country) return std::nullopt;
    return shownOctetsIn(country->countryCode());
}

// Absent without a text.
inline std::optional<SetupTexts> setupTextsOf(const HalvaneMAC& record) {
    const auto& setup = record.wpsIE();
    if (!setup || !setup->tlvs()) return std::nullopt;
    const SetupTexts texts{*setup->tlvs()};
    bool isThereOne = false;
    forEachProperty<SetupTexts>(
        [&](const auto& row) { isThereOne = isThereOne || row.read(texts).has_value(); });
    if (!isThereOne) return std::nullopt;
    return texts;
}

struct RecordTexts {
    const HalvaneMAC& record;
};

template <>
inline constexpr std::string_view kTableName<RecordTexts> = "texts";
template <>
inline constexpr auto kProperties<RecordTexts> = std::tuple{
    Property{"countryCodeText",
             [](const RecordTexts& texts) { return countryTextOf(texts.record); }},
    Property{"wpsText", [](const RecordTexts& texts) { return setupTextsOf(texts.record); }},
};

}  // namespace halvane::tool

#endif
