// The interfaces that hostapd makes for further networks, each with the interface that it is for.
//
// They stay if hostapd is killed. So a file of the runtime folder names them, which lives as long
// as they can: until the system ends.
//
// Only one thread at a time may use the object.
#ifndef TOOLS_HALVANED_HOSTING_MADE_INTERFACES_H
#define TOOLS_HALVANED_HOSTING_MADE_INTERFACES_H

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace halvane::hosting {

class MadeInterfaces {
  public:
    // Reads the file. Without one, or where it cannot be read, there are none.
    explicit MadeInterfaces(std::string path);

    // The interface that it was made for. Absent if it was not made.
    std::optional<std::string> ownerOf(std::string_view name) const;

    // A file that cannot be written is logged, and the names hold until the daemon ends.
    void add(const std::string& name, const std::string& owner);
    void remove(const std::string& name);

  private:
    void write() const;

    const std::string path_;
    std::map<std::string, std::string, std::less<>> owners_;
};

}  // namespace halvane::hosting

#endif
