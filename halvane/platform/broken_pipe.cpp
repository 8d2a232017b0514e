#include <ctime>
#include <pthread.h>
#include <sys/stat.h>

#include "halvane/platform/broken_pipe_internal.h"

namespace halvane {

namespace {

sigset_t brokenPipeSignal() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    return signals;
}

bool isBrokenPipePending() {
    sigset_t pending;
    sigpending(&pending);
    return sigismember(&pending, SIGPIPE) == 1;
}

}  // namespace

bool canBreakAsPipe(int descriptor) {
    struct stat status {};
    if (::fstat(descriptor, &status) != 0) return false;
    return S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode);
}

// A signal waits only for a thread that blocks it.
BrokenPipeSignalBlock::BrokenPipeSignalBlock() {
    const sigset_t signal = brokenPipeSignal();
    pthread_sigmask(SIG_BLOCK, &signal, &before_);
    wasPending_ = sigismember(&before_, SIGPIPE) == 1 && isBrokenPipePending();
}

BrokenPipeSignalBlock::~BrokenPipeSignalBlock() {
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

void BrokenPipeSignalBlock::takeBackSignal() {
    if (wasPending_) return;
    const sigset_t signal = brokenPipeSignal();
    const timespec atOnce{};
    sigtimedwait(&signal, nullptr, &atOnce);
}

}  // namespace halvane
