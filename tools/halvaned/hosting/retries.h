// When networks that could not be started are tried again: after pauses that grow.
//
// Threads: the thread that runs the loop.
#ifndef TOOLS_HALVANED_HOSTING_RETRIES_H
#define TOOLS_HALVANED_HOSTING_RETRIES_H

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <systemd/sd-event.h>

namespace halvane::hosting {

class Retries {
  public:
    using Try = std::function<void(const std::string& interface)>;

    // Pauses are in microseconds. `again` may call later() and forget().
    Retries(sd_event* loop, std::uint64_t firstPause, std::uint64_t longestPause, Try again);
    Retries(const Retries&) = delete;
    Retries& operator=(const Retries&) = delete;
    ~Retries();

    // Calls `again` once after a pause: the first one, or twice the interface's last one. While it
    // waits already nothing changes.
    void later(const std::string& interface);

    // The interface's next pause is the first one, and it does not wait any more.
    void forget(const std::string& interface);

  private:
    struct Waiting;

    sd_event* const loop_;
    const std::uint64_t firstPause_;
    const std::uint64_t longestPause_;
    const Try again_;
    std::map<std::string, std::unique_ptr<Waiting>> waiting_;
};

}  // namespace halvane::hosting

#endif
