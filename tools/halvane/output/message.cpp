#include "tools/halvane/output/message.h"

#include <cstdio>

#include "halvane/base/escaped_text.h"

namespace halvane::tool {

void complain(const std::string& message) {
    std::fprintf(stderr, "halvane: %s\n", escapedText(message).c_str());
}

std::string inputName(const std::string& path) {
    if (path == "-") return "standard input";
    return path.empty() ? "''" : path;
}

}  // namespace halvane::tool
