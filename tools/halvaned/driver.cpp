#include "tools/halvaned/driver.h"

namespace halvane::hosting {

std::string_view nameOf(Driver driver) noexcept {
    return driver == Driver::Nl80211 ? "nl80211" : "wired";
}

std::optional<Driver> driverOf(std::string_view name) noexcept {
    for (const Driver driver : {Driver::Nl80211, Driver::Wired}) {
        if (name == nameOf(driver)) return driver;
    }
    return std::nullopt;
}

}  // namespace halvane::hosting
