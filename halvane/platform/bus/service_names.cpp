#include <algorithm>
#include <systemd/sd-bus.h>

#include "halvane/platform/bus/libsystemd_internal.h"
#include "halvane/platform/bus/service_names_internal.h"

namespace halvane {

// Without libsystemd every name passes, since no bus can be joined.
std::optional<ServiceNames> ServiceNames::of(const std::string& serviceName) {
    if (serviceName.find('\0') != std::string::npos ||
        libsystemd().sd_bus_service_name_is_valid(serviceName.c_str()) == 0 ||
        libsystemd().sd_bus_interface_name_is_valid(serviceName.c_str()) == 0) {
        return std::nullopt;
    }
    ServiceNames names = {serviceName, "/" + serviceName};
    std::ranges::replace(names.path, '.', '/');
    return names;
}

}  // namespace halvane
