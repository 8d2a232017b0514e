#include <atomic>
#include <cerrno>
#include <chrono>
#include <memory>
#include <new>
#include <pthread.h>
#include <vector>

#include "halvane/platform/os/delayed_call_internal.h"
#include "halvane/utils/log/flush_internal.h"
#include "halvane/utils/log/lock_internal.h"

namespace halvane::logging {

namespace {

using namespace std::chrono_literals;

constexpr auto kDelay = 1s;
// A thread may hold the lock for long, for example in a callback. stopFlushing() and the end of the
// process wait no longer than that.
constexpr auto kPatience = 100ms;
constexpr auto kPatienceAtEnd = 1000ms;

// Guarded by the lock, except for the atomic members.
struct Flushing {
    std::vector<LogBuffer*> buffers;
    std::unique_ptr<DelayedCall> timer;  // once something was buffered
    bool isScheduled = false;
    std::atomic<bool> isUsed = false;    // something was buffered, some time
    std::atomic<bool> hasEnded = false;  // nothing is buffered any more
};

// Never destroyed: the process may log until its very end.
union Immortal {
    Immortal() : flushing() {}
    ~Immortal() {}
    Flushing flushing;
};

Flushing& flushing() {
    static Immortal immortal;
    return immortal.flushing;
}

// Returns whether all text is written.
bool flushAll() {
    bool isAllWritten = true;
    for (LogBuffer* const buffer : flushing().buffers) {
        isAllWritten = buffer->flush() && isAllWritten;
    }
    return isAllWritten;
}

// Runs on the timer's thread. What cannot be written now is tried again.
void flushOnTime() {
    const LogLock lock(kPatience);
    if (!lock) return flushing().timer->schedule(0s);
    flushing().isScheduled = false;
    if (!flushAll()) scheduleFlush();
}

// REQUIRES: no other thread uses the timer, and none will
void stopTimer() {
    Flushing& state = flushing();
    if (state.timer) state.timer->stop();  // the thread uses the pointer until then
    state.timer.reset();
}

// Runs after the handlers of std::atexit(), and may run while other threads log.
__attribute__((destructor)) void flushAtEnd() {
    flushing().hasEnded = true;
    if (!flushing().isUsed) return;
    {
        const LogLock lock(kPatienceAtEnd);
        if (!lock.isWithin()) return;
        flushAll();
        flushing().isScheduled = false;  // nobody writes what another thread would buffer from here
    }
    stopTimer();
}

// The child must not write the parent's text again.
void flushBeforeFork() {
    const int error = errno;
    int cancelState = 0;
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &cancelState);
    flushAll();
    pthread_setcancelstate(cancelState, nullptr);
    errno = error;
}

// Forgets text that the parent could not write, and the timer: destroying it would wait for a
// thread that the child does not have.
void forgetInChild() {
    [[maybe_unused]] const DelayedCall* const ofParent = flushing().timer.release();
    flushing().isScheduled = false;
    for (LogBuffer* const buffer : flushing().buffers) buffer->forget();
}

}  // namespace

void addBuffer(LogBuffer& buffer) {
    setLogForkSteps({flushBeforeFork, forgetInChild});
    flushing().buffers.push_back(&buffer);
}

void removeBuffer(LogBuffer& buffer) noexcept {
    std::erase(flushing().buffers, &buffer);
}

bool scheduleFlush() try {
    Flushing& state = flushing();
    if (state.isScheduled) return true;
    state.isUsed = true;
    if (state.hasEnded) return false;
    if (!state.timer) state.timer = std::make_unique<DelayedCall>("halvane-log", flushOnTime);
    state.timer->schedule(kDelay);
    state.isScheduled = true;
    return true;
} catch (const std::bad_alloc&) {
    return false;
}

void stopFlushing() {
    stopTimer();
    flushing().isScheduled = false;
}

}  // namespace halvane::logging
