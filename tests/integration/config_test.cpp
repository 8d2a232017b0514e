// `halvane config` as its users run it: presets, checks and exports.
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/support/run_program.h"
#include "tests/support/run_tool.h"

using halvane::testing::expectMessage;
using halvane::testing::runTool;
using nlohmann::json;

namespace {

using Words = std::vector<std::string>;

TEST(ConfigPreset, ReadsItsPassphrase) {
    const auto result =
        runTool({"config", "--wpa3-personal", "home", "--format=json"}, "password\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    const json object = json::parse(result.output);
    EXPECT_EQ(object["ssid"], "686f6d65");
    EXPECT_EQ(object["passphrase"], "70617373776f7264");
    EXPECT_EQ(object["allowKeyManagementSAE"], true);
    EXPECT_EQ(object["managementFrameProtection"], 2);
    EXPECT_EQ(object["allowKeyManagementPSK"], false);
    expectMessage(runTool({"config", "--wpa2-personal=home"}, ""), 1,
                  "halvane: config: no passphrase\n");
    EXPECT_EQ(runTool({"config", "--open=home"}).errors, "");
}

TEST(ConfigPreset, RefusesAPassphraseOfWhichNoNetworkCanBeMade) {
    const std::string start = "halvane: config: ";
    for (const char* preset : {"--wpa2-personal=home", "--wpa2-wpa3-personal=home"}) {
        expectMessage(runTool({"config", preset}, "short\n"), 1,
                      start + "The passphrase has 5 octets, and takes 8 to 63.\n");
        expectMessage(runTool({"config", preset}, "pass\tword\n"), 1,
                      start + "The passphrase holds a character that is not printable ASCII.\n");
        expectMessage(
            runTool({"config", preset}, std::string(32, 'p')), 1,
            start + "The passphrase has exactly 32 octets, of which Halvane makes no key.\n");
    }
    expectMessage(runTool({"config", "--wpa3-personal=home"}, "short\n"), 1,
                  start + "The passphrase has 5 octets, and takes 8 to 63.\n");
    EXPECT_EQ(runTool({"config", "--wpa3-personal=home"}, std::string(32, 'p')).status, 0)
        << "SAE needs no key";
}

TEST(ConfigPreset, ExportsAPassphraseThatHalvaneAloneRefuses) {
    const auto result =
        runTool({"config", "--wpa2-personal=home", "--channel=6", "--export=hostapd"},
                std::string(32, 'p'));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    EXPECT_NE(result.output.find("\nwpa_passphrase=pppp"), std::string::npos);
    expectMessage(runTool({"config", "--wpa2-personal=home", "--export=hostapd"}, "short"), 1,
                  "halvane: config: hostapd: The passphrase has 5 octets, and takes 8 to 63.\n");
}

TEST(ConfigPreset, ChangesNothingOfAConfigurationWithoutOne) {
    const auto output = runTool({"config", "--format=json"}).output;
    EXPECT_EQ(output.find("SAE"), std::string::npos);
    EXPECT_EQ(output.find("managementFrameProtection"), std::string::npos);
}

TEST(ConfigSecurity, SaysWhatIsMissing) {
    expectMessage(runTool({"config", "--security=WPA2"}), 2,
                  "halvane: config: --security: WPA and WPA2 need a key: --passphrase (for PSK), "
                  "or --key-management=802.1X\n");
    expectMessage(runTool({"config", "--security=WPA2", "--unicast=CCMP"}), 2,
                  "halvane: config: --security: WPA and WPA2 need a key: --passphrase (for PSK), "
                  "or --key-management=802.1X\n");
    expectMessage(runTool({"config", "--security=WPA", "--multicast=CCMP", "--passphrase"}), 2,
                  "halvane: config: --security: WPA with CCMP for the group needs a cipher: "
                  "--unicast=CCMP\n");
    const auto enterprise =
        runTool({"config", "--ssid=x", "--security=WPA2", "--key-management=802.1X"});
    EXPECT_NE(enterprise.output.find("Unicast Ciphers       : CCMP \n"
                                     "Multicast Cipher      : CCMP \n"
                                     "Key Management        : 802.1X \n"),
              std::string::npos)
        << enterprise.output;
    const auto result = runTool({"config", "--security=WPA2", "--passphrase"}, "password\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.output.find("Unicast Ciphers       : CCMP \n"
                                 "Multicast Cipher      : CCMP \n"
                                 "Key Management        : PSK \n"),
              std::string::npos)
        << result.output;
}

TEST(ConfigCheck, NamesContradictions) {
    const auto made =
        runTool({"config", "--ssid=home", "--security=WPA2", "--unicast=CCMP",
                 "--multicast=", "--key-management=", "--passphrase", "--format=plist"},
                "short\n");
    const auto result = runTool({"config", "--check=-"}, made.output);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.output,
              "WPA or WPA2 has no multicast cipher.\n"
              "WPA or WPA2 has no key management: PSK, SAE or 802.1X.\n");
}

