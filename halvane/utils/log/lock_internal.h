// The lock of the logging system, and the turn to store its settings.
#ifndef HALVANE_UTILS_LOG_LOCK_INTERNAL_H
#define HALVANE_UTILS_LOG_LOCK_INTERNAL_H

#include <chrono>

namespace halvane::logging {

// Holds the lock during its lifetime. Meanwhile the thread cannot be cancelled, so that a message
// is written as a whole or not at all. It preserves errno. The lock is not recursive: if the thread
// already has it, a second LogLock is false and holds nothing.
class [[nodiscard]] LogLock {
  public:
    LogLock();
    // Waits no longer than `patience`; false if the lock is not free by then.
    explicit LogLock(std::chrono::milliseconds patience);
    ~LogLock();
    LogLock(const LogLock&) = delete;
    LogLock& operator=(const LogLock&) = delete;

    explicit operator bool() const { return isHeld_; }

    // Returns whether the thread has the lock, be it by this object or already before.
    bool isWithin() const { return isHeld_ || wasHeld_; }

  private:
    // Takes the result of locking the mutex.
    void begin(int result);

    int error_;
    int cancelState_ = 0;
    bool isHeld_ = false;
    bool wasHeld_ = false;
};

// What else is done at each fork, by functions that preserve errno; null: nothing. The forking
// thread holds the lock before the fork, and is the only thread in the child.
struct LogForkSteps {
    void (*before)();
    void (*inChild)();
};

// REQUIRES: the caller holds the lock.
void setLogForkSteps(LogForkSteps steps);

// Holds the turn to store settings during its lifetime. Only one thread has it; that thread may
// wait long for another process, and does not block threads that log. Meanwhile the thread cannot
// be cancelled. It preserves errno. A thread that needs both takes the turn before the lock.
class [[nodiscard]] LogStoringTurn {
  public:
    LogStoringTurn();
    ~LogStoringTurn();
    LogStoringTurn(const LogStoringTurn&) = delete;
    LogStoringTurn& operator=(const LogStoringTurn&) = delete;

  private:
    int error_;
    int cancelState_ = 0;
};

}  // namespace halvane::logging

#endif
