// The one lock of the logging system.
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

}  // namespace halvane::logging

#endif
