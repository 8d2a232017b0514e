// What the kernel's files about devices tell (sysfs; /sys).
//
// A value without state; any thread may use it.
#ifndef TOOLS_HALVANED_RADIO_SYSTEM_FILES_H
#define TOOLS_HALVANED_RADIO_SYSTEM_FILES_H

#include <optional>
#include <string>
#include <utility>

#include "halvane/base/mac_address.h"

namespace halvane::hosting {

class SystemFiles {
  public:
    // Tests have another folder.
    explicit SystemFiles(std::string folder = "/sys") : folder_(std::move(folder)) {}

    // The address that a radio ("phy0") was made with. Absent if no file tells it.
    std::optional<MacAddress> addressOfRadio(const std::string& radio) const;

    // The kernel's driver: "ath9k". Empty if no file tells it, as for virtual interfaces.
    std::string driverOfRadio(const std::string& radio) const;
    std::string driverOfInterface(const std::string& interface) const;

  private:
    std::string folder_;
};

}  // namespace halvane::hosting

#endif
