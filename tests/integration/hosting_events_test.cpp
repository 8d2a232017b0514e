// What `halvane monitor` prints while halvaned and hostapd host a station at a cable.
#include <csignal>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "tests/support/cable.h"
#include "tests/support/hosting_trial.h"
#include "tests/support/private_network.h"
#include "tests/support/run_tool.h"
#include "tests/support/running_program.h"

using halvane::testing::kNoBSS;
using halvane::testing::kUnknownStation;
using halvane::testing::RunningProgram;
using halvane::testing::runTool;
using halvane::testing::Station;
using halvane::testing::toolWords;
using halvane::testing::Trial;
using ::testing::HasSubstr;

namespace {

using HostingEvents = halvane::testing::CableTrial;

constexpr const char kJoined[] = "joined     02:00:00:00:00:01 cable0\n";
constexpr const char kAuthorized[] = "authorized 02:00:00:00:00:01 cable0\n";
constexpr const char kKicked[] = "kicked     02:00:00:00:00:01 cable0\n";
constexpr const char kLeft[] = "left       02:00:00:00:00:01 cable0\n";

class Monitor {
  public:
    Monitor() : program_(toolWords({"monitor"})) {
        EXPECT_EQ(program_.errorLine(),
                  "halvane: monitor: asked for notifications; Control-C ends\n");
    }

    // The event, the station and the interface of the next line, which begins with the time.
    std::string next() const {
        std::string line = program_.outputLine();
        if (line.starts_with("-- ")) line = program_.outputLine();
        return line.substr(line.find(' ') + 1);
    }

    // The station joins, and is authorized.
    void expectArrival() const {
        EXPECT_EQ(next(), kJoined);
        EXPECT_EQ(next(), kAuthorized);
    }

    // Ends it. Returns what it has printed since.
    std::string end() {
        EXPECT_EQ(program_.stop(SIGINT), 0);
        return program_.outputLine() + program_.errorLine();
    }

  private:
    RunningProgram program_;
};

TEST_F(HostingEvents, TellsAStationThatComesGoesAndComesBack) {
    atCable([](Trial& trial) {
        Monitor monitor;
        EXPECT_EQ(runTool({"add", "cable0", "--wpa2-enterprise", "Garden"}).status, 0);
        EXPECT_EQ(runTool({"start", "cable0"}).status, 0);
        const Station station(trial);
        monitor.expectArrival();
        EXPECT_THAT(runTool({"clients"}).output,
                    HasSubstr("\n02:00:00:00:00:01 (local) associated "));
        station.leave();
        EXPECT_EQ(monitor.next(), kLeft);
        EXPECT_THAT(runTool({"clients"}).output, HasSubstr("\n02:00:00:00:00:01 (local) gone "));
        // hostapd would refuse the next try of a station that has just logged off.
        EXPECT_EQ(runTool({"stop", "cable0"}).status, 0);
        EXPECT_EQ(runTool({"start", "cable0"}).status, 0);
        station.comeBack();
        monitor.expectArrival();
        EXPECT_EQ(runTool({"stop", "cable0"}).status, 0);
        EXPECT_EQ(monitor.next(), kLeft);
        EXPECT_EQ(monitor.end(), "");
        EXPECT_EQ(trial.stop(SIGTERM), 0);
    });
}

TEST_F(HostingEvents, TellsAStationThatIsSentAway) {
    atCable([](Trial& trial) {
        Monitor monitor;
        EXPECT_EQ(runTool({"add", "cable0", "--wpa2-enterprise", "Garden"}).status, 0);
        EXPECT_EQ(runTool({"start", "cable0"}).status, 0);
        EXPECT_EQ(trial.kick(), kUnknownStation);
        const Station station(trial);
        monitor.expectArrival();
        EXPECT_EQ(runTool({"kick", "cable0", "02:00:00:00:00:01"}).status, 0);
        EXPECT_EQ(monitor.next(), kKicked);
        EXPECT_EQ(runTool({"stop", "cable0"}).status, 0);
        EXPECT_EQ(trial.kick(), kNoBSS);
        EXPECT_EQ(trial.stop(SIGTERM), 0);
    });
}

TEST_F(HostingEvents, TellsTheStationsOfAHostapdThatWasKilled) {
    atCable([](Trial& trial) {
        trial.host("Garden");
        Monitor monitor;
        const Station station(trial);
        monitor.expectArrival();
        trial.sendToHostapd(SIGKILL);
        EXPECT_EQ(monitor.next(), kLeft);
        EXPECT_EQ(trial.request("bssStart"), 0);  // waits for the next hostapd
        EXPECT_EQ(trial.hostapds().size(), 1U);
        station.leave();
        station.comeBack();
        monitor.expectArrival();
        EXPECT_EQ(monitor.end(), "");
    });
}

// hostapd hears of stations at a cable only what they send.
TEST_F(HostingEvents, TellsNothingOfAStationThatGoesWithoutAWord) {
    atCable([](Trial& trial) {
        trial.host("Garden");
        Monitor monitor;
        {
            const Station station(trial);
            monitor.expectArrival();
        }
        EXPECT_THAT(trial.list("clientList", "clients"),
                    HasSubstr("<key>isAssociated</key>\n\t\t<true/>"));
        EXPECT_EQ(trial.request("bssStop"), 0);
        EXPECT_EQ(monitor.next(), kLeft);
        EXPECT_EQ(monitor.end(), "");
    });
}

}  // namespace
