#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "halvane/platform/bus/service_owner_internal.h"

#include "tests/support/bus_peer.h"
#include "tests/support/service_client.h"

namespace {

using halvane::ServiceEvent;
using halvane::testing::eventName;
using halvane::testing::ipcMessage;
using ::testing::ElementsAre;

class ServiceOwner : public ::testing::Test {
  protected:
    void receive(const char* sender, const char* name) {
        owner_.received(sender, [name] { return ipcMessage({{"name", name}}); });
    }

    std::vector<std::string> events_;
    halvane::ServiceOwner owner_{
        [this](const ServiceEvent& event) { events_.push_back(eventName(event)); }};
};

TEST_F(ServiceOwner, IsWhoTheBusNames) {
    owner_.answered(":1.5");
    receive(":1.5", "true");
    receive(":1.6", "forged");
    receive("", "anonymous");
    EXPECT_THAT(events_, ElementsAre("appeared", "true"));
}

TEST_F(ServiceOwner, IsNobodyWhereTheBusNamesNobody) {
    owner_.answered("");
    receive(":1.5", "forged");
    receive("", "anonymous");
    EXPECT_THAT(events_, ElementsAre());
}

TEST_F(ServiceOwner, ComesAndGoes) {
    owner_.answered("");
    owner_.changed("", ":1.5");
    receive(":1.5", "first");
    owner_.changed(":1.5", "");
    receive(":1.5", "late");
    owner_.changed("", ":1.6");
    receive(":1.6", "second");
    EXPECT_THAT(events_, ElementsAre("appeared", "first", "interrupted", "appeared", "second"));
}

TEST_F(ServiceOwner, MayBeReplaced) {
    owner_.answered(":1.5");
    owner_.changed(":1.5", ":1.6");
    receive(":1.5", "late");
    receive(":1.6", "true");
    EXPECT_THAT(events_, ElementsAre("appeared", "interrupted", "appeared", "true"));
}

TEST_F(ServiceOwner, AloneHasItsMessagesRead) {
    const auto unread = []() -> std::optional<halvane::IPCMessage> {
        ADD_FAILURE() << "read";
        return std::nullopt;
    };
    owner_.received(":1.5", unread);
    owner_.answered(":1.5");
    owner_.received(":1.6", unread);
    owner_.received("", unread);
    owner_.changed(":1.5", "");
    owner_.received(":1.5", unread);
    owner_.received("", unread);
}

TEST_F(ServiceOwner, IsNotHeardWhereItsMessageCannotBeRead) {
    owner_.answered(":1.5");
    owner_.received(":1.5", [] { return std::nullopt; });
    receive(":1.5", "true");
    EXPECT_THAT(events_, ElementsAre("appeared", "true"));
}

TEST_F(ServiceOwner, IsToldByAChangeThatComesBeforeTheAnswer) {
    owner_.changed(":1.5", ":1.6");
    receive(":1.5", "of the old");
    receive(":1.6", "of the new");
    owner_.answered(":1.6");
    EXPECT_THAT(events_, ElementsAre("appeared", "interrupted", "appeared", "of the new"));
}

TEST_F(ServiceOwner, MayGoBeforeTheAnswer) {
    owner_.changed(":1.5", "");
    owner_.answered("");
    EXPECT_THAT(events_, ElementsAre("appeared", "interrupted"));
}

TEST_F(ServiceOwner, MayComeBeforeTheAnswer) {
    receive(":1.5", "forged");
    owner_.changed("", ":1.5");
    receive(":1.5", "true");
    owner_.answered(":1.5");
    EXPECT_THAT(events_, ElementsAre("appeared", "true"));
}

}  // namespace
