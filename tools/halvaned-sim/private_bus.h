// The simulation's private message bus: a dbus-daemon whose address only the simulation gives out.
#ifndef TOOLS_HALVANED_SIM_PRIVATE_BUS_H
#define TOOLS_HALVANED_SIM_PRIVATE_BUS_H

#include <string>
#include <sys/types.h>

namespace halvane::sim {

// A new folder for temporary files, in TMPDIR or /tmp. It is removed with its content at the end.
class TemporaryFolder {
  public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    // The absolute path.
    const std::string& path() const { return path_; }

  private:
    std::string path_;
};

class PrivateBus {
  public:
    // Returns when the bus accepts connections, from this user alone. Throws std::runtime_error if
    // the bus does not start. The bus ends with this process, whatever ends that.
    PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    // Ends the bus, and removes its folder.
    ~PrivateBus();

    // The address in the form of DBUS_SYSTEM_BUS_ADDRESS.
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
