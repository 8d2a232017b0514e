// Where a thread of the program may be cancelled (pthread_cancel()) while it runs code of the
// library: only at points that leave everything in order.
#ifndef HALVANE_PLATFORM_OS_CANCELLATION_INTERNAL_H
#define HALVANE_PLATFORM_OS_CANCELLATION_INTERNAL_H

#include <pthread.h>

namespace halvane {

// While an object lives, its thread is not cancelled, except where a Point lives.
class CancellationHeld {
  public:
    CancellationHeld() { ::pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &before_); }
    CancellationHeld(const CancellationHeld&) = delete;
    CancellationHeld& operator=(const CancellationHeld&) = delete;
    ~CancellationHeld() { ::pthread_setcancelstate(before_, nullptr); }

    // Lets the thread be cancelled again, if it could be before.
    class Point {
      public:
        explicit Point(const CancellationHeld& held) {
            ::pthread_setcancelstate(held.before_, nullptr);
        }
        Point(const Point&) = delete;
        Point& operator=(const Point&) = delete;
        ~Point() { ::pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, nullptr); }
    };

  private:
    int before_ = PTHREAD_CANCEL_ENABLE;
};

}  // namespace halvane

#endif
