// The settings that control strings have made.
#ifndef HALVANE_UTILS_LOG_SETTINGS_INTERNAL_H
#define HALVANE_UTILS_LOG_SETTINGS_INTERNAL_H

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace halvane::logging {

// One setting. Kept, and applied again whenever categories or settings change.
struct LogAction {
    std::string pattern;
    std::string name;
    std::string value;
    bool isNew = true;  // set by the control string that is being applied
};

// In the order first set.
class LogActionList {
  public:
    // Replaces the value of the action with this pattern and name, in upper or lower case, or
    // appends one.
    void set(std::string_view pattern, std::string_view name, std::string_view value);

    // Whatever there is now is not new.
    void age();
    void clear();

    auto begin() const { return actions_.begin(); }
    auto end() const { return actions_.end(); }

  private:
    std::vector<LogAction> actions_;
    std::map<std::string, std::size_t> places_;  // by pattern and name in lower case
};

}  // namespace halvane::logging

#endif
