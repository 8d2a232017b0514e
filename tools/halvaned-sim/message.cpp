#include "tools/halvaned-sim/message.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/escaped_text.h"

namespace halvane::sim {

void complain(const std::string& message) {
    const auto bytes = ByteBuffer::fromText(message);
    std::fprintf(stderr, "halvaned-sim: %s\n", escapedText(bytes.bytes()).c_str());
}

bool print(const std::string& text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) == text.size() &&
        std::fflush(stdout) == 0) {
        return true;
    }
    complain(std::string("standard output: ") + std::strerror(errno));
    return false;
}

}  // namespace halvane::sim
