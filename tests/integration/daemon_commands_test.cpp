// The tool's commands that talk to the Wi-Fi daemon, with the simulated one at the other end.
#include <algorithm>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <nlohmann/json.hpp>
#include <pugixml.hpp>
#include <stdexcept>
#include <string>
#include <string_view>
#include <systemd/sd-bus.h>
#include <utility>
#include <vector>

#include "tests/support/bus_caller.h"
#include "tests/support/private_bus.h"
#include "tests/support/run_program.h"
#include "tests/support/run_tool.h"
#include "tests/support/running_program.h"
#include "tests/support/scoped_environment.h"
#include "tests/support/sim_process.h"
#include "tests/support/temporary_folder.h"

using halvane::testing::BusCaller;
using halvane::testing::expectMessage;
using halvane::testing::PrivateBus;
using halvane::testing::RunningProgram;
using halvane::testing::runProgram;
using halvane::testing::runTool;
using halvane::testing::ScopedEnvironment;
using halvane::testing::SimProcess;
using halvane::testing::TemporaryFolder;
using halvane::testing::toolWords;
using nlohmann::json;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using ::testing::Not;
using ::testing::StartsWith;

namespace {

using Words = std::vector<std::string>;

// The output of a command, which must succeed and print no messages.
std::string outputOf(Words words, std::string_view input = {}) {
    const std::string name = words[0];
    const auto result = runTool(std::move(words), input);
    EXPECT_EQ(result.status, 0) << name;
    EXPECT_EQ(result.errors, "") << name;
    return result.output;
}

json jsonFrom(Words words) {
    words.push_back("--format=json");
    return json::parse(outputOf(std::move(words)), nullptr, false);
}

// Expects no standard output, and one message.
void expectFailure(Words words, int status, const std::string& message) {
    expectMessage(runTool(std::move(words)), status, message);
}

std::string noDaemonMessage(const std::string& command, const std::string& hint) {
    return "halvane: " + command +
           ": no Wi-Fi daemon: nobody owns org.halvane.halvaned on the\n  system bus\n  " + hint +
           "\n";
}

std::string errorMessage(const std::string& command) {
    return "halvane: " + command + ": the daemon or the bus answered with an error of D-Bus\n";
}

std::string lossMessage(const std::string& command) {
    return "halvane: " + command + ": the Wi-Fi daemon went away while it was asked\n";
}

std::string noInterfaceMessage(const std::string& command) {
    return "halvane: " + command +
           ": the daemon answered with status 3\n"
           "  there is no interface 'wlan7'; there are: wlan0 (AP), wlan1 (STA)\n";
}

// Every command, with its arguments.
const Words kCommands[] = {
    {"devices"},
    {"interfaces"},
    {"channel-list", "wlan0"},
    {"configs"},
    {"clients"},
    {"add", "wlan0", "--ssid=home"},
    {"remove", "wlan0", "--ssid=home"},
    {"enable", "wlan0"},
    {"disable", "wlan0"},
    {"role", "wlan0", "AP"},
    {"start", "wlan0"},
    {"stop", "wlan0"},
    {"kick", "wlan0", "02:00:00:00:01:01"},
    {"logging"},
    {"logging", "set", "WiFi=WiFi:level=info"},
    {"monitor"},
};

// A simulation on a private bus, which is the system bus for the tool.
class DaemonCommands : public ::testing::Test {
  protected:
    const TemporaryFolder folder_;
    const ScopedEnvironment temporary_{"TMPDIR", folder_.path().string()};
    SimProcess sim_;
    const ScopedEnvironment address_{"DBUS_SYSTEM_BUS_ADDRESS", sim_.address()};
    BusCaller bus_{sim_.address()};

