// A message bus of the simulation's own: a dbus-daemon that nobody knows but who is told its
// address.
#ifndef TOOLS_HALVANED_SIM_PRIVATE_BUS_H
#define TOOLS_HALVANED_SIM_PRIVATE_BUS_H

#include <string>
#include <sys/types.h>

namespace halvane::sim {

// A new folder for temporary files, where TMPDIR says or in /tmp, gone with everything in it at the
// end.
class TemporaryFolder {
  public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    // From the root on.
    const std::string& path() const { return path_; }

  private:
    std::string path_;
};

class PrivateBus {
  public:
    // Returns once the bus takes connections, of this user alone. Throws std::runtime_error where
    // it does not start. Does not outlive this process, whatever ends it.
    PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    // Ends the bus, and removes its folder.
    ~PrivateBus();

    // As DBUS_SYSTEM_BUS_ADDRESS takes it.
    const std::string& address() const { return address_; }

  private:
    std::string listenAddress() const;
    std::string writeConfiguration() const;
    void start(const std::string& configuration);
    void stop();

    const TemporaryFolder folder_;
    pid_t process_ = -1;
    std::string address_;
};

}  // namespace halvane::sim

#endif
