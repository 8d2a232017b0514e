#include "tools/halvaned/hostapd/hostapd_file.h"

#include <cstdint>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <utility>
#include <vector>

#include "halvane/model/bss_config.h"
#include "halvane/model/bss_option_words.h"
#include "halvane/model/management_frame_protection.h"

#include "tests/support/hostapd_parser.h"
#include "tests/support/made_config.h"
#include "tests/support/run_program.h"
#include "tests/support/temporary_folder.h"

using namespace halvane;
using namespace halvane::hosting;
using halvane::testing::enterpriseNetwork;
using halvane::testing::openNetwork;
using halvane::testing::personalNetwork;
using halvane::testing::wpa3Network;

namespace {

using Sentences = std::vector<std::string>;

HostapdPlan planOf(const std::vector<HalvaneBSSConfig>& configurations) {
    HostapdPlan plan;
    plan.channel = 6;
    plan.controlFolder = "/run/halvaned/control";
    for (const auto& configuration : configurations) {
        const auto count = plan.networks.size();
        plan.networks.push_back(
            {.interface = count == 0 ? "wlan0" : "wlan0_" + std::to_string(count),
             .configuration = configuration});
    }
    return plan;
}

HostapdPlan enterprisePlan(Driver driver = Driver::Nl80211) {
    auto plan = planOf({enterpriseNetwork()});
    plan.driver = driver;
    plan.eapUserFile = "/etc/halvane/users";
    return plan;
}

HostapdFile fileOf(const HostapdPlan& plan) {
    const auto file = hostapdFileOf(plan);
    if (file) return *file;
    for (const auto& sentence : file.error()) ADD_FAILURE() << sentence;
    return {};
}

Sentences errorsOf(const HostapdPlan& plan) {
    const auto file = hostapdFileOf(plan);
    return file ? Sentences() : file.error();
}

bool hasLine(const HostapdFile& file, const std::string& line) {
    return ("\n" + file.text).find("\n" + line + "\n") != std::string::npos;
}

bool hasKey(const HostapdFile& file, const std::string& key) {
    return ("\n" + file.text).find("\n" + key + "=") != std::string::npos;
}

// --- The text ---

TEST(HostapdFile, HasALineForEachField) {
    auto network = personalNetwork("IEEE", "password");  // IEEE 802.11-2020, J.4.2, test case 1
    EXPECT_EQ(
        fileOf(planOf({network})).text,
        "interface=wlan0\ndriver=nl80211\nctrl_interface=/run/halvaned/control\n"
        "logger_syslog=0\nlogger_stdout=-1\nlogger_stdout_level=2\nmax_num_sta=2007\n"
        "# Written by halvaned whenever it starts hostapd. It may hold passphrases and keys.\n"
        "ssid=IEEE\nhw_mode=g\nchannel=6\nieee80211n=1\nauth_algs=1\nwpa=2\n"
        "wpa_key_mgmt=WPA-PSK\nrsn_pairwise=CCMP\n"
        "wpa_psk=f42c6fc52df0ebef9ebb4b90b38a5f902e83fe1b135a70e23aed762e9710a12e\n"
        "wpa_group_rekey=300\nwpa_group_update_count=3\nwpa_pairwise_update_count=3\n");
    EXPECT_EQ(fileOf(planOf({network})).losses, Sentences());
}

TEST(HostapdFile, HandsOverAKeyInsteadOfAPassphrase) {
    auto withKey = halvane::testing::wpa2Network("PSK", "home");
    const std::uint8_t key[32] = {0xAB};
    withKey.setKeyMaterial(key);
    EXPECT_TRUE(hasLine(fileOf(planOf({withKey})), "wpa_psk=ab" + std::string(62, '0')));
    EXPECT_FALSE(hasKey(fileOf(planOf({personalNetwork()})), "wpa_passphrase"));
}

TEST(HostapdFile, LetsThePassphraseCountBeforeAnyKey) {
    auto both = personalNetwork("IEEE", "password");
    const std::uint8_t key[32] = {0xAB};
    both.setKeyMaterial(key);
    EXPECT_TRUE(
        hasLine(fileOf(planOf({both})),
                "wpa_psk=f42c6fc52df0ebef9ebb4b90b38a5f902e83fe1b135a70e23aed762e9710a12e"));
}

TEST(HostapdFile, MakesAKeyOfAPassphraseOf32Characters) {
    EXPECT_TRUE(hasKey(fileOf(planOf({personalNetwork("home", std::string(32, 'p'))})), "wpa_psk"));
}

TEST(HostapdFile, HandsThePassphraseItselfOverForSAE) {
    for (const bool hasPSK : {false, true}) {
        auto network = wpa3Network(hasPSK);
        network.setWirelessPassphrase_error("pass|id=word");
        const auto file = fileOf(planOf({network}));
        EXPECT_TRUE(hasLine(file, "wpa_passphrase=pass|id=word"));
        EXPECT_FALSE(hasKey(file, "sae_password")) << "hostapd would take |id= as a part";
        EXPECT_FALSE(hasKey(file, "wpa_psk"));
    }
}

TEST(HostapdFile, PrefersTheConfiguredChannelToTheChosenOne) {
    auto network = openNetwork();
    network.setChannel(36);
    network.setChannelWidth(40);
    const auto file = fileOf(planOf({network}));
    EXPECT_TRUE(hasLine(file, "channel=36"));
    EXPECT_TRUE(hasLine(file, "ht_capab=[HT40+]"));
    EXPECT_EQ(file.losses, Sentences());
}

TEST(HostapdFile, PlacesTheSecondHalfOfTheChosenChannel) {
    auto network = openNetwork();
    network.setChannelWidth(40);
    auto plan = planOf({network});
    plan.channel = 11;
    EXPECT_TRUE(hasLine(fileOf(plan), "ht_capab=[HT40-]"));
    plan.channel = 40;
    EXPECT_TRUE(hasLine(fileOf(plan), "hw_mode=a"));
    plan.channel = 14;
    EXPECT_EQ(errorsOf(plan), Sentences{"Channel 14 is not part of a channel of 40 MHz."});
}

TEST(HostapdFile, HidesAndIsolates) {
    auto network = openNetwork();
    EXPECT_FALSE(hasKey(fileOf(planOf({network})), "ignore_broadcast_ssid"));
    EXPECT_FALSE(hasKey(fileOf(planOf({network})), "ap_isolate"));
    network.setHiddenSSID(true);
    network.setStationIsolation(true);
    EXPECT_TRUE(hasLine(fileOf(planOf({network})), "ignore_broadcast_ssid=1"));
    EXPECT_TRUE(hasLine(fileOf(planOf({network})), "ap_isolate=1"));
    network.setHiddenSSID(false);
    network.setStationIsolation(false);
    EXPECT_FALSE(hasKey(fileOf(planOf({network})), "ignore_broadcast_ssid"));
    EXPECT_FALSE(hasKey(fileOf(planOf({network})), "ap_isolate"));
}

TEST(HostapdFile, HasWhatSettingsAdd) {
    auto plan = planOf({openNetwork()});
    plan.networks[0].maxStations = 9;
    EXPECT_TRUE(hasLine(fileOf(plan), "max_num_sta=9"));
    for (const unsigned wrong : {0U, 5000U}) {
        plan.networks[0].maxStations = wrong;
        EXPECT_TRUE(hasLine(fileOf(plan), wrong == 0 ? "max_num_sta=1" : "max_num_sta=2007"));
    }
}

TEST(HostapdFile, AuthenticatesByAServerOrByHostapdItself) {
    auto plan = enterprisePlan();
    auto file = fileOf(plan);
    EXPECT_TRUE(hasLine(file, "ieee8021x=1"));
    EXPECT_TRUE(hasLine(file, "eap_server=1"));
    EXPECT_TRUE(hasLine(file, "eap_user_file=/etc/halvane/users"));
    plan.radius = {.address = "2001:db8::1", .port = 1645, .secret = "radius secret"};
    file = fileOf(plan);
    EXPECT_TRUE(hasLine(file, "auth_server_addr=2001:db8::1"));
    EXPECT_TRUE(hasLine(file, "auth_server_port=1645"));
    EXPECT_TRUE(hasLine(file, "auth_server_shared_secret=radius secret"));
    EXPECT_FALSE(hasKey(file, "eap_server"));
}

TEST(HostapdFile, KeepsNetworksApart) {
    auto second = personalNetwork("guests");
    second.setChannel(11);
    auto plan = planOf({openNetwork("home"), second, enterpriseNetwork("work")});
    plan.eapUserFile = "/etc/halvane/users";
    plan.networks[1].configuration.setHiddenSSID(true);
    const auto file = fileOf(plan);
    EXPECT_EQ(file.losses,
              Sentences{"wlan0_1: The channel, the country and the PHY modes are those "
                        "of the first network."});
    const auto guests = file.text.find("bss=wlan0_1\n"), work = file.text.find("bss=wlan0_2\n");
    ASSERT_NE(guests, std::string::npos);
    ASSERT_NE(work, std::string::npos);
    EXPECT_EQ(file.text.rfind("channel="), file.text.find("channel=")) << "once a radio";
    EXPECT_GT(file.text.find("ignore_broadcast_ssid"), guests);
    EXPECT_LT(file.text.find("ignore_broadcast_ssid"), work);
    EXPECT_GT(file.text.find("eap_user_file"), work);
    EXPECT_NE(file.text.find("ctrl_interface=", work), std::string::npos) << "each has a socket";
}

TEST(HostapdFile, HasNothingOfARadioForACable) {
    const auto file = fileOf(enterprisePlan(Driver::Wired));
    EXPECT_EQ(
        file.text,
        "interface=wlan0\ndriver=wired\nctrl_interface=/run/halvaned/control\n"
        "logger_syslog=0\nlogger_stdout=-1\nlogger_stdout_level=2\n"
        "# Written by halvaned whenever it starts hostapd. It may hold passphrases and keys.\n"
        "ieee8021x=1\nuse_pae_group_addr=1\neap_server=1\neap_user_file=/etc/halvane/users\n");
    EXPECT_EQ(file.losses,
              Sentences{"The interface is wired: it has no name, no channel and no ciphers."});
    auto open = planOf({openNetwork()});
    open.driver = Driver::Wired;
    EXPECT_EQ(errorsOf(open),
              Sentences{"A wired interface authenticates stations by 802.1X alone."});
}

// --- Refusals and losses ---

TEST(HostapdFile, RefusesAPlanThatMakesNoFile) {
    struct Row {
        void (*spoil)(HostapdPlan&);
        const char* sentence;
    };
    const Row rows[] = {
        {[](HostapdPlan& p) { p.networks.clear(); }, "There is no network."},
        {[](HostapdPlan& p) { p.networks[0].interface = "wlan 0"; },
         "The name of an interface is none."},
        {[](HostapdPlan& p) { p.networks.push_back(p.networks[0]); },
         "Two networks have the same interface."},
        {[](HostapdPlan& p) { p.controlFolder = "/run\nwpa=0"; },
         "The folder of hostapd's sockets is not plain text."},
        {[](HostapdPlan& p) { p.controlFolder.clear(); },
         "The folder of hostapd's sockets is not plain text."},
        {[](HostapdPlan& p) {
             p.driver = Driver::Wired;
             p.networks.push_back({"eth1", enterpriseNetwork()});
         },
         "A wired interface hosts one network."},
        {[](HostapdPlan& p) { p.channel = 0; }, "No channel is chosen."},
        {[](HostapdPlan& p) { p.eapUserFile.clear(); },
         "802.1X needs a RADIUS server or a file of EAP users, and the settings have neither."},
        {[](HostapdPlan& p) { p.eapUserFile = "a\nwpa=0"; },
         "The path of the file of EAP users is not plain text."},
        {[](HostapdPlan& p) {
             p.radius = {"radius.example", 1812, "secret"};
         },
         "The address of the RADIUS server is none."},
        {[](HostapdPlan& p) {
             p.radius = {"127.0.0.1", 1812, "a\nwpa=0"};
         },
         "The secret of the RADIUS server is not plain text."},
        {[](HostapdPlan& p) {
             p.radius = {"127.0.0.1", 0, "secret"};
         },
         "The port of the RADIUS server is 0."},
    };
    for (const Row& row : rows) {
        auto plan = enterprisePlan();
        row.spoil(plan);
        EXPECT_EQ(errorsOf(plan), Sentences{row.sentence});
    }
}

TEST(HostapdFile, NamesTheNetworkThatContradictsItself) {
    auto wrong = personalNetwork();
    wrong.setAllowUnicastCipherCCMP(false);
    EXPECT_EQ(errorsOf(planOf({openNetwork(), wrong})),
              Sentences{"wlan0_1: WPA or WPA2 has no unicast cipher."});
    EXPECT_EQ(errorsOf(planOf({wrong, openNetwork()})),
              Sentences{"wlan0: WPA or WPA2 has no unicast cipher."});
}

TEST(HostapdFile, SaysWhereHostapdHasNoWPS) {
    auto network = personalNetwork();
    network.setAllowSecurityWPS(true);
    network.setAllowPushbutton(true);
    network.setHiddenSSID(true);
    const auto hidden = fileOf(planOf({network}));
    EXPECT_EQ(hidden.losses, Sentences{"WPS is left out: hostapd has none in hidden networks."});
    EXPECT_FALSE(hasKey(hidden, "wps_state"));
    network.setHiddenSSID(std::nullopt);
    network.setUnicastCipherWithOptionString_error("TKIP");
    network.setMulticastCipherWithOptionString_error("TKIP");
    EXPECT_EQ(fileOf(planOf({network})).losses.back(),
              "WPS is left out: hostapd has none without WPA2 and CCMP.");
    auto enterprise = enterprisePlan();
    enterprise.networks[0].configuration.setAllowSecurityWPS(true);
    enterprise.networks[0].configuration.setAllowPushbutton(true);
    EXPECT_EQ(errorsOf(enterprise),
              Sentences{"WPS does not go with 802.1X: it hands out keys for PSK."});
}

TEST(HostapdFile, NeverTellsASecret) {
    auto wrong = personalNetwork("home", "the secret one");
    wrong.setAllowUnicastCipherCCMP(false);
    for (const auto& sentence : errorsOf(planOf({wrong}))) {
        EXPECT_EQ(sentence.find("secret"), std::string::npos);
    }
}

TEST(HostapdFile, KnowsItsSecrets) {
    auto plan = enterprisePlan();
    plan.radius = {"127.0.0.1", 1812, "of radius"};
    plan.networks.push_back({"wlan0_1", wpa3Network(true)});
    const auto secrets = secretsIn(fileOf(plan).text);
    EXPECT_EQ(secrets, (Sentences{"of radius", "password"}));
    EXPECT_EQ(withoutSecrets("Line 3: 'password' and password, of radius", secrets),
              "Line 3: '(secret)' and (secret), (secret)");
    EXPECT_EQ(withoutSecrets("aaa", {"a", ""}), "(secret)(secret)(secret)");
    EXPECT_EQ(secretsIn(fileOf(planOf({personalNetwork()})).text)[0].size(), 64U);
}

TEST(HostapdFile, LetsNoTextBecomeALine) {
    using namespace std::string_literals;
    for (const std::string& name :
         {"a\nwpa=0"s, "a\rwpa=0"s, "\0wpa=0"s, "P\"a\\nwpa=0\""s, "\nbss=wlan1"s, "#wpa=0"s}) {
        auto network = personalNetwork(name);
        network.setAllowSecurityWPS(true);
        network.setAllowPushbutton(true);
        network.setWpsDeviceName("a\nwpa=0");
        const auto file = fileOf(planOf({network}));
        EXPECT_TRUE(hasLine(file, "wpa=2"));
        EXPECT_FALSE(hasLine(file, "wpa=0"));
        EXPECT_FALSE(hasKey(file, "bss"));
        EXPECT_FALSE(hasKey(file, "device_name"));
    }
}

// --- Names and files ---

TEST(HostapdFile, KnowsNamesOfDrivers) {
    for (const Driver driver : {Driver::Nl80211, Driver::Wired}) {
        EXPECT_EQ(driverOf(nameOf(driver)), driver);
    }
    EXPECT_EQ(driverOf("none"), std::nullopt);
    EXPECT_EQ(driverOf(""), std::nullopt);
}

TEST(HostapdFile, KnowsNamesOfInterfaces) {
    for (const char* name : {"w", "wlan0", "wlan0_15", "fifteenlettersx"}) {
        EXPECT_TRUE(isHostableName(name)) << name;
    }
    for (const char* name :
         {"", "sixteenlettersxx", ".", "..", "a/b", "a b", "a\n", "a:1", "caf\xC3\xA9"}) {
        EXPECT_FALSE(isHostableName(name)) << name;
    }
}

TEST(HostapdFile, IsReadByItsUserAlone) {
    const halvane::testing::TemporaryFolder folder;
    const std::string path = folder.path() / "wlan0.conf";
    ASSERT_TRUE(writeHostapdFile(path, "first=1\n"));
    ASSERT_TRUE(writeHostapdFile(path, "second=2\n"));
    EXPECT_EQ(halvane::testing::contentsOf(path), "second=2\n");
    struct stat facts {};
    ASSERT_EQ(::stat(path.c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 07777, 0600U);
    const auto refused = writeHostapdFile(path + "/x", "third=3\n");
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().find(path + "/x cannot be written"), 0U) << refused.error();
}

// --- hostapd as the judge ---

class HostapdJudgesFile : public ::testing::Test {
  protected:
    void SetUp() override {
        if (halvane::testing::hostapdPath().empty()) GTEST_SKIP() << "hostapd is not installed";
    }