    // What the simulation reports about an interface: "role AP, enabled, no BSS".
    std::string stateOf(const std::string& interface) {
        const std::string text = bus_.control("show");
        const auto start = text.find(interface + ": ") + interface.size() + 2;
        return text.substr(start, text.find(", configurations", start) - start);
    }
};

// --- Lists ---

using DaemonLists = DaemonCommands;

TEST_F(DaemonLists, AreTables) {
    EXPECT_EQ(outputOf({"devices"}),
              "INDEX CHAINS ADDRESS\n"
              "    0      2 02:1A:2B:3C:4D:5E\n"
              "    1      3 02:1A:2B:3C:4D:5F\n");
    EXPECT_EQ(outputOf({"interfaces"}),
              "INTERFACE ROLE SUBSYSTEM CHANNELS ADDRESS\n"
              "wlan0     AP   nl80211         11 02:1A:2B:3C:4D:5E\n"
              "wlan1     STA  nl80211         24 02:1A:2B:3C:4D:5F\n");
    EXPECT_EQ(outputOf({"configs"}),
              "INTERFACE ORDER  CH  MHz SECURITY KEYS SSID\n"
              "wlan0         0   6 auto WPA2     PSK  Halvane Simulation\n");
    EXPECT_EQ(outputOf({"configs", "wlan0"}), outputOf({"configs"}));
    const std::string channels = outputOf({"channel-list", "wlan1"});
    EXPECT_THAT(channels, StartsWith("Channel  Frequency  Flags\n"
                                     "      1   2412 MHz  -\n"));
    EXPECT_THAT(channels, HasSubstr("\n     52   5260 MHz  radar prone, 40 MHz\n"));
    EXPECT_EQ(std::count(channels.begin(), channels.end(), '\n'), 25);
}

TEST_F(DaemonLists, NameTheInterfaceOfEachConfiguration) {
    outputOf({"add", "wlan1", "--ssid=home"});
    outputOf({"add", "wlan0", "--ssid=home"});
    const std::string table =
        "INTERFACE ORDER   CH  MHz SECURITY KEYS SSID\n"
        "wlan0         0    6 auto WPA2     PSK  Halvane Simulation\n"
        "wlan0         0 auto auto Open     -    home\n"
        "wlan1         0 auto auto Open     -    home\n";
    EXPECT_EQ(outputOf({"configs"}), table);
    bus_.control("status queryInterfaceList 7");
    EXPECT_EQ(outputOf({"configs"}),
              "INTERFACE ORDER   CH  MHz SECURITY KEYS SSID\n"
              "-             0    6 auto WPA2     PSK  Halvane Simulation\n"
              "-             0 auto auto Open     -    home\n"
              "-             0 auto auto Open     -    home\n");
}

TEST_F(DaemonLists, TellWPA3ByItsName) {
    outputOf({"add", "wlan1", "--wpa3-personal", "new"}, "password12\n");
    outputOf({"add", "wlan1", "--wpa2-wpa3-personal", "both"}, "password12\n");
    outputOf({"add", "wlan1", "--wpa2-enterprise", "work"});
    EXPECT_EQ(outputOf({"configs", "wlan1"}),
              "INTERFACE ORDER   CH  MHz SECURITY  KEYS    SSID\n"
              "wlan1         0 auto auto WPA3      SAE     new\n"
              "wlan1         0 auto auto WPA2/WPA3 PSK,SAE both\n"
              "wlan1         0 auto auto WPA2      802.1X  work\n");
}

TEST_F(DaemonLists, SayThatTheyAreEmpty) {
    const auto configs = runTool({"configs", "wlan1"});
    EXPECT_EQ(configs.status, 0);
    EXPECT_EQ(configs.output, "INTERFACE ORDER  CH  MHz SECURITY KEYS SSID\n");
    EXPECT_EQ(configs.errors, "halvane: configs: there is no configuration\n");
    EXPECT_EQ(runTool({"clients"}).errors, "halvane: clients: no station is associated\n");
    EXPECT_EQ(jsonFrom({"clients"}), json::array());
}

TEST_F(DaemonLists, TellOfStations) {
    bus_.control("start wlan0");
    bus_.control("kick wlan0 02:00:00:00:01:01 5");
    const std::string text = outputOf({"clients"});
    EXPECT_THAT(text,
                MatchesRegex("ADDRESS           MAKER   STATE      dBm      .*JOINED s +LEFT s "
                             "REASON\n"
                             "02:00:00:00:01:01 \\(local\\) gone       -48 .* +[0-9]+\\.[0-9]{3} "
                             "+[0-9]+\\.[0-9]{3} 5 Disassociated because AP is unable to handle "
                             "all currently associated STAs\n"
                             "02:00:00:00:01:02 \\(local\\) associated -61 .* +[0-9]+\\.[0-9]{3} "
                             "+- -\n"));
}

TEST_F(DaemonLists, ShowNoControlCharacters) {
    outputOf({"add", "wlan1", "--ssid-hex=1b5b324a5c"});
    EXPECT_EQ(outputOf({"configs", "wlan1"}),
              "INTERFACE ORDER   CH  MHz SECURITY KEYS SSID\n"
              "wlan1         0 auto auto Open     -    \\x1B[2J\\\\\n");
}

TEST_F(DaemonLists, AreWholeForPrograms) {
    bus_.control("start wlan0");
    const auto devices = jsonFrom({"devices"});
    EXPECT_EQ(devices, json::parse(R"([
        {"MACAddress": "02:1A:2B:3C:4D:5E", "deviceIndex": 0, "numRadioChains": 2},
        {"MACAddress": "02:1A:2B:3C:4D:5F", "deviceIndex": 1, "numRadioChains": 3}])"));
    const auto interfaces = jsonFrom({"interfaces"});
    ASSERT_EQ(interfaces.size(), 2u);
    EXPECT_EQ(interfaces[1]["ifName"], "wlan1");
    EXPECT_EQ(interfaces[1]["wifiDevice"], devices[1]);
    EXPECT_EQ(interfaces[1]["availableChannels"], jsonFrom({"channel-list", "wlan1"}));
    const auto configs = jsonFrom({"configs", "wlan0"});
    ASSERT_EQ(configs.size(), 1u);
    EXPECT_EQ(configs[0]["ssid"], "48616c76616e652053696d756c6174696f6e");
    EXPECT_EQ(configs, jsonFrom({"configs"}));
    EXPECT_EQ(jsonFrom({"configs", "wlan1"}), json::array());
    const auto clients = jsonFrom({"clients"});
    ASSERT_EQ(clients.size(), 2u);
    EXPECT_EQ(clients[1]["mac"], "02:00:00:00:01:02");
    EXPECT_EQ(clients[1]["isAssociated"], true);
}

TEST_F(DaemonLists, AreTheSameInEveryFormat) {
    bus_.control("start wlan0");
    for (const Words& words :
         {Words{"devices"}, {"interfaces"}, {"channel-list", "wlan0"}, {"configs"}, {"clients"}}) {
        const auto document = jsonFrom(words);
        std::string lines;
        for (const auto& record : document) lines += record.dump() + "\n";
        Words jsonl = words, plist = words;
        jsonl.push_back("--format=jsonl");
        plist.insert(plist.begin() + 1, "--format=plist");
        json fromLines = json::array();
        std::istringstream stream(outputOf(jsonl));
        for (std::string line; std::getline(stream, line);) fromLines.push_back(json::parse(line));
        EXPECT_EQ(fromLines, document) << words[0];
        pugi::xml_document list;
        ASSERT_TRUE(list.load_string(outputOf(plist).c_str())) << words[0];
        EXPECT_EQ(list.select_nodes("/plist/array/dict").size(), document.size()) << words[0];
        EXPECT_GT(document.size(), 0u) << words[0];
    }
}

TEST_F(DaemonLists, HoldSkeletonsAsPropertyLists) {
    pugi::xml_document list;
    ASSERT_TRUE(list.load_string(outputOf({"interfaces", "--format=plist"}).c_str()));
    EXPECT_EQ(list.select_nodes("//dict[key='InterfaceName']/dict[key='Index']").size(), 2u);
    EXPECT_EQ(list.select_nodes("//dict[key='ChannelNumber']").size(), 35u);
}

TEST_F(DaemonLists, TellWithWhichStatusTheDaemonRefused) {
    const std::pair<Words, std::string> lists[] = {{{"devices"}, "queryDeviceList"},
                                                   {{"interfaces"}, "queryInterfaceList"},
                                                   {{"channel-list", "wlan0"}, "queryChannelList"},
                                                   {{"configs"}, "queryBSSConfigList"},
                                                   {{"clients"}, "clientList"}};
    for (const auto& [words, command] : lists) {
        bus_.control("status " + command + " -5");
        expectFailure(words, 1, "halvane: " + words[0] + ": the daemon answered with status -5\n");
        bus_.control("error " + command);
        expectFailure(words, 1, errorMessage(words[0]));
        bus_.control("normal");
        bus_.control("gone " + command);
        expectFailure(words, 1, lossMessage(words[0]));
        bus_.control("normal");
        for (const char* fault : {"garbled ", "missing "}) {
            bus_.control(fault + command);
            expectFailure(words, 1,
                          "halvane: " + words[0] + ": the daemon's answer cannot be read\n");
            bus_.control("normal");
        }
    }
    expectFailure({"channel-list", "wlan7"}, 1, noInterfaceMessage("channel-list"));
    expectFailure({"configs", "wlan7"}, 1, noInterfaceMessage("configs"));
}

// --- Actions ---

using DaemonActions = DaemonCommands;

TEST_F(DaemonActions, AddAndRemoveConfigurations) {
    EXPECT_EQ(outputOf({"add", "wlan1", "--ssid=home", "--security=WPA2", "--unicast=CCMP",
                        "--key-management=PSK", "--passphrase", "--key", "--channel=11"},
                       "correct horse\n"),
              "");
    const auto configs = jsonFrom({"configs", "wlan1"});
    ASSERT_EQ(configs.size(), 1u);
    EXPECT_EQ(configs[0],
              json::parse(outputOf({"config", "--ssid=home", "--security=WPA2", "--unicast=CCMP",
                                    "--key-management=PSK", "--passphrase", "--key", "--channel=11",
                                    "--format=jsonl"},
                                   "correct horse\n")));
    EXPECT_EQ(outputOf({"remove", "--ssid=home", "wlan1"}), "");
    EXPECT_EQ(jsonFrom({"configs", "wlan1"}), json::array());
}

TEST_F(DaemonActions, ChangeInterfaces) {
    EXPECT_EQ(stateOf("wlan0"), "role AP, enabled, no BSS");
    EXPECT_EQ(outputOf({"disable", "wlan0"}), "");
    EXPECT_EQ(stateOf("wlan0"), "role AP, disabled, no BSS");
    EXPECT_EQ(outputOf({"enable", "wlan0"}), "");
    EXPECT_EQ(stateOf("wlan0"), "role AP, enabled, no BSS");
    EXPECT_EQ(outputOf({"role", "wlan1", "My Role"}), "");
    EXPECT_EQ(jsonFrom({"interfaces"})[1]["ifRole"], "My Role");
}

TEST_F(DaemonActions, StartAndStopANetwork) {
    EXPECT_EQ(outputOf({"start", "wlan0"}), "");
    EXPECT_EQ(jsonFrom({"clients"})[0]["isAssociated"], true);
    EXPECT_EQ(outputOf({"stop", "wlan0"}), "");
    EXPECT_EQ(jsonFrom({"clients"})[0]["isAssociated"], false);
}

TEST_F(DaemonActions, SendAStationAway) {
    expectFailure({"kick", "wlan0", "02:00:00:00:01:02"}, 1,
                  "halvane: kick: the daemon answered with status 9\n");
    EXPECT_EQ(outputOf({"start", "wlan0"}), "");
    EXPECT_EQ(outputOf({"kick", "wlan0", "02-00-00-00-01-02"}), "");
    const json clients = jsonFrom({"clients"});
    EXPECT_EQ(clients[0]["isAssociated"], true);
    EXPECT_EQ(clients[1]["isAssociated"], false);
    EXPECT_EQ(clients[1]["deauthReason"], 1);
    expectFailure({"kick", "wlan0", "020000000102"}, 1,
                  "halvane: kick: the daemon answered with status 10\n");
}

TEST_F(DaemonActions, AddAHiddenNetworkThatIsolatesStations) {
    EXPECT_EQ(outputOf({"add", "wlan1", "--ssid=home", "--hidden", "--isolate"}), "");
    const json configurations = jsonFrom({"configs", "wlan1"});
    EXPECT_EQ(configurations[0]["hiddenSSID"], true);
    EXPECT_EQ(configurations[0]["stationIsolation"], true);
}

// The actions, and their commands on the bus.
const std::pair<Words, std::string> kActions[] = {
    {{"add", "wlan0", "--ssid=home"}, "configAdd"},
    {{"remove", "wlan0", "--ssid=home"}, "configRemove"},
    {{"enable", "wlan0"}, "enable"},
    {{"disable", "wlan0"}, "disable"},
    {{"role", "wlan0", "STA"}, "role"},
    {{"start", "wlan0"}, "bssStart"},
    {{"stop", "wlan0"}, "bssStop"},
    {{"kick", "wlan0", "02:00:00:00:01:01"}, "kick"},
};

TEST_F(DaemonActions, TellWhatTheDaemonAnswered) {
    const std::string before = bus_.control("show");
    for (const auto& [words, command] : kActions) {
        bus_.control("status " + command + " 5");
        expectFailure(words, 1, "halvane: " + words[0] + ": the daemon answered with status 5\n");
        bus_.control("normal");
        bus_.control("error " + command);
        expectFailure(words, 1, errorMessage(words[0]));
        bus_.control("normal");
    }
    EXPECT_EQ(bus_.control("show"), before);
}

TEST_F(DaemonActions, TellThatTheDaemonWentAway) {
    for (const auto& [words, command] : kActions) {
        bus_.control("gone " + command);
        expectFailure(words, 1, lossMessage(words[0]));
        bus_.control("normal");
    }
}

TEST_F(DaemonActions, FailForAnInterfaceThatTheDaemonHasNot) {
    for (const Words& words : {Words{"enable", "wlan7"},
                               {"start", "wlan7"},
                               {"role", "wlan7", "AP"},
                               {"add", "wlan7", "--ssid=a"}}) {
        expectFailure(words, 1, noInterfaceMessage(words[0]));
    }
    bus_.control("status queryInterfaceList 7");
    expectFailure({"start", "wlan7"}, 1, "halvane: start: the daemon answered with status 3\n");
}

TEST_F(DaemonActions, AreSentWhereTheDaemonDoesNotListInterfaces) {
    bus_.control("status queryInterfaceList 7");
    EXPECT_EQ(outputOf({"disable", "wlan0"}), "");
    EXPECT_EQ(stateOf("wlan0"), "role AP, disabled, no BSS");
}

// --- Logging ---

using DaemonLogging = DaemonCommands;

TEST_F(DaemonLogging, IsPrintedAndSet) {
    const std::string before = outputOf({"logging"});
    EXPECT_THAT(before, StartsWith("WiFi: ?WiFi:output=file;path=/var/log/halvaned.log\n"));
    EXPECT_EQ(std::count(before.begin(), before.end(), '\n'), 9);
    EXPECT_EQ(outputOf({"logging", "set", "WiFiScan=WiFiScan:level=trace,WiFiScan:rate=0",
                        "WiFiXPC=", "WiFi=a"}),
              "");
    const std::string after = outputOf({"logging", "show"});
    EXPECT_THAT(after, StartsWith("WiFi: a\nWiFiBPF: ?WiFiBPF:output="));
    EXPECT_THAT(after, HasSubstr("\nWiFiScan: WiFiScan:level=trace,WiFiScan:rate=0\n"));
    EXPECT_THAT(after, HasSubstr("\nWiFiXPC: \n"));
}

TEST_F(DaemonLogging, SetsEachCategoryUnderItsName) {
    const Words names = {"WiFi",     "WiFiBPF",  "WiFiEAPOL", "WiFiIE", "WiFiIO80211",
                         "WiFiJoin", "WiFiScan", "WiFiWPS",   "WiFiXPC"};
    Words words = {"logging", "set"};
    std::string expected;
    for (const auto& name : names) {
        words.push_back(name + "=to " + name);
        expected += name + ": to " + name + "\n";
    }
    EXPECT_EQ(outputOf(words), "");
    EXPECT_EQ(outputOf({"logging"}), expected);
}

// Text that is safe to show, escaped once.
TEST_F(DaemonLogging, IsPrintedWithTwoBackslashesForOne) {
    EXPECT_EQ(outputOf({"logging", "set", "WiFi=?WiFi:output=file;path=/a\\b"}), "");
    EXPECT_THAT(outputOf({"logging"}), StartsWith("WiFi: ?WiFi:output=file;path=/a\\\\b\n"));
}

TEST_F(DaemonLogging, TellsWhatTheDaemonMadeOfIt) {
    bus_.control("status logging 3");
    expectFailure({"logging", "set", "WiFi=a"}, 1,
                  "halvane: logging: the daemon answered with status 3\n");
    bus_.control("error logging");
    expectFailure({"logging", "set", "WiFi=a"}, 1, errorMessage("logging"));
    bus_.control("gone queryLogging");
    expectFailure({"logging"}, 1, lossMessage("logging"));
    bus_.control("missing queryLogging");
    expectFailure({"logging"}, 1, "halvane: logging: the daemon does not tell its settings\n");
}

// --- Monitor ---

class DaemonMonitor : public DaemonCommands {
  protected:
    // Returns a monitor that has subscribed.
    static std::unique_ptr<RunningProgram> start(Words options = {}) {
        options.insert(options.begin(), "monitor");
        auto monitor = std::make_unique<RunningProgram>(toolWords(std::move(options)));
        EXPECT_EQ(monitor->errorLine(),
                  "halvane: monitor: asked for notifications; Control-C ends\n");
        return monitor;
    }
};

// Expects an event's line, whatever its time of day is. The date may stand in front of it.
void expectEvent(const RunningProgram& monitor, const std::string& event) {
    std::string line = monitor.outputLine();
    if (line.starts_with("-- ")) line = monitor.outputLine();
    EXPECT_THAT(line, MatchesRegex("[0-9]{2}:[0-9]{2}:[0-9]{2}\\.[0-9]{3} .*"));
    constexpr std::size_t kTime = 13;
    EXPECT_EQ(line.substr(std::min(kTime, line.size())), event + "\n");
}

TEST_F(DaemonMonitor, PrintsEachNotificationAsItComes) {
    const auto monitor = start();
    outputOf({"start", "wlan0"});
    expectEvent(*monitor, "joined     02:00:00:00:01:01 wlan0");
    expectEvent(*monitor, "authorized 02:00:00:00:01:01 wlan0");
    expectEvent(*monitor, "joined     02:00:00:00:01:02 wlan0");
    expectEvent(*monitor, "authorized 02:00:00:00:01:02 wlan0");
    bus_.control("kick wlan0 02:00:00:00:01:01 5");
    expectEvent(*monitor, "kicked     02:00:00:00:01:01 wlan0");
    outputOf({"stop", "wlan0"});
    expectEvent(*monitor, "left       02:00:00:00:01:02 wlan0");
    EXPECT_EQ(monitor->stop(SIGINT), 0);
    EXPECT_EQ(monitor->outputLine() + monitor->errorLine(), "");
}

TEST_F(DaemonMonitor, PrintsALineOfJSONEach) {
    bus_.control("start wlan0");
    const auto monitor = start({"--format=jsonl"});
    bus_.control("join wlan0 02:00:00:00:02:0f");
    EXPECT_THAT(
        monitor->outputLine(),
        MatchesRegex(R"(\{"event":"joined","mac":"02:00:00:00:02:0F",)"
                     R"("interfaceName":"wlan0","time":")"
                     "[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}\\.[0-9]{3}Z\"}\n"));
    EXPECT_EQ(monitor->stop(SIGTERM), 0);
    EXPECT_EQ(monitor->outputLine() + monitor->errorLine(), "");
}

