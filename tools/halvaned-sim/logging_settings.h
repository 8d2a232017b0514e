// The control strings of the Wi-Fi log categories, as the daemon was last told. The simulation
// keeps them, and logs nothing.
#ifndef TOOLS_HALVANED_SIM_LOGGING_SETTINGS_H
#define TOOLS_HALVANED_SIM_LOGGING_SETTINGS_H

#include <array>
#include <iterator>
#include <string>

#include "halvane/base/property_list_value.h"
#include "halvane/utils/log.h"

#include "tools/halvaned-sim/status.h"

namespace halvane::sim {

// The categories that a daemon has.
#define HALVANE_SIM_CATEGORY_NAME(name) #name,
inline constexpr const char* kLogCategoryNames[] = {
    HALVANE_WIFI_LOG_CATEGORIES(HALVANE_SIM_CATEGORY_NAME)};
#undef HALVANE_SIM_CATEGORY_NAME

class LoggingSettings {
  public:
    // The file of the daemon for each.
    LoggingSettings();

    // Takes the strings under the names of categories; all of them, or none where one is no string.
    Status change(const PropertyListDictionary& request);

    // A line a category: "WiFi: ?WiFi:output=file;path=/var/log/halvaned.log\n". Control
    // characters of ASCII, which could make another line of it, are written as \xNN.
    std::string text() const;

  private:
    std::array<std::string, std::size(kLogCategoryNames)> controls_;
};

}  // namespace halvane::sim

#endif
