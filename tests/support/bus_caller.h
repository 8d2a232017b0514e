// A client of the daemon that is written from its protocol alone, on sd-bus, and shares no code
// with the library's.
#ifndef TESTS_SUPPORT_BUS_CALLER_H
#define TESTS_SUPPORT_BUS_CALLER_H

#include <cstdint>
#include <ctime>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <systemd/sd-bus.h>
#include <variant>
#include <vector>

namespace halvane::testing {

using WireData = std::vector<std::uint8_t>;

// The types on the wire: "s", "x", "b" and "ay".
using WireValue = std::variant<std::string, std::int64_t, bool, WireData>;
using WireMessage = std::map<std::string, WireValue>;

inline WireMessage command(const std::string& name) {
    return {{"command", name}};
}
inline WireMessage command(const std::string& name, const std::string& interface) {
    return {{"command", name}, {"interface", interface}};
}

// A reply, or the name of the error that came instead.
struct WireReply {
    std::string error;
    WireMessage message;
    std::string sender;

    std::int64_t status() const { return std::get<std::int64_t>(message.at("status")); }
    std::string text(const std::string& key) const;  // of data
};

struct WireEvent {
    std::string sender;
    WireMessage message;

    // The last part of the command and the values: "joined wlan0 020000000101".
    std::string summary() const;
};

// One thread may use it. A call waits for its reply without a limit.
class BusCaller {
  public:
    // Connects to the bus, and listens to events from any sender.
    explicit BusCaller(const std::string& address);
    BusCaller(const BusCaller&) = delete;
    BusCaller& operator=(const BusCaller&) = delete;

    const std::string& name() const { return name_; }

    WireReply request(const WireMessage& message);

    // The same without waiting. The result points to the reply once it has arrived.
    std::shared_ptr<WireReply> requestLater(const WireMessage& message);
    void waitFor(const WireReply& later);  // until it has a message, a sender or an error

    // Calls any method. The method has no argument or one text, and returns a text or nothing.
    std::string call(const char* destination, const char* path, const char* interface,
                     const char* member, const std::string& text = {});

    // Sends a control line. Throws std::runtime_error with the message if it is refused.
    std::string control(const std::string& line);

    // Waits for the next event.
    WireEvent nextEvent();
    // Waits for `count` events, and returns their summaries.
    std::vector<std::string> nextEvents(std::size_t count);
    // The events so far. They include all that were sent before the reply to the last request or
    // line.
    std::vector<std::string> eventsSoFar();

    // Returns the process that owns a name.
    pid_t processOf(const char* name);
    std::string ownerOf(const char* name);  // empty for none
    // Waits until somebody owns the name.
    void waitUntilOwned(const std::string& name);
    // Waits until nobody owns the unique name.
    void waitUntilGone(const std::string& name);

    sd_bus* bus() const { return bus_.get(); }

  private:
    struct Closer {
        void operator()(sd_bus* bus) const { ::sd_bus_flush_close_unref(bus); }
    };
    void processUntil(const std::function<bool()>& isDone);
    static int eventArrived(sd_bus_message*, void* caller, sd_bus_error*);
    static int nameChanged(sd_bus_message*, void* caller, sd_bus_error*);

    std::string name_;
    std::vector<WireEvent> events_;
    std::size_t seen_ = 0;
    std::vector<std::string> gone_, owned_;
    std::unique_ptr<sd_bus, Closer> bus_;
};

}  // namespace halvane::testing

#endif
