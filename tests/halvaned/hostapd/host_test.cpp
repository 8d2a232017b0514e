#include "tools/halvaned/hostapd/host.h"

#include <algorithm>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

#include "halvane/base/mac_address.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/station_change.h"

#include "tests/halvaned/hostapd/played_network.h"
#include "tests/halvaned/hostapd/test_loop.h"
#include "tests/support/made_config.h"
#include "tests/support/run_program.h"
#include "tests/support/temporary_folder.h"

using namespace halvane;
using namespace halvane::hosting;
using halvane::testing::addressText;
using halvane::testing::openNetwork;
using halvane::testing::personalNetwork;
using halvane::testing::PlayedNetwork;
using halvane::testing::TemporaryFolder;
using halvane::testing::TestLoop;

namespace {

using Texts = std::vector<std::string>;
using State = Host::State;
using ErrorKind = HostError::Kind;

MacAddress addressOf(int number) {
    return MacAddress::fromText(addressText(number)).value();
}

class HostTest : public ::testing::Test {
  protected:
    HostTest() {
        settings_.program = HALVANE_FAKE_HOSTAPD;
        settings_.runtimeFolder = folder_.path();
        settings_.startTimeout = settings_.replyTimeout = settings_.endTimeout = 60'000'000;
        settings_.socketInterval = settings_.firstPause = 1000;
        settings_.longestPause = 4000;
        std::filesystem::create_directory(folder_.path() / "control");
    }

    void play(const std::string& text) { std::ofstream(folder_.path() / "play") << text; }

    PlayedNetwork& serve(const std::string& interface = "wlan0") {
        const auto path = folder_.path() / "control" / interface;
        return *(networks_[interface] = std::make_unique<PlayedNetwork>(loop_.get(), path));
    }

    HostapdPlan planOf(const HalvaneBSSConfig& configuration) const {
        return {.networks = {{.interface = "wlan0", .configuration = configuration}},
                .channel = 6,
                .controlFolder = folder_.path() / "control"};
    }

    Host& host() {
        if (!host_) {
            host_ = std::make_unique<Host>(
                loop_.get(), settings_,
                Host::Handlers{.station = [this](const auto& change) { tell(change); },
                               .log = [this](std::string_view line) { log_.emplace_back(line); }});
        }
        return *host_;
    }

    void start(const HostapdPlan& plan) {
        host().start(plan, [this](auto result) {
            told_.push_back(result ? "started" : "refused");
            if (!result) error_ = result.error();
        });
    }

    void startAndWait(const HostapdPlan& plan) {
        start(plan);
        runUntilTold("started");
    }

    void stopAndWait() {
        host().stop([this](auto) { told_.push_back("stopped"); });
        runUntilTold("stopped");
    }

    void runUntilTold(const std::string& text) {
        loop_.runUntil([&] { return std::ranges::find(told_, text) != told_.end(); });
    }
    void runUntilCount(std::size_t count) {
        loop_.runUntil([&] { return told_.size() >= count; });
    }
    void runUntilLogged(const std::string& line) {
        loop_.runUntil([&] { return std::ranges::find(log_, line) != log_.end(); });
    }

    std::vector<HostedStation> stations() {
        std::optional<std::vector<HostedStation>> all;
        host().stations([&](auto result) {
            EXPECT_TRUE(result);
            all = result ? *result : std::vector<HostedStation>();
        });
        loop_.runUntil([&] { return all.has_value(); });
        return *all;
    }

    void kick(int number) {
        host().kick(addressOf(number), [this](auto result) {
            told_.push_back(result ? "done" : "not done");
            if (!result) error_ = result.error();
        });
    }

    std::size_t filesInRuntimeFolder() const {
        std::size_t count = 0;
        for (const auto& entry : std::filesystem::directory_iterator(folder_.path())) {
            const auto name = entry.path().filename();
            count += name != "play" && name != "control" ? 1 : 0;
        }
        return count;
    }

    TestLoop loop_;
    TemporaryFolder folder_;
    HostSettings settings_;
    std::map<std::string, std::unique_ptr<PlayedNetwork>> networks_;
    Texts told_;  // changes and ends of requests, in their order
    Texts log_;
    HostError error_;
    std::unique_ptr<Host> host_;

