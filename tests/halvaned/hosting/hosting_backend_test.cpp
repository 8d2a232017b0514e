#include "tools/halvaned/hosting/hosting_backend.h"

#include <algorithm>
#include <csignal>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <utility>
#include <vector>

#include "halvane/model/bss_config.h"
#include "halvane/model/client.h"
#include "halvane/model/daemon_status.h"
#include "halvane/model/interface.h"
#include "halvane/model/station_change.h"
#include "halvane/service/backend.h"
#include "halvane/service/backend_reply.h"
#include "halvane/utils/log.h"

#include "tests/halvaned/hostapd/played_network.h"
#include "tests/halvaned/hostapd/test_loop.h"
#include "tests/halvaned/hosting/scripted_devices.h"
#include "tests/support/log_recorder.h"
#include "tests/support/made_config.h"
#include "tests/support/run_program.h"
#include "tests/support/temporary_folder.h"
#include "tools/halvaned/hostapd/host.h"
#include "tools/halvaned/hosting/hosting_status.h"
#include "tools/halvaned/settings/settings.h"

namespace halvane::hosting {
namespace {

using halvane::testing::addRadio;
using halvane::testing::addressText;
using halvane::testing::contentsOf;
using halvane::testing::LogRecorder;
using halvane::testing::openNetwork;
using halvane::testing::personalNetwork;
using halvane::testing::PlayedNetwork;
using halvane::testing::ScriptedDevices;
using halvane::testing::TemporaryFolder;
using halvane::testing::TestLoop;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

constexpr const char kAuthorized[] = "[AUTH][ASSOC][AUTHORIZED]";

class HostingBackendTest : public ::testing::Test, protected StationListener {
  protected:
    HostingBackendTest() {
        host_.program = HALVANE_FAKE_HOSTAPD;
        host_.runtimeFolder = settings_.runtimeFolder = folder_.path();
        host_.startTimeout = host_.replyTimeout = host_.endTimeout = 60'000'000;
        host_.socketInterval = host_.firstPause = 1000;
        host_.longestPause = 4000;
        settings_.stateFile = path("state.plist");
        std::filesystem::create_directory(path("control"));
        addRadio(source_.next, 0, "wlan0");
        addRadio(source_.next, 1, "wlan1");
    }

    std::string path(const std::string& name) const { return folder_.path() / name; }

    // The daemon starts.
    void load() {
        backend_.emplace(loop_.get(), source_, settings_, host_);
        backend_->setListener(this);
        const auto loaded = backend_->load();
        ASSERT_TRUE(loaded) << loaded.error();
        backend_->open();
    }
    HostingBackend& backend() {
        if (!backend_) load();
        return *backend_;
    }

    // hostapd's answers for a network.
    PlayedNetwork& serve(const std::string& interface) {
        auto& network = networks_[interface];
        network = std::make_unique<PlayedNetwork>(loop_.get(), path("control/" + interface));
        return *network;
    }

    // A reply that `status` learns of.
    static BackendReply<void> replyTo(std::optional<DaemonStatus>& status) {
        return BackendReply<void>([&status](BackendResult<void> result) {
            status = result ? DaemonStatus::Done : result.error();
        });
    }
    template <typename Request>
    DaemonStatus statusOf(Request request) {
        std::optional<DaemonStatus> status;
        request(replyTo(status));
        loop_.runUntil([&] { return status.has_value(); });
        return *status;
    }
    template <typename List, typename Request>
    BackendResult<List> listOf(Request request) {
        std::optional<BackendResult<List>> list;
        request(BackendReply<List>([&](BackendResult<List> result) { list = std::move(result); }));
        loop_.runUntil([&] { return list.has_value(); });
        return *std::move(list);
    }

