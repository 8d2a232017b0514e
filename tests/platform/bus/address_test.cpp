#include <gtest/gtest.h>
#include <optional>
#include <string>

#include "halvane/platform/bus/address_internal.h"

#include "tests/support/scoped_environment.h"

namespace {

using halvane::sessionBusAddress;
using halvane::systemBusAddress;
using halvane::testing::ScopedEnvironment;

TEST(BusAddress, OfTheSystemIsTheVariablesOrTheWellKnownOne) {
    {
        const ScopedEnvironment named("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/a,b;tcp:host=c");
        EXPECT_EQ(systemBusAddress(), "unix:path=/a,b;tcp:host=c");
    }
    const ScopedEnvironment unnamed("DBUS_SYSTEM_BUS_ADDRESS", std::nullopt);
    EXPECT_EQ(systemBusAddress(), "unix:path=/run/dbus/system_bus_socket");
}

TEST(BusAddress, OfTheSessionIsTheVariablesOrInTheRuntimeFolder) {
    const ScopedEnvironment folder("XDG_RUNTIME_DIR", "/run/user/1000");
    {
        const ScopedEnvironment named("DBUS_SESSION_BUS_ADDRESS", "unix:path=/a");
        EXPECT_EQ(sessionBusAddress(), "unix:path=/a");
    }
    const ScopedEnvironment unnamed("DBUS_SESSION_BUS_ADDRESS", std::nullopt);
    EXPECT_EQ(sessionBusAddress(), "unix:path=/run/user/1000/bus");
    const ScopedEnvironment nowhere("XDG_RUNTIME_DIR", std::nullopt);
    EXPECT_EQ(sessionBusAddress(), std::nullopt);
}

TEST(BusAddress, EscapesTheRuntimeFolder) {
    const ScopedEnvironment unnamed("DBUS_SESSION_BUS_ADDRESS", std::nullopt);
    const ScopedEnvironment folder("XDG_RUNTIME_DIR", "/a-b_c.9/d e,f;g%h=\xC3\xA9");
    EXPECT_EQ(sessionBusAddress(), "unix:path=/a-b_c.9/d%20e%2cf%3bg%25h%3d%c3%a9/bus");
}

}  // namespace
