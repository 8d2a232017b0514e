// The service name of the Wi-Fi daemon, and names derived from it.
#ifndef HALVANE_MODEL_DAEMON_SERVICE_H
#define HALVANE_MODEL_DAEMON_SERVICE_H

#include <cstdint>

#include "halvane/base/error.h"

// The service name as a literal, for names that are built at compile time.
#define HALVANE_DAEMON_SERVICE_NAME "org.halvane.halvaned"

namespace halvane {

// A reverse-DNS name. On D-Bus it is both the daemon's bus name and the name of its interface.
inline constexpr const char kDaemonServiceName[] = HALVANE_DAEMON_SERVICE_NAME;

// The domain of the errors of the configuration model and the daemon client.
inline constexpr const char kDaemonErrorDomain[] = HALVANE_DAEMON_SERVICE_NAME ".ErrorDomain";

// Returns an error of that domain. Allocates nothing.
inline Error daemonError(std::int64_t code) noexcept {
    return Error{ErrorDomain::constant(kDaemonErrorDomain), code};
}

}  // namespace halvane

#endif
