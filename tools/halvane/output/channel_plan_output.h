// Channels of all bands and widths, and operating classes, for people and for programs.
#ifndef TOOLS_HALVANE_OUTPUT_CHANNEL_PLAN_OUTPUT_H
#define TOOLS_HALVANE_OUTPUT_CHANNEL_PLAN_OUTPUT_H

#include <vector>

#include "halvane/air/channel_plan.h"
#include "halvane/air/operating_class.h"

#include "tools/halvane/output/format.h"
#include "tools/halvane/output/json_writer.h"

namespace halvane::tool {

// One object with the properties (channel_properties.h).
void writeJSON(JSONWriter& writer, const air::PlannedChannel& channel);
void writeJSON(JSONWriter& writer, const air::OperatingClass& row);

// A column that would be empty is left out of the text. REQUIRES: `format` is no property list.
void printChannelPlan(const std::vector<air::PlannedChannel>& channels, Format format);

// One line, or one object, for each. REQUIRES: the same.
void printOperatingClasses(const std::vector<air::OperatingClass>& classes, Format format);

// What the class says, one value per line, then its channels; other formats as above.
void printOperatingClass(const air::OperatingClass& row, Format format);

}  // namespace halvane::tool

#endif