    DaemonStatus add(const std::string& interface, std::string_view network) {
        return statusOf(
            [&](auto reply) { backend().add(interface, openNetwork(network), std::move(reply)); });
    }
    DaemonStatus remove(const std::string& interface, std::string_view network) {
        return statusOf([&](auto reply) {
            backend().remove(interface, openNetwork(network), std::move(reply));
        });
    }
    DaemonStatus start(const std::string& interface) {
        return statusOf([&](auto reply) { backend().start(interface, std::move(reply)); });
    }
    DaemonStatus stop(const std::string& interface) {
        return statusOf([&](auto reply) { backend().stop(interface, std::move(reply)); });
    }
    DaemonStatus enable(const std::string& interface) {
        return statusOf([&](auto reply) { backend().enable(interface, std::move(reply)); });
    }
    DaemonStatus disable(const std::string& interface) {
        return statusOf([&](auto reply) { backend().disable(interface, std::move(reply)); });
    }
    DaemonStatus changeRole(const std::string& interface, const std::string& role) {
        return statusOf(
            [&](auto reply) { backend().changeRole(interface, role, std::move(reply)); });
    }

    // Has one network, and hosts it.
    void host(const std::string& interface) {
        serve(interface);
        ASSERT_EQ(add(interface, "home"), DaemonStatus::Done);
        ASSERT_EQ(start(interface), DaemonStatus::Done);
        ASSERT_TRUE(isHosted(interface));
    }
    // hostapd's process; -1 if there is none.
    pid_t processOf(const std::string& interface) const {
        const std::string text = contentsOf(path(interface + ".pid"));
        return text.empty() ? -1 : std::stoi(text);
    }
    bool isHosted(const std::string& interface) const {
        const pid_t process = processOf(interface);
        return process > 0 && ::kill(process, 0) == 0;
    }

    std::vector<std::string> interfaces() {
        const auto list = listOf<std::vector<HalvaneInterface>>(
            [&](auto reply) { backend().interfaces(std::move(reply)); });
        std::vector<std::string> names;
        for (const auto& interface : *list) names.push_back(interface.ifName().value_or(""));
        return names;
    }
    std::vector<HalvaneClient> clients() {
        return *listOf<std::vector<HalvaneClient>>(
            [&](auto reply) { backend().stations(std::move(reply)); });
    }
    std::size_t configurations(std::optional<std::string_view> interface) {
        return listOf<std::vector<HalvaneBSSConfig>>(
                   [&](auto reply) { backend().configurations(interface, std::move(reply)); })
            ->size();
    }

    void waitForEvents(std::size_t count) {
        loop_.runUntil([&] { return events_.size() >= count; });
    }

    // In the place of the file that the state is first written to.
    void fillDisk() { std::filesystem::create_directories(path("state.plist.new/x")); }
    void makeRoom() { std::filesystem::remove_all(path("state.plist.new")); }

    TestLoop loop_;
    TemporaryFolder folder_;
    HostSettings host_;
    Settings settings_;
    ScriptedDevices source_;
    std::map<std::string, std::unique_ptr<PlayedNetwork>> networks_;
    std::vector<std::string> events_;
    std::optional<HostingBackend> backend_;

