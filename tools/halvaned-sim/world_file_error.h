// Why a file holds no world.
#ifndef TOOLS_HALVANED_SIM_WORLD_FILE_ERROR_H
#define TOOLS_HALVANED_SIM_WORLD_FILE_ERROR_H

#include <cstddef>
#include <stdexcept>
#include <string>

namespace halvane::sim {

// what() names the place in the file: "Configs: wlan0: element 2: SSID: has not 1 to 32 bytes".
class WorldFileError : public std::runtime_error {
    using runtime_error::runtime_error;
};

[[noreturn]] inline void refuse(const std::string& place, const std::string& problem) {
    throw WorldFileError(place + ": " + problem);
}

// The element of an array, as people count: the first is number 1.
inline std::string elementOf(const std::string& place, std::size_t index) {
    return place + ": element " + std::to_string(index + 1);
}

}  // namespace halvane::sim

#endif
