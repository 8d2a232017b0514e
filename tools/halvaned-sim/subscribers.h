// Who wants notifications, by their unique names on the bus.
#ifndef TOOLS_HALVANED_SIM_SUBSCRIBERS_H
#define TOOLS_HALVANED_SIM_SUBSCRIBERS_H

#include <algorithm>
#include <string>
#include <vector>

namespace halvane::sim {

class Subscribers {
  public:
    void add(const std::string& name) {
        if (std::find(names_.begin(), names_.end(), name) == names_.end()) names_.push_back(name);
    }
    void remove(const std::string& name) { std::erase(names_, name); }
    void clear() { names_.clear(); }

    // In the order in which they came.
    const std::vector<std::string>& names() const { return names_; }

  private:
    std::vector<std::string> names_;
};

}  // namespace halvane::sim

#endif
