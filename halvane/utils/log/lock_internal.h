// The lock of the logging system, and the turn to store its settings.
#ifndef HALVANE_UTILS_LOG_LOCK_INTERNAL_H
#define HALVANE_UTILS_LOG_LOCK_INTERNAL_H

namespace halvane::logging {

// Holds the lock during its lifetime. Meanwhile the thread cannot be cancelled, so that a message
// is written as a whole or not at all. It preserves errno. The lock is not recursive: if the thread
// already has it, a second LogLock is false and holds nothing.
class [[nodiscard]] LogLock {
  public:
    LogLock();
    ~LogLock();
    LogLock(const LogLock&) = delete;
    LogLock& operator=(const LogLock&) = delete;

    explicit operator bool() const { return isHeld_; }

  private:
    int error_;
    int cancelState_ = 0;
    bool isHeld_ = false;
};

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
