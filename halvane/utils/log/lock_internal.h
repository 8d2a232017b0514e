// The lock of the logging system, and the turn of storing its settings.
#ifndef HALVANE_UTILS_LOG_LOCK_INTERNAL_H
#define HALVANE_UTILS_LOG_LOCK_INTERNAL_H

namespace halvane::logging {

// Holds the lock while it lives, and keeps the thread from being cancelled, so that a message is
// written whole or not at all. It leaves errno as it found it. The lock is not recursive: where the
// thread has the lock already, a second LogLock is false and holds nothing.
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

// Holds the turn of storing settings while it lives: one thread at a time, which may wait long for
// another process, and does not hold up who logs. Keeps the thread from being cancelled, and errno
// as it was, likewise. It is taken before the lock, where both are.
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
