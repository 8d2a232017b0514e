// Splits command lines with a given source of memory.
#ifndef HALVANE_UTILS_TEXT_COMMAND_LINE_TEXT_INTERNAL_H
#define HALVANE_UTILS_TEXT_COMMAND_LINE_TEXT_INTERNAL_H

#include "halvane/base/status.h"
#include "halvane/utils/text/heap_memory_internal.h"

namespace halvane {

// ParseCommandLineIntoArgV.
HalvaneStatus parseCommandLine(const char* text, int* count, char*** vector, HeapMemory memory);

}  // namespace halvane

#endif
