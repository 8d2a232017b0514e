// What `halvane scan` prints of a kernel that a test has written down.
#include "tools/halvane/commands/scan.h"

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/nl80211.h>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdio.h>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/captured_stream.h"
#include "tests/support/hostile_bytes.h"
#include "tests/support/netlink_message.h"
#include "tests/support/scoped_environment.h"
#include "tests/support/scripted_nl80211.h"
#include "tests/support/tool_command_line.h"
#include "tools/halvane/commands/command.h"
#include "tools/halvane/input/nl80211_channel.h"
#include "tools/halvane/options/scan_options.h"

using halvane::testing::Bytes;
using halvane::testing::CapturedStream;
using halvane::testing::NetlinkMessage;
using halvane::testing::ScopedEnvironment;
using halvane::testing::ScriptedNl80211;
using halvane::testing::ToolCommandLine;
using nlohmann::json;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using namespace halvane::tool;

namespace {

struct Heard {
    std::uint8_t lastOctet;
    std::string name;
    std::uint32_t frequency = 2412;
    int signal = -5000;  // hundredths of a dBm
    std::uint32_t age = 1000;
    std::optional<std::uint32_t> status{};
};

Bytes messageOf(const Heard& heard) {
    NetlinkMessage message(NL80211_CMD_NEW_SCAN_RESULTS);
    message.addU32(NL80211_ATTR_IFINDEX, 5).begin(NL80211_ATTR_BSS);
    message.add(NL80211_BSS_BSSID, {0x02, 0, 0, 0, 0, heard.lastOctet});
    Bytes elements = {0, static_cast<std::uint8_t>(heard.name.size())};
    elements.insert(elements.end(), heard.name.begin(), heard.name.end());
    message.add(NL80211_BSS_BEACON_IES, elements);
    message.addU32(NL80211_BSS_FREQUENCY, heard.frequency);
    message.addU32(NL80211_BSS_SEEN_MS_AGO, heard.age);
    message.addU32(NL80211_BSS_SIGNAL_MBM, static_cast<std::uint32_t>(heard.signal));
    message.addU16(NL80211_BSS_BEACON_INTERVAL, 100).addU16(NL80211_BSS_CAPABILITY, 0x0001);
    if (heard.status) message.addU32(NL80211_BSS_STATUS, *heard.status);
    return message.end().bytes();
}

Nl80211Answer interfaceAnswer() {
    NetlinkMessage message(NL80211_CMD_NEW_INTERFACE);
    message.addU32(NL80211_ATTR_IFINDEX, 5).addText(NL80211_ATTR_IFNAME, "wlan0");
    return {{message.addU32(NL80211_ATTR_IFTYPE, 2).bytes()}};
}

struct Ran {
    int status = -1;
    std::string output;
    std::string errors;
};

class ScanCommand : public ::testing::Test {
  protected:
    Ran run(std::vector<std::string> words) {
        ToolCommandLine line(std::move(words));
        const CapturedStream output(stdout);
        const CapturedStream errors(stderr);
        if (!line.parse(scanOptions())) return {-1, "", errors.text()};
        const auto options = takeScanOptions();
        if (!options) return {-1, "", options.error().message};
        const int status = scan(kernel_, *options, [] { return std::chrono::nanoseconds(0); });
        return {status, output.text(), errors.text()};
    }

    Ran runWith(const std::vector<Heard>& networks, std::vector<std::string> words = {}) {
        Nl80211Answer list;
        for (const Heard& heard : networks) list.messages.push_back(messageOf(heard));
        kernel_.answers = {interfaceAnswer(), std::move(list)};
        return run(std::move(words));
    }

    ScriptedNl80211 kernel_;

