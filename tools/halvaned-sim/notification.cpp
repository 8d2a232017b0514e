#include "tools/halvaned-sim/notification.h"

#include <cstddef>
#include <iterator>
#include <utility>

#include "halvane/base/property_list_value.h"
#include "halvane/model/daemon_service.h"

namespace halvane::sim {

namespace {

// In the order of the enumeration.
constexpr std::string_view kWords[] = {"authorized", "joined", "kicked", "left"};

}  // namespace

std::string_view wordOf(Happening happening) {
    return kWords[static_cast<std::size_t>(happening)];
}

std::optional<Happening> happeningFor(std::string_view word) {
    for (std::size_t i = 0; i < std::size(kWords); ++i) {
        if (kWords[i] == word) return static_cast<Happening>(i);
    }
    return std::nullopt;
}

IPCMessage Notification::message() const {
    PropertyListDictionary entries;
    entries.set("command", std::string(HALVANE_DAEMON_SERVICE_NAME ".status.client.") +
                               std::string(wordOf(happening)));
    entries.set("BSDName", interface);
    entries.set("MAC", mac);
    return IPCMessage(std::move(entries));
}

}  // namespace halvane::sim
