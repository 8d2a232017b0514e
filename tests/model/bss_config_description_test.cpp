#include <gtest/gtest.h>
#include <string>

#include "halvane/model/bss_config.h"
#include "halvane/model/bss_config_table_internal.h"

using namespace halvane;

namespace {

TEST(BSSConfigDescription, OfANewConfigurationHasTheLinesThatAreAlwaysThere) {
    EXPECT_EQ(HalvaneBSSConfig::init().description(),
              "Preferred Order       : 0\n"
              "Authentication        : Open \n"
              "Security              : Open \n"
              "Unicast Ciphers       : \n"
              "Multicast Cipher      : \n"
              "Key Management        : \n"
              "PHY Modes             : 802.11b 802.11g 802.11a 802.11n \n"
              "Channel               : 0\n"
              "Channel Width         : 0\n"
              "EAPOL Retry Count     : 3\n"
              "EAPOL Retry Interval  : 100\n"
              "EAPOL GTK Rotation    : 300\n");
}

HalvaneBSSConfig fullConfiguration() {
    PropertyListDictionary skeleton;
    skeleton.set("country", "DE");
    auto configuration = HalvaneBSSConfig::initWithSkeletonRepresentation(skeleton);
    EXPECT_TRUE(configuration.setSSID_error("IEEE"));
    EXPECT_TRUE(configuration.setWirelessPassphrase_error("password"));
    EXPECT_TRUE(configuration.setSecurityWithOptionString_error("WPA,WPA2"));
    configuration.generateKeyMaterial();
#define IGNORE(...)
#define ALLOW(getter, setter, key, value) configuration.setter(true);
    HALVANE_BSS_CONFIG_FIELDS(IGNORE, IGNORE, ALLOW, IGNORE)
#undef IGNORE
#undef ALLOW
    configuration.setPreferredOrder(-1);
    configuration.setChannel(36);
    configuration.setChannelWidth(40);
    configuration.setEapolRetryCount(4);
    configuration.setEapolRetryInterval(200);
    configuration.setEapolGTKRotation(600);
    configuration.setWpsDeviceName("Device");
    configuration.setWpsManufacturerName("Maker");
    configuration.setWpsModelName("Model");
    configuration.setWpsModelNumber("7");
    configuration.setWpsSerialNumber("0042");
    configuration.setWpsPIN(12345670);
    return configuration;
}

TEST(BSSConfigDescription, HasEveryLineInItsOrder) {
    EXPECT_EQ(fullConfiguration().description(),
              "Preferred Order       : -1\n"
              "Country               : DE\n"
              "SSID                  : IEEE\n"
              "Passphrase            : 70617373776f7264  |  password\n"
              "Key Material          : F4 2C 6F C5 2D F0 EB EF 9E BB 4B 90 B3 8A 5F 90 "
              "2E 83 FE 1B 13 5A 70 E2 3A ED 76 2E 97 10 A1 2E \n"
              "Authentication        : Open SharedKey LEAP \n"
              "Security              : Open WEP WPA WPA2 WPS \n"
              "Unicast Ciphers       : TKIP CCMP UseGroup \n"
              "Multicast Cipher      : WEP40 WEP104 TKIP CCMP \n"
              "Key Management        : PSK 802.1X \n"
              "PHY Modes             : 802.11b 802.11g 802.11a 802.11n \n"
              "Channel               : 36\n"
              "Channel Width         : 40\n"
              "EAPOL Retry Count     : 4\n"
              "EAPOL Retry Interval  : 200\n"
              "EAPOL GTK Rotation    : 600\n"
              "WPS Device Name       : Device\n"
              "WPS Manufacturer Name : Maker\n"
              "WPS Model Name        : Model\n"
              "WPS Model Number      : 7\n"
              "WPS Serial Number     : 0042\n"
              "WPS Config Methods    : PIN PushButton \n"
              "WPS PIN               : 12345670\n");
}

// Turns on one flag at a time and looks at its line, so that a mixed-up pair shows.
TEST(BSSConfigDescription, NamesEachFlagAlone) {
    struct Row {
        void (HalvaneBSSConfig::*allow)(bool);
        const char* line;
    };
    const Row rows[] = {
        {&HalvaneBSSConfig::setAllowAuthenticationOpen, "Authentication        : Open \n"},
        {&HalvaneBSSConfig::setAllowAuthenticationSharedKey,
         "Authentication        : SharedKey \n"},
        {&HalvaneBSSConfig::setAllowAuthenticationLEAP, "Authentication        : LEAP \n"},
        {&HalvaneBSSConfig::setAllowSecurityOpen, "Security              : Open \n"},
        {&HalvaneBSSConfig::setAllowSecurityWEP, "Security              : WEP \n"},
        {&HalvaneBSSConfig::setAllowSecurityWPA, "Security              : WPA \n"},
        {&HalvaneBSSConfig::setAllowSecurityWPA2, "Security              : WPA2 \n"},
        {&HalvaneBSSConfig::setAllowSecurityWPS, "Security              : WPS \n"},
        {&HalvaneBSSConfig::setAllowUnicastCipherTKIP, "Unicast Ciphers       : TKIP \n"},
        {&HalvaneBSSConfig::setAllowUnicastCipherCCMP, "Unicast Ciphers       : CCMP \n"},
        {&HalvaneBSSConfig::setAllowUnicastCipherUseGroup, "Unicast Ciphers       : UseGroup \n"},
        {&HalvaneBSSConfig::setAllowMulticastCipherWEP40, "Multicast Cipher      : WEP40 \n"},
        {&HalvaneBSSConfig::setAllowMulticastCipherWEP104, "Multicast Cipher      : WEP104 \n"},
        {&HalvaneBSSConfig::setAllowMulticastCipherTKIP, "Multicast Cipher      : TKIP \n"},
        {&HalvaneBSSConfig::setAllowMulticastCipherCCMP, "Multicast Cipher      : CCMP \n"},
        {&HalvaneBSSConfig::setAllowKeyManagementPSK, "Key Management        : PSK \n"},
        {&HalvaneBSSConfig::setAllowKeyManagement8021X, "Key Management        : 802.1X \n"},
        {&HalvaneBSSConfig::setAllowPHY80211a, "PHY Modes             : 802.11a \n"},
        {&HalvaneBSSConfig::setAllowPHY80211b, "PHY Modes             : 802.11b \n"},
        {&HalvaneBSSConfig::setAllowPHY80211g, "PHY Modes             : 802.11g \n"},
        {&HalvaneBSSConfig::setAllowPHY80211n, "PHY Modes             : 802.11n \n"},
        {&HalvaneBSSConfig::setAllowPIN, "WPS Config Methods    : PIN \n"},
        {&HalvaneBSSConfig::setAllowPushbutton, "WPS Config Methods    : PushButton \n"},
    };
    for (const Row& row : rows) {
        auto bare = HalvaneBSSConfig::initWithSkeletonRepresentation({});
        (bare.*row.allow)(true);
        const std::string text = bare.description();
        EXPECT_NE(text.find(row.line), std::string::npos) << row.line << text;
        for (const Row& other : rows) {
            if (&other == &row) continue;
            EXPECT_EQ(text.find(other.line), std::string::npos) << other.line << text;
        }
    }
}

TEST(BSSConfigDescription, PrintsNumbersAtTheirLimits) {
    auto configuration = HalvaneBSSConfig::init();
    configuration.setPreferredOrder(INT64_MIN);
    configuration.setChannel(INT64_MAX);
    configuration.setWpsPIN(-1);
    const std::string text = configuration.description();
    EXPECT_EQ(text.find("Preferred Order       : -9223372036854775808\n"), 0u);
    EXPECT_NE(text.find("\nChannel               : 9223372036854775807\n"), std::string::npos);
    EXPECT_NE(text.find("\nWPS PIN               : -1\n"), std::string::npos);
}

TEST(BSSConfigDescription, PrintsTextsAsTheyAreAndOctetsAsDots) {
    auto configuration = HalvaneBSSConfig::init();
    EXPECT_TRUE(configuration.setSSIDFromHexString_error("00411f7fff"));
    EXPECT_TRUE(configuration.setWirelessPassphraseFromHexString_error("c3a941"));
    const std::string name("a\0%s\xF0\x9F\x98\x80\"\n", 11);
    configuration.setWpsDeviceName(name);
    const std::string text = configuration.description();
    EXPECT_NE(text.find("\nSSID                  : .A...\n"), std::string::npos) << text;
    EXPECT_NE(text.find("\nPassphrase            : c3a941  |  ..A\n"), std::string::npos) << text;
    EXPECT_NE(text.find("\nWPS Device Name       : " + name + "\n"), std::string::npos);
}

TEST(BSSConfigDescription, HasLinesOfTextsThatArePresentAndEmpty) {
    auto configuration = HalvaneBSSConfig::init();
    EXPECT_TRUE(configuration.setSSID_error(""));
    EXPECT_TRUE(configuration.setWirelessPassphrase_error(""));
    configuration.setWpsModelName("");
    const std::string text = configuration.description();
    EXPECT_NE(text.find("\nSSID                  : \n"), std::string::npos) << text;
    EXPECT_NE(text.find("\nPassphrase            :   |  \n"), std::string::npos) << text;
    EXPECT_NE(text.find("\nWPS Model Name        : \n"), std::string::npos) << text;
}

TEST(BSSConfigDescription, EndsWithSAEAndFrameProtectionIfTheyAreSet) {
    auto configuration = HalvaneBSSConfig::init();
    const std::string before = configuration.description();
    configuration.setAllowKeyManagementSAE(true);
    configuration.setManagementFrameProtection(kHalvaneManagementFrameProtectionRequired);
    EXPECT_EQ(
        configuration.description(),
        before + "SAE                   : YES\nManagement Frames     : protection required\n");
    configuration.setAllowKeyManagementSAE(false);
    configuration.setManagementFrameProtection(
        static_cast<HalvaneManagementFrameProtection>(INT64_MIN));
    EXPECT_EQ(configuration.description(),
              before +
                  "SAE                   : NO\n"
                  "Management Frames     : protection -9223372036854775808\n");
}

TEST(BSSConfigDescription, EndsWithHiddenSSIDAndIsolationIfTheyAreSet) {
    auto configuration = HalvaneBSSConfig::init();
    configuration.setAllowKeyManagementSAE(true);
    const std::string before = configuration.description();
    configuration.setStationIsolation(false);
    EXPECT_EQ(configuration.description(), before + "Station Isolation     : NO\n");
    configuration.setHiddenSSID(true);
    EXPECT_EQ(configuration.description(),
              before + "Hidden SSID           : YES\nStation Isolation     : NO\n");
}

}  // namespace
