#include "tools/halvane/commands/bus_diagnosis.h"

#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <sys/socket.h>
#include <sys/un.h>
#include <system_error>
#include <unistd.h>

#include "halvane/base/ascii_internal.h"

namespace halvane::tool {

namespace {

constexpr const char* kUsualAddress = "unix:path=/run/dbus/system_bus_socket";
constexpr const char* kDaemonProgram = "halvaned";
constexpr std::string_view kDaemonFolders = "/usr/local/sbin:/usr/sbin:/sbin";

// Takes what is before the separator from the text, and the separator.
std::string_view takeBefore(std::string_view& text, char separator) {
    const std::string_view part = text.substr(0, text.find(separator));
    text.remove_prefix(part.size() < text.size() ? part.size() + 1 : text.size());
    return part;
}

// Bytes of an address may stand as "%2c".
std::string unescaped(std::string_view value) {
    std::string text;
    for (std::size_t i = 0; i < value.size(); ++i) {
        const bool isEscape = value[i] == '%' && i + 2 < value.size() && isHexDigit(value[i + 1]) &&
                              isHexDigit(value[i + 2]);
        if (!isEscape) {
            text += value[i];
            continue;
        }
        text += static_cast<char>(16 * digitValue(value[i + 1]) + digitValue(value[i + 2]));
        i += 2;
    }
    return text;
}

// The path of the address's first socket; absent if it is of another kind.
std::optional<std::string> socketPath(std::string_view address) {
    std::string_view values = takeBefore(address, ';');
    if (takeBefore(values, ':') != "unix") return std::nullopt;
    while (!values.empty()) {
        std::string_view value = takeBefore(values, ',');
        if (takeBefore(value, '=') == "path") return unescaped(value);
    }
    return std::nullopt;
}

// Returns 0, or the errno of the failure.
int connectTo(const std::string& path) {
    sockaddr_un place{};
    place.sun_family = AF_UNIX;
    if (path.size() >= sizeof(place.sun_path)) return ENAMETOOLONG;
    std::memcpy(place.sun_path, path.c_str(), path.size() + 1);
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (descriptor < 0) return errno;
    const auto* const address = reinterpret_cast<const sockaddr*>(&place);
    const int error = ::connect(descriptor, address, sizeof(place)) == 0 ? 0 : errno;
    ::close(descriptor);
    return error;
}

}  // namespace

std::string systemBusAddressOf() {
    const char* const address = std::getenv("DBUS_SYSTEM_BUS_ADDRESS");
    return address != nullptr ? address : kUsualAddress;
}

std::string unreachableReason(std::string_view address) {
    const auto path = socketPath(address);
    if (!path) return address.empty() ? "''" : std::string(address);
    const int error = connectTo(*path);
    return error == 0 ? *path : *path + ": " + std::generic_category().message(error);
}

bool isInstalled(const std::string& name, std::string_view folders) {
    while (!folders.empty()) {
        std::string path(takeBefore(folders, ':'));
        if (path.empty()) continue;
        path.append("/").append(name);
        if (::access(path.c_str(), X_OK) == 0) return true;
    }
    return false;
}

bool isDaemonInstalled() {
    const char* const path = std::getenv("PATH");
    return isInstalled(kDaemonProgram, path != nullptr ? path : "") ||
           isInstalled(kDaemonProgram, kDaemonFolders);
}

}  // namespace halvane::tool
