#include "tools/halvane/commands/signal_queue.h"

#include <new>
#include <sys/signalfd.h>
#include <unistd.h>

namespace halvane::tool {

SignalQueue::SignalQueue(std::initializer_list<int> signals) {
    sigset_t taken;
    sigemptyset(&taken);
    for (const int signal : signals) {
        struct sigaction action {};
        ::sigaction(signal, nullptr, &action);
        if (action.sa_handler != SIG_IGN) sigaddset(&taken, signal);
    }
    ::pthread_sigmask(SIG_BLOCK, &taken, &before_);
    descriptor_ = ::signalfd(-1, &taken, SFD_NONBLOCK | SFD_CLOEXEC);
    if (descriptor_ >= 0) return;
    ::pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    throw std::bad_alloc();
}

SignalQueue::~SignalQueue() {
    ::close(descriptor_);
    ::pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

std::optional<int> SignalQueue::take() {
    signalfd_siginfo taken{};
    if (::read(descriptor_, &taken, sizeof taken) != sizeof taken) return std::nullopt;
    return static_cast<int>(taken.ssi_signo);
}

}  // namespace halvane::tool
