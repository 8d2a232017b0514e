#include <cstdlib>
#include <string_view>

#include "halvane/base/ascii_internal.h"
#include "halvane/platform/bus/address_internal.h"

namespace halvane {

namespace {

constexpr const char* kSystemBus = "unix:path=/run/dbus/system_bus_socket";

constexpr std::string_view kPlain =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_/.";

}  // namespace

std::string escapedBusAddressValue(std::string_view value) {
    std::string text;
    for (const char character : value) {
        if (kPlain.find(character) != std::string_view::npos) {
            text += character;
        } else {
            text += '%';
            appendHexOctet(text, static_cast<unsigned char>(character), kLowerHexDigits);
        }
    }
    return text;
}

std::string systemBusAddress() {
    const char* address = ::secure_getenv("DBUS_SYSTEM_BUS_ADDRESS");
    return address != nullptr ? address : kSystemBus;
}

std::optional<std::string> sessionBusAddress() {
    if (const char* address = ::secure_getenv("DBUS_SESSION_BUS_ADDRESS")) return address;
    const char* folder = ::secure_getenv("XDG_RUNTIME_DIR");
    if (folder == nullptr) return std::nullopt;
    return std::string("unix:path=") + escapedBusAddressValue(folder) + "/bus";
}

}  // namespace halvane
