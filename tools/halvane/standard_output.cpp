#include "tools/halvane/standard_output.h"

#include <cerrno>
#include <cstring>

namespace halvane::tool {

namespace {

// Of errno; 0 for none that is known.
int gReason = 0;

}  // namespace

void put(std::string_view text, std::FILE* stream) noexcept {
    if (std::fwrite(text.data(), 1, text.size(), stream) < text.size()) noteLostOutput(errno);
}

void noteLostOutput(int error) noexcept {
    if (gReason == 0) gReason = error;
}

bool flushOutput() noexcept {
    if (std::fflush(stdout) != 0) noteLostOutput(errno);
    return gReason == 0 && std::ferror(stdout) == 0;
}

std::string lostOutputReason() {
    return gReason != 0 ? std::strerror(gReason) : "not all of it was written";
}

}  // namespace halvane::tool
