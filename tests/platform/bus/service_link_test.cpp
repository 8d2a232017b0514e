#include <cstddef>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "halvane/model/daemon_service.h"
#include "halvane/platform/bus/address_internal.h"
#include "halvane/platform/bus/service_link_internal.h"

#include "tests/support/scripted_bus.h"
#include "tests/support/service_client.h"

namespace {

using halvane::kDaemonServiceName;
using halvane::ServiceEvent;
using halvane::ServiceNames;
using halvane::testing::eventName;
using halvane::testing::ScriptedBus;
using ::testing::ElementsAre;

constexpr const char* kOwner = ":1.5";

class ServiceLink : public ::testing::Test {
  protected:
    ServiceLink() {
        bus_.accept();
        serve(4);
    }

    // Runs both sides until the client has called that many methods and neither side has anything
    // left to do.
    void serve(std::size_t calls) {
        while (link_->process(1) || bus_.process() || bus_.members().size() < calls) {
        }
    }

    // Admits the client. From then on it learns of changes of the name's owner.
    void letIn() {
        bus_.answer(0, "s", ":1.1");
        bus_.answer(1, "");
        serve(4);
    }

    // Replies with the owner's name. The client receives events from now on.
    void nameOwner() {
        bus_.answer(2, "s", kOwner);
        bus_.answer(3, "");
    }
    void refuseOwner(const char* error) {
        bus_.answerError(2, error);
        bus_.answer(3, "");
    }

    void sendEvent(const char* sender, const char* name) {
        bus_.signal(sender, {"/org/halvane/halvaned", kDaemonServiceName, "Event"}, "a{sv}", 1,
                    "name", "s", name);
        serve(0);
    }

    ScriptedBus bus_;
    std::vector<std::string> events_;
    std::unique_ptr<halvane::ServiceLink> link_ = halvane::ServiceLink::open(
        *ServiceNames::of(kDaemonServiceName), halvane::systemBusAddress(),
        [this](const ServiceEvent& event) { events_.push_back(eventName(event)); });
};

TEST_F(ServiceLink, WaitsForTheBusWithoutATimeLimit) {
    EXPECT_EQ(link_->deadline(), halvane::ServiceLink::kNever);
    letIn();
    EXPECT_EQ(link_->deadline(), halvane::ServiceLink::kNever);
    EXPECT_TRUE(link_->isOpen());
}

TEST_F(ServiceLink, AsksForTheOwnerBetweenChangesAndEvents) {
    EXPECT_THAT(bus_.members(), ElementsAre("Hello", "AddMatch", "GetNameOwner", "AddMatch"));
}

TEST_F(ServiceLink, FindsTheServiceWhereTheBusNamesItsOwner) {
    letIn();
    sendEvent(kOwner, "too early to be true");
    nameOwner();
    sendEvent(kOwner, "true");
    sendEvent(":1.6", "forged");
    EXPECT_THAT(events_, ElementsAre("appeared", "true"));
}

TEST_F(ServiceLink, FindsNobodyWhereTheBusKnowsOfNoOwner) {
    letIn();
    refuseOwner("org.freedesktop.DBus.Error.NameHasNoOwner");
    sendEvent(kOwner, "forged");
    EXPECT_THAT(events_, ElementsAre());
    bus_.tellOwner(kDaemonServiceName, "", kOwner);
    sendEvent(kOwner, "true");
    EXPECT_THAT(events_, ElementsAre("appeared", "true"));
}

TEST_F(ServiceLink, KeepsTheOwnerThatItKnowsWhereTheBusRefusesToTell) {
    letIn();
    bus_.tellOwner(kDaemonServiceName, "", kOwner);
    refuseOwner("org.freedesktop.DBus.Error.AccessDenied");
    sendEvent(kOwner, "true");
    EXPECT_THAT(events_, ElementsAre("appeared", "true"));
}

TEST_F(ServiceLink, LearnsTheOwnerOfAChangeWhereTheBusRefusesToTell) {
    letIn();
    refuseOwner("org.freedesktop.DBus.Error.AccessDenied");
    sendEvent(kOwner, "of whom nobody knows");
    bus_.tellOwner(kDaemonServiceName, kOwner, ":1.6");
    sendEvent(":1.6", "true");
    EXPECT_THAT(events_, ElementsAre("appeared", "interrupted", "appeared", "true"));
}

TEST_F(ServiceLink, FailsWhereTheBusRefusesItsMatches) {
    letIn();
    bus_.answerError(3, "org.freedesktop.DBus.Error.AccessDenied");
    serve(0);
    EXPECT_FALSE(link_->isOpen());
}

}  // namespace
