// The simulation's private message bus: a dbus-daemon whose address only the simulation gives out.
#ifndef TOOLS_HALVANED_SIM_PRIVATE_BUS_H
#define TOOLS_HALVANED_SIM_PRIVATE_BUS_H

#include <memory>
#include <string>
#include <sys/types.h>
#include <utility>

#include "halvane/base/result.h"

namespace halvane::sim {

// A new folder for temporary files, in TMPDIR or /tmp. It is removed with its content at the end.
class TemporaryFolder {
  public:
    static Result<TemporaryFolder, std::string> make();
    TemporaryFolder(TemporaryFolder&& other) noexcept : path_(std::exchange(other.path_, {})) {}
    TemporaryFolder& operator=(TemporaryFolder&&) = delete;
    ~TemporaryFolder();

    // The absolute path.
    const std::string& path() const { return path_; }

  private:
    explicit TemporaryFolder(std::string path) : path_(std::move(path)) {}

    std::string path_;  // empty after a move
};

class PrivateBus {
  public:
    // Returns when the bus accepts connections, from this user alone, or returns why it does not
    // start. The bus ends with this process, whatever ends that.
    static Result<std::unique_ptr<PrivateBus>, std::string> start();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    // Ends the bus, and removes its folder.
    ~PrivateBus();

    // The address in the form of DBUS_SYSTEM_BUS_ADDRESS.
    const std::string& address() const { return address_; }

  private:
    explicit PrivateBus(TemporaryFolder folder) : folder_(std::move(folder)) {}

    std::string listenAddress() const;
    bool writeConfiguration(const std::string& path) const;
    Result<void, std::string> run(const std::string& configuration);
    void stop();

    const TemporaryFolder folder_;
    pid_t process_ = -1;
    std::string address_;
};

}  // namespace halvane::sim

#endif
