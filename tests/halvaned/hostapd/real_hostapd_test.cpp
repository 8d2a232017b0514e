// The Host with the real hostapd, and a real station at the other end of a cable in a network of
// the test's own. It is skipped where one of them is not to be had.
#include <csignal>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <unistd.h>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/mac_address.h"
#include "halvane/model/station_change.h"

#include "tests/halvaned/hostapd/test_loop.h"
#include "tests/support/cable.h"
#include "tests/support/child_process.h"
#include "tests/support/hostapd_parser.h"
#include "tests/support/made_config.h"
#include "tests/support/private_network.h"
#include "tests/support/spawn_program.h"
#include "tests/support/spawned_process.h"
#include "tests/support/temporary_folder.h"
#include "tools/halvaned/hostapd/host.h"
#include "tools/halvaned/hostapd/hostapd_file.h"
#include "tools/halvaned/hostapd/hosted_stations.h"

using namespace halvane;
using namespace halvane::hosting;
using halvane::testing::enterpriseNetwork;
using halvane::testing::hostapdPath;
using halvane::testing::inPrivateNetwork;
using halvane::testing::kStationProgram;
using halvane::testing::layCable;
using halvane::testing::SpawnedProcess;
using halvane::testing::TemporaryFolder;
using halvane::testing::TestLoop;

namespace {

using Kind = StationChange::Kind;

class Cable {
  public:
    Cable() : host_(loop_.get(), settings(), handlers()) {
        plan_.driver = Driver::Wired;
        plan_.networks = {{.interface = "cable0", .configuration = enterpriseNetwork()}};
        plan_.controlFolder = folder_.path() / "control";
        plan_.eapUserFile = write("users", halvane::testing::kUsersFile);
    }

    void start() {
        bool isDone = false;
        host_.start(plan_, [&](auto result) {
            EXPECT_TRUE(result) << result.error().text;
            isDone = true;
        });
        loop_.runUntil([&] { return isDone; });
    }

    void join() {
        const auto file = write("station", halvane::testing::kStationFile);
        station_.emplace(halvane::testing::stationWords(file),
                         halvane::testing::StandardStreams{.output = folder_.path() / "said"});
        waitFor(Kind::Authorized);
    }

    void waitFor(Kind kind) {
        loop_.runUntil([&] { return !changes_.empty() && changes_.back().kind == kind; });
    }

    std::vector<HostedStation> stations() {
        std::optional<std::vector<HostedStation>> all;
        host_.stations([&](auto result) { all = *result; });
        loop_.runUntil([&] { return all.has_value(); });
        return *all;
    }

    void kick(const MacAddress& address) {
        bool isDone = false;
        host_.kick(address, [&](auto result) {
            EXPECT_TRUE(result);
            isDone = true;
        });
        loop_.runUntil([&] { return isDone; });
    }

    void stop() {
        bool isDone = false;
        host_.stop([&](auto) { isDone = true; });
        loop_.runUntil([&] { return isDone; });
    }

    Host& host() { return host_; }
    HostapdPlan& plan() { return plan_; }
    TestLoop& loop() { return loop_; }
    std::vector<StationChange> takeChanges() { return std::exchange(changes_, {}); }

    std::string write(const std::string& name, std::string_view text) const {
        const auto octets = ByteBuffer::fromText(text);
        return folder_.write(name, octets.bytes());
    }

  private:
    HostSettings settings() const {
        return {.program = hostapdPath(), .runtimeFolder = folder_.path(), .firstPause = 1000};
    }
    Host::Handlers handlers() {
        return {.station = [this](const auto& change) { changes_.push_back(change); }};
    }

    TestLoop loop_;
    TemporaryFolder folder_;
    HostapdPlan plan_;
    std::vector<StationChange> changes_;
    Host host_;
    std::optional<SpawnedProcess> station_;
};

class RealHostapd : public ::testing::Test {
  protected:
    void SetUp() override {
        if (hostapdPath().empty()) GTEST_SKIP() << "hostapd is not installed";
        if (::access(kStationProgram, X_OK) != 0) GTEST_SKIP() << "wpa_supplicant is not installed";
        if (!halvane::testing::isTrueInChild(
                [] { return halvane::testing::enterPrivateNetwork() && layCable(); })) {
            GTEST_SKIP() << "this system has no network namespaces or no cables for tests";
        }
    }

    static void onCable(const std::function<void(Cable&)>& test) {
        inPrivateNetwork([&] {
            ASSERT_TRUE(layCable());
            Cable cable;
            test(cable);
        });
    }
};

constexpr MacAddress kStation({0x02, 0, 0, 0, 0, 0x01});

std::vector<StationChange> changesOf(std::initializer_list<Kind> kinds) {
    std::vector<StationChange> changes;
    for (const Kind kind : kinds) changes.push_back({kind, kStation, "cable0"});
    return changes;
}

TEST_F(RealHostapd, TellsAStationFromItsComingToItsGoing) {
    onCable([](Cable& cable) {
        cable.start();
        EXPECT_EQ(cable.host().state(), Host::State::Ready);
        cable.join();
        EXPECT_EQ(cable.takeChanges(), changesOf({Kind::Joined, Kind::Authorized}));
        const auto all = cable.stations();
        ASSERT_EQ(all.size(), 1U);
        EXPECT_EQ(all[0].record.address, kStation);
        EXPECT_TRUE(all[0].record.isAuthorized);
        cable.kick(kStation);
        EXPECT_EQ(cable.takeChanges(), changesOf({Kind::Kicked}));
        cable.stop();
        EXPECT_EQ(cable.host().process(), -1);
    });
}

TEST_F(RealHostapd, IsStartedAgainAfterItWasKilled) {
    onCable([](Cable& cable) {
        cable.start();
        cable.join();
        cable.takeChanges();
        ::kill(cable.host().process(), SIGKILL);
        cable.waitFor(Kind::Left);
        EXPECT_EQ(cable.takeChanges(), changesOf({Kind::Left}));
        cable.loop().runUntil([&] { return cable.host().state() == Host::State::Ready; });
        cable.stop();
    });
}

TEST_F(RealHostapd, SaysWhichLineItRefuses) {
    onCable([](Cable& cable) {
        cable.plan().eapUserFile = cable.write("wrong", "nonsense\n");
        std::string text;
        cable.host().start(cable.plan(),
                           [&](auto result) { text = result ? "started" : result.error().text; });
        cable.loop().runUntil([&] { return !text.empty(); });
        EXPECT_NE(text.find("ended with status 1: "), std::string::npos) << text;
        EXPECT_NE(text.find("line 1"), std::string::npos) << text;
    });
}

}  // namespace
