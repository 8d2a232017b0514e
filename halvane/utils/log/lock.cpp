#include <cerrno>
#include <ctime>
#include <pthread.h>

#include "halvane/utils/log/lock_internal.h"

namespace halvane::logging {

namespace {

// This kind of mutex refuses a second lock by its owner instead of waiting forever.
constexpr pthread_mutex_t kUnlocked = PTHREAD_ERRORCHECK_MUTEX_INITIALIZER_NP;
pthread_mutex_t mutex = kUnlocked;
pthread_mutex_t storing = kUnlocked;

// A child process must not inherit the lock from a thread that it lacks. A fork therefore waits for
// the lock, unless the forking thread holds it.
thread_local bool forkHoldsLock = false;

LogForkSteps forkSteps = {};

void beforeFork() {
    forkHoldsLock = pthread_mutex_lock(&mutex) == 0;
    if (forkSteps.before != nullptr) forkSteps.before();
}
void inParent() {
    if (forkHoldsLock) pthread_mutex_unlock(&mutex);
}
// The parent's thread owns the inherited lock, so the child's thread cannot unlock it. If the
// forking thread held the lock before, it also holds it in the child.
void inChild() {
    // The call fails, but tells a thread sanitizer that nobody holds the lock now.
    if (forkHoldsLock) pthread_mutex_unlock(&mutex);
    mutex = kUnlocked;
    if (!forkHoldsLock) pthread_mutex_lock(&mutex);
    storing = kUnlocked;  // the storing thread exists only in the parent
    if (forkSteps.inChild != nullptr) forkSteps.inChild();
}

timespec timeAfter(std::chrono::milliseconds wait) {
    timespec time{};
    ::clock_gettime(CLOCK_REALTIME, &time);
    const auto nanoseconds = time.tv_nsec + std::chrono::nanoseconds(wait).count();
    time.tv_sec += nanoseconds / 1'000'000'000;
    time.tv_nsec = nanoseconds % 1'000'000'000;
    return time;
}

// Active from when the library is loaded.
[[maybe_unused]] const int watch = pthread_atfork(beforeFork, inParent, inChild);

}  // namespace

LogLock::LogLock() : error_(errno) {
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &cancelState_);
    begin(pthread_mutex_lock(&mutex));
}

LogLock::LogLock(std::chrono::milliseconds patience) : error_(errno) {
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &cancelState_);
    const timespec end = timeAfter(patience);
    begin(pthread_mutex_timedlock(&mutex, &end));
}

void LogLock::begin(int result) {
    isHeld_ = result == 0;
    wasHeld_ = result == EDEADLK;
    if (!isHeld_) pthread_setcancelstate(cancelState_, nullptr);
}

LogLock::~LogLock() {
    if (!isHeld_) return;
    pthread_mutex_unlock(&mutex);
    pthread_setcancelstate(cancelState_, nullptr);
    errno = error_;
}

void setLogForkSteps(LogForkSteps steps) {
    forkSteps = steps;
}

LogStoringTurn::LogStoringTurn() : error_(errno) {
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &cancelState_);
    pthread_mutex_lock(&storing);
}

LogStoringTurn::~LogStoringTurn() {
    pthread_mutex_unlock(&storing);
    pthread_setcancelstate(cancelState_, nullptr);
    errno = error_;
}

}  // namespace halvane::logging
