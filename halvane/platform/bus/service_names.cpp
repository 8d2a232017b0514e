#include <algorithm>
#include <systemd/sd-bus.h>

#include "halvane/platform/bus/service_names_internal.h"

namespace halvane {

std::optional<ServiceNames> ServiceNames::of(const std::string& serviceName) {
    if (serviceName.find('\0') != std::string::npos ||
        ::sd_bus_service_name_is_valid(serviceName.c_str()) <= 0 ||
        ::sd_bus_interface_name_is_valid(serviceName.c_str()) <= 0) {
        return std::nullopt;
    }
    ServiceNames names = {serviceName, "/" + serviceName};
    std::ranges::replace(names.path, '.', '/');
    return names;
}

}  // namespace halvane
