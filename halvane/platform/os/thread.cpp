#include <algorithm>
#include <csignal>
#include <cstddef>
#include <new>
#include <pthread.h>
#include <system_error>
#include <utility>

#include "halvane/platform/os/thread_internal.h"

namespace halvane {

namespace {

constexpr std::size_t kThreadNameCapacity = 15;

// While an object lives, signals are blocked on the calling thread and on threads that it starts.
// Signals that a fault of the thread itself raises stay unblocked: no other thread can receive
// them.
class SignalsBlocked {
  public:
    SignalsBlocked() {
        sigset_t blocked;
        sigfillset(&blocked);
        for (const int fault : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGSYS}) {
            sigdelset(&blocked, fault);
        }
        ::pthread_sigmask(SIG_BLOCK, &blocked, &before_);
    }
    SignalsBlocked(const SignalsBlocked&) = delete;
    SignalsBlocked& operator=(const SignalsBlocked&) = delete;
    ~SignalsBlocked() { ::pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

  private:
    sigset_t before_{};
};

}  // namespace

std::string threadName(std::string_view label) {
    label.remove_prefix(label.size() - std::min(label.size(), kThreadNameCapacity));
    while (!label.empty() && (static_cast<unsigned char>(label.front()) & 0xC0) == 0x80) {
        label.remove_prefix(1);
    }
    return std::string(label);
}

std::thread startThread(std::string_view label, std::function<void()> run) {
    const SignalsBlocked blocked;
    try {
        return std::thread([name = threadName(label), run = std::move(run)] {
            ::pthread_setname_np(::pthread_self(), name.c_str());
            run();
        });
    } catch (const std::system_error&) {
        throw std::bad_alloc();
    }
}

}  // namespace halvane
