// How much clients may ask of a daemon, so that none of them can grow it without bound or keep it
// from the others. The bus itself limits the size of a request.
#ifndef HALVANE_SERVICE_DAEMON_LIMITS_H
#define HALVANE_SERVICE_DAEMON_LIMITS_H

#include <cstddef>

#include "halvane/base/cxx20.h"

namespace halvane {

struct DaemonLimits {
    // Connections that get notifications; a further one gets DaemonStatus::TooManySubscribers.
    std::size_t subscribers = 1024;

    // Requests that wait for the backend, of one connection and of all; a further one gets
    // DaemonStatus::Busy. Requests that a backend answers at once never wait.
    std::size_t waitingOfOne = 64;
    std::size_t waiting = 1024;
};

}  // namespace halvane

#endif
