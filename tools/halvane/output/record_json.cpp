#include "tools/halvane/output/record_json.h"

#include <optional>
#include <vector>

#include "halvane/base/escaped_text.h"
#include "halvane/base/vendor.h"
#include "halvane/ie/channel_tuple.h"
#include "halvane/ie/country_ie.h"
#include "halvane/ie/dwds_ie.h"
#include "halvane/ie/fancy_formatting.h"
#include "halvane/ie/ht_capabilities_ie.h"
#include "halvane/ie/ht_operation_ie.h"
#include "halvane/ie/regulatory_tuple.h"
#include "halvane/ie/rsn_ie.h"
#include "halvane/ie/tessic_ie.h"
#include "halvane/ie/wps_attributes.h"
#include "halvane/ie/wps_device_type.h"
#include "halvane/ie/wps_ie.h"
#include "halvane/ie/wps_tlvs.h"

namespace halvane::tool {

namespace {

// Plain values, beside the classes below.
using tool::jsonOf;

// Each element class has a list of its properties below.
JSON jsonOf(const HalvaneRSNIE& ie);
JSON jsonOf(const HalvaneChannelTuple& tuple);
JSON jsonOf(const HalvaneRegulatoryTuple& tuple);
JSON jsonOf(const HalvaneCountryIE& ie);
JSON jsonOf(const HalvaneTessicIE& ie);
JSON jsonOf(const HalvaneDWDSIE& ie);
JSON jsonOf(const HalvaneWPSDeviceType& deviceType);
JSON jsonOf(const HalvaneWPSTLVs& tlvs);
JSON jsonOf(const HalvaneWPSIE& ie);
JSON jsonOf(const HalvaneHTCapabilitiesIE& ie);
JSON jsonOf(const HalvaneHTOperationIE& ie);

template <typename Value>
JSON jsonOf(const std::vector<Value>& values) {
    JSON array = JSON::array();
    for (const Value& value : values) array.push_back(jsonOf(value));
    return array;
}

template <typename Value>
JSON jsonOf(const std::optional<Value>& value) {
    return value ? jsonOf(*value) : JSON();
}

#define HALVANE_MEMBER(property) putMember(object, #property, jsonOf(ie.property()))

JSON jsonOf(const HalvaneRSNIE& ie) {
    JSON object = JSON::object();
    HALVANE_MEMBER(oui);
    HALVANE_MEMBER(rawIE);
    HALVANE_MEMBER(isValid);
    HALVANE_MEMBER(version);
    HALVANE_MEMBER(allowUnicastCipherTKIP);
    HALVANE_MEMBER(allowUnicastCipherCCMP);
    HALVANE_MEMBER(allowUnicastCipherUseGroup);
    HALVANE_MEMBER(allowMulticastCipherWEP40);
    HALVANE_MEMBER(allowMulticastCipherWEP104);
    HALVANE_MEMBER(allowMulticastCipherTKIP);
    HALVANE_MEMBER(allowMulticastCipherCCMP);
    HALVANE_MEMBER(allowKeyManagementPSK);
    HALVANE_MEMBER(allowKeyManagement8021X);
    HALVANE_MEMBER(supportsPreAuthentication);
    HALVANE_MEMBER(hasNoPairwise);
    HALVANE_MEMBER(isPeerKeyEnabled);
    HALVANE_MEMBER(replayCounterPTKSA);
    HALVANE_MEMBER(replayCounterGTKSA);
    HALVANE_MEMBER(pmkids);
    return object;
}

JSON jsonOf(const HalvaneChannelTuple& ie) {
    JSON object = JSON::object();
    HALVANE_MEMBER(firstChannel);
    HALVANE_MEMBER(numChannels);
    HALVANE_MEMBER(maxTxPower);
    return object;
}

JSON jsonOf(const HalvaneRegulatoryTuple& ie) {
    JSON object = JSON::object();
    HALVANE_MEMBER(extensionIdentifier);
    HALVANE_MEMBER(regulatoryClass);
    HALVANE_MEMBER(coverageClass);
    return object;
}

JSON jsonOf(const HalvaneCountryIE& ie) {
    JSON object = JSON::object();
    HALVANE_MEMBER(rawIE);
    HALVANE_MEMBER(isValid);
    HALVANE_MEMBER(countryCode);
    HALVANE_MEMBER(channelTuples);
    HALVANE_MEMBER(regulatoryTuples);
    return object;
}

JSON jsonOf(const HalvaneTessicIE& ie) {
    JSON object = JSON::object();
    HALVANE_MEMBER(rawIE);
    HALVANE_MEMBER(isValid);
    HALVANE_MEMBER(TessicVersion);
    HALVANE_MEMBER(TessicProductName);
    HALVANE_MEMBER(isWoWCapable);
    HALVANE_MEMBER(hasInterferenceRobustness);
    HALVANE_MEMBER(isUnconfigured);
    HALVANE_MEMBER(isPPPoEServer);
    HALVANE_MEMBER(isGuestNetwork);
    HALVANE_MEMBER(hasLegacyWDS);
    HALVANE_MEMBER(isWPSCapable);
    HALVANE_MEMBER(isWPSActive);
    HALVANE_MEMBER(isSAWCapable);
    return object;
}

JSON jsonOf(const HalvaneDWDSIE& ie) {
    JSON object = JSON::object();
    HALVANE_MEMBER(rawIE);
    HALVANE_MEMBER(isValid);
    HALVANE_MEMBER(DWDSRole);
    HALVANE_MEMBER(isAMPDUNotSupportedOverDWDS);
    HALVANE_MEMBER(isAMPDUWorkaroundOverDWDS);
    HALVANE_MEMBER(isAMPDUFullSupportOverDWDS);
    HALVANE_MEMBER(isClosedNetworkOverDWDS);
    return object;
}

// The names of a device type are found on request, by the company that defines them.
HalvaneWPSDeviceType withNames(HalvaneWPSDeviceType deviceType) {
    if (deviceType.companyName() == kVendorCompanyName) {
        deviceType.parseDeviceTypeTessic();
    } else if (deviceType.isValid()) {
        deviceType.parseDeviceTypeWFA();
    }
    return deviceType;
}

JSON jsonOf(const HalvaneWPSDeviceType& deviceType) {
    const HalvaneWPSDeviceType ie = withNames(deviceType);
    JSON object = JSON::object();
    HALVANE_MEMBER(rawDeviceType);
    HALVANE_MEMBER(isValid);
    HALVANE_MEMBER(categoryID);
    HALVANE_MEMBER(SMI);
    HALVANE_MEMBER(subCategoryID);
    HALVANE_MEMBER(companyName);
    HALVANE_MEMBER(category);
    HALVANE_MEMBER(subCategory);
    return object;
}

JSON jsonOf(const HalvaneWPSTLVs& ie) {
    JSON object = JSON::object();
    HALVANE_MEMBER(rawTLVs);
    HALVANE_MEMBER(isValid);
#define HALVANE_WPS_PROPERTY(type, name, kind, shortest, longest, property, setter, label) \
    HALVANE_MEMBER(property);
#include "halvane/ie/wps_attribute_list.h"
    return object;
}

JSON jsonOf(const HalvaneWPSIE& ie) {
    JSON object = JSON::object();
    HALVANE_MEMBER(rawIE);
    HALVANE_MEMBER(isValid);
    HALVANE_MEMBER(tlvs);
    return object;
}

JSON jsonOf(const HalvaneHTCapabilitiesIE& ie) {
    JSON object = JSON::object();
    HALVANE_MEMBER(rawIE);
    HALVANE_MEMBER(isValid);
    HALVANE_MEMBER(capabilities);
    HALVANE_MEMBER(supportsLDPCCoding);
    HALVANE_MEMBER(supports40MHzOperation);
    HALVANE_MEMBER(staticSMPowerSaveMode);
    HALVANE_MEMBER(dynamicSMPowerSaveMode);
    HALVANE_MEMBER(supportsGreenfield);
    HALVANE_MEMBER(supports20MHzShortGI);
    HALVANE_MEMBER(supports40MHzShortGI);
    HALVANE_MEMBER(supportsTxSTBC);
    HALVANE_MEMBER(numSupportedRxSTBC);
    HALVANE_MEMBER(supportsHTDelayedBlockAck);
    HALVANE_MEMBER(maximumAMSDULength);
    HALVANE_MEMBER(supportsDSSSCCK40MHz);
    HALVANE_MEMBER(fortyMHzIntolerant);
    HALVANE_MEMBER(supportsLSIGTXOPProtectionSupport);
    HALVANE_MEMBER(paramsAMPDU);
    HALVANE_MEMBER(supportedMCSSet);
    HALVANE_MEMBER(mcsRates);
    HALVANE_MEMBER(extendedCapabilities);
    HALVANE_MEMBER(transmitBeamformingCapabilities);
    HALVANE_MEMBER(aselCapability);
    return object;
}

JSON jsonOf(const HalvaneHTOperationIE& ie) {
    JSON object = JSON::object();
    HALVANE_MEMBER(rawIE);
    HALVANE_MEMBER(isValid);
    HALVANE_MEMBER(primaryChannel);
    HALVANE_MEMBER(capabilities1);
    HALVANE_MEMBER(capabilities2);
    HALVANE_MEMBER(capabilities3);
    HALVANE_MEMBER(secondaryChannelOffset);
    HALVANE_MEMBER(staChannelWidth);
    HALVANE_MEMBER(supportsRIFS);
    HALVANE_MEMBER(htProtectionMode);
    HALVANE_MEMBER(nonGreenfieldHTSTAsPresent);
    HALVANE_MEMBER(nonHTSTAsPresentOBSS);
    HALVANE_MEMBER(transmitsDualBeacon);
    HALVANE_MEMBER(requiresDualCTSProtection);
    HALVANE_MEMBER(isSTBCBeacon);
    HALVANE_MEMBER(supportsLSIGTXOPProtectionFullSupport);
    HALVANE_MEMBER(hasActivePCO);
    HALVANE_MEMBER(pcoPhase20MHz);
    HALVANE_MEMBER(pcoPhase40MHz);
    HALVANE_MEMBER(basicMCSSet);
    return object;
}

JSON textOf(const std::optional<ByteBuffer>& ssid) {
    return ssid ? JSON(escapedText(ssid->bytes())) : JSON();
}

}  // namespace

JSON addressOf(const ByteBuffer& address) {
    return address.empty() ? JSON() : JSON(FancyFormatting::formattedMAC(address));
}

void appendRecord(JSON& object, const HalvaneMAC& ie) {
    putMember(object, "mac", addressOf(ie.mac()));
    putMember(object, "SSID", textOf(ie.SSID()));
    putMember(object, "SSIDHex", jsonOf(ie.SSID()));
    HALVANE_MEMBER(channel);
    HALVANE_MEMBER(channelWidth);
    HALVANE_MEMBER(RSSI);
    HALVANE_MEMBER(noise);
    HALVANE_MEMBER(beaconInterval);
    HALVANE_MEMBER(capabilities);
    HALVANE_MEMBER(supportedRates);
    HALVANE_MEMBER(maxPHYRate);
    HALVANE_MEMBER(securityFriendlyName);
    HALVANE_MEMBER(invalidIEs);
    HALVANE_MEMBER(rsn);
    HALVANE_MEMBER(wpa);
    HALVANE_MEMBER(countryIE);
    HALVANE_MEMBER(tessicIE);
    HALVANE_MEMBER(dwdsIE);
    HALVANE_MEMBER(wpsIE);
    HALVANE_MEMBER(HTCaps);
    HALVANE_MEMBER(HTOperation);
}

}  // namespace halvane::tool
