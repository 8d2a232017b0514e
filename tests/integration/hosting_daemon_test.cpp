// The daemon as its clients meet it on a bus: without a radio, on a wired interface.
#include <csignal>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <vector>

#include "tests/support/bus_caller.h"
#include "tests/support/cable.h"
#include "tests/support/hosting_trial.h"
#include "tests/support/output_pipe.h"
#include "tests/support/private_network.h"
#include "tests/support/run_program.h"
#include "tests/support/spawned_process.h"
#include "tests/support/temporary_folder.h"

using halvane::testing::command;
using halvane::testing::kBadConfiguration;
using halvane::testing::kBadRequest;
using halvane::testing::kCableStation;
using halvane::testing::kDisabled;
using halvane::testing::kHostapdFailed;
using halvane::testing::kNoBSS;
using halvane::testing::kNothingToStart;
using halvane::testing::kNotSaved;
using halvane::testing::kTooMany;
using halvane::testing::kUnknownConfiguration;
using halvane::testing::kUnknownInterface;
using halvane::testing::kWrongRole;
using halvane::testing::OutputPipe;
using halvane::testing::SpawnedProcess;
using halvane::testing::Station;
using halvane::testing::TemporaryFolder;
using halvane::testing::Trial;
using halvane::testing::WireData;
using halvane::testing::WireMessage;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

// --- Without a station: every system has this interface ---

class HostingDaemon : public ::testing::Test {
  protected:
    void SetUp() override { trial_.start(); }

    Trial trial_{"lo"};
};

TEST_F(HostingDaemon, ListsItsInterface) {
    EXPECT_THAT(trial_.list("queryInterfaceList", "interfaces"), HasSubstr("<string>lo</string>"));
    EXPECT_THAT(trial_.list("queryInterfaceList", "interfaces"), HasSubstr("<string>AP</string>"));
    EXPECT_THAT(trial_.list("queryInterfaceList", "interfaces"),
                HasSubstr("<string>wired</string>"));
    EXPECT_EQ(trial_.caller().request(command("queryChannelList", "lo")).status(), 0);
    EXPECT_EQ(trial_.caller().request(command("clientList")).status(), 0);
}

TEST_F(HostingDaemon, KnowsNoOtherInterface) {
    for (const char* name :
         {"queryChannelList", "queryBSSConfigList", "enable", "disable", "bssStart", "bssStop"}) {
        EXPECT_EQ(trial_.caller().request(command(name, "wlan7")).status(), kUnknownInterface)
            << name;
    }
}

TEST_F(HostingDaemon, KeepsConfigurationsByTheirNames) {
    EXPECT_EQ(trial_.request("configAdd", "Garden"), 0);
    EXPECT_EQ(trial_.request("configAdd", "Garden"), 0);
    EXPECT_EQ(trial_.request("configAdd", "Shed"), 0);
    const std::string both = trial_.list("queryBSSConfigList", "configs");
    EXPECT_THAT(both, HasSubstr("R2FyZGVu"));
    EXPECT_EQ(both.find("R2FyZGVu"), both.rfind("R2FyZGVu"));
    EXPECT_THAT(both, HasSubstr("U2hlZA=="));
    EXPECT_EQ(trial_.request("configRemove", "Garden"), 0);
    EXPECT_EQ(trial_.request("configRemove", "Garden"), kUnknownConfiguration);
    EXPECT_THAT(trial_.list("queryBSSConfigList", "configs"), Not(HasSubstr("R2FyZGVu")));
}

TEST_F(HostingDaemon, RefusesWhatCannotStart) {
    EXPECT_EQ(trial_.request("bssStart"), kNothingToStart);
    EXPECT_EQ(trial_.request("configAdd", "Garden"), 0);
    EXPECT_EQ(trial_.request("disable"), 0);
    EXPECT_EQ(trial_.request("bssStart"), kDisabled);
    EXPECT_EQ(trial_.request("enable"), 0);
    WireMessage role = command("role", "lo");
    role["role"] = std::string("STA");
    EXPECT_EQ(trial_.caller().request(role).status(), 0);
    EXPECT_EQ(trial_.request("bssStart"), kWrongRole);
    EXPECT_EQ(trial_.request("bssStop"), 0);
}

