// Who wants notifications, by their unique names on the bus.
#ifndef TOOLS_HALVANED_SIM_SUBSCRIBERS_H
#define TOOLS_HALVANED_SIM_SUBSCRIBERS_H

#include <list>
#include <map>
#include <string>

namespace halvane::sim {

class Subscribers {
  public:
    Subscribers() = default;
    Subscribers(Subscribers&&) noexcept = default;
    Subscribers& operator=(Subscribers&&) noexcept = default;

    // Does nothing where it is there. Where memory runs out, the list is as it was.
    void add(const std::string& name) {
        if (places_.contains(name)) return;
        std::list<std::string> added = {name};
        places_.emplace(name, added.begin());
        names_.splice(names_.end(), added);
    }

    // Does nothing where there is none.
    void remove(const std::string& name) {
        const auto found = places_.find(name);
        if (found == places_.end()) return;
        names_.erase(found->second);
        places_.erase(found);
    }

    void clear() {
        names_.clear();
        places_.clear();
    }

    // In the order in which they came.
    const std::list<std::string>& names() const { return names_; }

  private:
    std::list<std::string> names_;  // which stay where they are
    std::map<std::string, std::list<std::string>::iterator> places_;
};

}  // namespace halvane::sim

#endif
