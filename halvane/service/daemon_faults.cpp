#include "halvane/service/daemon_faults.h"

namespace halvane {

DaemonFaults::~DaemonFaults() = default;

}  // namespace halvane