constexpr const char* kGone = "halvane: monitor: the daemon is gone; waiting for it\n";
constexpr const char* kBack =
    "halvane: monitor: the daemon is back; asked for notifications again\n";

TEST_F(DaemonMonitor, SurvivesARestartOfTheDaemon) {
    bus_.control("start wlan0");
    const auto monitor = start();
    for (int round = 0; round < 2; ++round) {
        bus_.control("burst wlan0 500");
        bus_.control("restart");
        for (int i = 0; i < 500; ++i) {
            ASSERT_THAT(monitor->outputLine(), HasSubstr(" joined     02:B0:")) << i;
        }
        EXPECT_EQ(monitor->errorLine(), kGone);
        EXPECT_EQ(monitor->errorLine(), kBack);
        bus_.control("join wlan0 02:00:00:00:02:01");
        expectEvent(*monitor, "joined     02:00:00:00:02:01 wlan0");
        bus_.control("leave wlan0 02:00:00:00:02:01");
        expectEvent(*monitor, "left       02:00:00:00:02:01 wlan0");
    }
    EXPECT_EQ(monitor->stop(SIGINT), 0);
    EXPECT_EQ(monitor->outputLine() + monitor->errorLine(), "");
}

TEST_F(DaemonMonitor, WaitsForADaemonThatIsGone) {
    bus_.control("start wlan0");
    const auto monitor = start();
    bus_.control("burst wlan0 500");
    bus_.control("drop");
    for (int i = 0; i < 500; ++i) {
        ASSERT_THAT(monitor->outputLine(), HasSubstr(" joined     02:B0:")) << i;
    }
    EXPECT_EQ(monitor->errorLine(), kGone);
    bus_.control("take");
    EXPECT_EQ(monitor->errorLine(), kBack);
    EXPECT_EQ(monitor->stop(SIGTERM), 0);
}

