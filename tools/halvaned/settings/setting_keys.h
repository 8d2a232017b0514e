// The keys of the configuration file, with what each means and allows.
//
// A constant table; any thread may use it.
#ifndef TOOLS_HALVANED_SETTINGS_SETTING_KEYS_H
#define TOOLS_HALVANED_SETTINGS_SETTING_KEYS_H

#include <span>
#include <string>
#include <string_view>

#include "tools/halvaned/settings/settings.h"

namespace halvane::hosting {

struct SettingKey {
    std::string_view name;
    std::string_view allowed;  // for people: "a number from 1 to 2007"
    bool needsRestart;         // of the daemon; the others apply when a network next starts
    // Reads a value. Returns whether it is allowed; if it is not, the settings stay.
    bool (*read)(std::string_view value, Settings& settings);
    // The value as a text that read() takes. Empty for one that is not set.
    std::string (*write)(const Settings& settings);
};

// In the order of data/halvaned.conf.
std::span<const SettingKey> settingKeys();

}  // namespace halvane::hosting

#endif
