// A BSS record as JSON.
//
// Keys are the record's property names, and stay as they are: programs read them. Byte data is
// lower-case hexadecimal; absent values are left out.
#ifndef TOOLS_HALVANE_OUTPUT_RECORD_JSON_H
#define TOOLS_HALVANE_OUTPUT_RECORD_JSON_H

#include "halvane/base/byte_buffer.h"
#include "halvane/ie/mac.h"

#include "tools/halvane/output/json_value.h"

namespace halvane::tool {

// "02:1A:2B:3C:4D:5E"; null, and so left out, for an empty address.
JSON addressOf(const ByteBuffer& address);

// Adds the record's members to an object.
void appendRecord(JSON& object, const HalvaneMAC& record);

}  // namespace halvane::tool

#endif