// A daemon that agrees to one request, and gives up its name in the same breath.
class BriefDaemon {
  public:
    explicit BriefDaemon(const PrivateBus& bus) {
        check(::sd_bus_new(&bus_));
        check(::sd_bus_set_address(bus_, bus.address().c_str()));
        check(::sd_bus_set_bus_client(bus_, 1));
        check(::sd_bus_start(bus_));
        check(::sd_bus_add_filter(bus_, nullptr, agree, this));
        check(::sd_bus_request_name(bus_, kService, 0));
    }
    BriefDaemon(const BriefDaemon&) = delete;
    BriefDaemon& operator=(const BriefDaemon&) = delete;
    ~BriefDaemon() { ::sd_bus_close_unref(bus_); }

    void waitForRequest() {
        while (!hasAgreed_) {
            check(::sd_bus_process(bus_, nullptr));
            if (!hasAgreed_) check(::sd_bus_wait(bus_, UINT64_MAX));
        }
        check(::sd_bus_flush(bus_));
    }

  private:
    static void check(int status) {
        if (status < 0) throw std::runtime_error("the brief daemon failed");
    }

    static int agree(sd_bus_message* message, void* daemon, sd_bus_error*) noexcept {
        if (::sd_bus_message_is_method_call(message, nullptr, "Request") <= 0) return 0;
        auto* self = static_cast<BriefDaemon*>(daemon);
        self->hasAgreed_ = true;
        ::sd_bus_reply_method_return(message, "a{sv}", 1, "status", "x", std::int64_t{0});
        return ::sd_bus_release_name_async(self->bus_, nullptr, kService, nullptr, nullptr);
    }

