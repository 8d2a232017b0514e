#include "tools/halvaned/hosting/made_interfaces.h"

#include <cstddef>
#include <sstream>
#include <utility>

#include "halvane/base/status.h"
#include "halvane/platform/os/file_internal.h"

#include "tools/halvaned/hostapd/hostapd_file.h"
#include "tools/halvaned/hosting/daemon_logging.h"

namespace halvane::hosting {

namespace {

constexpr std::size_t kLargestFile = 1 << 20;

}  // namespace

MadeInterfaces::MadeInterfaces(std::string path) : path_(std::move(path)) {
    std::istringstream lines(readFile(path_, kLargestFile).text);
    for (std::string name, owner; lines >> name >> owner;) {
        if (isHostableName(name) && isHostableName(owner)) owners_.emplace(name, owner);
    }
}

std::optional<std::string> MadeInterfaces::ownerOf(std::string_view name) const {
    const auto found = owners_.find(name);
    return found != owners_.end() ? std::optional(found->second) : std::nullopt;
}

void MadeInterfaces::add(const std::string& name, const std::string& owner) {
    std::string& known = owners_[name];
    if (known == owner) return;
    known = owner;
    write();
}

void MadeInterfaces::remove(const std::string& name) {
    if (owners_.erase(name) > 0) write();
}

void MadeInterfaces::write() const {
    std::string text;
    for (const auto& [name, owner] : owners_) text.append(name).append(" ").append(owner) += '\n';
    const HalvaneStatus status = replaceFile(path_, text);
    if (status == kStatusOK) return;
    logError(path_ + " cannot be written: " + HalvaneStatusText(status));
}

}  // namespace halvane::hosting
