// A world as a property list, a dictionary:
//
//   Devices     array of devices
//   Interfaces  array of interfaces; their names are unique
//   Disabled    array of strings: the interfaces that are disabled
//   Configs     dictionary: by interface, an array of BSS configurations, with unique SSIDs
//   Stations    dictionary: by interface, an array of clients, those in range
//
// Every key except Interfaces may be missing. docs/protocol.md defines the records.
#ifndef TOOLS_HALVANED_SIM_WORLD_FILE_H
#define TOOLS_HALVANED_SIM_WORLD_FILE_H

#include <string_view>

#include "halvane/base/property_list_value.h"

#include "tools/halvaned-sim/world.h"
#include "tools/halvaned-sim/world_file_error.h"

namespace halvane::sim {

// They refuse anything else. Misspelt keys are errors too, also in records.
Read<World> worldFromPropertyList(const PropertyListValue& value);
Read<World> worldFromText(std::string_view xml);

// Returns a dictionary that reads back as an equal world. It does not include BSSs that are up and
// stations that have joined.
PropertyListDictionary propertyListOf(const World& world);

}  // namespace halvane::sim

#endif