    // Empty for a plan that has no file.
    std::string complaintsOf(const HostapdPlan& plan) {
        const auto file = hostapdFileOf(plan);
        if (!file) return {};
        ++judged_;
        return parser_.complaintsOf(file->text);
    }

    int judged_ = 0;

  private:
    halvane::testing::HostapdParser parser_;
};

// Each subset of the words, joined by commas.
template <typename Words>
Sentences subsetsOf(const Words& words) {
    Sentences subsets;
    for (unsigned chosen = 0; chosen < 1U << words.size(); ++chosen) {
        std::string text;
        for (unsigned i = 0; i < words.size(); ++i) {
            if ((chosen >> i & 1) == 0) continue;
            text += (text.empty() ? "" : ",") + std::string(words[i]);
        }
        subsets.push_back(text);
    }
    return subsets;
}

void setSecret(HalvaneBSSConfig& configuration) {
    const bool isWEP = configuration.allowSecurityWEP();
    const bool isSAE = configuration.allowKeyManagementSAE().value_or(false);
    if (isWEP) {
        const bool isShort = configuration.allowMulticastCipherWEP40();
        configuration.setWirelessPassphrase_error(isShort ? "12345" : "1234567890123");
    } else if (isSAE) {
        configuration.setWirelessPassphrase_error("password");
    } else if (configuration.allowKeyManagementPSK()) {
        const std::uint8_t key[32] = {1};
        configuration.setKeyMaterial(key);
    }
}

std::vector<HalvaneBSSConfig> everySecurity() {
    std::vector<HalvaneBSSConfig> all;
    for (const auto& security : subsetsOf(kBSSSecurityWords)) {
        for (const auto& unicast : subsetsOf(kBSSUnicastCipherWords)) {
            for (const std::string multicast : {"", "WEP40", "WEP104", "TKIP", "CCMP"}) {
                for (const auto& management : subsetsOf(kBSSKeyManagementWords)) {
                    for (const bool hasSAE : {false, true}) {
                        auto made = openNetwork();
                        made.setSecurityWithOptionString_error(security);
                        made.setUnicastCipherWithOptionString_error(unicast);
                        made.setMulticastCipherWithOptionString_error(multicast);
                        made.setKeyManagementWithOptionString_error(management);
                        made.setAllowPushbutton(made.allowSecurityWPS());
                        made.setAllowPIN(made.allowSecurityWPS());
                        // Anything else contradicts SAE, and its keys would take long to make.
                        if (hasSAE && security != "WPA2" && security != "WPA2,WPS") continue;
                        if (hasSAE) {
                            made.setAllowKeyManagementSAE(true);
                            made.setManagementFrameProtection(
                                kHalvaneManagementFrameProtectionRequired);
                        }
                        setSecret(made);
                        all.push_back(made);
                    }
                }
            }
        }
    }
    return all;
}

TEST_F(HostapdJudgesFile, NamesALineThatItDoesNotKnow) {
    halvane::testing::HostapdParser parser;
    const auto text = fileOf(planOf({openNetwork()})).text + "no_such_item=1\n";
    EXPECT_NE(parser.complaintsOf(text).find("unknown configuration item 'no_such_item'"),
              std::string::npos);
}

TEST_F(HostapdJudgesFile, TakesEverySecurity) {
    for (const auto& configuration : everySecurity()) {
        auto plan = planOf({configuration});
        plan.eapUserFile = "/dev/null";
        EXPECT_EQ(complaintsOf(plan), "") << configuration.description();
    }
    EXPECT_GT(judged_, 40) << "combinations that make sense";
}

TEST_F(HostapdJudgesFile, TakesEveryAuthenticationAndPHYMode) {
    for (const auto& modes : subsetsOf(kBSSPHYModeWords)) {
        for (const auto& words : subsetsOf(kBSSAuthenticationWords)) {
            for (const auto& [channel, width] : {std::pair{6, 20}, {6, 40}, {36, 40}, {44, 80}}) {
                auto configuration = personalNetwork();
                configuration.setAllowSecurityWPA2(false);
                configuration.setSecurityWithOptionString_error("WEP");
                configuration.setUnicastCipherWithOptionString_error("");
                configuration.setMulticastCipherWithOptionString_error("WEP40");
                configuration.setKeyManagementWithOptionString_error("");
                configuration.setWirelessPassphrase_error("12345");
                configuration.setAuthenticationWithOptionString_error(words);
                configuration.setPHYModeWithOptionString_error(modes);
                configuration.setChannelWidth(width);
                auto plan = planOf({configuration});
                plan.channel = channel;
                EXPECT_EQ(complaintsOf(plan), "") << configuration.description();
            }
        }
    }
    EXPECT_GT(judged_, 40);
}

TEST_F(HostapdJudgesFile, TakesEveryPlaceOfAChannel) {
    for (const int channel : {1, 7, 8, 11, 13, 36, 40, 44, 64, 100, 149, 165}) {
        for (const int width : {0, 20, 40, 80, 160}) {
            auto skeleton = personalNetwork().skeletonRepresentation();
            skeleton.set("country", "DE");
            auto configuration = HalvaneBSSConfig::initWithSkeletonRepresentation(skeleton);
            configuration.setChannelWidth(width);
            auto plan = planOf({configuration});
            plan.channel = channel;
            EXPECT_EQ(complaintsOf(plan), "") << channel << ' ' << width;
        }
    }
    EXPECT_GT(judged_, 40);
}

TEST_F(HostapdJudgesFile, TakesWPSWithEveryMethod) {
    for (const auto& methods : subsetsOf(kBSSWPSMethodWords)) {
        auto network = personalNetwork();
        network.setAllowSecurityWPS(true);
        network.setWPSConfigurationMethodsString_error(methods);
        if (network.allowPIN()) network.setWpsPIN(100007);
        network.setWpsDeviceName(" #name=");
        network.setWpsManufacturerName(std::string(64, 'n'));
        EXPECT_EQ(complaintsOf(planOf({network})), "") << methods;
    }
    EXPECT_EQ(judged_, 3) << "WPS without a method is none";
}

TEST_F(HostapdJudgesFile, TakesSeveralNetworksWithEverySetting) {
    auto plan = planOf({personalNetwork("caf\xC3\xA9"), openNetwork("\xFF\n"),
                        enterpriseNetwork(" a "), wpa3Network(true), wpa3Network(false)});
    plan.radius = {"127.0.0.1", 1812, "#secret"};
    for (auto& network : plan.networks) {
        network.configuration.setHiddenSSID(true);
        network.configuration.setStationIsolation(true);
        network.maxStations = 1;
    }
    EXPECT_EQ(complaintsOf(plan), "");
    EXPECT_EQ(judged_, 1);
}

TEST_F(HostapdJudgesFile, TakesACable) {
    auto plan = enterprisePlan(Driver::Wired);
    plan.eapUserFile = "/dev/null";
    EXPECT_EQ(complaintsOf(plan), "");
    plan.radius = {"::1", 1812, "secret"};
    EXPECT_EQ(complaintsOf(plan), "");
    EXPECT_EQ(judged_, 2);
}

}  // namespace
