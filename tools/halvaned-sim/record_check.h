// What the records of a state file have to be like, key by key, as docs/protocol.md has them.
//
// A record itself reads anything: what it does not understand is as though it were not there. In a
// file that somebody has written that is a mistake, and is told.
#ifndef TOOLS_HALVANED_SIM_RECORD_CHECK_H
#define TOOLS_HALVANED_SIM_RECORD_CHECK_H

#include "halvane/base/property_list_value.h"

#include "tools/halvaned-sim/world_file_error.h"

namespace halvane::sim {

// They throw WorldFileError for a value at `place` that is no such record: no dictionary, or one
// with a key that is not known, whose value is of another kind, out of its range or of no use, or
// that is missing. A boolean and an integer stand in for each other; a real does for neither. An
// address may be empty, as a missing one is.
using RecordCheck = void (*)(const PropertyListValue& value, const Place& place);
void checkDevice(const PropertyListValue& value, const Place& place);
void checkInterface(const PropertyListValue& value, const Place& place);
void checkConfig(const PropertyListValue& value, const Place& place);
void checkClient(const PropertyListValue& value, const Place& place);

}  // namespace halvane::sim

#endif
