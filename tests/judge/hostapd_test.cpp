// hostapd's own parser as the judge of exported configurations: it names each line that it does not
// know, and what does not fit together. It is skipped where hostapd is not installed.
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <utility>

#include "halvane/model/bss_config.h"

#include "tests/support/hostapd_parser.h"
#include "tests/support/made_config.h"
#include "tools/halvane/config/export_format.h"

using namespace halvane;
using halvane::testing::enterpriseNetwork;
using halvane::testing::hostapdPath;
using halvane::testing::openNetwork;
using halvane::testing::personalNetwork;
using halvane::testing::wpa3Network;

namespace {

class HostapdParser : public ::testing::Test {
  protected:
    void SetUp() override {
        if (hostapdPath().empty()) GTEST_SKIP() << "hostapd is not installed";
    }

    std::string complaintsOf(const std::string& text) {
        return parser_.complaintsOf(text, {"-i", "lo"});
    }

    std::string complaintsOf(const HalvaneBSSConfig& configuration, std::string_view more = {}) {
        const auto result = tool::exported(configuration, tool::kHostapdFormat);
        if (!result) return "refused: " + result.error().front();
        return complaintsOf(result->text + std::string(more));
    }

  private:
    halvane::testing::HostapdParser parser_;
};

TEST_F(HostapdParser, NamesALineThatItDoesNotKnow) {
    EXPECT_NE(complaintsOf(std::string("ssid=home\nno_such_item=1\n"))
                  .find("Line 2: unknown configuration item 'no_such_item'"),
              std::string::npos);
    EXPECT_NE(complaintsOf(std::string("ssid=home\nwpa=2\nwpa_key_mgmt=WPA-PSK\n")), "");
}

TEST_F(HostapdParser, TakesEveryKindOfNetwork) {
    EXPECT_EQ(complaintsOf(openNetwork()), "");
    EXPECT_EQ(complaintsOf(personalNetwork()), "");
    EXPECT_EQ(complaintsOf(wpa3Network(true)), "");
    EXPECT_EQ(complaintsOf(wpa3Network(false)), "");
    EXPECT_EQ(complaintsOf(enterpriseNetwork(),
                           "auth_server_addr=127.0.0.1\nauth_server_port=1812\n"
                           "auth_server_shared_secret=secret\n"),
              "");
    auto withKey = halvane::testing::wpa2Network("PSK", "home");
    const std::uint8_t key[32] = {1, 2, 3};
    withKey.setKeyMaterial(key);
    EXPECT_EQ(complaintsOf(withKey), "");
    auto mixed = personalNetwork();
    mixed.setAllowSecurityWPA(true);
    mixed.setUnicastCipherWithOptionString_error("TKIP,CCMP");
    mixed.setMulticastCipherWithOptionString_error("TKIP");
    EXPECT_EQ(complaintsOf(mixed), "");
    mixed.setUnicastCipherWithOptionString_error("CCMP");
    EXPECT_EQ(complaintsOf(mixed), "");
}

TEST_F(HostapdParser, TakesEveryPassphraseAndName) {
    for (const std::string& passphrase :
         {std::string(8, ' '), std::string(63, '~'), std::string("#pass\"word\\|id=x"),
          std::string(32, 'p')}) {
        EXPECT_EQ(complaintsOf(personalNetwork("home", passphrase)), "") << passphrase;
    }
    for (const std::string& ssid :
         {std::string("a\nb"), std::string(32, '\0'), std::string("P\"a\""), std::string("#a"),
          std::string(" a "), std::string("caf\xC3\xA9"), std::string(32, '\xFF')}) {
        EXPECT_EQ(complaintsOf(personalNetwork(ssid)), "") << ssid;
    }
}

TEST_F(HostapdParser, TakesEveryChannel) {
    for (const auto& [channel, width] : {std::pair{1, 20},
                                         {7, 40},
                                         {13, 40},
                                         {36, 20},
                                         {40, 40},
                                         {44, 80},
                                         {100, 160},
                                         {165, 0}}) {
        auto skeleton = personalNetwork().skeletonRepresentation();
        skeleton.set("country", "DE");
        auto configuration = HalvaneBSSConfig::initWithSkeletonRepresentation(skeleton);
        configuration.setChannel(channel);
        configuration.setChannelWidth(width);
        EXPECT_EQ(complaintsOf(configuration), "") << channel << ' ' << width;
        configuration.setPHYModeWithOptionString_error("802.11n");
        EXPECT_EQ(complaintsOf(configuration), "") << channel << ' ' << width;
    }
}

TEST_F(HostapdParser, TakesWPSAndWEP) {
    auto wps = personalNetwork();
    wps.setAllowSecurityWPS(true);
    wps.setWPSConfigurationMethodsString_error("PIN,PushButton");
    wps.setWpsPIN(100007);
    wps.setWpsDeviceName(std::string(32, 'n'));
    wps.setWpsManufacturerName(std::string(64, 'n'));
    wps.setWpsModelName(std::string(32, 'n'));
    wps.setWpsModelNumber(std::string(32, 'n'));
    wps.setWpsSerialNumber(std::string(32, 'n'));
    EXPECT_EQ(complaintsOf(wps), "");
    auto wep = openNetwork();
    wep.setSecurityWithOptionString_error("WEP");
    wep.setMulticastCipherWithOptionString_error("WEP40");
    wep.setAuthenticationWithOptionString_error("Open,SharedKey");
    const std::uint8_t key[5] = {0x00, 0x0A, 0xFF, '#', '"'};
    wep.setPassphrase(key);
    EXPECT_EQ(complaintsOf(wep), "");
}

}  // namespace
