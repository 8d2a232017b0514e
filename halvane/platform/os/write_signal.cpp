#include <algorithm>
#include <cerrno>
#include <ctime>
#include <iterator>
#include <pthread.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include "halvane/platform/os/write_signal_internal.h"

namespace halvane {

namespace {

struct WriteSignal {
    int error;
    int signal;
};
constexpr WriteSignal kWriteSignals[] = {{EPIPE, SIGPIPE}, {EFBIG, SIGXFSZ}};

sigset_t writeSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const auto& [error, signal] : kWriteSignals) sigaddset(&signals, signal);
    return signals;
}

// A signal can be pending only if the thread blocks it.
void removeWaiting(sigset_t& signals, const sigset_t& blocked) {
    const auto isBlocked = [&](int signal) { return sigismember(&blocked, signal) == 1; };
    if (std::ranges::none_of(kWriteSignals, isBlocked, &WriteSignal::signal)) return;
    sigset_t pending;
    sigpending(&pending);
    for (const auto& [error, signal] : kWriteSignals) {
        if (sigismember(&pending, signal) == 1) sigdelset(&signals, signal);
    }
}

}  // namespace

bool canRaiseWriteSignal(int descriptor) {
    struct stat status {};
    if (::fstat(descriptor, &status) != 0) return false;
    if (S_ISREG(status.st_mode)) return isFileSizeLimited();
    return S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode);
}

bool isFileSizeLimited() {
    rlimit limit{};
    return ::getrlimit(RLIMIT_FSIZE, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY;
}

WriteSignalBlock::WriteSignalBlock() : own_(writeSignals()) {
    pthread_sigmask(SIG_BLOCK, &own_, &before_);
    removeWaiting(own_, before_);
}

WriteSignalBlock::~WriteSignalBlock() {
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

void WriteSignalBlock::takeBackSignal(int error) {
    const auto* const row = std::ranges::find(kWriteSignals, error, &WriteSignal::error);
    if (row == std::end(kWriteSignals) || sigismember(&own_, row->signal) != 1) return;
    sigset_t raised;
    sigemptyset(&raised);
    sigaddset(&raised, row->signal);
    const timespec atOnce{};
    sigtimedwait(&raised, nullptr, &atOnce);
    errno = error;
}

}  // namespace halvane
