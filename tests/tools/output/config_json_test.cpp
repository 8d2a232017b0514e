#include "tools/halvane/output/config_json.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "halvane/base/property_list_value.h"

#include "tests/support/written_json.h"

using halvane::HalvaneBSSConfig;
using halvane::testing::jsonOf;
using JSON = nlohmann::ordered_json;

namespace {

TEST(ConfigJSON, HasTheNamesOfThePropertiesThatArePresent) {
    EXPECT_EQ(jsonOf(HalvaneBSSConfig::init()), JSON::parse(R"({
        "preferredOrder": 0, "channel": 0, "channelWidth": 0, "eapolRetryCount": 3,
        "eapolRetryInterval": 100, "eapolGTKRotation": 300,
        "allowAuthenticationOpen": true, "allowAuthenticationSharedKey": false,
        "allowAuthenticationLEAP": false, "allowSecurityOpen": true, "allowSecurityWEP": false,
        "allowSecurityWPA": false, "allowSecurityWPA2": false, "allowSecurityWPS": false,
        "allowUnicastCipherTKIP": false, "allowUnicastCipherCCMP": false,
        "allowUnicastCipherUseGroup": false, "allowMulticastCipherWEP40": false,
        "allowMulticastCipherWEP104": false, "allowMulticastCipherTKIP": false,
        "allowMulticastCipherCCMP": false, "allowKeyManagementPSK": false,
        "allowKeyManagement8021X": false, "allowPHY80211b": true, "allowPHY80211g": true,
        "allowPHY80211a": true, "allowPHY80211n": true, "allowPIN": false,
        "allowPushbutton": false, "wpsPIN": 0})"));
}

TEST(ConfigJSON, WritesOctetsAsDigitsAndTextsAsTheyAre) {
    halvane::PropertyListDictionary skeleton;
    skeleton.set("country", "DE");
    auto configuration = HalvaneBSSConfig::initWithSkeletonRepresentation(skeleton);
    EXPECT_TRUE(configuration.setSSIDFromHexString_error("00FF"));
    EXPECT_TRUE(configuration.setWirelessPassphrase_error("password"));
    configuration.setWpsDeviceName("Caf\xC3\xA9 \"1\"");
    configuration.setChannel(INT64_MIN);
    const JSON object = jsonOf(configuration);
    EXPECT_EQ(object["ssid"], "00ff");
    EXPECT_EQ(object["ssidText"], "\\x00\\xFF");
    EXPECT_EQ((--object.end()).key(), "ssidText");
    EXPECT_EQ(object["passphrase"], "70617373776f7264");
    EXPECT_EQ(object["country"], "DE");
    EXPECT_EQ(object["wpsDeviceName"], "Caf\xC3\xA9 \"1\"");
    EXPECT_EQ(object["channel"], INT64_MIN);
    EXPECT_EQ(object["allowSecurityOpen"], false);
    EXPECT_FALSE(object.contains("keyMaterial"));
}

TEST(ConfigJSON, HasSAEAndFrameProtectionOnlyIfSet) {
    auto configuration = HalvaneBSSConfig::init();
    JSON expected = jsonOf(configuration);
    configuration.setAllowKeyManagementSAE(true);
    configuration.setManagementFrameProtection(halvane::kHalvaneManagementFrameProtectionRequired);
    expected["allowKeyManagementSAE"] = true;
    expected["managementFrameProtection"] = 2;
    EXPECT_EQ(jsonOf(configuration), expected);
}

TEST(ConfigJSON, HasHiddenSSIDAndIsolationOnlyIfSet) {
    auto configuration = HalvaneBSSConfig::init();
    JSON expected = jsonOf(configuration);
    configuration.setHiddenSSID(true);
    configuration.setStationIsolation(false);
    expected["hiddenSSID"] = true;
    expected["stationIsolation"] = false;
    EXPECT_EQ(jsonOf(configuration), expected);
}

}  // namespace
