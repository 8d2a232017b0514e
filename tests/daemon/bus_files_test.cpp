// The files that a daemon's package installs for the bus.
#include <cerrno>
#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <pugixml.hpp>
#include <pwd.h>
#include <string>
#include <string_view>
#include <systemd/sd-bus.h>
#include <unistd.h>

#include "halvane/model/daemon_service.h"
#include "halvane/platform/bus/pointers_internal.h"

#include "tests/support/bus_peer.h"
#include "tests/support/other_user.h"
#include "tests/support/private_bus.h"
#include "tests/support/scoped_environment.h"
#include "tests/support/temporary_folder.h"

using namespace halvane;
using namespace halvane::testing;

namespace {

std::string fileNamed(const char* extension) {
    return std::string(HALVANE_BUS_DATA "/") + kDaemonServiceName + extension;
}

std::string attributeOf(const pugi::xml_document& document, const char* path) {
    return document.select_node(path).attribute().value();
}

TEST(BusFiles, IntrospectionDataTellsOfTheOneInterface) {
    pugi::xml_document document;
    ASSERT_TRUE(document.load_file(fileNamed(".xml").c_str()));
    EXPECT_EQ(attributeOf(document, "/node/@name"), "/org/halvane/halvaned");
    EXPECT_EQ(attributeOf(document, "/node/interface/@name"), kDaemonServiceName);
    EXPECT_EQ(document.select_nodes("/node/interface").size(), 1u);
    EXPECT_EQ(attributeOf(document, "//method[@name='Request']/arg[@direction='in']/@type"),
              "a{sv}");
    EXPECT_EQ(attributeOf(document, "//method[@name='Request']/arg[@direction='out']/@type"),
              "a{sv}");
    EXPECT_EQ(attributeOf(document, "//signal[@name='Event']/arg/@type"), "a{sv}");
}

// What a call of the connection comes to: the name of the error, or nothing.
std::string errorOf(sd_bus* bus, const char* interface, const char* member) {
    sd_bus_message* call = nullptr;
    EXPECT_GE(::sd_bus_message_new_method_call(bus, &call, kDaemonServiceName,
                                               "/org/halvane/halvaned", interface, member),
              0);
    const BusMessagePointer owner(call);
    if (std::string_view(member) == "Request") {
        EXPECT_GE(::sd_bus_message_append(call, "a{sv}", 1, "command", "s", "clientList"), 0);
    }
    sd_bus_error error{};
    sd_bus_message* reply = nullptr;
    ::sd_bus_call(bus, call, 0, &error, &reply);
    const BusMessagePointer replyOwner(reply);
    const std::string name = error.name != nullptr ? error.name : "";
    ::sd_bus_error_free(&error);
    return name;
}

// What somebody may do.
struct Rights {
    bool mayConnect = false;
    int owned = 0;  // 0 or above, or a negative errno
    std::string request, ping;
};

Rights rightsOfThisThread() {
    Rights rights;
    sd_bus* opened = nullptr;
    rights.mayConnect = ::sd_bus_open_system(&opened) >= 0;
    const BusPointer connection(opened);
    if (!rights.mayConnect) return rights;
    rights.owned = ::sd_bus_request_name(opened, kDaemonServiceName, SD_BUS_NAME_QUEUE);
    rights.request = errorOf(opened, kDaemonServiceName, "Request");
    rights.ping = errorOf(opened, "org.freedesktop.DBus.Peer", "Ping");
    return rights;
}

constexpr const char kDenied[] = "org.freedesktop.DBus.Error.AccessDenied";

// The bus itself judges the file, where all is allowed otherwise, and where nothing is. The rules
// of a group are seen with one that every machine has.
class BusPolicy : public ::testing::TestWithParam<bool> {
  protected:
    const TemporaryFolder folder_;
    const PrivateBus bus_{{.policyFile = policyFor("root"), .isStrict = GetParam()}};

    // The file, with another group's name in it.
    std::string policyFor(const std::string& group) const {
        pugi::xml_document policy;
        EXPECT_TRUE(policy.load_file(fileNamed(".conf").c_str(), pugi::parse_full));
        auto attribute = policy.select_node("//policy/@group").attribute();
        EXPECT_STREQ(attribute.value(), "netdev");
        attribute.set_value(group.c_str());
        const std::string path = (folder_.path() / "policy.conf").string();
        EXPECT_TRUE(policy.save_file(path.c_str()));
        return path;
    }

    // The rights of the user nobody as a member of this group alone. Absent if the test cannot find
    // out here.
    std::optional<Rights> rightsOfNobody(gid_t group) const {
        const passwd* const nobody = ::getpwnam("nobody");
        if (nobody == nullptr) return std::nullopt;
        std::optional<Rights> rights;
        runAs(nobody->pw_uid, group, [&] { rights = rightsOfThisThread(); });
        return rights;
    }
};

TEST_P(BusPolicy, LetsRootAloneBeTheDaemon) {
    sd_bus* opened = nullptr;
    ASSERT_GE(::sd_bus_open_system(&opened), 0);
    const BusPointer connection(opened);
    const int owned = ::sd_bus_request_name(opened, kDaemonServiceName, 0);
    if (::geteuid() == 0) {
        EXPECT_GE(owned, 0);
    } else {
        EXPECT_EQ(owned, -EACCES);
    }
}

// Which leaves that to the rest of the system's policy.
TEST_P(BusPolicy, SaysNothingOfTheNameThatControlsASimulation) {
    sd_bus* opened = nullptr;
    ASSERT_GE(::sd_bus_open_system(&opened), 0);
    const BusPointer connection(opened);
    const int owned = ::sd_bus_request_name(opened, "org.halvane.halvaned.Simulation", 0);
    if (GetParam()) {
        EXPECT_EQ(owned, -EACCES);
    } else {
        EXPECT_GE(owned, 0);
    }
}

TEST_P(BusPolicy, LetsRootAndTheGroupSendRequests) {
    if (::geteuid() != 0) GTEST_SKIP() << "there is no daemon but root's";
    const BusPeer daemon(bus_);
    EXPECT_EQ(rightsOfThisThread().request, "");
    const auto rights = rightsOfNobody(0);
    if (!rights) GTEST_SKIP() << "the test cannot be another user";
    ASSERT_TRUE(rights->mayConnect);
    EXPECT_EQ(rights->request, "");
    EXPECT_EQ(rights->ping, "");
    EXPECT_EQ(rights->owned, -EACCES);
}

TEST_P(BusPolicy, LetsOthersSendNone) {
    if (::geteuid() != 0) GTEST_SKIP() << "there is no daemon but root's";
    const BusPeer daemon(bus_);
    constexpr gid_t kStrangers = 65534;
    const auto rights = rightsOfNobody(kStrangers);
    if (!rights) GTEST_SKIP() << "the test cannot be another user";
    ASSERT_TRUE(rights->mayConnect);
    EXPECT_EQ(rights->request, kDenied);
    EXPECT_EQ(rights->ping, "");
    EXPECT_EQ(rights->owned, -EACCES);
}

INSTANTIATE_TEST_SUITE_P(BusFiles, BusPolicy, ::testing::Bool());

}  // namespace