    static constexpr const char* kService = "org.halvane.halvaned";

    sd_bus* bus_ = nullptr;
    bool hasAgreed_ = false;
};

// In many rounds, since the daemon may be lost at any moment after its agreement.
TEST(DaemonMonitorOfABriefDaemon, ReportsThatTheDaemonIsGone) {
    const PrivateBus bus;
    for (int round = 0; round < 20; ++round) {
        BriefDaemon daemon(bus);
        RunningProgram monitor(toolWords({"monitor"}));
        daemon.waitForRequest();
        ASSERT_EQ(monitor.errorLine(),
                  "halvane: monitor: asked for notifications; Control-C ends\n");
        ASSERT_EQ(monitor.errorLine(), kGone) << round;
        EXPECT_EQ(monitor.stop(SIGINT), 0);
    }
}

TEST_F(DaemonMonitor, EndsWhenTheDaemonThatIsBackRefusesIt) {
    const auto monitor = start();
    bus_.control("drop");
    EXPECT_EQ(monitor->errorLine(), kGone);
    bus_.control("status subscribe 9");
    bus_.control("take");
    EXPECT_EQ(monitor->errorLine(), "halvane: monitor: the daemon answered with status 9\n");
    EXPECT_EQ(monitor->wait(), 1);
    EXPECT_EQ(monitor->outputLine(), "");
}

