// What halvaned does when hostapd, the bus, the disk, the interface or the daemon itself fails:
// what was acknowledged is kept, no process is left behind, and the next request works.
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <sched.h>
#include <string>
#include <sys/inotify.h>
#include <sys/mount.h>
#include <sys/types.h>
#include <utility>
#include <vector>

#include "tests/support/bus_caller.h"
#include "tests/support/cable.h"
#include "tests/support/child_process.h"
#include "tests/support/folder_watch.h"
#include "tests/support/hosting_trial.h"
#include "tests/support/private_network.h"
#include "tests/support/process_list.h"
#include "tests/support/run_program.h"

using halvane::testing::enterNamespaces;
using halvane::testing::FolderWatch;
using halvane::testing::isTrueInChild;
using halvane::testing::kHostapdFailed;
using halvane::testing::kHostingName;
using halvane::testing::kNotSaved;
using halvane::testing::kUnknownInterface;
using halvane::testing::layCable;
using halvane::testing::runProgram;
using halvane::testing::Station;
using halvane::testing::Trial;
using halvane::testing::waitForEndOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

namespace {

constexpr const char kGarden[] = "R2FyZGVu";  // the names as property lists hold them
constexpr const char kShed[] = "U2hlZA==";

// --- With a program in the place of hostapd ---

class HostingFaults : public ::testing::Test {
  protected:
    // Starts the daemon, and the network "Garden".
    void host(const std::string& play) {
        trial_.setFake(play);
        trial_.start();
        ASSERT_EQ(trial_.request("configAdd", "Garden"), 0);
        ASSERT_EQ(trial_.request("bssStart"), 0);
        EXPECT_THAT(trial_.hostapds(), SizeIs(1));
    }

    // Starts the daemon again, which has to host by itself what it was hosting.
    void expectHostedAgain() {
        trial_.setFake("serve\nsay again\n");
        trial_.start();
        trial_.waitForLog("hostapd: again");
        expectUsable();
    }

    void expectUsable() {
        trial_.write("run/play", "serve\n");
        EXPECT_EQ(trial_.request("bssStart"), 0);
        EXPECT_THAT(trial_.hostapds(), SizeIs(1));
        EXPECT_THAT(trial_.list("queryBSSConfigList", "configs"), HasSubstr(kGarden));
        EXPECT_EQ(trial_.request("configAdd", "Shed"), 0);
        EXPECT_EQ(trial_.request("bssStop"), 0);
        expectNothingLeft();
        EXPECT_EQ(trial_.request("configRemove", "Shed"), 0);
        EXPECT_EQ(trial_.request("bssStart"), 0);
        EXPECT_EQ(trial_.stop(SIGTERM), 0);
        expectNothingLeft();
    }

    void expectNothingLeft() const {
        EXPECT_THAT(trial_.hostapds(), IsEmpty());
        EXPECT_FALSE(std::filesystem::exists(trial_.hostapdFile()));
    }

    void waitForHostapds(const std::vector<pid_t>& processes) const {
        for (const pid_t process : processes) waitForEndOf(process);
    }

