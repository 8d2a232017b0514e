// Checks the records of a state file, key by key, against docs/protocol.md.
//
// A record itself accepts any dictionary, and ignores what it does not understand. In a file that a
// person has written, this is an error, so the check reports it.
#ifndef TOOLS_HALVANED_SIM_RECORD_CHECK_H
#define TOOLS_HALVANED_SIM_RECORD_CHECK_H

#include "halvane/base/property_list_value.h"

#include "tools/halvaned-sim/world_file_error.h"

namespace halvane::sim {

// These refuse a value at `place` that is no such record: it is no dictionary, or it has an unknown
// key, lacks a key, or has a value of another kind, out of range or without use.
// A boolean and an integer may replace each other; a real may replace neither. An address may be
// empty, which is the same as missing.
using RecordCheck = Checked (*)(const PropertyListValue& value, const Place& place);
Checked checkDevice(const PropertyListValue& value, const Place& place);
Checked checkInterface(const PropertyListValue& value, const Place& place);
Checked checkConfig(const PropertyListValue& value, const Place& place);
Checked checkClient(const PropertyListValue& value, const Place& place);

}  // namespace halvane::sim

#endif
