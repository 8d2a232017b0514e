#include "tools/halvane/output/explain_parts.h"

#include <cstdio>

namespace halvane::tool {

std::string hexText(unsigned value) {
    char text[16];
    std::snprintf(text, sizeof text, "%04X", value);
    return text;
}

}  // namespace halvane::tool
