#include <cerrno>
#include <pthread.h>

#include "halvane/utils/log/lock_internal.h"

namespace halvane::logging {

namespace {

// Of the kind that refuses a second lock by its owner, instead of waiting for ever.
constexpr pthread_mutex_t kUnlocked = PTHREAD_ERRORCHECK_MUTEX_INITIALIZER_NP;
pthread_mutex_t mutex = kUnlocked;
pthread_mutex_t storing = kUnlocked;

// A child process must not inherit the lock from a thread that it has not. So a fork waits for
// the lock, unless the forking thread itself is the one that has it.
thread_local bool forkHoldsLock = false;

void beforeFork() {
    forkHoldsLock = pthread_mutex_lock(&mutex) == 0;
}
void inParent() {
    if (forkHoldsLock) pthread_mutex_unlock(&mutex);
}
// The owner was the parent's thread, so that the child's cannot unlock what it inherits. A thread
// that had the lock before it forked has it in the child too.
void inChild() {
    // The call fails, but from it a thread sanitizer learns that nobody holds the lock now.
    if (forkHoldsLock) pthread_mutex_unlock(&mutex);
    mutex = kUnlocked;
    if (!forkHoldsLock) pthread_mutex_lock(&mutex);
    storing = kUnlocked;  // a thread that was storing is the parent's alone
}

// From when the library is loaded.
[[maybe_unused]] const int watch = pthread_atfork(beforeFork, inParent, inChild);

}  // namespace

LogLock::LogLock() : error_(errno) {
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &cancelState_);
    isHeld_ = pthread_mutex_lock(&mutex) == 0;
    if (!isHeld_) pthread_setcancelstate(cancelState_, nullptr);
}

LogLock::~LogLock() {
    if (!isHeld_) return;
    pthread_mutex_unlock(&mutex);
    pthread_setcancelstate(cancelState_, nullptr);
    errno = error_;
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
