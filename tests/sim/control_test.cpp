// Lines that tell the simulated daemon what to do.
#include "tools/halvaned-sim/control.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

#include "halvane/base/byte_buffer.h"

#include "tools/halvaned-sim/default_world.h"
#include "tools/halvaned-sim/faults.h"

namespace halvane::sim {

namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

class ControlTest : public ::testing::Test {
  protected:
    Simulation simulation_{defaultWorld(), {}, {}, {}};

    std::string refusalOf(std::string_view line) { return control(simulation_, line).refusal; }

    void expectDone(std::string_view line) { EXPECT_EQ(refusalOf(line), "") << line; }

    BusAction::Kind actionOf(std::string_view line) {
        const auto result = control(simulation_, line);
        EXPECT_EQ(result.refusal, "");
        return result.action.value().kind;
    }
};

TEST_F(ControlTest, MovesStations) {
    expectDone("start wlan0");
    simulation_.world.takeNotifications();
    expectDone("join wlan0 02:00:00:00:09:09");
    expectDone(" \tauthorize  wlan0 02-00-00-00-09-09\n");
    expectDone("kick wlan0 020000000909 15");
    expectDone("leave wlan0 02:00:00:00:01:01");
    const ByteBuffer stranger = {2, 0, 0, 0, 9, 9};
    EXPECT_EQ(simulation_.world.takeNotifications(),
              (std::vector<Notification>{{Happening::Joined, "wlan0", stranger},
                                         {Happening::Authorized, "wlan0", stranger},
                                         {Happening::Kicked, "wlan0", stranger},
                                         {Happening::Left, "wlan0", {2, 0, 0, 0, 1, 1}}}));
    EXPECT_EQ(simulation_.world.clients().back().deauthReason(), 15u);
    expectDone("join wlan0 02:00:00:00:09:09");
    expectDone("kick wlan0 02:00:00:00:09:09");
    EXPECT_EQ(simulation_.world.clients().back().deauthReason(), 1u);
    simulation_.world.takeNotifications();
    expectDone("burst wlan0 3");
    EXPECT_EQ(simulation_.world.takeNotifications().size(), 3u);
    expectDone("stop wlan0");
    EXPECT_EQ(simulation_.world.takeNotifications().size(), 4u);
}

TEST_F(ControlTest, SaysWhatItCannotDo) {
    EXPECT_EQ(refusalOf(""), "the line is empty");
    EXPECT_EQ(refusalOf(" \n"), "the line is empty");
    EXPECT_EQ(refusalOf("dance"), "'dance' is not known; see 'help'");
    EXPECT_EQ(refusalOf("join wlan0"), "the line should be: join IF MAC");
    EXPECT_EQ(refusalOf("show all"), "the line should be: show");
    EXPECT_EQ(refusalOf("kick wlan0 x 1 2"), "the line should be: kick IF MAC [REASON]");
    EXPECT_EQ(refusalOf("join wlan0 02:00"), "'02:00' is not an address of 6 bytes");
    EXPECT_EQ(refusalOf("kick wlan0 x"), "'x' is not an address of 6 bytes");
    EXPECT_EQ(refusalOf("kick wlan0 020000000101 65536"),
              "'65536' is not a number, or is too large");
    EXPECT_EQ(refusalOf("burst wlan0 -1"), "'-1' is not a number, or is too large");
    EXPECT_EQ(refusalOf("join wlan0 020000000101"), "the interface hosts no BSS");
    EXPECT_EQ(refusalOf("start wlan7"), "there is no such interface");
    EXPECT_EQ(refusalOf("start wlan1"), "the interface's role is not AP");
    EXPECT_EQ(refusalOf("status enable x"), "'x' is not a number, or is too large");
    EXPECT_EQ(refusalOf("status event 1"), "'status' does not apply to 'event'");
    EXPECT_EQ(refusalOf("silent dance"), "'silent' does not apply to 'dance'");
    EXPECT_EQ(refusalOf("garbled enable"), "'garbled' does not apply to 'enable'");
    EXPECT_EQ(refusalOf("normal dance"), "'dance' is not a command");
    EXPECT_EQ(refusalOf("spoof lost wlan0 020000000101"),
              "'lost' is not authorized, joined, kicked or left");
    EXPECT_EQ(refusalOf("spoof left wlan0 x"), "'x' is not an address of 6 bytes");
    EXPECT_THAT(simulation_.world.takeNotifications(), IsEmpty());
    EXPECT_EQ(simulation_.faults.text(), "");
}

TEST_F(ControlTest, SetsFaultsAndTakesThemBack) {
    expectDone("status enable -6700");
    expectDone("silent event");
    expectDone("error disable");
    expectDone("gone role");
    expectDone("garbled clientList");
    expectDone("missing queryLogging");
    expectDone("mistyped subscribe");
    EXPECT_EQ(simulation_.faults.text(),
              "clientList: garbled\ndisable: error\nenable: status -6700\nevent: silent\n"
              "queryLogging: missing\nrole: gone\nsubscribe: mistyped\n");
    EXPECT_EQ(simulation_.faults.of("enable").status, -6700);
    expectDone("normal event");
    EXPECT_EQ(simulation_.faults.of("event").fault, Fault::None);
    EXPECT_EQ(simulation_.faults.of("role").fault, Fault::Gone);
    expectDone("normal");
    EXPECT_EQ(simulation_.faults.text(), "");
}

TEST_F(ControlTest, LeavesTheBusToOthers) {
    EXPECT_EQ(actionOf("drop"), BusAction::Kind::Drop);
    EXPECT_EQ(actionOf("take"), BusAction::Kind::Take);
    EXPECT_EQ(actionOf("restart"), BusAction::Kind::Restart);
    EXPECT_EQ(actionOf("quit"), BusAction::Kind::Quit);
    EXPECT_EQ(actionOf("spoof kicked wlan7 02:00:00:00:09:09"), BusAction::Kind::Spoof);
    EXPECT_EQ(control(simulation_, "spoof kicked wlan7 02:00:00:00:09:09").action->forged,
              (Notification{Happening::Kicked, "wlan7", {2, 0, 0, 0, 9, 9}}));
}

TEST_F(ControlTest, ShowsWhatThereIs) {
    simulation_.subscribers.add(":1.5");
    expectDone("start wlan0");
    expectDone("silent enable");
    simulation_.world.disable("wlan1");
    EXPECT_EQ(control(simulation_, "show").text,
              "wlan0: role AP, enabled, BSS up, configurations 1, stations 2\n"
              "wlan1: role STA, disabled, no BSS, configurations 0, stations 0\n"
              "subscribers: :1.5\n"
              "enable: silent\n");
}

TEST_F(ControlTest, HelpsWithEveryLine) {
    const std::string help = control(simulation_, "help").text;
    EXPECT_EQ(help, controlHelp());
    EXPECT_THAT(help, HasSubstr("kick IF MAC [REASON]      the station is sent away\n"));
    EXPECT_THAT(help, HasSubstr("\nquit                      end the simulation\n"));
}

}  // namespace

}  // namespace halvane::sim