  private:
    void tell(const StationChange& change) {
        told_.push_back(std::string(nameOf(change.kind)) + " " + change.address.text() + " " +
                        change.interface);
    }
};

// --- Starting and stopping ---

TEST_F(HostTest, StartsAndStops) {
    serve();
    start(planOf(openNetwork()));
    EXPECT_EQ(host().state(), State::Starting);
    runUntilTold("started");
    EXPECT_EQ(host().state(), State::Ready);
    EXPECT_EQ(halvane::testing::contentsOf(folder_.path() / "wlan0.pid"),
              std::to_string(host().process()) + "\n");
    EXPECT_NE(halvane::testing::contentsOf(folder_.path() / "wlan0.conf").find("ssid=home\n"),
              std::string::npos);
    const pid_t process = host().process();
    stopAndWait();
    EXPECT_EQ(host().state(), State::Idle);
    EXPECT_EQ(::kill(process, 0), -1) << "no process is left";
    EXPECT_EQ(filesInRuntimeFolder(), 0U);
    EXPECT_EQ(told_, (Texts{"started", "stopped"}));
    startAndWait(planOf(openNetwork()));
}

TEST_F(HostTest, WaitsForSocketsAndForTheRadio) {
    play("say running\n");
    start(planOf(openNetwork()));
    runUntilLogged("hostapd: running");
    auto& network = serve();
    network.state = "DFS";
    runUntilLogged("hostapd seeks its channel.");
    EXPECT_EQ(host().state(), State::Starting);
    network.server().send("<3>AP-ENABLED ");
    runUntilTold("started");
}

TEST_F(HostTest, TellsAFailureOfItsProgram) {
    settings_.program = folder_.path() / "none";
    start(planOf(openNetwork()));
    EXPECT_EQ(told_, Texts{"refused"});
    EXPECT_EQ(error_.kind, ErrorKind::Refused);
    EXPECT_NE(error_.text.find("none cannot be run: No such file"), std::string::npos);
    EXPECT_EQ(host().state(), State::Idle);
    EXPECT_EQ(filesInRuntimeFolder(), 0U);
}

TEST_F(HostTest, TellsTheRefusedLineWithoutItsSecret) {
    play("say Configuration file: x\nsay Line 7: Invalid PSK 'password'.\nsay 1 errors\nexit 1\n");
    auto network = halvane::testing::wpa3Network(true);
    start(planOf(network));
    runUntilTold("refused");
    EXPECT_EQ(error_.kind, ErrorKind::Refused);
    EXPECT_EQ(error_.text, "hostapd ended with status 1: Line 7: Invalid PSK '(secret)'.");
    EXPECT_EQ(host().state(), State::Idle);
    EXPECT_EQ(filesInRuntimeFolder(), 0U);
    for (const auto& line : log_) EXPECT_EQ(line.find("password"), std::string::npos) << line;
}

TEST_F(HostTest, TellsAPlanThatMakesNoFile) {
    auto plan = planOf(openNetwork());
    plan.channel = 0;
    start(plan);
    EXPECT_EQ(error_.kind, ErrorKind::BadPlan);
    EXPECT_EQ(error_.text, "No channel is chosen.");
    EXPECT_EQ(host().process(), -1);
}

TEST_F(HostTest, IsBusyWhileItHosts) {
    serve();
    startAndWait(planOf(openNetwork()));
    start(planOf(openNetwork()));
    EXPECT_EQ(error_.kind, ErrorKind::Busy);
    EXPECT_EQ(error_.text, "hostapd is ready.");
}

TEST_F(HostTest, GivesUpAStartThatTakesTooLong) {
    settings_.startTimeout = settings_.endTimeout = 1000;
    play("stubborn\n");
    start(planOf(openNetwork()));
    runUntilTold("refused");
    EXPECT_EQ(error_.kind, ErrorKind::NoAnswer);
    EXPECT_EQ(error_.text, "hostapd did not become ready.");
    EXPECT_EQ(host().process(), -1);
}

TEST_F(HostTest, GivesUpAHostapdThatDoesNotAnswer) {
    struct Row {
        const char* request;
        std::optional<std::string> reply;
        const char* text;
    };
    const Row rows[] = {
        {"ATTACH", std::nullopt, "hostapd does not answer \"ATTACH\"."},
        {"ATTACH", "FAIL\n", "hostapd refuses to tell events."},
        {"STATUS", std::nullopt, "hostapd does not answer \"STATUS\"."},
        {"STA-FIRST", std::nullopt, "hostapd does not answer \"STA-FIRST\"."},
    };
    settings_.replyTimeout = 1000;
    for (const Row& row : rows) {
        serve().replies[row.request] = row.reply;
        told_.clear();
        start(planOf(openNetwork()));
        runUntilTold("refused");
        EXPECT_EQ(error_.text, row.text);
        EXPECT_EQ(error_.kind, ErrorKind::NoAnswer);
        EXPECT_EQ(host().state(), State::Idle);
        networks_.clear();
    }
}

TEST_F(HostTest, StopsAtEachStepOfAStart) {
    for (const char* request : {"", "ATTACH", "STATUS", "STA-FIRST"}) {
        if (*request != 0) serve().replies[request] = std::nullopt;
        told_.clear();
        start(planOf(openNetwork()));
        if (*request != 0) {
            loop_.runUntil([&] {
                const auto& requests = networks_["wlan0"]->server().requests();
                return !requests.empty() && requests.back() == request;
            });
        }
        stopAndWait();
        EXPECT_EQ(told_, (Texts{"refused", "stopped"})) << request;
        EXPECT_EQ(error_.kind, ErrorKind::Stopped);
        networks_.clear();
    }
}

TEST_F(HostTest, StaysStoppedWhenAnAnswerComesLate) {
    settings_.endTimeout = 50'000;
    play("stubborn\n");
    PlayedNetwork& network = serve();
    network.replies["STA-FIRST"] = std::nullopt;
    start(planOf(openNetwork()));
    loop_.runUntil([&] {
        const auto& requests = network.server().requests();
        return !requests.empty() && requests.back() == "STA-FIRST";
    });
    host().stop([this](auto) { told_.push_back("stopped"); });
    network.server().send("FAIL\n");
    runUntilTold("stopped");
    EXPECT_EQ(told_, (Texts{"refused", "stopped"}));
    EXPECT_EQ(host().state(), State::Idle);
}

TEST_F(HostTest, EndsWhoIgnoresThat) {
    settings_.endTimeout = 1000;
    play("stubborn\n");
    serve();
    startAndWait(planOf(openNetwork()));
    const pid_t process = host().process();
    host().stop([this](auto) { told_.push_back("stopped"); });
    EXPECT_EQ(host().state(), State::Ending);
    host().stop([this](auto) { told_.push_back("stopped"); });
    runUntilCount(3);
    EXPECT_EQ(::kill(process, 0), -1);
    EXPECT_EQ(told_, (Texts{"started", "stopped", "stopped"}));
}

TEST_F(HostTest, LeavesNothingWhenItIsDestroyed) {
    play("stubborn\n");
    serve();
    startAndWait(planOf(openNetwork()));
    const pid_t process = host().process();
    host_.reset();
    EXPECT_EQ(::kill(process, 0), -1);
    EXPECT_EQ(filesInRuntimeFolder(), 0U);
}

TEST_F(HostTest, AttachesToEachNetwork) {
    serve("wlan0").flags[addressText(1)] = "[AUTH][ASSOC][AUTHORIZED]";
    serve("wlan0_1").flags[addressText(2)] = "[AUTH][ASSOC]";
    auto plan = planOf(openNetwork());
    plan.networks.push_back({.interface = "wlan0_1", .configuration = personalNetwork("guests")});
    start(plan);
    runUntilCount(4);
    EXPECT_EQ(told_,
              (Texts{"started", "joined 02:00:00:00:00:01 wlan0",
                     "authorized 02:00:00:00:00:01 wlan0", "joined 02:00:00:00:00:02 wlan0_1"}));
    const auto all = stations();
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[1].interface, "wlan0_1");
    EXPECT_FALSE(all[1].record.isAuthorized);
    kick(2);
    runUntilTold("done");
    EXPECT_EQ(networks_["wlan0_1"]->server().requests().back(), "DEAUTHENTICATE 02:00:00:00:00:02");
}

