#include "halvane/model/station_change.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "halvane/model/station_change_internal.h"

namespace halvane {

// The word is the last part of the notification's command.
const char* nameOf(StationChange::Kind kind) noexcept {
    const auto* const found =
        std::ranges::find(kStationNotifications, kind, &StationNotification::kind);
    if (found == std::end(kStationNotifications)) return "unknown";
    return found->command + std::string_view(found->command).rfind('.') + 1;
}

}  // namespace halvane