TEST(ConfigCheck, TellsThatThereAreNone) {
    const auto made =
        runTool({"config", "--wpa2-wpa3-personal=home", "--format=plist"}, "password\n");
    const auto result = runTool({"config", "--check", "-"}, made.output);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "halvane: config: standard input: no contradictions\n");
}

TEST(ConfigCheck, NumbersTheConfigurationsOfAnArray) {
    const auto result = runTool({"config", "--check=-"},
                                "<plist version=\"1.0\"><array><dict/><dict/></array></plist>");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output,
              "1: There is no SSID.\n"
              "1: No security is allowed, and neither is an open network.\n"
              "1: No PHY mode is allowed.\n"
              "2: There is no SSID.\n"
              "2: No security is allowed, and neither is an open network.\n"
              "2: No PHY mode is allowed.\n");
}

TEST(ConfigCheck, NamesAFileThatIsNone) {
    expectMessage(runTool({"config", "--check=/nonexistent"}), 1,
                  "halvane: config: /nonexistent: No such file or directory\n");
    expectMessage(runTool({"config", "--check=-"}, "<plist version=\"1.0\"><true/></plist>"), 1,
                  "halvane: config: standard input: no configuration, and no array of them\n");
}

TEST(ConfigExport, PrintsTheFileAndTellsWhatIsLeftOut) {
    const auto result = runTool({"config", "--wpa2-personal=home", "--channel=6",
                                 "--preferred-order=1", "--export=hostapd"},
                                "password\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors,
              "halvane: config: hostapd: The preferred order is left out: hostapd knows none.\n");
    EXPECT_NE(result.output.find("\nwpa_passphrase=password\n"), std::string::npos);
    EXPECT_NE(runTool({"config", "--wpa2-personal=home", "--export", "iwd"}, "password\n")
                  .output.find("\n[Security]\nPassphrase=password\n"),
              std::string::npos);
    EXPECT_NE(runTool({"config", "--wpa2-personal=home", "--export=networkmanager"}, "password\n")
                  .output.find("\npsk=password\n"),
              std::string::npos);
}

TEST(ConfigExport, PrintsNothingOfWhatCannotBeHosted) {
    expectMessage(runTool({"config", "--open=home", "--export=iwd"}), 1,
                  "halvane: config: iwd: iwd hosts networks with WPA2-Personal alone.\n");
    expectMessage(runTool({"config", "--export=hostapd"}), 1,
                  "halvane: config: hostapd: There is no SSID.\n");
}

TEST(ConfigTasks, GoAlone) {
    const std::string start = "halvane: config: ";
    expectMessage(runTool({"config", "--check=-", "--export=iwd"}), 2,
                  start + "--check and --export do not go together\n");
    expectMessage(runTool({"config", "--check=-", "--format=json"}), 2,
                  start + "--check and --format do not go together\n");
    expectMessage(runTool({"config", "--export=iwd", "--format=json"}), 2,
                  start + "--export and --format do not go together\n");
    expectMessage(runTool({"config", "--check=-", "--ssid=home"}), 2,
                  start + "--check reads a file and takes no options\n");
    expectMessage(runTool({"config", "--export=wicd"}), 2,
                  start + "--export: 'wicd' is not hostapd, iwd or networkmanager\n");
}

}  // namespace