// --- Stations ---

TEST_F(HostTest, TellsStationsOfAnOpenNetwork) {
    auto& network = serve();
    startAndWait(planOf(openNetwork()));
    network.server().send("<3>AP-STA-CONNECTED 02:00:00:00:00:01");
    network.server().send("<3>AP-STA-CONNECTED 02:00:00:00:00:01");
    network.server().send("<3>AP-STA-DISCONNECTED 02:00:00:00:00:01");
    network.server().send("<3>AP-STA-DISCONNECTED 02:00:00:00:00:01");
    network.server().send("<3>AP-STA-CONNECTED 02:00:00:00:00:02");
    runUntilTold("authorized 02:00:00:00:00:02 wlan0");
    EXPECT_EQ(told_,
              (Texts{"started", "joined 02:00:00:00:00:01 wlan0",
                     "authorized 02:00:00:00:00:01 wlan0", "joined 02:00:00:00:00:01 wlan0",
                     "authorized 02:00:00:00:00:01 wlan0", "left 02:00:00:00:00:01 wlan0",
                     "joined 02:00:00:00:00:02 wlan0", "authorized 02:00:00:00:00:02 wlan0"}));
}

TEST_F(HostTest, AuthorizesAfterTheHandshake) {
    auto& network = serve();
    startAndWait(planOf(personalNetwork()));
    network.flags[addressText(1)] = "[AUTH][ASSOC]";
    network.server().send("<3>AP-STA-CONNECTED 02:00:00:00:00:01");
    runUntilTold("joined 02:00:00:00:00:01 wlan0");
    loop_.settle();
    EXPECT_EQ(told_.size(), 2U) << "not authorized yet";
    network.server().send("<3>EAPOL-4WAY-HS-COMPLETED 02:00:00:00:00:01");
    network.server().send("<3>EAPOL-4WAY-HS-COMPLETED 02:00:00:00:00:01");
    network.server().send("<3>AP-STA-DISCONNECTED 02:00:00:00:00:01");
    runUntilTold("left 02:00:00:00:00:01 wlan0");
    EXPECT_EQ(told_, (Texts{"started", "joined 02:00:00:00:00:01 wlan0",
                            "authorized 02:00:00:00:00:01 wlan0", "left 02:00:00:00:00:01 wlan0"}));
}

