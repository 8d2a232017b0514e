#include "tools/halvane/message.h"

#include <cstdio>

#include "halvane/base/byte_buffer.h"

#include "tools/halvane/escape_text.h"

namespace halvane::tool {

void complain(const std::string& message) {
    const auto bytes = ByteBuffer::fromText(message);
    std::fprintf(stderr, "halvane: %s\n", escapeSSID(bytes.bytes()).c_str());
}

std::string inputName(const std::string& path) {
    if (path == "-") return "standard input";
    return path.empty() ? "''" : path;
}

}  // namespace halvane::tool
