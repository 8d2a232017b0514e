#include "tools/halvane/output/standard_output.h"

#include <cerrno>
#include <cstring>
#include <poll.h>
#include <unistd.h>
#include <utility>

namespace halvane::tool {

namespace {

// An errno; 0 if none is known.
int gReason = 0;

// Any other reason; empty for none.
std::string gOtherReason;

}  // namespace

void put(std::string_view text, std::FILE* stream) noexcept {
    if (text.empty()) return;  // it may have no address, which fwrite() demands
    if (std::fwrite(text.data(), 1, text.size(), stream) < text.size()) noteLostOutput(errno);
}

bool putAtOnce(std::string_view text) noexcept {
    while (!text.empty()) {
        const ssize_t count = ::write(STDOUT_FILENO, text.data(), text.size());
        if (count >= 0) {
            text.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno == EAGAIN) {  // another user of the file made it non-blocking
            pollfd writable = {STDOUT_FILENO, POLLOUT, 0};
            ::poll(&writable, 1, -1);
        } else if (errno != EINTR) {
            noteLostOutput(errno);
            return false;
        }
    }
    return true;
}

void noteLostOutput(int error) noexcept {
    if (gReason == 0 && gOtherReason.empty()) gReason = error;
}

void noteLostOutput(std::string reason) noexcept {
    if (gReason == 0 && gOtherReason.empty()) gOtherReason = std::move(reason);
}

bool flushOutput() noexcept {
    if (std::fflush(stdout) != 0) noteLostOutput(errno);
    return gReason == 0 && gOtherReason.empty() && std::ferror(stdout) == 0;
}

bool isReaderGone() noexcept {
    if (gReason != 0 || !gOtherReason.empty()) return gReason == EPIPE;
    pollfd output = {STDOUT_FILENO, 0, 0};  // a pipe without a reader has an error
    return ::poll(&output, 1, 0) == 1 && (output.revents & POLLERR) != 0;
}

std::string lostOutputReason() {
    if (!gOtherReason.empty()) return gOtherReason;
    return gReason != 0 ? std::strerror(gReason) : "not all of it was written";
}

}  // namespace halvane::tool