  private:
    void happened(const StationChange& change) override {
        events_.push_back(std::string(nameOf(change.kind)) + " " + change.address.text() + " " +
                          change.interface);
    }
};

// --- Requests and statuses ---

TEST_F(HostingBackendTest, KnowsNoOtherInterface) {
    const auto unknown = DaemonStatus::UnknownInterface;
    EXPECT_EQ(add("wlan7", "home"), unknown);
    EXPECT_EQ(remove("wlan7", "home"), unknown);
    EXPECT_EQ(enable("wlan7"), unknown);
    EXPECT_EQ(disable("wlan7"), unknown);
    EXPECT_EQ(changeRole("wlan7", "AP"), unknown);
    EXPECT_EQ(start("wlan7"), unknown);
    EXPECT_EQ(stop("wlan7"), unknown);
    const auto channels = listOf<std::vector<HalvaneChannel>>(
        [&](auto reply) { backend().channels("wlan7", std::move(reply)); });
    EXPECT_EQ(channels.error(), unknown);
    const auto lists = listOf<std::vector<HalvaneBSSConfig>>(
        [&](auto reply) { backend().configurations("wlan7", std::move(reply)); });
    EXPECT_EQ(lists.error(), unknown);
}

TEST_F(HostingBackendTest, ListsDevicesAndChannels) {
    EXPECT_THAT(interfaces(), ElementsAre("wlan0", "wlan1"));
    const auto devices = listOf<std::vector<HalvaneDevice>>(
        [&](auto reply) { backend().devices(std::move(reply)); });
    EXPECT_THAT(*devices, SizeIs(2));
    const auto channels = listOf<std::vector<HalvaneChannel>>(
        [&](auto reply) { backend().channels("wlan0", std::move(reply)); });
    EXPECT_THAT(*channels, SizeIs(1));
}

TEST_F(HostingBackendTest, LeavesOutANameThatNoListCanCarry) {
    addRadio(source_.next, 2, "b\xFF\xFE");
    EXPECT_THAT(interfaces(), ElementsAre("wlan0", "wlan1"));
}

TEST_F(HostingBackendTest, RefusesWhatCannotStart) {
    EXPECT_EQ(start("wlan0"), DaemonStatus::NothingToStart);
    EXPECT_EQ(add("wlan0", "home"), DaemonStatus::Done);
    EXPECT_EQ(changeRole("wlan0", "STA"), DaemonStatus::Done);
    EXPECT_EQ(start("wlan0"), DaemonStatus::WrongRole);
    EXPECT_EQ(changeRole("wlan0", "ap"), DaemonStatus::Done);
    EXPECT_EQ(changeRole("wlan0", ""), DaemonStatus::BadRequest);
    EXPECT_EQ(disable("wlan0"), DaemonStatus::Done);
    EXPECT_EQ(start("wlan0"), DaemonStatus::InterfaceDisabled);
    EXPECT_EQ(enable("wlan0"), DaemonStatus::Done);
    source_.next.radios[0].bands[0].channels.begin()->second.isDisabled = true;
    backend().updateDevices();
    EXPECT_EQ(start("wlan0"), kCannotHost);
    EXPECT_EQ(processOf("wlan0"), -1);
}

TEST_F(HostingBackendTest, RefusesConfigurations) {
    settings_.configurations = 2;
    EXPECT_EQ(remove("wlan0", "home"), DaemonStatus::UnknownConfiguration);
    EXPECT_EQ(add("wlan0", ""), DaemonStatus::BadConfiguration);
    EXPECT_EQ(add("wlan0", "a"), DaemonStatus::Done);
    EXPECT_EQ(add("wlan0", "b"), DaemonStatus::Done);
    EXPECT_EQ(add("wlan0", "c"), kTooManyConfigurations);
    EXPECT_EQ(add("wlan0", "b"), DaemonStatus::Done);  // replaces one
    EXPECT_EQ(add("wlan1", "c"), DaemonStatus::Done);
    EXPECT_EQ(configurations("wlan0"), 2U);
    EXPECT_EQ(configurations(std::nullopt), 3U);
}

TEST_F(HostingBackendTest, RefusesAConfigurationThatIsTooLarge) {
    auto large = openNetwork("home");
    large.setWpsDeviceName(std::string(65536, 'x'));
    EXPECT_EQ(statusOf([&](auto reply) { backend().add("wlan0", large, std::move(reply)); }),
              kTooLarge);
    large.setWpsDeviceName(std::string(60000, 'x'));
    EXPECT_EQ(statusOf([&](auto reply) { backend().add("wlan0", large, std::move(reply)); }),
              DaemonStatus::Done);
}

TEST_F(HostingBackendTest, TakesRolesOfSomeLength) {
    EXPECT_EQ(changeRole("wlan0", std::string(64, 'x')), DaemonStatus::Done);
    EXPECT_EQ(changeRole("wlan0", std::string(65, 'x')), DaemonStatus::BadRequest);
    EXPECT_EQ(changeRole("wlan0", ""), DaemonStatus::BadRequest);
}

TEST_F(HostingBackendTest, TellsWhyHostapdFailed) {
    EXPECT_EQ(add("wlan0", "home"), DaemonStatus::Done);
    std::ofstream(path("play")) << "exit 1\n";
    EXPECT_EQ(start("wlan0"), kHostapdFailed);
    std::ofstream(path("play")) << "";
    serve("wlan0");
    EXPECT_EQ(start("wlan0"), DaemonStatus::Done);
}

TEST_F(HostingBackendTest, EndsTheNetworksByEachRequestThatDoes) {
    host("wlan0");
    const std::function<DaemonStatus()> requests[] = {
        [&] { return stop("wlan0"); },
        [&] { return disable("wlan0"); },
        [&] { return changeRole("wlan0", "STA"); },
        [&] { return remove("wlan0", "home"); },
    };
    for (const auto& request : requests) {
        add("wlan0", "home");
        enable("wlan0");
        changeRole("wlan0", "AP");
        EXPECT_EQ(start("wlan0"), DaemonStatus::Done);
        EXPECT_TRUE(isHosted("wlan0"));
        EXPECT_EQ(request(), DaemonStatus::Done);
        EXPECT_FALSE(isHosted("wlan0"));
    }
    EXPECT_EQ(stop("wlan0"), DaemonStatus::Done);
}

TEST_F(HostingBackendTest, EndsAStartThatIsUnderWay) {
    EXPECT_EQ(add("wlan0", "home"), DaemonStatus::Done);
    std::optional<DaemonStatus> started, again;
    backend().start("wlan0", replyTo(started));  // without a control socket it never ends
    backend().start("wlan0", replyTo(again));
    EXPECT_EQ(stop("wlan0"), DaemonStatus::Done);
    EXPECT_EQ(started, kStopped);
    EXPECT_EQ(again, kStopped);
    EXPECT_EQ(processOf("wlan0"), -1);
    serve("wlan0");
    EXPECT_EQ(start("wlan0"), DaemonStatus::Done);
}

TEST_F(HostingBackendTest, ChangesNothingThatItCannotSave) {
    EXPECT_EQ(add("wlan0", "home"), DaemonStatus::Done);
    fillDisk();
    EXPECT_EQ(add("wlan0", "shed"), kNotSaved);
    EXPECT_EQ(remove("wlan0", "home"), kNotSaved);
    EXPECT_EQ(disable("wlan0"), kNotSaved);
    EXPECT_EQ(changeRole("wlan0", "STA"), kNotSaved);
    EXPECT_EQ(configurations("wlan0"), 1U);
    serve("wlan0");
    std::optional<DaemonStatus> first, second;
    backend().start("wlan0", replyTo(first));
    backend().start("wlan0", replyTo(second));
    loop_.runUntil([&] { return first && second && processOf("wlan0") < 0; });
    EXPECT_EQ(first, kNotSaved);
    EXPECT_NE(second, DaemonStatus::Done);
    makeRoom();
    EXPECT_EQ(start("wlan0"), DaemonStatus::Done);
    fillDisk();
    EXPECT_EQ(stop("wlan0"), kNotSaved);
    EXPECT_EQ(disable("wlan0"), kNotSaved);
    EXPECT_EQ(remove("wlan0", "home"), kNotSaved);
    EXPECT_TRUE(isHosted("wlan0"));
    makeRoom();
    EXPECT_EQ(stop("wlan0"), DaemonStatus::Done);
}

// --- Networks ---

TEST_F(HostingBackendTest, HostsSeveralNetworksOfOneInterface) {
    serve("wlan0").flags[addressText(1)] = kAuthorized;
    serve("wlan0_1").flags[addressText(2)] = kAuthorized;
    EXPECT_EQ(add("wlan0", "home"), DaemonStatus::Done);
    EXPECT_EQ(add("wlan0", "guests"), DaemonStatus::Done);
    EXPECT_EQ(start("wlan0"), DaemonStatus::Done);
    // hostapd makes the other interface, which is no device of clients.
    source_.next.interfaces.push_back({.name = "wlan0_1", .index = 77, .radio = 0});
    backend().updateDevices();
    EXPECT_THAT(interfaces(), ElementsAre("wlan0", "wlan1"));
    EXPECT_EQ(start("wlan0_1"), DaemonStatus::UnknownInterface);
    waitForEvents(4);
    std::ranges::sort(events_);
    EXPECT_THAT(
        events_,
        ElementsAre("authorized 02:00:00:00:00:01 wlan0", "authorized 02:00:00:00:00:02 wlan0",
                    "joined 02:00:00:00:00:01 wlan0", "joined 02:00:00:00:00:02 wlan0"));
    EXPECT_THAT(clients(), SizeIs(2));
    // One goes, and the other is hosted again.
    const pid_t before = processOf("wlan0");
    networks_.erase("wlan0_1");
    EXPECT_EQ(remove("wlan0", "guests"), DaemonStatus::Done);
    EXPECT_EQ(start("wlan0"), DaemonStatus::Done);
    EXPECT_NE(processOf("wlan0"), before);
}

// The kernel keeps what hostapd had made when it was killed.
TEST_F(HostingBackendTest, KnowsWhatHostapdLeft) {
    serve("wlan0");
    serve("wlan0_1");
    EXPECT_EQ(add("wlan0", "home"), DaemonStatus::Done);
    EXPECT_EQ(add("wlan0", "guests"), DaemonStatus::Done);
    EXPECT_EQ(start("wlan0"), DaemonStatus::Done);
    source_.next.interfaces.push_back({.name = "wlan0_1", .index = 77, .radio = 0});
    backend().updateDevices();
    EXPECT_EQ(stop("wlan0"), DaemonStatus::Done);
    EXPECT_THAT(interfaces(), ElementsAre("wlan0", "wlan1"));
    load();  // another daemon
    EXPECT_THAT(interfaces(), ElementsAre("wlan0", "wlan1"));
    EXPECT_EQ(start("wlan0"), DaemonStatus::Done);
    EXPECT_THAT(contentsOf(path("wlan0.conf")), HasSubstr("\nbss=wlan0_1\n"));
    EXPECT_EQ(stop("wlan0"), DaemonStatus::Done);
    // What comes after it has gone is somebody else's.
    source_.next.interfaces.pop_back();
    backend().updateDevices();
    source_.next.interfaces.push_back({.name = "wlan0_1", .index = 78, .radio = 0});
    backend().updateDevices();
    EXPECT_THAT(interfaces(), ElementsAre("wlan0", "wlan1", "wlan0_1"));
}

TEST_F(HostingBackendTest, AnswersAllWhoAskForStations) {
    auto& network = serve("wlan0");
    network.flags[addressText(1)] = kAuthorized;
    int questions = 0;
    network.heard = [&](const std::string& verb) { questions += verb == "STA-FIRST" ? 1 : 0; };
    EXPECT_EQ(add("wlan0", "home"), DaemonStatus::Done);
    EXPECT_EQ(start("wlan0"), DaemonStatus::Done);
    questions = 0;
    std::vector<std::size_t> sizes;
    for (int i = 0; i < 50; ++i) {
        backend().stations(BackendReply<std::vector<HalvaneClient>>(
            [&](auto result) { sizes.push_back(result->size()); }));
    }
    loop_.runUntil([&] { return sizes.size() == 50; });
    EXPECT_THAT(sizes, Each(1U));
    EXPECT_EQ(questions, 1);
    EXPECT_THAT(clients(), SizeIs(1));
}

// Nobody but root can look into the file; everybody can look at arguments.
TEST_F(HostingBackendTest, TellsNobodyThePassphrase) {
    serve("wlan0");
    std::ofstream(path("play")) << "say words\n";
    LogRecorder log;
    LogUtils_Finalize();
    LogIsEnabled(&gLogCategory_WiFi, kLogLevelVerbose);
    LogControl(("WiFi:level=all,WiFi:output=" + log.spec()).c_str());
    EXPECT_EQ(statusOf([&](auto reply) {
                  backend().add("wlan0", personalNetwork("home", "correct horse"),
                                std::move(reply));
              }),
              DaemonStatus::Done);
    EXPECT_EQ(start("wlan0"), DaemonStatus::Done);
    const std::string facts = "/proc/" + std::to_string(processOf("wlan0"));
    const std::string file = contentsOf(path("wlan0.conf"));
    EXPECT_THAT(file, Not(HasSubstr("correct horse")));
    const auto at = file.find("wpa_psk=");
    ASSERT_NE(at, std::string::npos);
    const std::string key = file.substr(at + 8, 64);
    EXPECT_EQ(key.find('\n'), std::string::npos);
    loop_.runUntil([&] { return log.text().find("hostapd: words") != std::string::npos; });
    LogUtils_Finalize();
    for (const std::string& secret : {std::string("correct horse"), key}) {
        EXPECT_THAT(contentsOf(facts + "/cmdline"), Not(HasSubstr(secret)));
        EXPECT_THAT(contentsOf(facts + "/environ"), Not(HasSubstr(secret)));
        EXPECT_THAT(log.text(), Not(HasSubstr(secret)));
    }
    EXPECT_THAT(contentsOf(facts + "/cmdline"), HasSubstr("wlan0.conf"));
    const auto mode = std::filesystem::status(path("wlan0.conf")).permissions();
    EXPECT_EQ(mode, std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
}

TEST_F(HostingBackendTest, HostsAtTwoInterfaces) {
    host("wlan0");
    host("wlan1");
    networks_["wlan1"]->flags[addressText(1)] = kAuthorized;
    EXPECT_THAT(clients(), SizeIs(1));
    EXPECT_EQ(stop("wlan0"), DaemonStatus::Done);
    EXPECT_FALSE(isHosted("wlan0"));
    EXPECT_TRUE(isHosted("wlan1"));
    EXPECT_EQ(events_, (std::vector<std::string>{"joined 02:00:00:00:00:01 wlan1",
                                                 "authorized 02:00:00:00:00:01 wlan1"}));
}

// --- Devices that come and go ---

TEST_F(HostingBackendTest, HostsAgainWhenItsDeviceComesBack) {
    host("wlan0");
    host("wlan1");
    networks_["wlan0"]->flags[addressText(1)] = kAuthorized;
    EXPECT_THAT(clients(), SizeIs(1));
    const auto all = source_.next;
    source_.next.interfaces.erase(source_.next.interfaces.begin());
    backend().updateDevices();
    waitForEvents(3);
    EXPECT_EQ(events_.back(), "left 02:00:00:00:00:01 wlan0");
    EXPECT_FALSE(isHosted("wlan0"));
    EXPECT_TRUE(isHosted("wlan1"));
    EXPECT_EQ(start("wlan0"), DaemonStatus::UnknownInterface);
    EXPECT_EQ(configurations(std::nullopt), 1U);
    source_.next = all;
    backend().updateDevices();
    waitForEvents(5);
    EXPECT_EQ(events_.back(), "authorized 02:00:00:00:00:01 wlan0");
    EXPECT_TRUE(isHosted("wlan0"));
    EXPECT_EQ(configurations(std::nullopt), 2U);
}

TEST_F(HostingBackendTest, HostsByNamesWhenInterfacesAreRenamed) {
    host("wlan0");
    networks_["wlan0"]->flags[addressText(1)] = kAuthorized;
    EXPECT_THAT(clients(), SizeIs(1));
    source_.next.interfaces[0].name = "wlan9";
    backend().updateDevices();
    waitForEvents(3);
    EXPECT_EQ(events_.back(), "left 02:00:00:00:00:01 wlan0");
    EXPECT_EQ(start("wlan9"), DaemonStatus::NothingToStart);
    source_.next.interfaces[0].name = "wlan0";
    backend().updateDevices();
    waitForEvents(5);
    EXPECT_TRUE(isHosted("wlan0"));
}

TEST_F(HostingBackendTest, HostsWhereANameMovesTo) {
    host("wlan0");
    const pid_t before = processOf("wlan0");
    std::swap(source_.next.interfaces[0].name, source_.next.interfaces[1].name);
    backend().updateDevices();
    loop_.runUntil([&] { return isHosted("wlan0") && processOf("wlan0") != before; });
    EXPECT_EQ(start("wlan0"), DaemonStatus::Done);
    EXPECT_FALSE(isHosted("wlan1"));
}

// --- Failures of hostapd ---

// It answers no more, and no SIGTERM reaches it.
TEST_F(HostingBackendTest, ReplacesAHostapdThatIsStopped) {
    host_.pingInterval = 1000;
    host_.replyTimeout = 100'000;
    host_.endTimeout = 1000;
    host("wlan0");
    networks_["wlan0"]->flags[addressText(1)] = kAuthorized;
    EXPECT_THAT(clients(), SizeIs(1));
    const pid_t before = processOf("wlan0");
    ASSERT_EQ(::kill(before, SIGSTOP), 0);
    networks_["wlan0"]->replies["PING"] = std::nullopt;
    waitForEvents(3);
    EXPECT_EQ(events_.back(), "left 02:00:00:00:00:01 wlan0");
    networks_["wlan0"]->replies.clear();
    EXPECT_EQ(::kill(before, 0), -1) << "it was killed";
    waitForEvents(5);
    EXPECT_EQ(events_.back(), "authorized 02:00:00:00:00:01 wlan0");
    EXPECT_TRUE(isHosted("wlan0"));
    EXPECT_EQ(stop("wlan0"), DaemonStatus::Done);
}

TEST_F(HostingBackendTest, WaitsForAHostapdThatComesBack) {
    host("wlan0");
    ::kill(processOf("wlan0"), SIGKILL);
    EXPECT_THAT(clients(), IsEmpty());
    EXPECT_EQ(start("wlan0"), DaemonStatus::Done);
    EXPECT_TRUE(isHosted("wlan0"));
}

// --- Starts and ends of the daemon ---

TEST_F(HostingBackendTest, HostsAgainAfterAnEndOfTheDaemon) {
    host("wlan0");
    EXPECT_EQ(add("wlan1", "idle"), DaemonStatus::Done);
    bool hasEnded = false;
    backend().end([&] { hasEnded = true; });
    loop_.runUntil([&] { return hasEnded; });
    EXPECT_FALSE(isHosted("wlan0"));
    EXPECT_EQ(start("wlan0"), kStopped);
    backend_.reset();
    load();
    loop_.runUntil([&] { return isHosted("wlan0"); });
    EXPECT_FALSE(isHosted("wlan1"));
    EXPECT_EQ(configurations(std::nullopt), 2U);
}

TEST_F(HostingBackendTest, TriesAgainWhatCouldNotStartAfterAnEnd) {
    host("wlan0");
    backend_.reset();
    std::ofstream(path("play")) << "exit 1\n";
    networks_.clear();
    load();
    EXPECT_EQ(start("wlan0"), kHostapdFailed);  // with the start that is under way
    std::ofstream(path("play")) << "";
    serve("wlan0");
    loop_.runUntil([&] { return isHosted("wlan0"); });
}

TEST_F(HostingBackendTest, TriesAgainWhatTheRadioDidNotAllow) {
    host("wlan0");
    backend_.reset();
    const auto bands = source_.next.radios[0].bands;
    source_.next.radios[0].bands.clear();  // no channel is allowed
    load();
    EXPECT_EQ(start("wlan0"), kCannotHost);
    source_.next.radios[0].bands = bands;
    backend().updateDevices();
    loop_.runUntil([&] { return isHosted("wlan0"); });
    EXPECT_EQ(stop("wlan0"), DaemonStatus::Done);
    loop_.settle();
    EXPECT_FALSE(isHosted("wlan0"));
}

TEST_F(HostingBackendTest, StartsNothingBeforeItIsOpen) {
    serve("wlan0");
    EXPECT_EQ(add("wlan0", "home"), DaemonStatus::Done);
    backend_.emplace(loop_.get(), source_, settings_, host_);
    ASSERT_TRUE(backend_->load());
    std::optional<DaemonStatus> started;
    backend_->start("wlan0", replyTo(started));
    loop_.settle();
    EXPECT_FALSE(isHosted("wlan0"));
    EXPECT_FALSE(started);
    backend_->open();
    loop_.runUntil([&] { return started.has_value(); });
    EXPECT_EQ(started, DaemonStatus::Done);
}

TEST_F(HostingBackendTest, BeginsAnewWithADamagedState) {
    std::ofstream(path("state.plist")) << "nonsense";
    EXPECT_EQ(configurations(std::nullopt), 0U);
    EXPECT_EQ(contentsOf(path("state.plist.damaged")), "nonsense");
    EXPECT_EQ(add("wlan0", "home"), DaemonStatus::Done);
}

}  // namespace
}  // namespace halvane::hosting
