#include "tools/halvane/options/config_options.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"

#include "tests/support/tool_command_line.h"
#include "tools/halvane/commands/command.h"

using namespace halvane;
using namespace halvane::tool;
using halvane::testing::ToolOptions;

namespace {

using Words = std::vector<std::string>;

ConfigOptions optionsOf(Words words) {
    return ToolOptions<ConfigOptions>(gConfigOptions, takeConfigOptions, std::move(words))
        .options();
}

std::string errorOf(Words words) {
    return ToolOptions<ConfigOptions>(gConfigOptions, takeConfigOptions, std::move(words)).error();
}

TEST(ConfigOptions, StartFromTheDefaults) {
    const auto options = optionsOf({});
    EXPECT_EQ(options.configuration, HalvaneBSSConfig::init());
    EXPECT_FALSE(options.needsPassphrase || options.needsKey);
}

TEST(ConfigOptions, AreForgottenOnceTaken) {
    EXPECT_NE(optionsOf({"--channel=6", "--passphrase"}).configuration, HalvaneBSSConfig::init());
    EXPECT_EQ(optionsOf({}).configuration, HalvaneBSSConfig::init());
    EXPECT_FALSE(optionsOf({}).needsPassphrase);
}

TEST(ConfigOptions, NameAnSSIDInTwoWays) {
    EXPECT_EQ(optionsOf({"--ssid=home"}).configuration.ssid(), ByteBuffer::fromText("home"));
    EXPECT_EQ(optionsOf({"--ssid=caf\xE9"}).configuration.ssid(), ByteBuffer::fromText("caf\xE9"));
    EXPECT_EQ(optionsOf({"--ssid-hex=00ff"}).configuration.ssid(), (ByteBuffer{0x00, 0xFF}));
    EXPECT_EQ(errorOf({"--ssid=a", "--ssid-hex=00"}), "--ssid and --ssid-hex do not go together");
    EXPECT_EQ(errorOf({"--ssid="}), "--ssid: an SSID has 1 to 32 octets, not 0");
    EXPECT_EQ(errorOf({"--ssid-hex=0"}), "--ssid-hex: the SSID is not hexadecimal text");
}

TEST(ConfigOptions, SetGroupsOfFlags) {
    auto expected = HalvaneBSSConfig::init();
    EXPECT_TRUE(expected.setAuthenticationWithOptionString_error("SharedKey,LEAP"));
    EXPECT_TRUE(expected.setSecurityWithOptionString_error("WPA,WPA2"));
    EXPECT_TRUE(expected.setUnicastCipherWithOptionString_error("CCMP"));
    EXPECT_TRUE(expected.setMulticastCipherWithOptionString_error("TKIP"));
    EXPECT_TRUE(expected.setKeyManagementWithOptionString_error("PSK"));
    EXPECT_TRUE(expected.setPHYModeWithOptionString_error("802.11n"));
    EXPECT_TRUE(expected.setWPSConfigurationMethodsString_error("PIN"));
    EXPECT_EQ(optionsOf({"--authentication=sharedkey,leap", "--security=wpa,wpa2", "--unicast=ccmp",
                         "--multicast=tkip", "--key-management=psk", "--phy=802.11N", "--wps=pin"})
                  .configuration,
              expected);
    EXPECT_EQ(optionsOf({"--security="}).configuration.wifiSecurity(), kHalvaneSecurityNone);
}

TEST(ConfigOptions, TellTheUnknownWordAndTheKnownOnes) {
    EXPECT_EQ(errorOf({"--security=WPA,WPA3,x"}),
              "--security: 'WPA3' is not one of Open, WEP, WPA, WPA2, WPS");
    EXPECT_EQ(errorOf({"--authentication=Open, LEAP"}),
              "--authentication: ' LEAP' is not one of Open, SharedKey, LEAP");
    EXPECT_EQ(errorOf({"--unicast=TKIP,,CCMP"}),
              "--unicast: '' is not one of TKIP, CCMP, UseGroup");
    EXPECT_EQ(errorOf({"--multicast=WEP"}),
              "--multicast: 'WEP' is not one of WEP40, WEP104, TKIP, CCMP");
    EXPECT_EQ(errorOf({"--key-management=SAE"}),
              "--key-management: 'SAE' is not one of 802.1X, PSK");
    EXPECT_EQ(errorOf({"--phy=11n"}),
              "--phy: '11n' is not one of 802.11b, 802.11g, 802.11a, 802.11n");
    EXPECT_EQ(errorOf({"--wps=button"}), "--wps: 'button' is not one of PIN, PushButton");
}

TEST(ConfigOptions, SetNumbers) {
    auto expected = HalvaneBSSConfig::init();
    expected.setChannel(36);
    expected.setChannelWidth(40);
    expected.setPreferredOrder(-1);
    expected.setEapolRetryCount(4);
    expected.setEapolRetryInterval(200);
    expected.setEapolGTKRotation(INT64_MAX);
    expected.setWpsPIN(100007);
    EXPECT_EQ(optionsOf({"--channel=36", "--channel-width=40", "--preferred-order=-1",
                         "--eapol-retries=4", "--eapol-interval=200",
                         "--gtk-rotation=9223372036854775807", "--wps-pin=00100007"})
                  .configuration,
              expected);
}

TEST(ConfigOptions, RefuseWhatIsNoNumber) {
    const std::string range = " is not a whole number from 0 on";
    for (const char* text : {"", "x", "6x", " 6", "+6", "0x6", "-1", "9223372036854775808x"}) {
        const std::string option = std::string("--channel=") + text;
        EXPECT_EQ(errorOf({option.c_str()}), std::string("--channel: '") + text + "'" + range);
    }
    EXPECT_EQ(errorOf({"--channel-width=-1"}), "--channel-width: '-1'" + range);
    EXPECT_EQ(errorOf({"--eapol-retries=-1"}), "--eapol-retries: '-1'" + range);
    EXPECT_EQ(errorOf({"--eapol-interval=-1"}), "--eapol-interval: '-1'" + range);
    EXPECT_EQ(errorOf({"--gtk-rotation=-1"}), "--gtk-rotation: '-1'" + range);
    EXPECT_EQ(errorOf({"--preferred-order=x"}), "--preferred-order: 'x' is not a whole number");
    EXPECT_EQ(errorOf({"--channel=9223372036854775808"}),
              "--channel: '9223372036854775808' is not a number that a configuration can hold");
}

TEST(ConfigOptions, TakeAPINWithItsCheckDigit) {
    for (const char* text : {"12345671", "1234567", "123456700", "", "1234567x"}) {
        const std::string option = std::string("--wps-pin=") + text;
        EXPECT_EQ(errorOf({option.c_str()}), std::string("--wps-pin: '") + text +
                                                 "' is not a PIN of 8 digits with the right check "
                                                 "digit");
    }
    EXPECT_EQ(errorOf({"--wps-pin=00000000"}),
              "--wps-pin: '00000000' is not a PIN: zero stands for none");
}

TEST(ConfigOptions, SetNames) {
    auto expected = HalvaneBSSConfig::init();
    expected.setWpsDeviceName("Caf\xC3\xA9");
    expected.setWpsManufacturerName("maker");
    expected.setWpsModelName("model");
    expected.setWpsModelNumber("7");
    expected.setWpsSerialNumber("");
    EXPECT_EQ(optionsOf({"--device-name=Caf\xC3\xA9", "--manufacturer=maker", "--model-name=model",
                         "--model-number=7", "--serial-number="})
                  .configuration,
              expected);
    EXPECT_EQ(errorOf({"--device-name=caf\xE9"}), "--device-name: 'caf\xE9' is not UTF-8 text");
    for (const auto& [character, name] : {std::pair<std::string, std::string>{"\x01", "U+0001"},
                                          {"\x1F", "U+001F"},
                                          {"\xEF\xBF\xBE", "U+FFFE"},
                                          {"\xEF\xBF\xBF", "U+FFFF"}}) {
        for (const std::string option : {"--device-name", "--manufacturer", "--model-name",
                                         "--model-number", "--serial-number"}) {
            const std::string argument = option + "=a" + character + "b";
            EXPECT_EQ(errorOf({argument.c_str()}),
                      option + ": 'a" + character +
                          "b' is not text of a property list, which has no " + name);
        }
    }
}

TEST(ConfigOptions, AskForASecretWithoutAValue) {
    EXPECT_TRUE(optionsOf({"--passphrase"}).needsPassphrase);
    EXPECT_FALSE(optionsOf({"--passphrase", "--no-passphrase"}).needsPassphrase);
    EXPECT_EQ(errorOf({"--passphrase=secret"}),
              "error: option 'passphrase' doesn't take a value.\n");
}

TEST(ConfigOptions, MakeAKeyOfWPAWithAPassphraseAndAnSSID) {
    const auto options = optionsOf({"--key", "--passphrase", "--ssid=home", "--security=WPA2"});
    EXPECT_TRUE(options.needsKey && options.needsPassphrase);
    const std::string security = "--key is for --security=WPA or WPA2 without WPS and 802.1X";
    EXPECT_EQ(errorOf({"--key", "--passphrase", "--ssid=home"}), security);
    EXPECT_EQ(errorOf({"--key", "--passphrase", "--ssid=home", "--security=WPA,WPS"}), security);
    EXPECT_EQ(errorOf({"--key", "--passphrase", "--ssid=home", "--security=WPA",
                       "--key-management=802.1X"}),
              security);
    const std::string needs = "--key needs --passphrase and --ssid or --ssid-hex";
    EXPECT_EQ(errorOf({"--key", "--ssid=home", "--security=WPA"}), needs);
    EXPECT_EQ(errorOf({"--key", "--passphrase", "--security=WPA"}), needs);
}

TEST(ConfigOptions, WithoutASecretReadNothing) {
    const auto configuration = configurationOf(optionsOf({"--channel=6"}));
    ASSERT_TRUE(configuration);
    EXPECT_EQ(configuration->channel(), 6);
}

// --- Presets ---

TEST(ConfigOptions, HideAndIsolate) {
    auto expected = HalvaneBSSConfig::init();
    EXPECT_EQ(optionsOf({}).configuration, expected);
    expected.setHiddenSSID(true);
    EXPECT_EQ(optionsOf({"--hidden"}).configuration, expected);
    expected.setStationIsolation(true);
    EXPECT_EQ(optionsOf({"--isolate", "--hidden"}).configuration, expected);
    expected.setHiddenSSID(std::nullopt);
    EXPECT_EQ(optionsOf({"--isolate"}).configuration, expected);
    EXPECT_EQ(optionsOf({}).configuration, HalvaneBSSConfig::init()) << "kept from the last call";
}

TEST(ConfigPresets, MakeANetworkOfItsName) {
    auto expected = HalvaneBSSConfig::init();
    EXPECT_TRUE(expected.setSSID_error("home"));
    EXPECT_EQ(optionsOf({"--open=home"}).configuration, expected);
    EXPECT_FALSE(optionsOf({"--open=home"}).needsPassphrase);

    EXPECT_TRUE(expected.setSecurityWithOptionString_error("WPA2"));
    EXPECT_TRUE(expected.setUnicastCipherWithOptionString_error("CCMP"));
    EXPECT_TRUE(expected.setMulticastCipherWithOptionString_error("CCMP"));
    EXPECT_TRUE(expected.setKeyManagementWithOptionString_error("PSK"));
    EXPECT_EQ(optionsOf({"--wpa2-personal=home"}).configuration, expected);
    EXPECT_TRUE(optionsOf({"--wpa2-personal", "home"}).needsPassphrase);

    expected.setAllowKeyManagementSAE(true);
    expected.setManagementFrameProtection(kHalvaneManagementFrameProtectionCapable);
    EXPECT_EQ(optionsOf({"--wpa2-wpa3-personal=home"}).configuration, expected);
    EXPECT_TRUE(optionsOf({"--wpa2-wpa3-personal=home"}).needsPassphrase);

    expected.setAllowKeyManagementPSK(false);
    expected.setManagementFrameProtection(kHalvaneManagementFrameProtectionRequired);
    EXPECT_EQ(optionsOf({"--wpa3-personal=home"}).configuration, expected);
    EXPECT_TRUE(optionsOf({"--wpa3-personal=home"}).needsPassphrase);

    expected.setAllowKeyManagementSAE(std::nullopt);
    expected.setManagementFrameProtection(std::nullopt);
    expected.setAllowKeyManagement8021X(true);
    EXPECT_EQ(optionsOf({"--wpa2-enterprise=home"}).configuration, expected);
    EXPECT_FALSE(optionsOf({"--wpa2-enterprise=home"}).needsPassphrase);
}

TEST(ConfigPresets, LetWordsChangeThem) {
    const auto configuration =
        optionsOf({"--unicast=TKIP,CCMP", "--wpa2-personal=home", "--multicast=TKIP"})
            .configuration;
    EXPECT_TRUE(configuration.allowUnicastCipherTKIP() && configuration.allowUnicastCipherCCMP());
    EXPECT_TRUE(configuration.allowMulticastCipherTKIP());
    EXPECT_FALSE(configuration.allowMulticastCipherCCMP());
    EXPECT_TRUE(configuration.allowKeyManagementPSK());
    const auto enterprise = optionsOf({"--wpa2-enterprise=home", "--security=WPA,WPA2"});
    EXPECT_TRUE(enterprise.configuration.allowSecurityWPA());
    EXPECT_FALSE(enterprise.configuration.allowUnicastCipherTKIP());
}

TEST(ConfigPresets, StandAlone) {
    EXPECT_EQ(errorOf({"--open=a", "--wpa3-personal=b"}),
              "--open and --wpa3-personal do not go together");
    EXPECT_EQ(errorOf({"--open=a", "--ssid=b"}),
              "--open names the SSID: no --ssid or --ssid-hex beside it");
    EXPECT_EQ(errorOf({"--ssid-hex=61", "--wpa2-personal=b"}),
              "--wpa2-personal names the SSID: no --ssid or --ssid-hex beside it");
    EXPECT_EQ(errorOf({"--open="}), "--open: an SSID has 1 to 32 octets, not 0");
    EXPECT_EQ(errorOf({"--open=" + std::string(33, 'a')}),
              "--open: an SSID has 1 to 32 octets, not 33");
    EXPECT_EQ(optionsOf({}).configuration, HalvaneBSSConfig::init()) << "forgotten once taken";
}

TEST(ConfigPresets, MakeAKeyOfPSKAlone) {
    EXPECT_TRUE(optionsOf({"--wpa2-personal=home", "--key"}).needsKey);
    EXPECT_TRUE(optionsOf({"--wpa2-wpa3-personal=home", "--key"}).needsKey);
    EXPECT_EQ(errorOf({"--wpa3-personal=home", "--key"}),
              "--key is for PSK: SAE takes the passphrase itself");
}

TEST(ConfigSecurity, TakesWhatItDemandsIfNothingElseIsSaid) {
    const auto wpa2 = optionsOf({"--security=WPA2", "--passphrase"});
    EXPECT_EQ(wpa2.configuration, optionsOf({"--security=WPA2", "--unicast=CCMP",
                                             "--multicast=CCMP", "--key-management=PSK"})
                                      .configuration);
    EXPECT_FALSE(wpa2.lacking.keyManagement);
    EXPECT_EQ(
        optionsOf({"--security=WPA", "--passphrase"}).configuration,
        optionsOf({"--security=WPA", "--unicast=TKIP", "--multicast=TKIP", "--key-management=PSK"})
            .configuration);
    EXPECT_EQ(optionsOf({"--security=WPA,WPA2", "--passphrase"}).configuration,
              optionsOf({"--security=WPA,WPA2", "--unicast=TKIP,CCMP", "--multicast=TKIP",
                         "--key-management=PSK"})
                  .configuration);
    EXPECT_TRUE(optionsOf({"--security=WPA2,WPS"}).configuration.allowKeyManagementPSK());
}

TEST(ConfigSecurity, TakesEachPartThatIsNotTyped) {
    const auto whole = [](Words words) {
        words.push_back("--passphrase");
        const auto options = optionsOf(std::move(words));
        EXPECT_FALSE(options.lacking.unicast || options.lacking.keyManagement);
        return options.configuration;
    };
    const auto wpa2 = whole({"--security=WPA2"});
    for (const char* word : {"--unicast=CCMP", "--multicast=CCMP", "--key-management=PSK"}) {
        EXPECT_EQ(whole({"--security=WPA2", word}), wpa2) << word;
    }
    const auto wpa = whole({"--security=WPA"});
    for (const char* word : {"--unicast=TKIP", "--multicast=TKIP", "--key-management=PSK"}) {
        EXPECT_EQ(whole({"--security=WPA", word}), wpa) << word;
    }
    EXPECT_EQ(whole({"--security=WPA2", "--unicast=TKIP,CCMP"}),
              whole({"--security=WPA2", "--unicast=TKIP,CCMP", "--multicast=TKIP"}))
        << "stations with TKIP understand no group with CCMP";
    EXPECT_EQ(whole({"--security=WPA", "--unicast=CCMP"}),
              whole({"--security=WPA", "--unicast=CCMP", "--multicast=CCMP"}));
    EXPECT_EQ(whole({"--security=WPA,WPA2", "--multicast=CCMP"}),
              whole({"--security=WPA,WPA2", "--multicast=CCMP", "--unicast=CCMP"}));
    EXPECT_EQ(whole({"--security=WPA2", "--unicast=UseGroup"}),
              whole({"--security=WPA2", "--unicast=UseGroup", "--multicast=CCMP"}));
    EXPECT_EQ(optionsOf({"--security=WPA2", "--key-management=802.1X"}).configuration,
              optionsOf({"--security=WPA2", "--unicast=CCMP", "--multicast=CCMP",
                         "--key-management=802.1X"})
                  .configuration);
}

TEST(ConfigSecurity, StaysAsTypedInAnEmptyList) {
    const auto options = optionsOf(
        {"--security=WPA2", "--unicast=", "--multicast=", "--key-management=", "--passphrase"});
    auto expected = HalvaneBSSConfig::init();
    EXPECT_TRUE(expected.setSecurityWithOptionString_error("WPA2"));
    EXPECT_EQ(options.configuration, expected);
    EXPECT_FALSE(options.lacking.unicast || options.lacking.keyManagement);
}

TEST(ConfigSecurity, DemandsNothingWithoutWPA) {
    for (const char* security : {"--security=WEP", "--security=Open", "--security=WPS"}) {
        EXPECT_FALSE(optionsOf({security}).lacking.keyManagement) << security;
        EXPECT_FALSE(optionsOf({security}).configuration.allowUnicastCipherCCMP()) << security;
    }
}

TEST(ConfigSecurity, LacksWhatHasNoClearChoice) {
    for (const char* security : {"--security=WPA2", "--security=WPA", "--security=WPA,WPA2"}) {
        EXPECT_TRUE(optionsOf({security}).lacking.keyManagement) << security;
    }
    EXPECT_TRUE(optionsOf({"--security=WPA2", "--unicast=CCMP"}).lacking.keyManagement);
    EXPECT_TRUE(optionsOf({"--security=WPA", "--multicast=CCMP"}).lacking.unicast);
    EXPECT_FALSE(optionsOf({}).lacking.keyManagement);
}

}  // namespace