TEST_F(HostTest, AuthorizesWhoseFlagsSaySo) {
    auto& network = serve();
    startAndWait(planOf(personalNetwork()));
    network.flags[addressText(1)] = "[AUTH][ASSOC][AUTHORIZED]";
    network.server().send("<3>AP-STA-CONNECTED 02:00:00:00:00:01");
    runUntilTold("authorized 02:00:00:00:00:01 wlan0");
    EXPECT_EQ(told_.size(), 3U);
}

TEST_F(HostTest, IgnoresOddEvents) {
    auto& network = serve();
    startAndWait(planOf(openNetwork()));
    for (const char* event :
         {"<", "<3>", "<3>AP-STA-CONNECTED", "<3>AP-STA-CONNECTED 02:00", "<3>NEW-EVENT x",
          "<3>EAPOL-4WAY-HS-COMPLETED 02:00:00:00:00:09",
          "<3>CTRL-EVENT-EAP-SUCCESS 02:00:00:00:00:09", "<3>WPS-PBC-ACTIVE ", "no event"}) {
        network.server().send(event);
    }
    network.server().send("<3>AP-STA-CONNECTED 02:00:00:00:00:01");
    runUntilTold("joined 02:00:00:00:00:01 wlan0");
    EXPECT_EQ(told_[1], "joined 02:00:00:00:00:01 wlan0");
}

