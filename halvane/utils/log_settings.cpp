#include <algorithm>

#include "halvane/utils/log_settings_internal.h"

namespace halvane::logging {

namespace {

// A pattern holds no colon, so that no two keys run into each other.
std::string keyOf(std::string_view pattern, std::string_view name) {
    std::string key(pattern);
    key.append(":").append(name);
    std::ranges::transform(key, key.begin(), [](char character) {
        const bool isUpper = character >= 'A' && character <= 'Z';
        return static_cast<char>(isUpper ? character - 'A' + 'a' : character);
    });
    return key;
}

}  // namespace

void LogActionList::set(std::string_view pattern, std::string_view name, std::string_view value) {
    const auto [place, isAdded] = places_.try_emplace(keyOf(pattern, name), actions_.size());
    if (isAdded) {
        actions_.push_back({std::string(pattern), std::string(name), std::string(value)});
        return;
    }
    LogAction& action = actions_[place->second];
    action.value = value;
    action.isNew = true;
}

void LogActionList::age() {
    for (LogAction& action : actions_) action.isNew = false;
}

void LogActionList::clear() {
    actions_.clear();
    places_.clear();
}

}  // namespace halvane::logging