TEST_F(HostingDaemon, SendsNobodyAwayWhereItHostsNothing) {
    EXPECT_EQ(trial_.kick(), kNoBSS);
    EXPECT_EQ(trial_.request("kick"), kBadRequest);
    WireMessage elsewhere = command("kick", "wlan7");
    elsewhere["MAC"] = kCableStation;
    EXPECT_EQ(trial_.caller().request(elsewhere).status(), kUnknownInterface);
}

TEST_F(HostingDaemon, RefusesAConfigurationWithoutAName) {
    WireMessage add = command("configAdd", "lo");
    const std::string nameless = "<plist version=\"1.0\"><dict/></plist>";
    add["bssconfig"] = WireData(nameless.begin(), nameless.end());
    EXPECT_EQ(trial_.caller().request(add).status(), kBadConfiguration);
}

TEST_F(HostingDaemon, RemembersWhatItWasTold) {
    EXPECT_EQ(trial_.request("configAdd", "Garden"), 0);
    EXPECT_EQ(trial_.request("disable"), 0);
    trial_.stop(SIGKILL);
    trial_.start();
    EXPECT_THAT(trial_.list("queryBSSConfigList", "configs"), HasSubstr("R2FyZGVu"));
    EXPECT_EQ(trial_.request("bssStart"), kDisabled);
}