TEST_F(HostTest, ListsStationsAndTellsWhatItMissed) {
    auto& network = serve();
    network.flags[addressText(1)] = "[AUTH][ASSOC][AUTHORIZED]";
    network.flags[addressText(2)] = "[AUTH]";
    startAndWait(planOf(openNetwork()));
    network.flags.erase(addressText(1));
    network.flags[addressText(3)] = "[AUTH][ASSOC][AUTHORIZED]";
    loop_.settle();
    const auto all = stations();
    ASSERT_EQ(all.size(), 1U);
    EXPECT_EQ(all[0].record.address, addressOf(3));
    EXPECT_EQ(all[0].record.signal, -40);
    EXPECT_EQ(all[0].interface, "wlan0");
    EXPECT_GT(all[0].joinTime, 0U);
    EXPECT_EQ(told_, (Texts{"started", "joined 02:00:00:00:00:01 wlan0",
                            "authorized 02:00:00:00:00:01 wlan0", "joined 02:00:00:00:00:03 wlan0",
                            "authorized 02:00:00:00:00:03 wlan0", "left 02:00:00:00:00:01 wlan0"}));
}

TEST_F(HostTest, KeepsStationsThatAnOddWalkDoesNotComeTo) {
    auto& network = serve();
    network.flags[addressText(1)] = "[AUTH][ASSOC][AUTHORIZED]";
    startAndWait(planOf(openNetwork()));
    for (const char* reply : {"FAIL\n", "UNKNOWN COMMAND\n", "02:00", "garbage\xFF", "OK\n",
                              // Its successor is itself.
                              "02:00:00:00:00:01\nflags=[AUTH][ASSOC][AUTHORIZED]\n"}) {
        network.replies["STA-FIRST"] = network.replies["STA-NEXT"] = reply;
        const auto all = stations();
        ASSERT_EQ(all.size(), 1U) << reply;
        EXPECT_EQ(all[0].record.address, addressOf(1));
    }
    network.replies["STA-FIRST"] = std::string(20000, 'x');
    EXPECT_EQ(stations().size(), 1U);
    EXPECT_EQ(told_.size(), 3U) << "nobody left";
}

TEST_F(HostTest, KeepsNoMoreStationsThanANetworkHas) {
    auto& network = serve();
    for (int i = 0; i < 10000; ++i) network.flags[addressText(i)] = "[AUTH][ASSOC][AUTHORIZED]";
    startAndWait(planOf(openNetwork()));
    runUntilCount(1 + 2 * kMaxStations);
    network.server().send("<3>AP-STA-CONNECTED 02:00:00:00:ff:ff");
    EXPECT_EQ(stations().size(), std::size_t{kMaxStations});
    EXPECT_EQ(told_.size(), 1U + 2 * kMaxStations);
}

TEST_F(HostTest, SurvivesAFloodOfEvents) {
    auto& network = serve();
    startAndWait(planOf(personalNetwork()));
    for (int i = 0; i < 10000; ++i) {
        while (!network.server().send("<3>AP-STA-CONNECTED " + addressText(i))) loop_.settle();
    }
    loop_.settle();
    EXPECT_EQ(told_.size(), 1U + kMaxStations);
    EXPECT_EQ(host().state(), State::Ready);
}

TEST_F(HostTest, AnswersAllWhoAskDuringAWalk) {
    serve().flags[addressText(1)] = "[AUTH][ASSOC][AUTHORIZED]";
    startAndWait(planOf(openNetwork()));
    int answers = 0;
    for (int i = 0; i < 3; ++i) {
        host().stations([&](auto result) { answers += result ? 1 : 0; });
    }
    loop_.runUntil([&] { return answers == 3; });
}

TEST_F(HostTest, TellsThatAllLeaveADisabledInterface) {
    auto& network = serve();
    network.flags[addressText(1)] = "[AUTH][ASSOC][AUTHORIZED]";
    startAndWait(planOf(openNetwork()));
    network.server().send("<3>INTERFACE-DISABLED ");
    runUntilTold("left 02:00:00:00:00:01 wlan0");
    EXPECT_EQ(host().state(), State::Ready);
}

// --- Kicking ---

