#include "tools/halvane/config/contradictions.h"

#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/property_list_value.h"
#include "halvane/model/bss_config.h"

#include "tests/support/made_config.h"

using namespace halvane;
using namespace halvane::tool;
using halvane::testing::enterpriseNetwork;
using halvane::testing::openNetwork;
using halvane::testing::personalNetwork;
using halvane::testing::readConfig;
using halvane::testing::wpa3Network;

namespace {

using Sentences = std::vector<std::string>;
using Change = std::function<void(HalvaneBSSConfig&)>;

Sentences sentencesIn(const HalvaneBSSConfig& configuration) {
    Sentences sentences;
    for (const auto& contradiction : contradictionsIn(configuration)) {
        sentences.push_back(contradiction.sentence);
    }
    return sentences;
}

HalvaneBSSConfig changed(HalvaneBSSConfig configuration, const Change& change) {
    change(configuration);
    return configuration;
}

void setPassphrase(HalvaneBSSConfig& configuration, std::string_view text) {
    configuration.setPassphrase({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
}

TEST(Contradictions, AreNoneInNetworksThatFit) {
    for (const auto& configuration : {openNetwork(), personalNetwork(), wpa3Network(true),
                                      wpa3Network(false), enterpriseNetwork()}) {
        EXPECT_EQ(sentencesIn(configuration), Sentences()) << configuration.description();
    }
    const auto wep = changed(openNetwork(), [](auto& c) {
        c.setSecurityWithOptionString_error("WEP");
        c.setMulticastCipherWithOptionString_error("WEP104");
        c.setAuthenticationWithOptionString_error("Open,SharedKey");
        setPassphrase(c, std::string(13, '\x80'));
    });
    EXPECT_EQ(sentencesIn(wep), Sentences());
    const auto wps = changed(personalNetwork(), [](auto& c) {
        c.setSecurityWithOptionString_error("WPA,WPA2,WPS");
        c.setUnicastCipherWithOptionString_error("TKIP,CCMP");
        c.setMulticastCipherWithOptionString_error("TKIP");
        c.setWPSConfigurationMethodsString_error("PIN,PushButton");
        c.setWpsPIN(12345670);
    });
    EXPECT_EQ(sentencesIn(wps), Sentences());
}

// A network, one change, and the only sentence that it makes.
struct Row {
    HalvaneBSSConfig before;
    Change change;
    const char* sentence;
};

std::vector<Row> securityRows() {
    return {
        {openNetwork(), [](auto& c) { c.setAllowSecurityOpen(false); },
         "No security is allowed, and neither is an open network."},
        {personalNetwork(), [](auto& c) { c.setAllowSecurityOpen(true); },
         "The network is open and encrypted at once."},
        {personalNetwork(), [](auto& c) { c.setAllowSecurityWEP(true); },
         "WEP does not go with WPA or WPA2."},
        {personalNetwork(), [](auto& c) { c.setAllowUnicastCipherCCMP(false); },
         "WPA or WPA2 has no unicast cipher."},
        {personalNetwork(), [](auto& c) { c.setAllowMulticastCipherCCMP(false); },
         "WPA or WPA2 has no multicast cipher."},
        {enterpriseNetwork(), [](auto& c) { c.setAllowKeyManagement8021X(false); },
         "WPA or WPA2 has no key management: PSK, SAE or 802.1X."},
        {personalNetwork(), [](auto& c) { c.setMulticastCipherWithOptionString_error("WEP40"); },
         "A cipher of WEP does not protect the group of a network with WPA or WPA2."},
        {personalNetwork(),
         [](auto& c) { c.setMulticastCipherWithOptionString_error("TKIP,CCMP"); },
         "There is more than one multicast cipher, and a group has one."},
        {personalNetwork(), [](auto& c) { c.setAllowUnicastCipherTKIP(true); },
         "Stations with TKIP do not understand a group with CCMP."},
        {personalNetwork(), [](auto& c) { c.setAllowUnicastCipherUseGroup(true); },
         "The unicast cipher UseGroup does not go with others."},
        {openNetwork(), [](auto& c) { c.setAllowUnicastCipherCCMP(true); },
         "There are ciphers, but the network is open."},
        {openNetwork(), [](auto& c) { c.setAllowKeyManagementPSK(true); },
         "There is key management, but the network is open."},
        {personalNetwork(), [](auto& c) { c.setAllowAuthenticationOpen(false); },
         "WPA and WPA2 need Open authentication."},
        {openNetwork(), [](auto& c) { c.setAllowAuthenticationSharedKey(true); },
         "SharedKey authentication needs WEP."},
    };
}

std::vector<Row> protectionRows() {
    return {
        {wpa3Network(true), [](auto& c) { c.setManagementFrameProtection(std::nullopt); },
         "SAE (WPA3) needs the protection of management frames."},
        {wpa3Network(false),
         [](auto& c) { c.setManagementFrameProtection(kHalvaneManagementFrameProtectionNone); },
         "SAE (WPA3) needs the protection of management frames."},
        {wpa3Network(false),
         [](auto& c) { c.setManagementFrameProtection(kHalvaneManagementFrameProtectionCapable); },
         "SAE without PSK (WPA3 alone) requires the protection of management frames."},
        {wpa3Network(true),
         [](auto& c) {
             c.setUnicastCipherWithOptionString_error("TKIP,CCMP");
             c.setMulticastCipherWithOptionString_error("TKIP");
         },
         "SAE (WPA3) does not go with TKIP."},
        {wpa3Network(true), [](auto& c) { c.setAllowSecurityWPA(true); },
         "SAE (WPA3) does not go with WPA, the predecessor of WPA2."},
        {personalNetwork(),
         [](auto& c) {
             c.setUnicastCipherWithOptionString_error("TKIP");
             c.setMulticastCipherWithOptionString_error("TKIP");
             c.setManagementFrameProtection(kHalvaneManagementFrameProtectionRequired);
         },
         "The protection of management frames is required, and needs WPA2 with CCMP."},
        {openNetwork(),
         [](auto& c) { c.setManagementFrameProtection(kHalvaneManagementFrameProtectionRequired); },
         "The protection of management frames is required, and needs WPA2 with CCMP."},
        {personalNetwork(),
         [](auto& c) {
             c.setAllowSecurityWPA(true);
             c.setManagementFrameProtection(kHalvaneManagementFrameProtectionRequired);
         },
         "The protection of management frames is required, and stations with WPA have none."},
        {personalNetwork(),
         [](auto& c) {
             c.setManagementFrameProtection(static_cast<HalvaneManagementFrameProtection>(3));
         },
         "The protection of management frames is 3, and takes 0 (none), 1 (capable) or 2 "
         "(required)."},
    };
}

std::vector<Row> secretRows() {
    return {
        {openNetwork(), [](auto& c) { setPassphrase(c, "password"); },
         "There is a passphrase, but the network is open."},
        {enterpriseNetwork(), [](auto& c) { setPassphrase(c, "password"); },
         "There is a passphrase, but the only key management is 802.1X."},
        {enterpriseNetwork(), [](auto& c) { c.setAllowKeyManagementPSK(true); },
         "PSK has neither a passphrase nor a key."},
        {personalNetwork(), [](auto& c) { setPassphrase(c, std::string(64, 'F')); },
         "The passphrase is 64 hexadecimal digits: that is a key, and no passphrase."},
        {personalNetwork(), [](auto& c) { setPassphrase(c, std::string(64, 'g')); },
         "The passphrase has 64 octets, and takes 8 to 63."},
        {personalNetwork(), [](auto& c) { setPassphrase(c, "1234567"); },
         "The passphrase has 7 octets, and takes 8 to 63."},
        {wpa3Network(false), [](auto& c) { setPassphrase(c, "1"); },
         "The passphrase has 1 octet, and takes 8 to 63."},
        {personalNetwork(), [](auto& c) { setPassphrase(c, "pass\nword"); },
         "The passphrase holds a character that is not printable ASCII."},
        {personalNetwork(), [](auto& c) { setPassphrase(c, "pass\x7Fword"); },
         "The passphrase holds a character that is not printable ASCII."},
        {personalNetwork(), [](auto& c) { setPassphrase(c, std::string(32, 'p')); },
         "The passphrase has exactly 32 octets, of which Halvane makes no key."},
        {personalNetwork(),
         [](auto& c) {
             const std::uint8_t key[32] = {};
             c.setKeyMaterial(key);
         },
         "The key is not the one that the passphrase and the SSID make."},
        {readConfig({{"SSID", ByteBuffer::fromText("home")},
                     {"AuthenticationOpen", true},
                     {"SecurityOpen", true},
                     {"PHYModes80211g", true}}),
         [](auto& c) {
             auto skeleton = c.skeletonRepresentation();
             skeleton.set("KeyMaterial", ByteBuffer::fromText("k"));
             c = HalvaneBSSConfig::initWithSkeletonRepresentation(skeleton);
         },
         "The key has 1 octet, and a pre-shared key has 32."},
        {openNetwork(),
         [](auto& c) {
             c.setSecurityWithOptionString_error("WEP");
             c.setMulticastCipherWithOptionString_error("WEP40");
         },
         "WEP has no key, which stands in the place of the passphrase."},
        {openNetwork(),
         [](auto& c) {
             c.setSecurityWithOptionString_error("WEP");
             setPassphrase(c, "12345");
         },
         "WEP has no cipher: WEP40 or WEP104, among the multicast ciphers."},
        {openNetwork(),
         [](auto& c) {
             c.setSecurityWithOptionString_error("WEP");
             c.setMulticastCipherWithOptionString_error("WEP40");
             setPassphrase(c, std::string(13, 'k'));
         },
         "The key of WEP has 13 octets: WEP40 takes 5, and WEP104 takes 13."},
    };
}

std::vector<Row> wpsRows() {
    return {
        {personalNetwork(), [](auto& c) { c.setAllowSecurityWPS(true); },
         "WPS has no method: PIN or PushButton."},
        {personalNetwork(), [](auto& c) { c.setAllowPushbutton(true); },
         "There are methods of WPS, but WPS is not among the securities."},
        {personalNetwork(),
         [](auto& c) {
             c.setAllowSecurityWPS(true);
             c.setAllowPushbutton(true);
             c.setWpsPIN(12345670);
         },
         "There is a PIN, but PIN is no allowed method of WPS."},
        {wpa3Network(false),
         [](auto& c) {
             c.setAllowSecurityWPS(true);
             c.setAllowPushbutton(true);
         },
         "WPS hands out keys for PSK, and none for SAE alone."},
        {personalNetwork(),
         [](auto& c) {
             c.setAllowSecurityWPS(true);
             c.setAllowPIN(true);
             c.setWpsPIN(100000);
         },
         "The check digit of the PIN 00100000 would be 7."},
        {personalNetwork(),
         [](auto& c) {
             c.setAllowSecurityWPS(true);
             c.setAllowPIN(true);
             c.setWpsPIN(123456789);
         },
         "The PIN 123456789 does not have 8 digits."},
        {openNetwork(), [](auto& c) { c.setWpsDeviceName(std::string(33, 'n')); },
         "The device name has 33 octets, and 32 are the most."},
        {openNetwork(), [](auto& c) { c.setWpsManufacturerName(std::string(65, 'n')); },
         "The manufacturer's name has 65 octets, and 64 are the most."},
    };
}

std::vector<Row> channelRows() {
    return {
        {openNetwork(), [](auto& c) { c.setPHYModeWithOptionString_error(""); },
         "No PHY mode is allowed."},
        {openNetwork(),
         [](auto& c) {
             c.setChannel(36);
             c.setPHYModeWithOptionString_error("802.11b,802.11g");
         },
         "The channel is on 5 GHz, where neither 802.11b nor 802.11g exists."},
        {openNetwork(),
         [](auto& c) {
             c.setChannel(6);
             c.setPHYModeWithOptionString_error("802.11a");
         },
         "The channel is on 2.4 GHz, where 802.11a does not exist."},
        {openNetwork(),
         [](auto& c) {
             c.setChannelWidth(40);
             c.setPHYModeWithOptionString_error("802.11g");
         },
         "A channel wider than 20 MHz needs 802.11n."},
        {openNetwork(), [](auto& c) { c.setChannel(15); },
         "There is no channel 15 at 2.4 or 5 GHz."},
        {openNetwork(), [](auto& c) { c.setChannel(-1); },
         "There is no channel -1 at 2.4 or 5 GHz."},
        {openNetwork(), [](auto& c) { c.setChannel(256 + 36); },
         "There is no channel 292 at 2.4 or 5 GHz."},
        {openNetwork(), [](auto& c) { c.setChannel(37); },
         "There is no channel 37 at 2.4 or 5 GHz."},
        {openNetwork(), [](auto& c) { c.setChannelWidth(30); },
         "A channel is not 30 MHz wide, but 20, 40, 80 or 160."},
        {openNetwork(),
         [](auto& c) {
             c.setChannel(6);
             c.setChannelWidth(80);
         },
         "Channel 6 is not part of a channel of 80 MHz."},
        {openNetwork(),
         [](auto& c) {
             c.setChannel(14);
             c.setChannelWidth(40);
         },
         "Channel 14 is not part of a channel of 40 MHz."},
        {openNetwork(),
         [](auto& c) {
             c.setChannel(140);
             c.setChannelWidth(80);
         },
         nullptr},
    };
}

void expectEach(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        EXPECT_EQ(sentencesIn(row.before), Sentences()) << row.before.description();
        const auto expected = row.sentence != nullptr ? Sentences{row.sentence} : Sentences();
        const auto configuration = changed(row.before, row.change);
        EXPECT_EQ(sentencesIn(configuration), expected) << configuration.description();
    }
}

TEST(Contradictions, NameWhatIsWrongWithTheSecurity) {
    expectEach(securityRows());
}

TEST(Contradictions, NameWhatIsWrongWithTheProtection) {
    expectEach(protectionRows());
}

TEST(Contradictions, NameWhatIsWrongWithTheSecrets) {
    expectEach(secretRows());
}

TEST(Contradictions, NameWhatIsWrongWithWPS) {
    expectEach(wpsRows());
}

TEST(Contradictions, NameWhatIsWrongWithTheChannel) {
    expectEach(channelRows());
}

TEST(Contradictions, LetWiderChannelsBe) {
    for (const auto& [channel, width] : {std::pair{1, 40},
                                         {7, 40},
                                         {8, 40},
                                         {13, 40},
                                         {36, 80},
                                         {48, 160},
                                         {116, 160},
                                         {149, 80},
                                         {14, 20},
                                         {165, 20}}) {
        auto configuration = openNetwork();
        configuration.setChannel(channel);
        configuration.setChannelWidth(width);
        EXPECT_EQ(sentencesIn(configuration), Sentences()) << channel << ' ' << width;
    }
}

TEST(Contradictions, NameWhatASkeletonMayHold) {
    auto skeleton = openNetwork().skeletonRepresentation();
    skeleton.erase("SSID");
    EXPECT_EQ(sentencesIn(HalvaneBSSConfig::initWithSkeletonRepresentation(skeleton)),
              Sentences{"There is no SSID."});
    skeleton.set("SSID", ByteBuffer());
    EXPECT_EQ(sentencesIn(HalvaneBSSConfig::initWithSkeletonRepresentation(skeleton)),
              Sentences{"The SSID is empty."});
    skeleton.set("SSID", ByteBuffer::fromText(std::string(33, 's')));
    EXPECT_EQ(sentencesIn(HalvaneBSSConfig::initWithSkeletonRepresentation(skeleton)),
              Sentences{"The SSID has 33 octets, and 32 are the most."});
    skeleton.set("SSID", ByteBuffer::fromText("home"));
    skeleton.set("country", "de");
    EXPECT_EQ(sentencesIn(HalvaneBSSConfig::initWithSkeletonRepresentation(skeleton)),
              Sentences{"The country is not two capital letters."});
}

TEST(Contradictions, MayBeOursAlone) {
    const auto configuration =
        changed(personalNetwork(), [](auto& c) { setPassphrase(c, std::string(32, 'p')); });
    const auto found = contradictionsIn(configuration);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_TRUE(found[0].isOursAlone);
    EXPECT_FALSE(contradictionsIn(HalvaneBSSConfig::init()).at(0).isOursAlone);
}

TEST(Contradictions, NeverHoldASecret) {
    auto configuration = personalNetwork();
    setPassphrase(configuration, "sesame\n");
    for (const auto& sentence : sentencesIn(configuration)) {
        EXPECT_EQ(sentence.find("sesame"), std::string::npos) << sentence;
    }
}

}  // namespace