  private:
    const ScopedEnvironment locale_{"LC_ALL", "C"};
    const ScopedEnvironment noColor_{"NO_COLOR", "1"};
    const ScopedEnvironment makers_{"HALVANE_IEEE_DATA", "/nowhere"};
};

const std::vector<Heard> kAround = {
    {.lastOctet = 1, .name = "far", .signal = -8000, .age = 46'000},
    {.lastOctet = 2,
     .name = "mine",
     .frequency = 5180,
     .signal = -3149,
     .age = 7'900,
     .status = NL80211_BSS_STATUS_ASSOCIATED},
};

TEST_F(ScanCommand, PrintsTheTableWithStateAndAge) {
    const Ran ran = runWith(kAround, {"--width=120"});
    EXPECT_EQ(ran.status, kExitDone);
    EXPECT_EQ(
        ran.output,
        "   SSID         dBm      GHz  CH  MHz GEN Mbit/s SECURITY PMF  AGE BSSID             "
        "MAKER\n"
        "*  mine         -31 ####   5  36   -  -        - Open     -   7.9s 02:00:00:00:00:02 "
        "(local)\n"
        "   far          -80 #... 2.4   1   -  -        - Open     -    46s 02:00:00:00:00:01 "
        "(local)\n");
    EXPECT_EQ(ran.errors.substr(0, ran.errors.find('\n')), "2 networks: 1 on 2.4 GHz, 1 on 5 GHz");
    EXPECT_THAT(ran.errors,
                ::testing::EndsWith("wlan0, list of 46 s ago; "
                                    "'sudo halvane scan --trigger' takes a fresh one\n"));
}

TEST_F(ScanCommand, PaintsWhatIsInUseAndWhatIsOld) {
    const std::string output = runWith(kAround, {"--width=120", "--color=always"}).output;
    EXPECT_THAT(output, HasSubstr("\x1B[1;32m*\x1B[m  \x1B[1;32mmine\x1B[m"));
    EXPECT_THAT(output, HasSubstr("\x1B[33m46s\x1B[m"));
    EXPECT_THAT(output, HasSubstr(" 7.9s "));
}

TEST_F(ScanCommand, TellsAgeAndUseInJSON) {
    const json records = json::parse(runWith(kAround, {"--format=json"}).output);
    ASSERT_EQ(records.size(), 2u);
    EXPECT_EQ(records[0]["mac"], "02:00:00:00:00:01");  // in the order of the kernel
    EXPECT_EQ(records[0]["age"], 46'000);
    EXPECT_EQ(records[0]["isInUse"], false);
    EXPECT_EQ(records[1]["age"], 7'900);
    EXPECT_EQ(records[1]["isInUse"], true);
    EXPECT_EQ(records[1]["RSSI"], -31);
    EXPECT_FALSE(records[1].contains("frames"));
    EXPECT_FALSE(records[1].contains("firstFrame"));
}

TEST_F(ScanCommand, PrintsTheColumnsOfItsListAsCSV) {
    const Ran ran = runWith(kAround, {"--format=csv", "--columns=state,ssid,age", "--sort=age"});
    EXPECT_EQ(ran.output, "state,ssid,ssidHex,age\nin use,mine,6d696e65,7.9\n,far,666172,46\n");
    const std::string all = runWith(kAround, {"--format=csv"}).output;
    EXPECT_THAT(all, ::testing::StartsWith("state,mark,ssid,"));
    EXPECT_THAT(all, Not(HasSubstr("beacons")));
    EXPECT_THAT(runWith(kAround, {"--columns=last"}).errors,
                HasSubstr("--columns: 'last' is no column"));
    EXPECT_THAT(runWith(kAround, {"--findings", "--limit=1"}).errors,
                HasSubstr("--findings and --limit do not go together"));
}

TEST_F(ScanCommand, FiltersNetworks) {
    const Ran ran = runWith(kAround, {"--band=5", "--columns=ssid"});
    EXPECT_EQ(ran.output, "SSID\nmine\n");
    EXPECT_THAT(ran.errors, HasSubstr("1 of 2 networks: 1 on 5 GHz\n"));
    EXPECT_EQ(runWith(kAround, {"--ssid=x"}).output, "");
    EXPECT_EQ(runWith(kAround, {"--ssid=x"}).status, kExitDone);
}

TEST_F(ScanCommand, TakesTheYoungestOfTheEntriesOfAnAddress) {
    const Ran ran = runWith({{.lastOctet = 1, .name = "a", .age = 9000},
                             {.lastOctet = 1, .name = "a", .frequency = 2437, .age = 2000}},
                            {"--format=csv", "--columns=bssid,age"});
    EXPECT_EQ(ran.output, "bssid,age\n02:00:00:00:00:01,2\n");
}

TEST_F(ScanCommand, LooksAroundFirstIfItIsToldTo) {
    kernel_.answers = {interfaceAnswer(), Nl80211Answer{}, Nl80211Answer{{messageOf(kAround[1])}}};
    NetlinkMessage done(NL80211_CMD_NEW_SCAN_RESULTS);
    kernel_.events.emplace_back(done.addU32(NL80211_ATTR_IFINDEX, 5).bytes());
    const Ran ran = run({"--trigger", "wlan0", "--columns=ssid"});
    EXPECT_EQ(ran.status, kExitDone) << ran.errors;
    EXPECT_EQ(ran.output, "SSID\nmine\n");
    EXPECT_THAT(ran.errors, HasSubstr("\nwlan0, fresh list\n"));
    EXPECT_THAT(kernel_.steps, ElementsAre("ask 5", "subscribe scan", "ask 33", "wait", "ask 32"));
}

TEST_F(ScanCommand, SaysWhatIsWrongAndWhatToDo) {
    kernel_.answers = {Nl80211Answer{}};
    Ran ran = run({});
    EXPECT_EQ(ran.status, kExitFailed);
    EXPECT_EQ(ran.output, "");
    EXPECT_EQ(ran.errors,
              "halvane: scan: this machine has no Wi-Fi interface\n"
              "  captures of other machines: halvane decode FILE\n");
    kernel_.answers = {interfaceAnswer(), ScriptedNl80211::refusal(EPERM)};
    ran = run({"--trigger"});
    EXPECT_EQ(ran.status, kExitFailed);
    EXPECT_EQ(ran.errors,
              "halvane: scan: wlan0: not permitted to scan\n"
              "  sudo halvane scan --trigger wlan0\n"
              "  or, the list that the kernel has: halvane scan wlan0\n");
    kernel_.answers = {interfaceAnswer(), ScriptedNl80211::refusal(ENETDOWN)};
    EXPECT_EQ(run({}).status, kExitFailed);
}

TEST_F(ScanCommand, CountsWhatItCannotRead) {
    Bytes cut = messageOf(kAround[0]);
    cut.resize(cut.size() - 4);
    kernel_.answers = {interfaceAnswer(), Nl80211Answer{{cut, messageOf(kAround[1])}}};
    const Ran ran = run({"--columns=ssid"});
    EXPECT_EQ(ran.output, "SSID\nmine\n");
    EXPECT_THAT(ran.errors, HasSubstr("halvane: scan: wlan0: 1 network of the list cannot be read: "
                                      "it ends inside an attribute\n"));
}

TEST_F(ScanCommand, RefusesTwoInterfaces) {
    EXPECT_EQ(run({"wlan0", "wlan1"}).errors, "one interface at a time");
}

}  // namespace
