#include "tools/halvaned/hosting/retries.h"

#include <algorithm>
#include <utility>

#include "halvane/platform/bus/event_loop_internal.h"

#include "tools/halvaned/hostapd/event_source.h"

namespace halvane::hosting {

struct Retries::Waiting {
    Waiting(Retries& retries, std::string name) : owner(retries), interface(std::move(name)) {}

    // forget() destroys this, so nothing may follow.
    void end() {
        timer.reset();
        const std::string copy = interface;
        owner.again_(copy);
    }

    Retries& owner;
    const std::string interface;
    std::uint64_t pause = 0;  // the last one
    EventSourcePointer timer = {};
};

Retries::Retries(sd_event* loop, std::uint64_t firstPause, std::uint64_t longestPause, Try again)
    : loop_(loop), firstPause_(firstPause), longestPause_(longestPause), again_(std::move(again)) {}

Retries::~Retries() = default;

void Retries::later(const std::string& interface) {
    auto& waiting = waiting_[interface];
    if (!waiting) waiting = std::make_unique<Waiting>(*this, interface);
    if (waiting->timer) return;
    waiting->pause =
        waiting->pause == 0 ? firstPause_ : std::min(2 * waiting->pause, longestPause_);
    waiting->timer = timerOf<&Waiting::end>(loop_, waiting->pause, waiting.get());
}

void Retries::forget(const std::string& interface) {
    waiting_.erase(interface);
}

}  // namespace halvane::hosting