TEST_F(HostingDaemon, KeepsKeysFromOthers) {
    EXPECT_EQ(trial_.request("configAdd", "Garden"), 0);
    struct stat found = {};
    ASSERT_EQ(::stat(trial_.path("state/state.plist").c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 0777U, 0600U);
    ASSERT_EQ(::stat(trial_.path("run").c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 0777U, 0700U);
}

TEST_F(HostingDaemon, SetsADamagedStateAside) {
    trial_.stop(SIGTERM);
    std::filesystem::create_directories(trial_.path("state"));
    trial_.write("state/state.plist", "nonsense");
    trial_.start();
    EXPECT_EQ(trial_.request("bssStart"), kNothingToStart);
    EXPECT_EQ(trial_.read("state/state.plist.damaged"), "nonsense");
    EXPECT_THAT(trial_.read("log"), HasSubstr("state.plist.damaged"));
}

TEST_F(HostingDaemon, AcknowledgesNothingThatItCannotSave) {
    EXPECT_EQ(trial_.request("configAdd", "Garden"), 0);
    // A folder in the place of the file that the state is first written to.
    std::filesystem::create_directories(trial_.path("state/state.plist.new/x"));
    EXPECT_EQ(trial_.request("configAdd", "Shed"), kNotSaved);
    EXPECT_THAT(trial_.list("queryBSSConfigList", "configs"), Not(HasSubstr("U2hlZA==")));
    std::filesystem::remove_all(trial_.path("state/state.plist.new"));
    EXPECT_EQ(trial_.request("configAdd", "Shed"), 0);
}

TEST_F(HostingDaemon, SaysThatHostapdCannotBeStarted) {
    trial_.stop(SIGTERM);
    trial_.set("hostapd = " + trial_.path("nowhere") + '\n');
    trial_.start();
    EXPECT_EQ(trial_.request("configAdd", "Garden"), 0);
    EXPECT_EQ(trial_.request("bssStart"), kHostapdFailed);
    EXPECT_THAT(trial_.read("log"), HasSubstr("nowhere"));
    EXPECT_EQ(trial_.request("configRemove", "Garden"), 0);
}

TEST_F(HostingDaemon, TakesSettingsAgainAtSIGHUP) {
    trial_.set("configurations = 1\n");
    trial_.process().send(SIGHUP);
    // Signals come to the loop in any order with requests; the first configuration may be added
    // in any case.
    EXPECT_EQ(trial_.request("configAdd", "Garden"), 0);
    while (trial_.read("log").find("read the settings again") == std::string::npos) {
        EXPECT_EQ(trial_.request("enable"), 0);
    }
    EXPECT_EQ(trial_.request("configAdd", "Shed"), kTooMany);
    EXPECT_EQ(trial_.request("configAdd", "Garden"), 0);
}

TEST_F(HostingDaemon, LetsNoClientWriteFiles) {
    const std::string target = trial_.path("owned");
    for (const std::string& control :
         {"WiFi:output=file;path=" + target, std::string("WiFi:output=callback;func=0x1;arg=0x1"),
          "WiFi:OUTPUT=FILE;path=" + target, "WiFi:level=info,WiFi:output=file;path=" + target,
          std::string("+WiFi:level=all"), std::string("a1:level=all"), std::string("WiFi:a1=1")}) {
        WireMessage logging = command("logging");
        logging["WiFi"] = control;
        EXPECT_EQ(trial_.caller().request(logging).status(), 2) << control;
    }
    EXPECT_FALSE(std::filesystem::exists(target));
    WireMessage logging = command("logging");
    logging["WiFiScan"] = std::string("WiFiScan:level=trace,WiFiScan:output=file;stderr");
    EXPECT_EQ(trial_.caller().request(logging).status(), 0);
}

TEST_F(HostingDaemon, RunsOnce) {
    OutputPipe errors;
    SpawnedProcess second(trial_.words(), {.errors = errors.writer()});
    errors.closeWriter();
    EXPECT_THAT(errors.readLine(), HasSubstr("is there already: another daemon runs"));
    EXPECT_EQ(second.wait(), 1);
}

TEST_F(HostingDaemon, EndsBySignalsAndWithTheBus) {
    EXPECT_EQ(trial_.stop(SIGTERM), 0);
    trial_.start();
    EXPECT_EQ(trial_.stop(SIGINT), 0);
    trial_.start();
    trial_.bus().kill();
    EXPECT_EQ(trial_.process().wait(), 1);
}

TEST(HostingDaemonOptions, RefusesWhatItCannotUse) {
    const TemporaryFolder folder;
    const auto run = [](const std::string& word) {
        return halvane::testing::runProgram({HALVANE_DAEMON, "--foreground", word});
    };
    EXPECT_EQ(run("--config=" + (folder.path() / "nowhere").string()).status, 2);
    EXPECT_EQ(run("--nonsense").status, 2);
    EXPECT_EQ(run("--config=").status, 2);
    EXPECT_THAT(run("--config=/\x1B[1m").errors, Not(HasSubstr("\x1B")));
    EXPECT_EQ(run("wlan0").status, 2);
    EXPECT_EQ(run("--help").status, 0);
    EXPECT_EQ(run("--version").status, 0);
}

// --- With a station, at the other end of a cable ---

using HostingDaemonTrial = halvane::testing::CableTrial;

TEST_F(HostingDaemonTrial, HostsAStationUntilItIsStopped) {
    atCable([](Trial& trial) {
        trial.subscribe();
        trial.host("Garden");
        EXPECT_EQ(trial.request("bssStart"), 0);
        {
            const Station station(trial);
            EXPECT_THAT(
                trial.caller().nextEvents(2),
                ElementsAre("joined cable0 020000000001", "authorized cable0 020000000001"));
            EXPECT_THAT(trial.list("clientList", "clients"),
                        HasSubstr("<key>isAssociated</key>\n\t\t<true/>"));
        }
        EXPECT_EQ(trial.request("bssStop"), 0);
        EXPECT_THAT(trial.caller().nextEvents(1), ElementsAre("left cable0 020000000001"));
        EXPECT_THAT(trial.list("clientList", "clients"),
                    HasSubstr("<key>isAssociated</key>\n\t\t<false/>"));
        EXPECT_EQ(trial.stop(SIGTERM), 0);
    });
}

TEST_F(HostingDaemonTrial, HostsAgainAfterItWasKilled) {
    atCable([](Trial& trial) {
        trial.host("Garden");
        trial.stop(SIGKILL);
        trial.start();
        // It waits for the network that the daemon starts by itself.
        EXPECT_EQ(trial.request("bssStart"), 0);
        trial.subscribe();
        const Station station(trial);
        EXPECT_THAT(trial.caller().nextEvents(2),
                    ElementsAre("joined cable0 020000000001", "authorized cable0 020000000001"));
        EXPECT_EQ(trial.stop(SIGTERM), 0);
        // Nothing is left.
        EXPECT_FALSE(std::filesystem::exists(trial.path("run/cable0.conf")));
    });
}

TEST_F(HostingDaemonTrial, RemovesTheNetworkOfAConfiguration) {
    atCable([](Trial& trial) {
        trial.host("Garden");
        EXPECT_TRUE(std::filesystem::exists(trial.path("run/cable0.conf")));
        EXPECT_EQ(trial.request("configRemove", "Garden"), 0);
        EXPECT_FALSE(std::filesystem::exists(trial.path("run/cable0.conf")));
        EXPECT_EQ(trial.request("bssStart"), kNothingToStart);
    });
}

}  // namespace
