#include "tools/halvane/config/export_format.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/base/ssid.h"
#include "halvane/model/bss_config.h"

#include "tests/support/made_config.h"

using namespace halvane;
using namespace halvane::tool;
using halvane::testing::enterpriseNetwork;
using halvane::testing::openNetwork;
using halvane::testing::personalNetwork;
using halvane::testing::wpa3Network;

namespace {

using Sentences = std::vector<std::string>;

ExportedConfig exportOf(const HalvaneBSSConfig& configuration, const ExportFormat& format) {
    const auto result = exported(configuration, format);
    if (result) return *result;
    for (const auto& sentence : result.error()) ADD_FAILURE() << sentence;
    return {};
}

Sentences refusalOf(const HalvaneBSSConfig& configuration, const ExportFormat& format) {
    const auto result = exported(configuration, format);
    return result ? Sentences() : result.error();
}

// The lines that are neither empty nor comments.
Sentences linesOf(const HalvaneBSSConfig& configuration, const ExportFormat& format) {
    Sentences lines;
    std::string line;
    for (const char c : exportOf(configuration, format).text) {
        if (c != '\n') {
            line += c;
            continue;
        }
        if (!line.empty() && line[0] != '#') lines.push_back(line);
        line.clear();
    }
    EXPECT_EQ(line, "") << "the last line has no end";
    return lines;
}

// The value of the only line with that key; "(none)" without one.
std::string valueIn(const Sentences& lines, const std::string& key) {
    std::string value = "(none)";
    for (const auto& line : lines) {
        if (line.rfind(key + "=", 0) != 0) continue;
        EXPECT_EQ(value, "(none)") << "twice: " << key;
        value = line.substr(key.size() + 1);
    }
    return value;
}

TEST(ExportFormat, IsFoundByItsName) {
    EXPECT_EQ(exportFormatOf("hostapd"), &kHostapdFormat);
    EXPECT_EQ(exportFormatOf("iwd"), &kIwdFormat);
    EXPECT_EQ(exportFormatOf("networkmanager"), &kNetworkManagerFormat);
    EXPECT_EQ(exportFormatOf("NetworkManager"), nullptr);
    EXPECT_EQ(exportFormatOf(""), nullptr);
}

TEST(ExportFormat, RefusesContradictions) {
    auto configuration = personalNetwork();
    configuration.setAllowUnicastCipherCCMP(false);
    configuration.setChannel(15);
    for (const auto* format : {&kHostapdFormat, &kIwdFormat, &kNetworkManagerFormat}) {
        EXPECT_EQ(refusalOf(configuration, *format),
                  (Sentences{"WPA or WPA2 has no unicast cipher.",
                             "There is no channel 15 at 2.4 or 5 GHz."}));
    }
    EXPECT_EQ(refusalOf(personalNetwork("home", std::string(32, 'p')), kHostapdFormat), Sentences())
        << "other programs make a key of such a passphrase";
}

// --- hostapd ---

TEST(Hostapd, HasALineForEachField) {
    auto configuration = personalNetwork();
    configuration.setChannel(6);
    EXPECT_EQ(exportOf(configuration, kHostapdFormat).text,
              "# Start it with: hostapd -i INTERFACE FILE\n"
              "# It holds the passphrase or the key: keep it from others.\n"
              "driver=nl80211\nssid=home\nhw_mode=g\nchannel=6\nieee80211n=1\nauth_algs=1\n"
              "wpa=2\nwpa_key_mgmt=WPA-PSK\nrsn_pairwise=CCMP\nwpa_passphrase=password\n"
              "wpa_group_rekey=300\nwpa_group_update_count=3\nwpa_pairwise_update_count=3\n");
    EXPECT_EQ(exportOf(configuration, kHostapdFormat).losses, Sentences());
}

TEST(Hostapd, TellsWPA3FromTheTransitionToIt) {
    const auto alone = linesOf(wpa3Network(false), kHostapdFormat);
    EXPECT_EQ(valueIn(alone, "wpa_key_mgmt"), "SAE");
    EXPECT_EQ(valueIn(alone, "ieee80211w"), "2");
    EXPECT_EQ(valueIn(alone, "sae_require_mfp"), "(none)");
    const auto both = linesOf(wpa3Network(true), kHostapdFormat);
    EXPECT_EQ(valueIn(both, "wpa_key_mgmt"), "WPA-PSK SAE");
    EXPECT_EQ(valueIn(both, "ieee80211w"), "1");
    EXPECT_EQ(valueIn(both, "sae_require_mfp"), "1");
}

TEST(Hostapd, HasTheKeyInTheAbsenceOfAPassphrase) {
    auto configuration = halvane::testing::wpa2Network("PSK", "home");
    const std::uint8_t key[32] = {0xAB};
    configuration.setKeyMaterial(key);
    const auto lines = linesOf(configuration, kHostapdFormat);
    EXPECT_EQ(valueIn(lines, "wpa_psk"), "ab" + std::string(62, '0'));
    EXPECT_EQ(valueIn(lines, "wpa_passphrase"), "(none)");
}

TEST(Hostapd, MixesWPAAndWPA2) {
    auto configuration = personalNetwork();
    configuration.setAllowSecurityWPA(true);
    configuration.setUnicastCipherWithOptionString_error("TKIP,CCMP");
    configuration.setMulticastCipherWithOptionString_error("TKIP");
    auto lines = linesOf(configuration, kHostapdFormat);
    EXPECT_EQ(valueIn(lines, "wpa"), "3");
    EXPECT_EQ(valueIn(lines, "wpa_pairwise"), "TKIP CCMP");
    EXPECT_EQ(valueIn(lines, "rsn_pairwise"), "TKIP CCMP");
    EXPECT_EQ(valueIn(lines, "group_cipher"), "(none)") << "hostapd takes TKIP itself";
    configuration.setUnicastCipherWithOptionString_error("CCMP");
    lines = linesOf(configuration, kHostapdFormat);
    EXPECT_EQ(valueIn(lines, "group_cipher"), "TKIP");
}

TEST(Hostapd, PlacesTheChannel) {
    struct Row {
        int channel;
        int width;
        const char* mode;
        const char* capabilities;
        const char* center;
    };
    const Row rows[] = {
        {1, 20, "g", "(none)", "(none)"},   {7, 40, "g", "[HT40+]", "(none)"},
        {8, 40, "g", "[HT40-]", "(none)"},  {36, 40, "a", "[HT40+]", "(none)"},
        {40, 40, "a", "[HT40-]", "(none)"}, {44, 80, "a", "[HT40+]", "42"},
        {64, 160, "a", "[HT40-]", "50"},    {149, 80, "a", "[HT40+]", "155"},
        {165, 20, "a", "(none)", "(none)"},
    };
    for (const Row& row : rows) {
        auto configuration = openNetwork();
        configuration.setChannel(row.channel);
        configuration.setChannelWidth(row.width);
        const auto lines = linesOf(configuration, kHostapdFormat);
        EXPECT_EQ(valueIn(lines, "channel"), std::to_string(row.channel));
        EXPECT_EQ(valueIn(lines, "hw_mode"), row.mode) << row.channel;
        EXPECT_EQ(valueIn(lines, "ht_capab"), row.capabilities) << row.channel;
        EXPECT_EQ(valueIn(lines, "vht_oper_centr_freq_seg0_idx"), row.center) << row.channel;
        EXPECT_EQ(valueIn(lines, "ieee80211ac"), row.width > 40 ? "1" : "(none)");
        EXPECT_EQ(valueIn(lines, "vht_oper_chwidth"), row.width == 160  ? "2"
                                                      : row.width == 80 ? "1"
                                                                        : "(none)");
    }
}

TEST(Hostapd, DetectsRadarAt5GHzByTheRulesOfACountry) {
    auto configuration = openNetwork();
    configuration.setChannel(52);
    EXPECT_EQ(valueIn(linesOf(configuration, kHostapdFormat), "ieee80211h"), "(none)");
    auto skeleton = configuration.skeletonRepresentation();
    skeleton.set("country", "DE");
    configuration = HalvaneBSSConfig::initWithSkeletonRepresentation(skeleton);
    EXPECT_EQ(valueIn(linesOf(configuration, kHostapdFormat), "ieee80211d"), "1");
    EXPECT_EQ(valueIn(linesOf(configuration, kHostapdFormat), "ieee80211h"), "1");
    configuration.setChannel(6);
    EXPECT_EQ(valueIn(linesOf(configuration, kHostapdFormat), "ieee80211h"), "(none)");
}

TEST(Hostapd, ChoosesAmongPHYModes) {
    auto configuration = openNetwork();
    configuration.setChannel(6);
    configuration.setPHYModeWithOptionString_error("802.11b");
    EXPECT_EQ(valueIn(linesOf(configuration, kHostapdFormat), "hw_mode"), "b");
    EXPECT_EQ(valueIn(linesOf(configuration, kHostapdFormat), "ieee80211n"), "(none)");
    configuration.setPHYModeWithOptionString_error("802.11n");
    EXPECT_EQ(valueIn(linesOf(configuration, kHostapdFormat), "require_ht"), "1");
    configuration.setPHYModeWithOptionString_error("802.11g");
    EXPECT_EQ(exportOf(configuration, kHostapdFormat).losses,
              Sentences{"hw_mode=g also lets stations with 802.11b in."});
    configuration.setChannel(0);
    configuration.setPHYModeWithOptionString_error("802.11a,802.11n");
    EXPECT_EQ(valueIn(linesOf(configuration, kHostapdFormat), "hw_mode"), "a");
}

TEST(Hostapd, HasTheTextsOfWPS) {
    auto configuration = personalNetwork();
    configuration.setAllowSecurityWPS(true);
    configuration.setWPSConfigurationMethodsString_error("PIN,PushButton");
    configuration.setWpsPIN(100007);
    configuration.setWpsDeviceName("A name");
    configuration.setWpsModelName("two\nlines=1");
    const auto lines = linesOf(configuration, kHostapdFormat);
    EXPECT_EQ(valueIn(lines, "wps_state"), "2");
    EXPECT_EQ(valueIn(lines, "config_methods"), "label virtual_push_button");
    EXPECT_EQ(valueIn(lines, "ap_pin"), "00100007");
    EXPECT_EQ(valueIn(lines, "device_name"), "A name");
    EXPECT_EQ(valueIn(lines, "model_name"), "(none)");
    EXPECT_EQ(valueIn(lines, "lines"), "(none)");
    const auto losses = exportOf(configuration, kHostapdFormat).losses;
    ASSERT_FALSE(losses.empty());
    EXPECT_EQ(losses.back(), "model_name is left out: the text has a control character.");
}

TEST(Hostapd, HidesAndIsolates) {
    auto configuration = personalNetwork();
    auto lines = linesOf(configuration, kHostapdFormat);
    EXPECT_EQ(valueIn(lines, "ignore_broadcast_ssid"), "(none)");
    EXPECT_EQ(valueIn(lines, "ap_isolate"), "(none)");
    configuration.setHiddenSSID(true);
    configuration.setStationIsolation(true);
    lines = linesOf(configuration, kHostapdFormat);
    EXPECT_EQ(valueIn(lines, "ignore_broadcast_ssid"), "1");
    EXPECT_EQ(valueIn(lines, "ap_isolate"), "1");
    EXPECT_EQ(valueIn(lines, "ssid"), "home");
    configuration.setHiddenSSID(false);
    configuration.setStationIsolation(false);
    EXPECT_EQ(linesOf(configuration, kHostapdFormat), linesOf(personalNetwork(), kHostapdFormat));
}

TEST(Hostapd, HasNoWPSInAHiddenNetwork) {
    auto configuration = personalNetwork();
    configuration.setChannel(6);
    configuration.setAllowSecurityWPS(true);
    configuration.setWPSConfigurationMethodsString_error("PIN,PushButton");
    configuration.setWpsPIN(100007);
    configuration.setWpsDeviceName("A name");
    configuration.setHiddenSSID(true);
    EXPECT_EQ(exportOf(configuration, kHostapdFormat).losses,
              Sentences{"WPS is left out: hostapd has none in hidden networks."});
    const auto lines = linesOf(configuration, kHostapdFormat);
    for (const char* key : {"wps_state", "eap_server", "config_methods", "ap_pin", "device_name"}) {
        EXPECT_EQ(valueIn(lines, key), "(none)") << key;
    }
}

TEST(Hostapd, TellsWhatIsLeftOut) {
    auto configuration = enterpriseNetwork();
    configuration.setEapolRetryCount(0);
    configuration.setEapolRetryInterval(50);
    configuration.setEapolGTKRotation(-1);
    configuration.setPreferredOrder(2);
    configuration.setChannelWidth(40);
    configuration.setAllowAuthenticationLEAP(true);
    configuration.setWpsDeviceName("name");
    EXPECT_EQ(exportOf(configuration, kHostapdFormat).losses,
              (Sentences{
                  "There is no channel: add channel=N, and hw_mode=a if that is on 5 GHz.",
                  "The channel width is left out, since there is no channel.",
                  ("There is no RADIUS server: add auth_server_addr, auth_server_port and "
                   "auth_server_shared_secret."),
                  "The preferred order is left out: hostapd knows none.",
                  "LEAP authentication is left out.",
                  "The EAPOL retry interval is left out: hostapd has its own.",
                  "The EAPOL retry count is left out: hostapd takes 1 to 4294967295.",
                  "The EAPOL GTK rotation is left out: it is negative.",
                  "The texts for WPS are left out, since WPS is not allowed.",
              }));
}

TEST(Hostapd, RefusesWhatItCannotHost) {
    auto configuration = HalvaneBSSConfig::init();
    configuration.setSSID(Ssid::fromText("home").value());
    configuration.setSecurityWithOptionString_error("WPS");
    configuration.setAllowPushbutton(true);
    EXPECT_EQ(refusalOf(configuration, kHostapdFormat),
              Sentences{"WPS alone does not say how the network is encrypted."});
    configuration = halvane::testing::wpa2Network("PSK", "home");
    configuration.setAllowSecurityWPS(true);
    configuration.setAllowPushbutton(true);
    EXPECT_EQ(refusalOf(configuration, kHostapdFormat),
              Sentences{"hostapd needs the passphrase or the key."});
    configuration = personalNetwork();
    configuration.setUnicastCipherWithOptionString_error("UseGroup");
    EXPECT_EQ(refusalOf(configuration, kHostapdFormat),
              Sentences{"hostapd has no unicast cipher UseGroup."});
}

// --- iwd ---

TEST(Iwd, IsAProfileOfAnAccessPoint) {
    auto configuration = personalNetwork("home net", " pass\\word ");
    configuration.setChannel(6);
    configuration.setWpsDeviceName("A name");
    EXPECT_EQ(exportOf(configuration, kIwdFormat).text,
              "# Store it as /var/lib/iwd/ap/home net.ap: the name of the file is the SSID.\n"
              "# It holds the passphrase or the key: keep it from others.\n"
              "\n[General]\nChannel=6\n"
              "\n[Security]\nPassphrase=\\spass\\\\word\\s\nPairwiseCiphers=CCMP\n"
              "GroupCipher=CCMP\n"
              "\n[WSC]\nDeviceName=A name\n");
    EXPECT_EQ(exportOf(configuration, kIwdFormat).losses, Sentences());
}

TEST(Iwd, TellsWhatIsLeftOut) {
    EXPECT_EQ(exportOf(wpa3Network(true), kIwdFormat).losses,
              (Sentences{"SAE is left out: the network comes out as WPA2-Personal.",
                         "The protection of management frames is left out."}));
    EXPECT_EQ(exportOf(personalNetwork(), kIwdFormat).losses, Sentences());
    auto hidden = personalNetwork();
    hidden.setHiddenSSID(true);
    EXPECT_EQ(exportOf(hidden, kIwdFormat).losses,
              Sentences{"The SSID is not hidden: iwd hosts no hidden networks."});
}

TEST(Iwd, DoesNotLetStationsReachEachOtherInSilence) {
    auto configuration = personalNetwork();
    configuration.setStationIsolation(true);
    EXPECT_EQ(refusalOf(configuration, kIwdFormat),
              Sentences{"iwd does not keep stations from each other."});
    configuration.setStationIsolation(false);
    EXPECT_EQ(refusalOf(configuration, kIwdFormat), Sentences());
}

TEST(Iwd, HostsWPA2PersonalAlone) {
    const Sentences refusal = {"iwd hosts networks with WPA2-Personal alone."};
    EXPECT_EQ(refusalOf(openNetwork(), kIwdFormat), refusal);
    EXPECT_EQ(refusalOf(enterpriseNetwork(), kIwdFormat), refusal);
    EXPECT_EQ(refusalOf(wpa3Network(false), kIwdFormat), refusal) << "not less secure in silence";
}

// --- NetworkManager ---

TEST(NetworkManager, IsAKeyFileOfAnAccessPoint) {
    auto configuration = wpa3Network(false);
    configuration.setChannel(36);
    EXPECT_EQ(exportOf(configuration, kNetworkManagerFormat).text,
              "# Store it under /etc/NetworkManager/system-connections/, with the ending "
              ".nmconnection,\n"
              "# owned by root and with the mode 600: it holds the passphrase or the key.\n"
              "\n[connection]\nid=home\ntype=wifi\n"
              "\n[wifi]\nmode=ap\nssid=home\nband=a\nchannel=36\n"
              "\n[wifi-security]\nkey-mgmt=sae\nproto=rsn;\npairwise=ccmp;\ngroup=ccmp;\npmf=3\n"
              "psk=password\n"
              "\n[ipv4]\nmethod=shared\n");
    EXPECT_EQ(exportOf(configuration, kNetworkManagerFormat).losses, Sentences());
}

TEST(NetworkManager, HidesAndIsolates) {
    auto configuration = openNetwork();
    auto lines = linesOf(configuration, kNetworkManagerFormat);
    EXPECT_EQ(valueIn(lines, "hidden"), "(none)");
    EXPECT_EQ(valueIn(lines, "ap-isolation"), "(none)");
    configuration.setHiddenSSID(true);
    configuration.setStationIsolation(true);
    const auto text = exportOf(configuration, kNetworkManagerFormat).text;
    EXPECT_NE(text.find("\n[wifi]\nmode=ap\nssid=home\nhidden=true\nap-isolation=1\n"),
              std::string::npos)
        << text;
    configuration.setHiddenSSID(false);
    configuration.setStationIsolation(false);
    lines = linesOf(configuration, kNetworkManagerFormat);
    EXPECT_EQ(valueIn(lines, "hidden"), "(none)");
    EXPECT_EQ(valueIn(lines, "ap-isolation"), "0");
}

TEST(NetworkManager, HasNoSecurityOfAnOpenNetwork) {
    const auto text = exportOf(openNetwork(), kNetworkManagerFormat).text;
    EXPECT_EQ(text.find("wifi-security"), std::string::npos) << text;
    EXPECT_EQ(text.find("passphrase"), std::string::npos) << text;
}

TEST(NetworkManager, RefusesWhatItCannotHost) {
    EXPECT_EQ(refusalOf(enterpriseNetwork(), kNetworkManagerFormat),
              Sentences{"NetworkManager hosts no network with 802.1X."});
}

// --- Hostile names ---

std::vector<std::string> hostileNames() {
    using namespace std::string_literals;
    return {"a\nwpa=0",
            "a\rwpa=0",
            "\0"s,
            "a\0b"s,
            "#name",
            " name",
            "name ",
            "\"name\"",
            "P\"a\\nwpa=0\"",
            "1;2;3;",
            "a\\nb",
            "[wifi]\nmode=mesh",
            "\xFF\xFE",
            "caf\xC3\xA9",
            "\x1B[31mred",
            "a\x7F",
            "\n[wifi-security]",
            std::string(32, '\n'),
            "=",
            "name=value"};
}

Sentences keysOf(const Sentences& lines) {
    Sentences keys;
    for (const auto& line : lines) keys.push_back(line.substr(0, line.find('=')));
    return keys;
}

std::string fromDigits(const std::string& digits) {
    std::string octets;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        octets += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
    }
    return octets;
}

