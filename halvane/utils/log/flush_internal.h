// When the text that log files have buffered is written: on a timer, before a fork, and at the end
// of the process. A file does the rest: when its buffer is full, and for errors.
#ifndef HALVANE_UTILS_LOG_FLUSH_INTERNAL_H
#define HALVANE_UTILS_LOG_FLUSH_INTERNAL_H

namespace halvane::logging {

// Text that waits to be written.
class LogBuffer {
  public:
    virtual ~LogBuffer() = default;

    // Returns false if some of the text still waits.
    virtual bool flush() noexcept = 0;
    virtual void forget() = 0;
};

// Begin and end to flush a buffer. Ending is possible without a beginning.
// REQUIRES: the caller holds the lock, or stopFlushing() was called.
void addBuffer(LogBuffer& buffer);
void removeBuffer(LogBuffer& buffer) noexcept;

// Has buffered text written within a second, by a thread that the first call starts. Returns false
// if nothing would write it: the system has no room for a thread, or the process is ending.
// REQUIRES: the caller holds the lock.
bool scheduleFlush();

// Ends the thread.
// REQUIRES: no other thread is in a call of this header. The caller may hold the lock.
void stopFlushing();

}  // namespace halvane::logging

#endif
