#include "tools/halvaned/hosting/hosting_plan.h"

#include <cstdint>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "halvane/base/byte_buffer.h"
#include "halvane/model/bss_config.h"

#include "tests/support/made_config.h"
#include "tests/support/temporary_folder.h"
#include "tools/halvane/input/wireless_interface.h"
#include "tools/halvaned/driver.h"
#include "tools/halvaned/hostapd/hostapd_file.h"
#include "tools/halvaned/radio/device_list.h"
#include "tools/halvaned/radio/radio.h"
#include "tools/halvaned/settings/settings.h"
#include "tools/halvaned/state/daemon_state.h"

namespace halvane::hosting {
namespace {

using halvane::testing::openNetwork;
using halvane::testing::TemporaryFolder;

HalvaneBSSConfig network(std::string_view name, std::int64_t order) {
    HalvaneBSSConfig configuration = openNetwork(name);
    configuration.setPreferredOrder(order);
    return configuration;
}

DeviceList oneRadio(std::uint32_t mostAPs) {
    RadioChannel channel{.frequency = 2437};
    Radio radio{.name = "phy0", .modes = {tool::InterfaceMode::AP}, .mostAPs = mostAPs};
    radio.bands[0].channels.emplace(channel.kilohertz(), channel);
    return {.radios = {radio}, .interfaces = {{.name = "wlan0", .index = 3, .radio = 0}}};
}

Result<HostapdPlan, std::string> planOf(
    const DeviceList& devices, const InterfaceState& state, const Settings& settings = {},
    const IsTaken& isTaken = [](const auto&) { return false; }) {
    return hostingPlan(devices, devices.interfaces.front(), state, settings, isTaken);
}

TEST(HostingPlan, HostsAllConfigurationsByTheirOrder) {
    const InterfaceState state{
        .configurations = {network("b", 2), network("c", 2), network("a", 1)}};
    const auto plan = planOf(oneRadio(4), state);
    ASSERT_TRUE(plan) << plan.error();
    ASSERT_EQ(plan->networks.size(), 3U);
    EXPECT_EQ(plan->networks[0].interface, "wlan0");
    EXPECT_EQ(plan->networks[0].configuration, state.configurations[2]);
    EXPECT_EQ(plan->networks[1].interface, "wlan0_1");
    EXPECT_EQ(plan->networks[1].configuration, state.configurations[0]);
    EXPECT_EQ(plan->networks[2].interface, "wlan0_2");
    EXPECT_EQ(plan->networks[2].configuration, state.configurations[1]);
    EXPECT_EQ(plan->channel, 6);
    EXPECT_EQ(plan->driver, Driver::Nl80211);
    EXPECT_EQ(plan->controlFolder, "/run/halvaned/control");
}

TEST(HostingPlan, RefusesMoreNetworksThanTheRadioHosts) {
    const auto plan = planOf(oneRadio(1), {.configurations = {network("a", 0), network("b", 0)}});
    ASSERT_FALSE(plan);
    EXPECT_EQ(plan.error(), "phy0 can host 1 networks at the same time, and wlan0 has 2.");
}

TEST(HostingPlan, ShortensLongNames) {
    DeviceList devices = oneRadio(4);
    devices.interfaces[0].name = "wlx001122334455";
    const auto plan = planOf(devices, {.configurations = {network("a", 0), network("b", 0)}});
    ASSERT_TRUE(plan) << plan.error();
    EXPECT_EQ(plan->networks[0].interface, "wlx001122334455");
    EXPECT_EQ(plan->networks[1].interface, "wlx0011223344_1");
}

TEST(HostingPlan, HasNoMoreStationsThanTheRadio) {
    DeviceList devices = oneRadio(4);
    devices.radios[0].mostStations = 10;
    const InterfaceState state{.configurations = {network("a", 0)}};
    EXPECT_EQ(planOf(devices, state)->networks[0].maxStations, 10U);
    EXPECT_EQ(planOf(devices, state, {.stations = 5})->networks[0].maxStations, 5U);
}

TEST(HostingPlan, TakesNoNameThatIsTaken) {
    const InterfaceState state{
        .configurations = {network("a", 0), network("b", 0), network("c", 0)}};
    const auto plan = planOf(oneRadio(4), state, {}, [](const std::string& name) {
        return name == "wlan0_1" || name == "wlan0_3";
    });
    ASSERT_TRUE(plan) << plan.error();
    EXPECT_EQ(plan->networks[0].interface, "wlan0");
    EXPECT_EQ(plan->networks[1].interface, "wlan0_2");
    EXPECT_EQ(plan->networks[2].interface, "wlan0_4");
}

// The world's rules let nobody send first at 5 GHz.
TEST(HostingPlan, LetsHostapdSetTheCountryBeforeItAsksForTheChannel) {
    DeviceList devices = oneRadio(4);
    RadioChannel channel{.frequency = 5180, .isPassive = true};
    devices.radios[0].bands[1].channels.emplace(channel.kilohertz(), channel);
    devices.domains = {{.country = "00"}};
    HalvaneBSSConfig configuration = network("a", 0);
    configuration.setChannel(36);
    EXPECT_FALSE(planOf(devices, {.configurations = {configuration}}));
    const auto plan = planOf(devices, {.configurations = {configuration}}, {.country = "DE"});
    ASSERT_TRUE(plan) << plan.error();
    EXPECT_EQ(plan->channel, 36);

    devices.domains = {{.country = "DE"}};
    EXPECT_FALSE(planOf(devices, {.configurations = {configuration}}, {.country = "DE"}));
    devices.domains = {{.country = "00"}};
    devices.radios[0].hasOwnRegulatoryDomain = true;
    EXPECT_FALSE(planOf(devices, {.configurations = {configuration}}, {.country = "DE"}));
}

TEST(HostingPlan, HasNoRadarDetectionWithoutACountry) {
    DeviceList devices = oneRadio(4);
    RadioChannel channel{.frequency = 5260, .isRadarProne = true};
    devices.radios[0].bands[1].channels.emplace(channel.kilohertz(), channel);
    HalvaneBSSConfig configuration = network("a", 0);
    configuration.setChannel(52);
    const auto plan = planOf(devices, {.configurations = {configuration}});
    ASSERT_FALSE(plan);
    EXPECT_EQ(plan.error(), "Channel 52 needs radar detection, and that a country.");
    EXPECT_TRUE(planOf(devices, {.configurations = {configuration}}, {.country = "DE"}));
}

TEST(HostingPlan, HasTheSettings) {
    const Settings settings{
        .runtimeFolder = "/tmp/run", .country = "DE", .stations = 12, .eapUserFile = "/etc/users"};
    const auto plan = planOf(oneRadio(1), {.configurations = {network("a", 0)}}, settings);
    ASSERT_TRUE(plan) << plan.error();
    EXPECT_EQ(plan->networks[0].configuration.country(), "DE");
    EXPECT_EQ(plan->networks[0].maxStations, 12U);
    EXPECT_EQ(plan->controlFolder, "/tmp/run/control");
    EXPECT_EQ(plan->eapUserFile, "/etc/users");
    EXPECT_FALSE(plan->radius);
}

TEST(HostingPlan, HidesAndIsolatesWhatTheConfigurationSays) {
    HalvaneBSSConfig hidden = network("a", 0);
    hidden.setHiddenSSID(true);
    hidden.setStationIsolation(true);
    const auto plan =
        planOf(oneRadio(2), {.configurations = {hidden, network("b", 1)}}, {.country = "DE"});
    ASSERT_TRUE(plan) << plan.error();
    const auto file = hostapdFileOf(*plan);
    ASSERT_TRUE(file);
    const auto second = file->text.find("bss=wlan0_1\n");
    EXPECT_LT(file->text.find("ignore_broadcast_ssid=1\nap_isolate=1\n"), second);
    EXPECT_EQ(file->text.find("ignore_broadcast_ssid", second), std::string::npos);
    EXPECT_EQ(file->text.find("ap_isolate", second), std::string::npos);
}

TEST(HostingPlan, ReadsTheSecretOfTheRadiusServer) {
    const TemporaryFolder folder;
    const auto text = ByteBuffer::fromText("s3cret words\nnot this\n");
    const Settings settings{.radiusServer = "192.0.2.1",
                            .radiusPort = 1645,
                            .radiusSecretFile = folder.write("secret", text.bytes())};
    const auto plan = planOf(oneRadio(1), {.configurations = {network("a", 0)}}, settings);
    ASSERT_TRUE(plan) << plan.error();
    ASSERT_TRUE(plan->radius);
    EXPECT_EQ(plan->radius->address, "192.0.2.1");
    EXPECT_EQ(plan->radius->port, 1645);
    EXPECT_EQ(plan->radius->secret, "s3cret words");
}

TEST(HostingPlan, RefusesASecretThatCannotBeRead) {
    const TemporaryFolder folder;
    const std::string missing = folder.path() / "missing";
    const Settings settings{.radiusServer = "192.0.2.1", .radiusSecretFile = missing};
    const auto plan = planOf(oneRadio(1), {.configurations = {network("a", 0)}}, settings);
    ASSERT_FALSE(plan);
    EXPECT_EQ(plan.error(), missing + " has no secret that can be read.");
}

TEST(HostingPlan, NeedsNoChannelAtACable) {
    const DeviceList devices{.interfaces = {{.name = "eth0", .index = 2}}};
    const Settings settings{.driver = Driver::Wired};
    const auto plan = planOf(devices, {.configurations = {network("a", 0)}}, settings);
    ASSERT_TRUE(plan) << plan.error();
    EXPECT_EQ(plan->channel, 0);
    EXPECT_EQ(plan->driver, Driver::Wired);
}

}  // namespace
}  // namespace halvane::hosting
