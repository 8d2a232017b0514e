#include "tools/halvaned-sim/state_text.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

#include "halvane/platform/os/file_internal.h"

namespace halvane::sim {

namespace {

constexpr const char kStandardInput[] = "-";
constexpr std::size_t kStep = 65536;

// Returns false and sets errno if that fails.
bool readAll(int descriptor, std::string& text) {
    while (text.size() <= kLargestState) {
        const std::size_t size = text.size();
        text.resize(size + std::min(kStep, kLargestState + 1 - size));
        ssize_t count = -1;
        do {
            count = ::read(descriptor, text.data() + size, text.size() - size);
        } while (count < 0 && errno == EINTR);
        text.resize(size + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        if (count <= 0) return count == 0;
    }
    return true;
}

}  // namespace

std::string stateName(const std::string& path) {
    return path == kStandardInput ? "standard input" : path;
}

Result<std::string, std::string> stateText(const std::string& path) {
    const bool isFile = path != kStandardInput;
    const FileDescriptor file(isFile ? ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY) : -1);
    std::string text;
    if ((isFile && !file) || !readAll(isFile ? file.number() : STDIN_FILENO, text)) {
        return Unexpected(stateName(path) + ": " + std::strerror(errno));
    }
    if (text.size() > kLargestState) {
        return Unexpected(stateName(path) + ": is longer than " + std::to_string(kLargestState) +
                          " bytes");
    }
    return text;
}

}  // namespace halvane::sim
