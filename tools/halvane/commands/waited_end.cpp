#include "tools/halvane/commands/waited_end.h"

namespace halvane::tool {

void WaitedEnd::end(Reason reason) noexcept {
    int notYet = kNotYet;
    if (reason_.compare_exchange_strong(notYet, static_cast<int>(reason))) ended_.signal();
}

WaitedEnd::Reason WaitedEnd::wait() {
    ended_.wait();
    return static_cast<Reason>(reason_.load());
}

}  // namespace halvane::tool
