// A world as a property list, a dictionary:
//
//   Devices     array of devices
//   Interfaces  array of interfaces; their names are unique
//   Disabled    array of strings: the interfaces that are disabled
//   Configs     dictionary: by interface, an array of BSS configurations, with an SSID of their own
//   Stations    dictionary: by interface, an array of clients, those in range
//
// A key may be left out, but for Interfaces. Records are what docs/protocol.md says they are.
#ifndef TOOLS_HALVANED_SIM_WORLD_FILE_H
#define TOOLS_HALVANED_SIM_WORLD_FILE_H

#include <string_view>

#include "halvane/base/property_list_value.h"

#include "tools/halvaned-sim/world.h"
#include "tools/halvaned-sim/world_file_error.h"

namespace halvane::sim {

// Throws WorldFileError for anything but the above: a misspelt key is told, not passed over, in the
// records too.
World worldFromPropertyList(const PropertyListValue& value);
World worldFromText(std::string_view xml);

// What is read back as an equal world. BSSs that are up and stations that have come are not in it.
PropertyListDictionary propertyListOf(const World& world);

}  // namespace halvane::sim

#endif
