// The settings made by control strings.
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

// The kind of a setting. Settings are applied in this order.
enum class LogPass : std::size_t { Level, Flags, Rate, Output };
inline constexpr std::array<std::string_view, 4> kLogPassNames = {"level", "flags", "rate",
                                                                  "output"};

// One setting. It is kept and applied again whenever categories or settings change.
struct LogAction {
    std::string pattern;
    std::string name;
    std::string value;
    bool isNew = true;  // made by the control string that is being applied
};

// The settings in the order in which they were first made. If memory runs out, a call changes
// nothing.
class LogActionList {
  public:
    using Places = std::vector<std::size_t>;  // indices of actions, ascending

    // Replaces the value of the action with this pattern and name, ignoring case, or appends an
    // action.
    void set(std::string_view pattern, std::string_view name, std::string_view value);

    // Marks all actions as not new.
    void age();
    void clear();

    auto begin() const { return actions_.begin(); }
    auto end() const { return actions_.end(); }
    const LogAction& operator[](std::size_t place) const { return actions_[place]; }

    // The new actions in their order.
    const Places& newPlaces() const { return newPlaces_; }

    // Returns the actions of a pass that match the category; for levels only those with a valid
    // value. The result is computed once and kept up to date until the category is forgotten. The
    // cost of a control string therefore depends on its own settings and not on earlier ones.
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
