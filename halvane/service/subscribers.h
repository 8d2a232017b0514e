// The connections that want notifications, by their unique names on the bus.
//
// Threads: only one thread at a time may use an object.
#ifndef HALVANE_SERVICE_SUBSCRIBERS_H
#define HALVANE_SERVICE_SUBSCRIBERS_H

#include <list>
#include <map>
#include <string>

#include "halvane/base/cxx20.h"

namespace halvane {

class Subscribers {
  public:
    Subscribers() = default;
    Subscribers(Subscribers&&) noexcept = default;
    Subscribers& operator=(Subscribers&&) noexcept = default;

    // Does nothing if the name is there. If memory runs out, the list is unchanged.
    void add(const std::string& name) {
        if (places_.contains(name)) return;
        std::list<std::string> added = {name};
        places_.emplace(name, added.begin());
        names_.splice(names_.end(), added);
    }

    // Whether this connection subscribed.
    bool contains(const std::string& name) const { return places_.contains(name); }

    // Does nothing if there is none.
    void remove(const std::string& name) {
        const auto found = places_.find(name);
        if (found == places_.end()) return;
        names_.erase(found->second);
        places_.erase(found);
    }

    // Forgets all of them.
    void clear() {
        names_.clear();
        places_.clear();
    }

    // In the order in which they subscribed.
    const std::list<std::string>& names() const { return names_; }

  private:
    std::list<std::string> names_;  // whose elements never move
    std::map<std::string, std::list<std::string>::iterator> places_;
};

}  // namespace halvane

#endif
