#include "tools/halvaned/radio/system_files.h"

#include <cstddef>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "halvane/platform/os/file_internal.h"

namespace halvane::hosting {

namespace {

constexpr const char* kRadios = "/class/ieee80211/";
constexpr const char* kInterfaces = "/class/net/";

// Names are parts of paths.
bool isFileName(std::string_view name) {
    return !name.empty() && name != "." && name != ".." && name.find('/') == std::string_view::npos;
}

// The driver is a link to its folder.
std::string driverBelow(const std::string& folder) {
    std::error_code error;
    const auto target = std::filesystem::read_symlink(folder + "/device/driver", error);
    return error ? std::string() : target.filename().string();
}

}  // namespace

std::optional<MacAddress> SystemFiles::addressOfRadio(const std::string& radio) const {
    constexpr std::size_t kLongest = 4096;  // a page, as all files there
    constexpr std::size_t kAddressSize = 17;
    if (!isFileName(radio)) return std::nullopt;
    const FileText file = readFile(folder_ + kRadios + radio + "/macaddress", kLongest);
    return MacAddress::fromText(std::string_view(file.text).substr(0, kAddressSize));
}

std::string SystemFiles::driverOfRadio(const std::string& radio) const {
    return isFileName(radio) ? driverBelow(folder_ + kRadios + radio) : std::string();
}

std::string SystemFiles::driverOfInterface(const std::string& interface) const {
    return isFileName(interface) ? driverBelow(folder_ + kInterfaces + interface) : std::string();
}

}  // namespace halvane::hosting
