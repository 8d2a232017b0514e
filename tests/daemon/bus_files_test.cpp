// The files that a daemon's package installs for the bus.
#include <cerrno>
#include <gtest/gtest.h>
#include <pugixml.hpp>
#include <string>
#include <systemd/sd-bus.h>
#include <unistd.h>

#include "halvane/base/daemon_service.h"
#include "halvane/platform/bus_pointers_internal.h"

#include "tests/support/private_bus.h"

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

// The bus itself judges the file, and the rule that can be seen with one user.
TEST(BusFiles, PolicyLetsRootAloneBeTheDaemon) {
    const PrivateBus bus({.policyFile = fileNamed(".conf")});
    sd_bus* opened = nullptr;
    ASSERT_GE(::sd_bus_open_system(&opened), 0);
    const BusPointer connection(opened);
    const int owned = ::sd_bus_request_name(opened, kDaemonServiceName, 0);
    if (::geteuid() == 0) {
        EXPECT_GE(owned, 0);
    } else {
        EXPECT_EQ(owned, -EACCES);
    }
    EXPECT_GE(::sd_bus_request_name(opened, "org.halvane.other", 0), 0);
}

}  // namespace
