#include "tools/halvaned/settings/settings.h"

#include "tools/halvaned/settings/setting_keys.h"

namespace halvane::hosting {

ChangedSettings changesBetween(const Settings& before, const Settings& after) {
    ChangedSettings changes;
    for (const SettingKey& key : settingKeys()) {
        if (key.write(before) == key.write(after)) continue;
        (key.needsRestart ? changes.needRestart : changes.applied).push_back(key.name);
    }
    return changes;
}

Settings settingsWithoutRestart(const Settings& before, Settings after) {
    for (const SettingKey& key : settingKeys()) {
        if (key.needsRestart) key.read(key.write(before), after);
    }
    return after;
}

}  // namespace halvane::hosting
