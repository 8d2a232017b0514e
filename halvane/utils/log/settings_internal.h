// The settings that control strings have made.
#ifndef HALVANE_UTILS_LOG_SETTINGS_INTERNAL_H
#define HALVANE_UTILS_LOG_SETTINGS_INTERNAL_H

#include <array>
#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/utils/log.h"

namespace halvane::logging {

// What a setting changes, in the order in which settings are applied.
enum class LogPass : std::size_t { Level, Flags, Rate, Output };
inline constexpr std::array<std::string_view, 4> kLogPassNames = {"level", "flags", "rate",
                                                                  "output"};

// One setting. Kept, and applied again whenever categories or settings change.
struct LogAction {
    std::string pattern;
    std::string name;
    std::string value;
    bool isNew = true;  // set by the control string that is being applied
};

// In the order first set. Where memory fails, all is as it was before the call.
class LogActionList {
  public:
    using Places = std::vector<std::size_t>;  // of actions, ascending

    // Replaces the value of the action with this pattern and name, in upper or lower case, or
    // appends one.
    void set(std::string_view pattern, std::string_view name, std::string_view value);

    // Whatever there is now is not new.
    void age();
    void clear();

    auto begin() const { return actions_.begin(); }
    auto end() const { return actions_.end(); }
    const LogAction& operator[](std::size_t place) const { return actions_[place]; }

    // The new actions, in the order set.
    const Places& newPlaces() const { return newPlaces_; }

    // The actions of a pass that are for the category; of the levels only those that are one. Found
    // out once, and then kept up to date until the category is forgotten: a control string costs
    // what it changes, and not what was set before it.
    // REQUIRES: the category keeps its name.
    const Places& placesFor(const LogCategory& category, LogPass pass);
    void forget(const LogCategory& category) { matches_.erase(&category); }

  private:
    using Matches = std::array<Places, kLogPassNames.size()>;  // by pass

    void append(std::string key, LogAction action);
    void noteMatches(std::size_t place);
    void noteMatch(const LogCategory& category, Matches& matches, std::size_t place) const;

    std::vector<LogAction> actions_;
    std::map<std::string, std::size_t> places_;  // by pattern and name in lower case
    Places newPlaces_;
    std::map<const LogCategory*, Matches> matches_;
};

}  // namespace halvane::logging

#endif