TEST_F(HostTest, TellsKickedInsteadOfLeft) {
    auto& network = serve();
    network.flags[addressText(1)] = "[AUTH][ASSOC][AUTHORIZED]";
    startAndWait(planOf(openNetwork()));
    kick(1);
    runUntilTold("done");
    EXPECT_EQ(Texts(told_.begin() + 3, told_.end()),
              (Texts{"kicked 02:00:00:00:00:01 wlan0", "done"}));
    network.server().send("<3>AP-STA-CONNECTED 02:00:00:00:00:01");
    network.server().send("<3>AP-STA-DISCONNECTED 02:00:00:00:00:01");
    runUntilTold("left 02:00:00:00:00:01 wlan0");
}

TEST_F(HostTest, KicksWithoutAnEvent) {
    auto& network = serve();
    network.flags[addressText(1)] = "[AUTH][ASSOC][AUTHORIZED]";
    network.replies["DEAUTHENTICATE"] = "OK\n";
    startAndWait(planOf(openNetwork()));
    kick(1);
    runUntilTold("done");
    EXPECT_EQ(told_[3], "kicked 02:00:00:00:00:01 wlan0");
    network.server().send("<3>AP-STA-DISCONNECTED 02:00:00:00:00:01");
    loop_.settle();
    EXPECT_EQ(told_.size(), 5U) << "told once";
}

// The network that it has left has not noticed yet.
TEST_F(HostTest, KicksAStationWhereItJoinedLast) {
    auto& first = serve();
    auto& second = serve("wlan0_1");
    first.flags[addressText(1)] = "[AUTH][ASSOC][AUTHORIZED]";
    auto plan = planOf(openNetwork());
    plan.networks.push_back({.interface = "wlan0_1", .configuration = openNetwork("guests")});
    startAndWait(plan);
    second.flags[addressText(1)] = "[AUTH][ASSOC][AUTHORIZED]";
    second.server().send("<3>AP-STA-CONNECTED 02:00:00:00:00:01");
    runUntilTold("joined 02:00:00:00:00:01 wlan0_1");
    kick(1);
    runUntilTold("kicked 02:00:00:00:00:01 wlan0_1");
    EXPECT_EQ(first.flags.size(), 1U);
    EXPECT_TRUE(second.flags.empty());
}

TEST_F(HostTest, KicksOnlyWhoIsThere) {
    auto& network = serve();
    kick(1);
    EXPECT_EQ(error_.kind, ErrorKind::NotReady);
    network.flags[addressText(1)] = "[AUTH][ASSOC][AUTHORIZED]";
    network.replies["DEAUTHENTICATE"] = "FAIL\n";
    startAndWait(planOf(openNetwork()));
    kick(2);
    EXPECT_EQ(error_.kind, ErrorKind::UnknownStation);
    told_.clear();
    kick(1);
    runUntilTold("not done");
    EXPECT_EQ(error_.kind, ErrorKind::UnknownStation);
    network.server().send("<3>AP-STA-DISCONNECTED 02:00:00:00:00:01");
    runUntilTold("left 02:00:00:00:00:01 wlan0");
}

// --- hostapd that fails ---

TEST_F(HostTest, IsStartedAgainWhenItEnds) {
    auto& network = serve();
    network.flags[addressText(1)] = "[AUTH][ASSOC][AUTHORIZED]";
    startAndWait(planOf(openNetwork()));
    const pid_t first = host().process();
    told_.clear();
    ::kill(first, SIGKILL);
    runUntilCount(3);
    EXPECT_EQ(told_, (Texts{"left 02:00:00:00:00:01 wlan0", "joined 02:00:00:00:00:01 wlan0",
                            "authorized 02:00:00:00:00:01 wlan0"}));
    EXPECT_NE(host().process(), first);
    runUntilLogged("hostapd ended by signal 9.");
    runUntilLogged("hostapd is started again in 1 ms.");
}

