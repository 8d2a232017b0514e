#include "halvane/daemon/daemon_result.h"

namespace halvane {

const char* DaemonError::text() const noexcept {
    switch (kind) {
        case Kind::Refused:
            return "the daemon answered with an error status";
        case Kind::Denied:
            return "the bus does not let the program talk to the daemon";
        case Kind::NoDaemon:
            return "there is no daemon on the bus";
        case Kind::DaemonLeft:
            return "the daemon went away before it answered";
        case Kind::BusGone:
            return "there is no connection to the bus";
        case Kind::DeadlinePassed:
            return "the daemon has not answered in time";
        case Kind::Undecodable:
            return "the daemon's answer cannot be read";
        case Kind::Unsendable:
            return "the request cannot be sent over the bus";
        case Kind::Ending:
            return "the client is ending";
        case Kind::OutOfMemory:
            return "out of memory";
        case Kind::Failed:
            return "the daemon or the bus answered with an error of D-Bus";
    }
    return "unknown";
}

}  // namespace halvane
