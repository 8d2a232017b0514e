// A message bus of the test's own: a real dbus-daemon that nobody else knows.
#ifndef TESTS_SUPPORT_PRIVATE_BUS_H
#define TESTS_SUPPORT_PRIVATE_BUS_H

#include <map>
#include <optional>
#include <string>
#include <sys/types.h>

#include "tests/support/scoped_environment.h"
#include "tests/support/temporary_folder.h"

namespace halvane::testing {

// While one is there it is the system's bus for this process: DBUS_SYSTEM_BUS_ADDRESS names it.
// REQUIRES: as for ScopedEnvironment, when it is made and when it is destroyed.
class PrivateBus {
  public:
    struct Options {
        // By the names that dbus-daemon's configuration has for them: {"max_message_size", 1 <<
        // 20}.
        std::map<std::string, long> limits = {};

        // A service that the bus would start if it were asked to, with a program that fails.
        std::string activatableService = {};

        // A file of further policy.
        std::string policyFile = {};

        // Whether nobody may do anything but what that file allows, as on a system's bus; else
        // anybody may do anything but what it denies.
        bool isStrict = false;
    };

    // Returns once the bus takes connections. Throws std::runtime_error where it does not start.
    PrivateBus();
    explicit PrivateBus(const Options& options);
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    ~PrivateBus();

    const std::string& address() const { return address_; }

    // Ends the bus at once, as a crash would. Its socket takes nobody any more.
    void kill();

    // Begins anew after kill(), at the same address; returns as the constructor does. Its
    // connections are gone.
    void restart();

  private:
    std::string listenAddress() const;
    std::string writeConfiguration(const Options& options) const;
    void start(const std::string& configuration);

    const TemporaryFolder folder_;
    std::string configuration_;
    pid_t process_ = -1;
    std::string address_;
    std::optional<ScopedEnvironment> environment_;
};

}  // namespace halvane::testing

#endif
