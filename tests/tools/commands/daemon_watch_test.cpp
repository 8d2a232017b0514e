#include "tools/halvane/commands/daemon_watch.h"

#include <gtest/gtest.h>
#include <optional>
#include <systemd/sd-bus.h>
#include <utility>

#include "halvane/model/daemon_service.h"
#include "halvane/platform/bus/pointers_internal.h"

#include "tests/support/bus_peer.h"
#include "tests/support/private_bus.h"

using halvane::testing::BusPeer;
using halvane::testing::PeerError;
using halvane::testing::PeerSilence;
using halvane::testing::PrivateBus;
using halvane::tool::DaemonWatch;

namespace {

class DaemonWatchTest : public ::testing::Test {
  protected:
    PrivateBus bus_;
    std::optional<BusPeer> daemon_{std::in_place, bus_};
};

TEST_F(DaemonWatchTest, FindsADaemonThatStays) {
    DaemonWatch watch;
    EXPECT_FALSE(watch.hasDaemonLeft());
    EXPECT_FALSE(watch.hasDaemonLeft());
}

TEST_F(DaemonWatchTest, FindsADaemonThatLeft) {
    DaemonWatch watch;
    daemon_.reset();
    EXPECT_TRUE(watch.hasDaemonLeft());
}

TEST_F(DaemonWatchTest, FindsADaemonThatLeftAndCameBack) {
    DaemonWatch watch;
    daemon_.reset();
    daemon_.emplace(bus_);
    EXPECT_TRUE(watch.hasDaemonLeft());
    EXPECT_TRUE(watch.hasDaemonLeft());
}

TEST_F(DaemonWatchTest, DoesNotWaitForWhoTookTheDaemonsPlace) {
    DaemonWatch watch;
    BusPeer other(bus_, "");
    other.answer(PeerSilence());
    other.ownName();
    EXPECT_TRUE(watch.hasDaemonLeft());
}

TEST_F(DaemonWatchTest, FindsABusThatIsGone) {
    DaemonWatch watch;
    bus_.kill();
    EXPECT_TRUE(watch.hasDaemonLeft());
}

TEST_F(DaemonWatchTest, KnowsOfNoLossWithoutADaemon) {
    daemon_.reset();
    DaemonWatch watch;
    EXPECT_FALSE(watch.hasDaemonLeft());
}

TEST_F(DaemonWatchTest, KnowsOfNoLossWhereItIsNotAnswered) {
    daemon_->answer(PeerError{"org.freedesktop.DBus.Error.AccessDenied", "no"});
    DaemonWatch watch;
    daemon_.reset();
    EXPECT_FALSE(watch.hasDaemonLeft());
}

TEST(DaemonWatch, KnowsOfNoLossWhereTheBusTakesNobodyMore) {
    PrivateBus bus({.limits = {{"max_connections_per_user", 2}}});
    BusPeer daemon(bus);
    sd_bus* opened = nullptr;
    ASSERT_GE(::sd_bus_open_system(&opened), 0);
    const halvane::BusPointer last(opened);
    DaemonWatch watch;
    EXPECT_FALSE(watch.hasDaemonLeft());
}

}  // namespace
