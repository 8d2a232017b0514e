#include "tools/halvane/waited_end.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/signalfd.h>
#include <system_error>
#include <unistd.h>

namespace halvane::tool {

namespace {

constexpr int kNotYet = -1;

}  // namespace

WaitedEnd::WaitedEnd() : reason_(kNotYet) {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    ::pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    signals_ = ::signalfd(-1, &signals, SFD_CLOEXEC);
    ended_ = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (signals_ >= 0 && ended_ >= 0) return;
    const int error = errno;
    if (signals_ >= 0) ::close(signals_);
    throw std::system_error(error, std::generic_category(), "waiting for signals");
}

WaitedEnd::~WaitedEnd() {
    ::close(signals_);
    ::close(ended_);
}

void WaitedEnd::end(Reason reason) noexcept {
    int notYet = kNotYet;
    if (!reason_.compare_exchange_strong(notYet, static_cast<int>(reason))) return;
    ::eventfd_write(ended_, 1);  // cannot fail: it is the only one
}

WaitedEnd::Reason WaitedEnd::wait() {
    std::array<pollfd, 2> waited = {{{signals_, POLLIN, 0}, {ended_, POLLIN, 0}}};
    while (::poll(waited.data(), waited.size(), -1) < 0 && errno == EINTR) continue;
    end(Reason::Signal);
    return static_cast<Reason>(reason_.load());
}

}  // namespace halvane::tool
