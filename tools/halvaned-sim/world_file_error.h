// Why a file holds no world, and where in the file.
#ifndef TOOLS_HALVANED_SIM_WORLD_FILE_ERROR_H
#define TOOLS_HALVANED_SIM_WORLD_FILE_ERROR_H

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "halvane/base/result.h"

namespace halvane::sim {

// A place in the file: "Configs: wlan0: element 2". The text is made only for a message, not for
// each correct value. The parts of a place must outlive it.
class Place {
  public:
    explicit Place(std::string_view name) : name_(name) {}

    Place at(std::string_view name) const { return {this, name, 0}; }

    // The element of an array, counted from 1.
    Place element(std::size_t index) const { return {this, {}, index + 1}; }

    std::string text() const {
        const std::string own =
            number_ > 0 ? "element " + std::to_string(number_) : std::string(name_);
        return whole_ != nullptr ? whole_->text() + ": " + own : own;
    }

  private:
    Place(const Place* whole, std::string_view name, std::size_t number)
        : whole_(whole), name_(name), number_(number) {}

    const Place* whole_ = nullptr;
    std::string_view name_;
    std::size_t number_ = 0;  // of an element
};

// What a reader makes of a file, or why it refuses the file. The reason names the place in the
// file: "Configs: wlan0: element 2: SSID: does not have 1 to 32 bytes".
template <typename Content>
using Read = Result<Content, std::string>;

// The result of a check of the file.
using Checked = Read<void>;

inline Unexpected<std::string> refuse(const Place& place, const std::string& problem) {
    return Unexpected(place.text() + ": " + problem);
}

// Passes the reason of a failed result on.
template <typename Content>
Unexpected<std::string> reasonOf(Read<Content>&& failed) {
    return Unexpected(std::move(failed).error());
}

}  // namespace halvane::sim

#endif