TEST_F(HostTest, IsStartedAgainWithGrowingPauses) {
    serve();
    startAndWait(planOf(openNetwork()));
    play("exit 1\n");
    ::kill(host().process(), SIGKILL);
    for (const char* pause : {"1", "2", "4"}) {
        runUntilLogged(std::string("hostapd is started again in ") + pause + " ms.");
    }
    loop_.runUntil(
        [this] { return std::ranges::count(log_, "hostapd is started again in 4 ms.") == 3; });
    EXPECT_EQ(told_, Texts{"started"}) << "the request was done before";
    bool isFailing = false;
    host().stations([&](auto result) { isFailing = !result; });
    EXPECT_TRUE(isFailing);
    stopAndWait();
    EXPECT_EQ(host().state(), State::Idle);
    loop_.settle();
    EXPECT_EQ(host().process(), -1);
}

TEST_F(HostTest, StartsFromTheFirstPauseAfterASteadyTime) {
    settings_.steadyTime = 0;
    settings_.pingInterval = 1000;
    auto& network = serve();
    startAndWait(planOf(openNetwork()));
    for (std::ptrdiff_t count = 1; count <= 3; ++count) {
        const auto pings = [&] { return std::ranges::count(network.server().requests(), "PING"); };
        const auto before = pings();
        loop_.runUntil([&] { return pings() > before + 1; });
        ::kill(host().process(), SIGKILL);
        loop_.runUntil([&] {
            return std::ranges::count(log_, "hostapd is started again in 1 ms.") == count &&
                   host().state() == State::Ready;
        });
    }
}

TEST_F(HostTest, IsEndedAndStartedAgainWhenItHangs) {
    settings_.replyTimeout = settings_.pingInterval = settings_.endTimeout = 1000;
    auto& network = serve();
    network.flags[addressText(1)] = "[AUTH][ASSOC][AUTHORIZED]";
    startAndWait(planOf(openNetwork()));
    const pid_t first = host().process();
    ::kill(first, SIGSTOP);
    network.replies["PING"] = std::nullopt;
    runUntilTold("left 02:00:00:00:00:01 wlan0");
    network.replies.clear();
    loop_.runUntil([&] { return host().state() == State::Ready; });
    EXPECT_NE(host().process(), first);
    EXPECT_EQ(::kill(first, 0), -1);
    runUntilLogged("hostapd does not answer \"PING\".");
}

TEST_F(HostTest, FailsRequestsThatWaitWhenItEnds) {
    auto& network = serve();
    network.flags[addressText(1)] = "[AUTH][ASSOC][AUTHORIZED]";
    startAndWait(planOf(openNetwork()));
    network.replies["STA-FIRST"] = network.replies["DEAUTHENTICATE"] = std::nullopt;
    std::vector<ErrorKind> errors;
    host().stations([&](auto result) { errors.push_back(result.error().kind); });
    host().kick(addressOf(1), [&](auto result) { errors.push_back(result.error().kind); });
    ::kill(host().process(), SIGKILL);
    loop_.runUntil([&] { return errors.size() == 2; });
    EXPECT_EQ(errors, (std::vector{ErrorKind::NoAnswer, ErrorKind::NoAnswer}));
}

TEST_F(HostTest, TellsWhoLeavesWhenItIsStopped) {
    serve().flags[addressText(1)] = "[AUTH][ASSOC][AUTHORIZED]";
    startAndWait(planOf(openNetwork()));
    runUntilCount(3);
    host().stop([this](auto) { told_.push_back("stopped"); });
    runUntilCount(5);
    EXPECT_EQ(Texts(told_.begin() + 3, told_.end()),
              (Texts{"stopped", "left 02:00:00:00:00:01 wlan0"}));
}

TEST_F(HostTest, TellsWhoLeavesBeforeWhatComesAfterwards) {
    serve().flags[addressText(1)] = "[AUTH][ASSOC][AUTHORIZED]";
    startAndWait(planOf(openNetwork()));
    runUntilCount(3);
    host().stop([this](auto) {
        told_.push_back("stopped");
        start(planOf(openNetwork()));
    });
    runUntilCount(8);
    EXPECT_EQ(Texts(told_.begin() + 3, told_.end()),
              (Texts{"stopped", "left 02:00:00:00:00:01 wlan0", "started",
                     "joined 02:00:00:00:00:01 wlan0", "authorized 02:00:00:00:00:01 wlan0"}));
}

}  // namespace