TEST_F(DaemonMonitor, IsRefusedWithTheDaemonsStatus) {
    bus_.control("status subscribe 9");
    expectFailure({"monitor"}, 1, "halvane: monitor: the daemon answered with status 9\n");
}

TEST_F(DaemonMonitor, WaitsForABusThatIsGone) {
    const auto monitor = start();
    EXPECT_EQ(sim_.stop(SIGTERM), 0);
    std::string line = monitor->errorLine();
    if (line == kGone) line = monitor->errorLine();  // the daemon left first
    EXPECT_EQ(line, "halvane: monitor: the bus is gone; waiting for it\n");
    EXPECT_EQ(monitor->stop(SIGINT), 0);
}

TEST_F(DaemonMonitor, IsNotTakenInByOthers) {
    bus_.control("start wlan0");
    const auto monitor = start();
    bus_.control("spoof left wlan0 02:00:00:00:09:09");
    bus_.control("join wlan0 02:00:00:00:02:01");
    expectEvent(*monitor, "joined     02:00:00:00:02:01 wlan0");
}

TEST_F(DaemonMonitor, HearsOfTheDaemonWhateverThePreferencesSayOfTheLog) {
    const TemporaryFolder preferences;
    std::filesystem::create_directory(preferences.path() / "halvane");
    std::ofstream(preferences.path() / "halvane" / "halvane.plist")
        << "<plist version=\"1.0\"><dict><key>logconfig</key>"
           "<string>^WiFiXPC$:level=info,WiFi:level=off,:output=file;stdout</string></dict></"
           "plist>";
    const ScopedEnvironment config("XDG_CONFIG_HOME", preferences.path().string());
    const auto monitor = start();
    bus_.control("restart");
    EXPECT_EQ(monitor->errorLine(), kGone);
    EXPECT_EQ(monitor->errorLine(), kBack);
    EXPECT_EQ(monitor->stop(SIGINT), 0);
    EXPECT_EQ(monitor->outputLine() + monitor->errorLine(), "");
}

TEST_F(DaemonMonitor, EndsWhenItsOutputIsLost) {
    bus_.control("start wlan0");
    RunningProgram monitor({"/bin/sh", "-c", "exec \"$0\" monitor >/dev/full", HALVANE_TOOL});
    monitor.errorLine();
    bus_.control("join wlan0 02:00:00:00:02:01");
    EXPECT_EQ(monitor.errorLine(), "halvane: standard output: No space left on device\n");
    EXPECT_EQ(monitor.wait(), 1);
}

TEST_F(DaemonMonitor, EndsWhenNobodyReadsIt) {
    bus_.control("start wlan0");
    const auto monitor = start();
    monitor->closeOutput();
    bus_.control("join wlan0 02:00:00:00:02:01");
    EXPECT_EQ(monitor->errorLine(), "");
    EXPECT_EQ(monitor->wait(), 128 + SIGPIPE);
}

TEST_F(DaemonMonitor, EndsBySignalWhileTheReaderOfItsOutputStandsStill) {
    bus_.control("start wlan0");
    for (const int signal : {SIGINT, SIGTERM}) {
        const auto monitor = start();
        const std::string line = "joined      02:B0:00:00:00:00  wlan0\n";
        const int capacity = monitor->narrowOutput();
        ASSERT_GT(capacity, 0);
        const int lines = capacity / static_cast<int>(line.size());
        bus_.control("burst wlan0 " + std::to_string(lines + 100));
        monitor->waitForUnreadOutput(lines * static_cast<int>(line.size()));
        EXPECT_EQ(monitor->stop(signal), 0);
        EXPECT_EQ(monitor->errorLine(), "");
    }
}

// While an object lives, programs start with the signals blocked.
class SignalsBlockedAtStart {
  public:
    SignalsBlockedAtStart() {
        sigset_t blocked;
        ::sigemptyset(&blocked);
        for (const int signal : {SIGINT, SIGTERM}) ::sigaddset(&blocked, signal);
        ::pthread_sigmask(SIG_BLOCK, &blocked, &before_);
    }
    SignalsBlockedAtStart(const SignalsBlockedAtStart&) = delete;
    SignalsBlockedAtStart& operator=(const SignalsBlockedAtStart&) = delete;
    ~SignalsBlockedAtStart() { ::pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

  private:
    sigset_t before_{};
};

TEST_F(DaemonMonitor, EndsBySignalsThatWereBlockedAtItsStart) {
    for (const int signal : {SIGINT, SIGTERM}) {
        const SignalsBlockedAtStart blocked;
        EXPECT_EQ(start()->stop(signal), 0);
    }
}

TEST_F(DaemonMonitor, EndsByNoSignalThatWasIgnoredAtItsStart) {
    bus_.control("start wlan0");
    RunningProgram monitor(
        {"/bin/sh", "-c", "trap '' INT TERM; exec \"$0\" monitor", HALVANE_TOOL});
    EXPECT_EQ(monitor.errorLine(), "halvane: monitor: asked for notifications; Control-C ends\n");
    for (const int signal : {SIGINT, SIGTERM}) monitor.send(signal);
    bus_.control("join wlan0 02:00:00:00:02:01");
    expectEvent(monitor, "joined     02:00:00:00:02:01 wlan0");
    monitor.closeOutput();
    bus_.control("leave wlan0 02:00:00:00:02:01");
    EXPECT_EQ(monitor.wait(), 141);  // as of SIGPIPE
    EXPECT_EQ(monitor.errorLine(), "");
}

TEST_F(DaemonMonitor, SpoilsNothingWhereItsOutputIsClosed) {
    bus_.control("start wlan0");
    RunningProgram monitor({"/bin/sh", "-c", "exec \"$0\" monitor >&-", HALVANE_TOOL});
    EXPECT_EQ(monitor.errorLine(), "halvane: monitor: asked for notifications; Control-C ends\n");
    bus_.control("join wlan0 02:00:00:00:02:01");
    EXPECT_EQ(monitor.errorLine(), "halvane: standard output: Bad file descriptor\n");
    EXPECT_EQ(monitor.wait(), 1);
}

// A daemon that never replies.
class SilentDaemon {
  public:
    explicit SilentDaemon(const PrivateBus& bus) : caller_(bus.address()) {
        if (::sd_bus_request_name(caller_.bus(), kName, 0) < 0) throw std::runtime_error("no name");
    }