std::string fromList(const std::string& list) {
    std::string octets;
    for (std::size_t at = 0; at < list.size(); at = list.find(';', at) + 1) {
        octets += static_cast<char>(std::stoi(list.substr(at)));
    }
    return octets;
}

TEST(HostileNames, MakeNoLineOfHostapd) {
    const auto usual = keysOf(linesOf(personalNetwork(), kHostapdFormat));
    for (const auto& ssid : hostileNames()) {
        const auto lines = linesOf(personalNetwork(ssid), kHostapdFormat);
        auto keys = keysOf(lines);
        std::erase(keys, "utf8_ssid");
        for (auto& key : keys) {
            if (key == "ssid2") key = "ssid";
        }
        EXPECT_EQ(keys, usual) << ssid;
        const auto digits = valueIn(lines, "ssid2");
        EXPECT_EQ(digits == "(none)" ? valueIn(lines, "ssid") : fromDigits(digits), ssid);
    }
}

TEST(HostileNames, MakeNoLineOfIwd) {
    const auto usual = linesOf(personalNetwork(), kIwdFormat);
    for (const auto& ssid : hostileNames()) {
        EXPECT_EQ(linesOf(personalNetwork(ssid), kIwdFormat), usual) << ssid;
        const auto text = exportOf(personalNetwork(ssid), kIwdFormat).text;
        EXPECT_EQ(text.find("/iwd/ap/=" + hexText(ssid) + ".ap") != std::string::npos,
                  ssid != " name" && ssid != "name ")
            << text;
    }
}

TEST(HostileNames, MakeNoLineOfNetworkManager) {
    const auto usual = keysOf(linesOf(personalNetwork(), kNetworkManagerFormat));
    for (const auto& ssid : hostileNames()) {
        const auto lines = linesOf(personalNetwork(ssid), kNetworkManagerFormat);
        EXPECT_EQ(keysOf(lines), usual) << ssid;
        const auto value = valueIn(lines, "ssid");
        EXPECT_EQ(value.ends_with(';') ? fromList(value) : value, ssid);
    }
}

}  // namespace