    Trial trial_{"lo"};
};

TEST_F(HostingFaults, HostsAgainWhenHostapdIsKilled) {
    host("serve\n");
    trial_.subscribe();
    trial_.playNow("join 2\n");
    EXPECT_THAT(trial_.caller().nextEvents(4),
                ElementsAre("joined lo 020000000001", "authorized lo 020000000001",
                            "joined lo 020000000002", "authorized lo 020000000002"));
    trial_.write("run/play", "serve\nsay again\n");
    trial_.sendToHostapd(SIGKILL);
    EXPECT_THAT(trial_.caller().nextEvents(2),
                ::testing::UnorderedElementsAre("left lo 020000000001", "left lo 020000000002"));
    trial_.waitForLog("hostapd ended by signal 9.");
    trial_.waitForLog("hostapd: again");
    expectUsable();
}

TEST_F(HostingFaults, HostsAgainWhenAMissingHostapdComesBack) {
    trial_.setFake("serve\n");
    const std::string program = trial_.path("hostapd");
    std::filesystem::create_symlink(HALVANE_FAKE_HOSTAPD, program);
    trial_.set("hostapd = " + program + '\n');
    trial_.start();
    trial_.host("Garden");
    std::filesystem::remove(program);
    trial_.write("run/play", "serve\nsay again\n");
    trial_.sendToHostapd(SIGKILL);
    trial_.waitForLog("cannot be run: No such file");
    EXPECT_EQ(trial_.request("bssStart"), kHostapdFailed);
    std::filesystem::create_symlink(HALVANE_FAKE_HOSTAPD, program);
    EXPECT_EQ(trial_.request("bssStart"), 0);
    expectUsable();
}

TEST_F(HostingFaults, TellsTheLineThatHostapdRefuses) {
    trial_.setFake("say Line 3: invalid answer 'x'\nsay 1 errors\nexit 1\n");
    trial_.start();
    EXPECT_EQ(trial_.request("configAdd", "Garden"), 0);
    EXPECT_EQ(trial_.request("bssStart"), kHostapdFailed);
    trial_.waitForLog("hostapd ended with status 1: Line 3: invalid answer 'x'.");
    expectNothingLeft();
    expectUsable();
}

TEST_F(HostingFaults, LeavesNoHostapdThatIgnoresSIGTERM) {
    host("serve\nstubborn\n");
    EXPECT_EQ(trial_.stop(SIGTERM), 0);
    expectNothingLeft();
    expectHostedAgain();
}

TEST_F(HostingFaults, StopsAHostapdThatIgnoresSIGTERM) {
    host("serve\nstubborn\n");
    EXPECT_EQ(trial_.request("bssStop"), 0);
    expectNothingLeft();
    expectUsable();
}

// The kernel asks a hostapd to end whose daemon is gone; this one does not.
TEST_F(HostingFaults, EndsTheStubbornHostapdOfADaemonThatWasKilled) {
    host("serve\nstubborn\n");
    const auto before = trial_.hostapds();
    trial_.stop(SIGKILL);
    EXPECT_THAT(trial_.hostapds(), SizeIs(1));
    trial_.setFake("serve\nsay again\n");
    trial_.start();
    trial_.waitForLog("ended what an earlier daemon had left");
    trial_.waitForLog("hostapd: again");
    EXPECT_THAT(trial_.hostapds(), SizeIs(1));
    EXPECT_NE(trial_.hostapds(), before);
    expectUsable();
}

// --- A daemon that is killed ---

// At each step of its start of a network: hostapd kills the daemon as soon as it runs, or at a
// request of the daemon.
TEST_F(HostingFaults, HostsAgainAfterADeathAtAnyStepOfAStart) {
    host("serve\n");
    EXPECT_EQ(trial_.stop(SIGTERM), 0);
    for (const char* play : {"kill\n", "serve\nkill\n", "serve\nkillat ATTACH\n",
                             "serve\nkillat STATUS\n", "serve\nkillat STA-FIRST\n"}) {
        trial_.setFake(play);
        trial_.launch();
        EXPECT_EQ(trial_.process().wait(), -SIGKILL) << play;
        waitForHostapds(trial_.hostapds());
        expectHostedAgain();
    }
}

TEST_F(HostingFaults, HostsAgainAfterADeathThatHostapdSurvives) {
    host("serve\n");
    EXPECT_EQ(trial_.stop(SIGTERM), 0);
    for (const char* play :
         {"stubborn\nkill\n", "stubborn\nserve\nkillat ATTACH\n",
          "stubborn\nserve\nkillat STATUS\n", "stubborn\nserve\nkillat STA-FIRST\n"}) {
        trial_.setFake(play);
        trial_.launch();
        EXPECT_EQ(trial_.process().wait(), -SIGKILL) << play;
        EXPECT_THAT(trial_.hostapds(), SizeIs(1));
        expectHostedAgain();
    }
}

TEST_F(HostingFaults, HostsAgainAfterADeathWhileItWritesHostapdsFile) {
    host("serve\n");
    EXPECT_EQ(trial_.stop(SIGTERM), 0);
    constexpr std::uint32_t kSteps[] = {IN_CREATE, IN_MODIFY, IN_MOVED_TO};
    for (const std::uint32_t step : kSteps) {
        trial_.setFake("serve\n");
        const FolderWatch watch(trial_.path("run"), step);
        trial_.launch();
        bool hasHappened = false;  // the watch asks before the first event, too
        watch.waitUntil([&] { return std::exchange(hasHappened, true); });
        EXPECT_EQ(trial_.process().stop(SIGKILL), -SIGKILL);
        waitForHostapds(trial_.hostapds());
        expectHostedAgain();
    }
}

TEST_F(HostingFaults, HostsAgainAfterADeathWhileItHosts) {
    host("serve\n");
    const auto before = trial_.hostapds();
    trial_.stop(SIGKILL);
    waitForHostapds(before);
    expectHostedAgain();
}

// The client got no reply, so either is right; the configuration was acknowledged.
TEST_F(HostingFaults, KeepsWhatItAcknowledgedBeforeADeathAtAStart) {
    trial_.setFake("serve\nkillat STA-FIRST\n");
    trial_.start();
    EXPECT_EQ(trial_.request("configAdd", "Garden"), 0);
    const auto reply = trial_.caller().requestLater(trial_.message("bssStart"));
    trial_.caller().waitFor(*reply);
    EXPECT_EQ(reply->error, "org.freedesktop.DBus.Error.NoReply");
    EXPECT_EQ(trial_.process().wait(), -SIGKILL);
    waitForHostapds(trial_.hostapds());
    trial_.setFake("serve\n");
    trial_.start();
    expectUsable();
}

TEST_F(HostingFaults, ForgetsARequestThatItNeverRead) {
    host("serve\n");
    trial_.process().send(SIGSTOP);
    const auto reply = trial_.caller().requestLater(trial_.message("disable"));
    trial_.caller().ownerOf(kHostingName);  // the bus has it once it has replied to this
    trial_.process().send(SIGKILL);
    trial_.caller().waitFor(*reply);
    EXPECT_EQ(reply->error, "org.freedesktop.DBus.Error.NoReply");
    trial_.process().wait();
    expectHostedAgain();
}

// --- The bus ---

TEST_F(HostingFaults, HostsAgainOnTheNextBus) {
    host("serve\n");
    trial_.bus().kill();
    EXPECT_EQ(trial_.process().wait(), 1);
    EXPECT_THAT(trial_.read("log"), HasSubstr("The bus is gone."));
    expectNothingLeft();
    trial_.bus().restart();
    expectHostedAgain();
}

TEST_F(HostingFaults, LeavesNoStubbornHostapdWhenTheBusGoes) {
    host("serve\nstubborn\n");
    trial_.bus().kill();
    EXPECT_EQ(trial_.process().wait(), 1);
    expectNothingLeft();
    trial_.bus().restart();
    expectHostedAgain();
}

// --- hostapd's answers ---

TEST_F(HostingFaults, TakesAFloodOfStations) {
    constexpr std::size_t kMostStations = 2007;  // of a network
    host("serve\n");
    trial_.subscribe();
    trial_.playNow("join 10000\nsay flooded\nleave 10000\nsay drained\n");
    trial_.waitForLog("hostapd: drained");
    std::map<std::string, std::size_t> counts;  // by the kind of the event
    for (const auto& event : trial_.caller().nextEvents(3 * kMostStations)) {
        ++counts[event.substr(0, event.find(' '))];
    }
    EXPECT_EQ(counts, (std::map<std::string, std::size_t>{{"authorized", kMostStations},
                                                          {"joined", kMostStations},
                                                          {"left", kMostStations}}));
    EXPECT_THAT(trial_.list("clientList", "clients"), HasSubstr("isAssociated"));
    EXPECT_THAT(trial_.caller().eventsSoFar(), IsEmpty());
    expectUsable();
}

TEST_F(HostingFaults, ListsStationsOfAHostapdThatHasTooMany) {
    host("serve\nhas 10000\n");
    EXPECT_EQ(trial_.caller().request(halvane::testing::command("clientList")).status(), 0);
    expectUsable();
}

TEST_F(HostingFaults, OutlivesOddAnswersOfHostapd) {
    host("serve\n");
    const std::string large(20'000, 'x');
    const std::vector<std::string> plays = {
        "reply STA-FIRST nonsense",
        "reply STA-FIRST 02:00:00:00:00:01\\nflags=[AUTHORIZED]\\nsignal=99999999999999999999\\n",
        "reply STA-NEXT 02:00:00:00:00:01\\nflags=[AUTHORIZED]\\n",
        "reply STA-FIRST 02:00:00:00:00:01\nreply STA-NEXT 02:00:00:00:00:01",
        "reply STA-FIRST FAIL\\n",
        "reply STA-FIRST \xff\xfe\x01",
        "reply STA-FIRST " + large,
        "event " + large,
        "event AP-STA-CONNECTED",
        "event AP-STA-CONNECTED 02:00:00:00:00",
        "event AP-STA-DISCONNECTED 02:00:00:00:00:77",
        "event AP-STA-CONNECTED \xff\xff",
        "event CTRL-EVENT-TERMINATING",
        "event ",
        "event AP-DISABLED",
        "event AP-ENABLED",
        "reply PING nonsense",
        "long 100000",
        "flood 10000",
    };
    for (std::size_t i = 0; i < plays.size(); ++i) {
        const std::string mark = "played " + std::to_string(i) + ".";
        trial_.playNow(plays[i] + "\nsay " + mark + '\n');
        trial_.waitForLog(mark);
        EXPECT_EQ(trial_.caller().request(halvane::testing::command("clientList")).status(), 0)
            << plays[i].substr(0, 100);
    }
    expectUsable();
}

// --- The disk ---

class HostingOnAFullDisk : public ::testing::Test {
  protected:
    void SetUp() override {
        const bool hasDisks = isTrueInChild([] {
            return enterNamespaces(CLONE_NEWNS) &&
                   ::mount("none", "/tmp", "tmpfs", 0, "size=64k") == 0;
        });
        if (!hasDisks) GTEST_SKIP() << "this system has no file systems for tests";
    }

    // Runs the test with a small file system at the folder's place, which it can fill.
    template <typename Test>
    static void run(const std::string& folder, Test test) {
        const bool hasPassed = isTrueInChild([&] {
            EXPECT_TRUE(enterNamespaces(CLONE_NEWNS));
            Trial trial("lo");
            std::filesystem::create_directories(trial.path(folder));
            EXPECT_EQ(::mount("none", trial.path(folder).c_str(), "tmpfs", 0, "size=64k,mode=700"),
                      0);
            test(trial);
            ::umount2(trial.path(folder).c_str(), MNT_DETACH);
            return !::testing::Test::HasFailure();
        });
        EXPECT_TRUE(hasPassed);
    }

    static void fill(const Trial& trial, const std::string& file) {
        std::ofstream(trial.path(file)) << std::string(1 << 20, 'x');
    }
};

TEST_F(HostingOnAFullDisk, LosesNothingThatItAcknowledged) {
    run("state", [](Trial& trial) {
        trial.setFake("serve\n");
        trial.start();
        EXPECT_EQ(trial.request("configAdd", "Garden"), 0);
        fill(trial, "state/filler");
        EXPECT_EQ(trial.request("configAdd", "Shed"), kNotSaved);
        EXPECT_EQ(trial.request("configRemove", "Garden"), kNotSaved);
        EXPECT_EQ(trial.request("disable"), kNotSaved);
        // It would not be hosted again after a restart, so it is not hosted now.
        EXPECT_EQ(trial.request("bssStart"), kNotSaved);
        EXPECT_EQ(trial.request("bssStop"), 0);  // it is stopped already
        EXPECT_THAT(trial.hostapds(), IsEmpty());
        trial.stop(SIGKILL);
        trial.start();
        EXPECT_THAT(trial.list("queryBSSConfigList", "configs"), HasSubstr(kGarden));
        EXPECT_THAT(trial.list("queryBSSConfigList", "configs"), Not(HasSubstr(kShed)));
        std::filesystem::remove(trial.path("state/filler"));
        EXPECT_EQ(trial.request("configAdd", "Shed"), 0);
        EXPECT_EQ(trial.request("configRemove", "Shed"), 0);
        EXPECT_EQ(trial.request("bssStart"), 0);
        EXPECT_EQ(trial.stop(SIGTERM), 0);
    });
}

TEST_F(HostingOnAFullDisk, KeepsHostingWhatItCannotSaveTheEndOf) {
    run("state", [](Trial& trial) {
        trial.setFake("serve\n");
        trial.start();
        trial.host("Garden");
        fill(trial, "state/filler");
        EXPECT_EQ(trial.request("bssStop"), kNotSaved);
        EXPECT_THAT(trial.hostapds(), SizeIs(1));
        std::filesystem::remove(trial.path("state/filler"));
        EXPECT_EQ(trial.request("bssStop"), 0);
        EXPECT_THAT(trial.hostapds(), IsEmpty());
        EXPECT_EQ(trial.stop(SIGTERM), 0);
    });
}

TEST_F(HostingOnAFullDisk, SaysThatHostapdsFileCannotBeWritten) {
    run("run", [](Trial& trial) {
        trial.setFake("serve\n");
        trial.start();
        EXPECT_EQ(trial.request("configAdd", "Garden"), 0);
        fill(trial, "run/filler");
        EXPECT_EQ(trial.request("bssStart"), kHostapdFailed);
        EXPECT_THAT(trial.read("log"), HasSubstr("lo.conf cannot be written"));
        EXPECT_THAT(trial.hostapds(), IsEmpty());
        std::filesystem::remove(trial.path("run/filler"));
        EXPECT_EQ(trial.request("bssStart"), 0);
        EXPECT_EQ(trial.stop(SIGTERM), 0);
    });
}

// --- With the real hostapd at a cable ---

using HostingFaultsAtACable = halvane::testing::CableTrial;

TEST_F(HostingFaultsAtACable, HostsAgainWhenTheInterfaceComesBack) {
    atCable([](Trial& trial) {
        trial.subscribe();
        trial.host("Garden");
        {
            const Station station(trial);
            trial.caller().nextEvents(2);
            EXPECT_EQ(runProgram({"/usr/sbin/ip", "link", "delete", "cable0"}).status, 0);
            EXPECT_THAT(trial.caller().nextEvents(1), ElementsAre("left cable0 020000000001"));
        }
        EXPECT_EQ(trial.request("bssStart"), kUnknownInterface);
        ASSERT_TRUE(layCable());
        const Station station(trial);
        // The network starts by itself.
        EXPECT_THAT(trial.caller().nextEvents(2),
                    ElementsAre("joined cable0 020000000001", "authorized cable0 020000000001"));
        EXPECT_THAT(trial.hostapds(), SizeIs(1));
        EXPECT_EQ(trial.request("bssStop"), 0);
        EXPECT_EQ(trial.stop(SIGTERM), 0);
        EXPECT_THAT(trial.hostapds(), IsEmpty());
    });
}

TEST_F(HostingFaultsAtACable, TellsTheUsersThatHostapdRefuses) {
    atCable([](Trial& trial) {
        trial.write("users", "nonsense\n");
        EXPECT_EQ(trial.request("configAdd", "Garden"), 0);
        EXPECT_EQ(trial.request("bssStart"), kHostapdFailed);
        EXPECT_THAT(trial.read("log"), HasSubstr("hostapd ended with status 1: "));
        EXPECT_THAT(trial.hostapds(), IsEmpty());
        trial.write("users", halvane::testing::kUsersFile);
        EXPECT_EQ(trial.request("bssStart"), 0);
        EXPECT_EQ(trial.stop(SIGTERM), 0);
    });
}

TEST_F(HostingFaultsAtACable, LeavesNoHostapdWhenItIsKilled) {
    atCable([](Trial& trial) {
        trial.host("Garden");
        const auto processes = trial.hostapds();
        EXPECT_THAT(processes, SizeIs(1));
        trial.stop(SIGKILL);
        for (const pid_t process : processes) waitForEndOf(process);
        EXPECT_THAT(trial.hostapds(), IsEmpty());
    });
}

}  // namespace
