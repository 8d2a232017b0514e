// The example of a daemon, as its clients meet it on a bus.
#include <csignal>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "tests/support/bus_caller.h"
#include "tests/support/output_pipe.h"
#include "tests/support/private_bus.h"
#include "tests/support/spawned_process.h"

using halvane::testing::BusCaller;
using halvane::testing::command;
using halvane::testing::OutputPipe;
using halvane::testing::PrivateBus;
using halvane::testing::SpawnedProcess;
using halvane::testing::WireData;
using halvane::testing::WireMessage;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

namespace {

constexpr const char kName[] = "org.halvane.halvaned";

class BackendExample : public ::testing::Test {
  protected:
    PrivateBus bus_;
    BusCaller caller_{bus_.address()};
    SpawnedProcess daemon_{{HALVANE_BACKEND_EXAMPLE}, {}};

    void SetUp() override { caller_.waitUntilOwned(kName); }
};

TEST_F(BackendExample, ServesItsInterface) {
    EXPECT_THAT(caller_.request(command("queryInterfaceList")).text("interfaces"),
                HasSubstr("<string>wlan0</string>"));
    EXPECT_EQ(caller_.request({{"command", "subscribe"}, {"notifyAP", true}}).status(), 0);
    EXPECT_EQ(caller_.request(command("bssStart", "wlan0")).status(), 8);
    WireMessage add = command("configAdd", "wlan0");
    const std::string configuration = "<plist version=\"1.0\"><dict/></plist>";
    add["bssconfig"] = WireData(configuration.begin(), configuration.end());
    EXPECT_EQ(caller_.request(add).status(), 0);
    EXPECT_EQ(caller_.request(command("bssStart", "wlan7")).status(), 3);
    EXPECT_EQ(caller_.request(command("bssStart", "wlan0")).status(), 0);
    EXPECT_THAT(caller_.nextEvents(1), ElementsAre("joined wlan0 020000000002"));
}

TEST_F(BackendExample, DoesNotKnowHowToSendAStationAway) {
    WireMessage kick = command("kick", "wlan0");
    EXPECT_EQ(caller_.request(kick).status(), 2);
    kick["MAC"] = WireData{2, 0, 0, 0, 0, 2};
    EXPECT_EQ(caller_.request(kick).status(), 1);
}

TEST_F(BackendExample, RunsOnce) {
    OutputPipe errors;
    SpawnedProcess second({HALVANE_BACKEND_EXAMPLE}, {.errors = errors.writer()});
    errors.closeWriter();
    EXPECT_EQ(errors.readLine(), "org.halvane.halvaned is there already: another daemon runs\n");
    EXPECT_EQ(second.wait(), 1);
}

TEST_F(BackendExample, EndsWithTheBus) {
    bus_.kill();
    EXPECT_EQ(daemon_.wait(), 1);
}

}  // namespace
