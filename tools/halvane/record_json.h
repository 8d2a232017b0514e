// A BSS record as JSON.
//
// Keys are the record's property names, and stay as they are: programs read them. Byte data is
// lower-case hexadecimal; absent values are left out.
#ifndef TOOLS_HALVANE_RECORD_JSON_H
#define TOOLS_HALVANE_RECORD_JSON_H

#include <nlohmann/json_fwd.hpp>

#include "halvane/ie/mac.h"

namespace halvane::tool {

// Keys in the order in which they were added, so that the same record gives the same text.
using JSON = nlohmann::ordered_json;

// Adds the record's members to an object.
void appendRecord(JSON& object, const HalvaneMAC& record);

}  // namespace halvane::tool

#endif
