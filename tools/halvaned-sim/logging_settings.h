// The latest control strings of the Wi-Fi log categories. The simulation stores them, and logs
// nothing.
#ifndef TOOLS_HALVANED_SIM_LOGGING_SETTINGS_H
#define TOOLS_HALVANED_SIM_LOGGING_SETTINGS_H

#include <array>
#include <iterator>
#include <string>

#include "halvane/base/property_list_value.h"
#include "halvane/utils/log.h"

#include "tools/halvaned-sim/status.h"

namespace halvane::sim {

// The log categories of a daemon.
#define HALVANE_SIM_CATEGORY_NAME(name) #name,
inline constexpr const char* kLogCategoryNames[] = {
    HALVANE_WIFI_LOG_CATEGORIES(HALVANE_SIM_CATEGORY_NAME)};
#undef HALVANE_SIM_CATEGORY_NAME

class LoggingSettings {
  public:
    // By default each category logs to the daemon's file.
    LoggingSettings();

    // Stores the strings under the names of categories: all of them, or none if one is no string.
    Status change(const PropertyListDictionary& request);

    // One line per category: "WiFi: ?WiFi:output=file;path=/var/log/halvaned.log\n". ASCII control
    // characters, which could break the line, become \xNN.
    std::string text() const;

  private:
    std::array<std::string, std::size(kLogCategoryNames)> controls_;
};

}  // namespace halvane::sim

#endif
