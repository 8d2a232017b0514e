#include <array>
#include <chrono>
#include <ctime>
#include <poll.h>

#include "halvane/platform/os/wait_for_input_internal.h"

namespace halvane {

namespace {

// Null means forever.
const timespec* timeUntil(const WaitEnd& end, timespec& storage) {
    using std::chrono::nanoseconds;
    if (!end) return nullptr;
    constexpr long kNano = 1000000000;
    const auto now = std::chrono::steady_clock::now();
    const auto left = *end > now ? nanoseconds(*end - now).count() : 0;
    storage.tv_sec = left / kNano;
    storage.tv_nsec = left % kNano;
    return &storage;
}

}  // namespace

bool waitForInput(int descriptor, short events, WakeEvent& wake, const WaitEnd& end) {
    std::array<pollfd, 2> polled = {{{descriptor, events, 0}, {wake.descriptor(), POLLIN, 0}}};
    timespec storage{};
    const int count = ::ppoll(polled.data(), polled.size(), timeUntil(end, storage), nullptr);
    if (count > 0 && polled[1].revents != 0) wake.clear();
    return count <= 0 || polled[0].revents != 0;
}

}  // namespace halvane