    // Returns after a request has arrived.
    void waitForRequest() {
        for (bool hasCome = false; !hasCome;) {
            sd_bus_message* message = nullptr;
            const int progress = ::sd_bus_process(caller_.bus(), &message);
            if (progress < 0) throw std::runtime_error("no bus");
            if (progress == 0) ::sd_bus_wait(caller_.bus(), UINT64_MAX);
            hasCome = message != nullptr &&
                      ::sd_bus_message_is_method_call(message, kName, "Request") > 0;
            ::sd_bus_message_unref(message);
        }
    }

  private:
    static constexpr const char* kName = "org.halvane.halvaned";

    BusCaller caller_;
};

TEST(UnansweredMonitor, EndsBySignalAsAnyProgram) {
    for (const int signal : {SIGINT, SIGTERM}) {
        const PrivateBus bus;
        SilentDaemon daemon(bus);
        RunningProgram monitor(toolWords({"monitor"}));
        daemon.waitForRequest();
        EXPECT_EQ(monitor.stop(signal), -signal);
        EXPECT_EQ(monitor.outputLine() + monitor.errorLine(), "");
    }
}

TEST(UnansweredMonitor, EndsBySignalsThatWereBlockedAtItsStart) {
    for (const int signal : {SIGINT, SIGTERM}) {
        const PrivateBus bus;
        SilentDaemon daemon(bus);
        const SignalsBlockedAtStart blocked;
        RunningProgram monitor(toolWords({"monitor"}));
        daemon.waitForRequest();
        EXPECT_EQ(monitor.stop(signal), -signal);
    }
}

// --- Without a daemon ---

// The programs that the tool finds are in `folder` alone, as far as PATH goes.
std::string installedDaemon(const TemporaryFolder& folder) {
    const std::filesystem::path program = folder.path() / "halvaned";
    std::ofstream(program) << "#!/bin/sh\n";
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    return folder.path().string();
}

TEST(NoDaemon, IsToldByEveryCommand) {
    const PrivateBus bus;
    const TemporaryFolder folder;
    const ScopedEnvironment path("PATH", installedDaemon(folder));
    for (const Words& words : kCommands) {
        expectFailure(words, 1, noDaemonMessage(words[0], "systemctl status halvaned"));
    }
}

TEST(NoDaemon, IsAReasonToTryASimulatedOneWhereThereIsNone) {
    if (std::filesystem::exists("/usr/sbin/halvaned")) GTEST_SKIP() << "a daemon is installed";
    const PrivateBus bus;
    const TemporaryFolder folder;
    const ScopedEnvironment path("PATH", folder.path().string());
    expectFailure(
        {"clients"}, 1,
        noDaemonMessage("clients",
                        "to try without one: halvaned-sim --private -- halvane interfaces"));
}

TEST(NoDaemon, IsToldApartFromAMissingBus) {
    const TemporaryFolder folder;
    const std::string place = (folder.path() / "none").string();
    const ScopedEnvironment address("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=" + place);
    for (const Words& words : kCommands) {
        expectFailure(words, 1,
                      "halvane: " + words[0] + ": no system bus: " + place +
                          ": No such file or directory\n"
                          "  is DBUS_SYSTEM_BUS_ADDRESS right?\n");
    }
}

TEST(NoDaemon, IsHelpedByASimulatedOne) {
    const auto result =
        runProgram({HALVANE_SIM, "--private", "--", HALVANE_TOOL, "interfaces", "--format=jsonl"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(std::count(result.output.begin(), result.output.end(), '\n'), 2);
}

// --- Usage ---

// The tool must not send a request: there is no bus, so a request would fail in another way.
class DaemonUsage : public ::testing::Test {
  protected:
    const ScopedEnvironment address_{"DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/dev/null/none"};
};

TEST_F(DaemonUsage, IsRefusedWithOneMessage) {
    const std::pair<Words, std::string> lines[] = {
        {{"devices", "x"}, "devices: takes no argument ('x')"},
        {{"interfaces", "wlan0"}, "interfaces: takes no argument ('wlan0')"},
        {{"clients", "wlan0"}, "clients: takes no argument ('wlan0')"},
        {{"devices", "--format=xml"}, "devices: --format: 'xml' is not text, json, jsonl or plist"},
        {{"channel-list"}, "channel-list: no interface"},
        {{"channel-list", ""}, "channel-list: '' is no name of an interface"},
        {{"channel-list", "a", "b"}, "channel-list: takes one interface"},
        {{"configs", "a", "b"}, "configs: takes one interface"},
        {{"configs", "\xFF"}, "configs: '\\xFF' is no name of an interface"},
        {{"enable"}, "enable: takes one interface"},
        {{"disable", "a", "b"}, "disable: takes one interface"},
        {{"start", ""}, "start: '' is no name of an interface"},
        {{"stop", "a\x1B\xFF"}, "stop: 'a\\x1B\\xFF' is no name of an interface"},
        {{"role", "wlan0"}, "role: takes an interface and a role"},
        {{"kick", "wlan0"}, "kick: takes an interface and the address of a station"},
        {{"kick", "wlan0", "a", "b"}, "kick: takes an interface and the address of a station"},
        {{"kick", "", "02:00:00:00:01:01"}, "kick: '' is no name of an interface"},
        {{"kick", "wlan0", ""}, "kick: '' is no address of a station"},
        {{"kick", "wlan0", "02:00:00:00:01"}, "kick: '02:00:00:00:01' is no address of a station"},
        {{"kick", "wlan0", "x\x1B\xFF"}, "kick: 'x\\x1B\\xFF' is no address of a station"},
        {{"role", "wlan0", ""}, "role: '' is no text of a role"},
        {{"role", "wlan0", "\xFF"}, "role: '\\xFF' is no text of a role"},
        {{"add", "wlan0"}, "add: needs --ssid or --ssid-hex"},
        {{"add", "--ssid=a"}, "add: takes one interface"},
        {{"add", "wlan0", "secret", "--ssid=a"}, "add: takes one interface"},
        {{"remove", "wlan0", "--ssid=a", "--channel=x"},
         "remove: --channel: 'x' is not a whole number from 0 on"},
        {{"logging", "list"}, "logging: 'list' is not 'show' or 'set'"},
        {{"logging", "show", "x"}, "logging: 'show' takes nothing else"},
        {{"logging", "set"}, "logging: 'set' takes CATEGORY=CONTROL"},
        {{"logging", "set", "WiFi"}, "logging: 'WiFi' is not CATEGORY=CONTROL"},
        {{"logging", "set", "WiFi=a", "WiFi=b"}, "logging: 'WiFi' is set twice"},
        {{"logging", "set", "WiFi=\xFF"}, "logging: '\\xFF' is no text of a control string"},
        {{"logging", "set", "wifi=a"},
         "logging: no category 'wifi'; there are WiFi, WiFiBPF, WiFiEAPOL, WiFiIE, WiFiIO80211, "
         "WiFiJoin, WiFiScan, WiFiWPS, WiFiXPC\n  did you mean WiFi?"},
        {{"logging", "set", "WiFiJion=a"},
         "logging: no category 'WiFiJion'; there are WiFi, WiFiBPF, WiFiEAPOL, WiFiIE, "
         "WiFiIO80211, WiFiJoin, WiFiScan, WiFiWPS, WiFiXPC\n  did you mean WiFiJoin?"},
        {{"monitor", "wlan0"}, "monitor: takes no argument ('wlan0')"},
        {{"monitor", "--format=json"}, "monitor: prints lines: --format=text or jsonl"},
        {{"monitor", "--format=plist"}, "monitor: prints lines: --format=text or jsonl"},
    };
    for (const auto& [words, message] : lines) {
        expectFailure(words, 2, "halvane: " + message + "\n");
    }
}

TEST_F(DaemonUsage, RefusesANetworkThatIsNotProtectedAsItSeems) {
    const auto open = runTool({"add", "wlan0", "--ssid=home", "--passphrase"}, "correct horse\n");
    EXPECT_EQ(open.status, 2);
    EXPECT_EQ(open.errors,
              "halvane: add: --passphrase without a word of --security makes an open network\n"
              "  --security=WPA2 makes the passphrase count\n"
              "  --force sends the configuration as it is\n");
    const Words keyless = {"add", "wlan0", "--ssid=home", "--security=WPA2",
                           "--key-management=PSK"};
    const auto refused = runTool(keyless);
    EXPECT_EQ(refused.status, 2);
    EXPECT_THAT(refused.errors, HasSubstr("a pre-shared key needs --passphrase"));
    Words forced = keyless;
    forced.push_back("--force");
    EXPECT_THAT(runTool(forced).errors, HasSubstr("no system bus"));
}

TEST_F(DaemonUsage, RefusesAPassphraseOfWhichNoNetworkCanBeMade) {
    const std::string message = "halvane: add: The passphrase has 5 octets, and takes 8 to 63.\n";
    for (Words words : {Words{"add", "wlan0", "--wpa2-personal=home"},
                        {"add", "wlan0", "--ssid=home", "--security=WPA2", "--passphrase"}}) {
        const auto refused = runTool(words, "short\n");
        EXPECT_EQ(refused.status, 1);
        EXPECT_EQ(refused.errors, message);
        words.push_back("--force");
        EXPECT_THAT(runTool(words, "short\n").errors, HasSubstr("no system bus"));
    }
    EXPECT_THAT(
        runTool({"remove", "wlan0", "--ssid=home", "--security=WPA2", "--passphrase"}, "short\n")
            .errors,
        HasSubstr("no system bus"));
}

TEST_F(DaemonUsage, RefusesToRemoveASecurityWithoutItsKeys) {
    expectFailure({"remove", "wlan0", "--ssid=home", "--security=WPA2"}, 2,
                  "halvane: remove: --security: WPA and WPA2 need a key: --passphrase (for PSK), "
                  "or --key-management=802.1X\n");
    EXPECT_THAT(runTool({"remove", "wlan0", "--ssid=home"}).errors, HasSubstr("no system bus"));
}

TEST_F(DaemonUsage, LeavesAPassphraseUnread) {
    const auto result = runTool({"add", "wlan0", "--ssid=home", "--passphrase", "--key",
                                 "--security=WPA2", "--key-management=PSK"},
                                "");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, StartsWith("halvane: add: "));
    EXPECT_THAT(result.errors, Not(HasSubstr("daemon")));
}

}  // namespace
