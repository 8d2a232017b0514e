// A private message bus for the test: a real dbus-daemon that nobody else knows.
#ifndef TESTS_SUPPORT_PRIVATE_BUS_H
#define TESTS_SUPPORT_PRIVATE_BUS_H

#include <map>
#include <optional>
#include <string>
#include <sys/types.h>

#include "tests/support/scoped_environment.h"
#include "tests/support/temporary_folder.h"

namespace halvane::testing {

// While it lives, it is the system bus of this process: DBUS_SYSTEM_BUS_ADDRESS names it.
// REQUIRES: as for ScopedEnvironment, when it is made and when it is destroyed.
class PrivateBus {
  public:
    struct Options {
        // Limits, by their names in the configuration of dbus-daemon: {"max_message_size", 1 <<
        // 20}.
        std::map<std::string, long> limits = {};

        // A service that the bus would start on request, with a program that fails.
        std::string activatableService = {};

        // A file of further policy.
        std::string policyFile = {};

        // If true, the bus allows only what that file allows, like a system bus. Otherwise it
        // allows all but what the file denies.
        bool isStrict = false;
    };

    // Returns when the bus accepts connections. Throws std::runtime_error if it does not start.
    PrivateBus();
    explicit PrivateBus(const Options& options);
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    ~PrivateBus();

    const std::string& address() const { return address_; }

    // Ends the bus at once, as a crash would. Its socket accepts no more connections.
    void kill();

    // Starts again after kill(), at the same address, and returns like the constructor. The earlier
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
