// halvaned as a process on a private bus, hosting at one interface, and its client.
#ifndef TESTS_SUPPORT_HOSTING_TRIAL_H
#define TESTS_SUPPORT_HOSTING_TRIAL_H

#include <csignal>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <optional>
#include <string>
#include <sys/inotify.h>
#include <sys/types.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "tests/support/bus_caller.h"
#include "tests/support/cable.h"
#include "tests/support/child_process.h"
#include "tests/support/folder_watch.h"
#include "tests/support/hostapd_parser.h"
#include "tests/support/private_bus.h"
#include "tests/support/private_network.h"
#include "tests/support/process_list.h"
#include "tests/support/run_program.h"
#include "tests/support/run_tool.h"
#include "tests/support/spawn_program.h"
#include "tests/support/spawned_process.h"
#include "tests/support/temporary_folder.h"

namespace halvane::testing {

inline constexpr const char kHostingName[] = "org.halvane.halvaned";

// Statuses of docs/protocol.md, and of docs/hosting.md.
enum HostingReply {
    kBadRequest = 2,
    kUnknownInterface = 3,
    kBadConfiguration = 4,
    kUnknownConfiguration = 5,
    kDisabled = 6,
    kWrongRole = 7,
    kNothingToStart = 8,
    kNoBSS = 9,
    kUnknownStation = 10,
    kNotSaved = 100,
    kCannotHost = 101,
    kHostapdFailed = 102,
    kTooMany = 103,
    kStopped = 104,
};

// The station at the other end of the cable.
inline const WireData kCableStation = {2, 0, 0, 0, 0, 1};

inline WireData wireConfiguration(const std::string& name) {
    const std::string text =
        runTool({"config", "--format=plist", "--wpa2-enterprise", name}).output;
    return {text.begin(), text.end()};
}

class Trial {
  public:
    explicit Trial(std::string interface) : interface_(std::move(interface)) {
        write("users", kUsersFile);
        std::filesystem::create_directory(path("run"));
        std::filesystem::permissions(path("run"), std::filesystem::perms::owner_all);
        set("");
    }

    // Replaces the settings, which count from the next start on.
    void set(const std::string& more) {
        settings_ = write("halvaned.conf", "driver = wired\ninterfaces = " + interface_ +
                                               "\nruntime-folder = " + path("run") +
                                               "\nstate-file = " + path("state/state.plist") +
                                               "\neap-user-file = " + path("users") + '\n' + more);
    }

    // Sets fake_hostapd.cpp in the place of hostapd, and what it plays from its next start on.
    void setFake(const std::string& play) {
        set(std::string("hostapd = ") + HALVANE_FAKE_HOSTAPD + '\n');
        write("run/play", play);
    }
    // Has it play more, now.
    void playNow(const std::string& play) {
        write("run/play", play);
        sendToHostapd(SIGUSR1);
    }

    // Starts the daemon, which logs to a new file "log".
    void launch() {
        std::filesystem::remove(path("log"));
        write("log", "");
        process_.emplace(words(), StandardStreams{.errors = path("log")});
    }
    void start() {
        launch();
        caller_.emplace(bus_.address());  // an earlier one remembers an earlier daemon
        caller_->waitUntilOwned(kHostingName);
    }
    std::vector<std::string> words() const {
        return {HALVANE_DAEMON, "--config=" + settings_, "--foreground"};
    }
    int stop(int signal) {
        const int status = process_->stop(signal);
        caller_->waitUntilGone(kHostingName);
        return status;
    }

    // Has the daemon host a network of this name at the interface.
    void host(const std::string& network) {
        EXPECT_EQ(request("configAdd", network), 0);
        EXPECT_EQ(request("bssStart"), 0);
    }

    std::int64_t request(const std::string& name, const std::string& network = {}) {
        return caller_->request(message(name, network)).status();
    }
    WireMessage message(const std::string& name, const std::string& network = {}) const {
        WireMessage message = command(name, interface_);
        if (!network.empty()) message["bssconfig"] = wireConfiguration(network);
        return message;
    }
    // Asks for the cable's station to be sent away.
    std::int64_t kick() {
        WireMessage kick = message("kick");
        kick["MAC"] = kCableStation;
        return caller_->request(kick).status();
    }
    std::string list(const std::string& name, const std::string& key) {
        return caller_->request(command(name)).text(key);
    }
    void subscribe() {
        EXPECT_EQ(caller_->request({{"command", "subscribe"}, {"notifyAP", true}}).status(), 0);
    }

    // Waits until the daemon has logged the text.
    void waitForLog(const std::string& text) const {
        const FolderWatch watch(path("log"), IN_MODIFY);
        watch.waitUntil([&] { return read("log").find(text) != std::string::npos; });
    }

    // The processes of hostapd, of any daemon of the trial.
    std::vector<pid_t> hostapds() const { return processesOf(hostapdFile()); }
    std::string hostapdFile() const { return path("run/" + interface_ + ".conf"); }
    void sendToHostapd(int signal) const {
        for (const pid_t process : hostapds()) ::kill(process, signal);
    }

    std::string path(const std::string& name) const { return folder_.path() / name; }
    std::string write(const std::string& name, const std::string& text) const {
        std::ofstream(path(name)) << text;
        return path(name);
    }
    std::string read(const std::string& name) const { return contentsOf(path(name)); }

    BusCaller& caller() { return *caller_; }
    PrivateBus& bus() { return bus_; }
    SpawnedProcess& process() { return *process_; }

  private:
    TemporaryFolder folder_;
    PrivateBus bus_;
    std::optional<BusCaller> caller_;
    std::string interface_;
    std::string settings_;
    std::optional<SpawnedProcess> process_;
};

// --- A station at the other end of a cable ---

// What a trial with one lacks here; absent if it lacks nothing.
inline std::optional<std::string> missingForStations() {
    if (hostapdPath().empty()) return "hostapd is not installed";
    if (::access(kStationProgram, X_OK) != 0) return "wpa_supplicant is not installed";
    if (!isTrueInChild([] { return enterPrivateNetwork() && layCable(); })) {
        return "this system has no network namespaces or no cables for tests";
    }
    return std::nullopt;
}

// Trials with the real hostapd and stations, each in a network of its own.
class CableTrial : public ::testing::Test {
  protected:
    void SetUp() override {
        if (const auto missing = missingForStations()) GTEST_SKIP() << *missing;
    }

    // Runs the test with a daemon at one end of the cable.
    static void atCable(const std::function<void(Trial& trial)>& test) {
        inPrivateNetwork([&] {
            ASSERT_TRUE(layCable());
            Trial trial("cable0");
            trial.start();
            test(trial);
        });
    }
};

// wpa_supplicant, which joins at once. Killed, it says nothing to hostapd.
class Station {
  public:
    explicit Station(const Trial& trial)
        : folder_(trial.path("station-control")),
          process_(stationWords(
                       trial.write("station", "ctrl_interface=" + folder_ + '\n' + kStationFile)),
                   {.output = trial.path("station-log")}) {}

    // It logs off (IEEE 802.1X-2020, 11.3), and stays off, until it logs on.
    void leave() const { control("logoff"); }
    void comeBack() const { control("logon"); }

  private:
    void control(const std::string& verb) const {
        const auto result = runProgram({kStationControl, "-p" + folder_, "-icable1", verb});
        EXPECT_EQ(result.output, "OK\n") << verb;
    }

    std::string folder_;
    SpawnedProcess process_;
};

}  // namespace halvane::testing

#endif
