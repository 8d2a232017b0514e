// The names on the bus that follow from a service's name. Both ends of a connection use them.
#ifndef HALVANE_PLATFORM_BUS_SERVICE_NAMES_INTERNAL_H
#define HALVANE_PLATFORM_BUS_SERVICE_NAMES_INTERNAL_H

#include <optional>
#include <string>

namespace halvane {

// The members of a service's interface.
#define HALVANE_SERVICE_REQUEST "Request"
#define HALVANE_SERVICE_EVENT "Event"

struct ServiceNames {
    std::string name;  // of the service and of its interface
    std::string path;  // of its object

    // Absent if D-Bus cannot express the name.
    static std::optional<ServiceNames> of(const std::string& serviceName);
};

}  // namespace halvane

#endif
