// Processes that the test did not start itself.
#ifndef TESTS_SUPPORT_PROCESS_LIST_H
#define TESTS_SUPPORT_PROCESS_LIST_H

#include <charconv>
#include <filesystem>
#include <fstream>
#include <poll.h>
#include <sstream>
#include <string>
#include <string_view>
#include <sys/syscall.h>
#include <sys/types.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace halvane::testing {

// Those whose command line ends with the word.
inline std::vector<pid_t> processesOf(std::string_view lastWord) {
    std::vector<pid_t> found;
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        const std::string name = entry.path().filename();
        pid_t process = 0;
        const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), process);
        if (error != std::errc() || end != name.data() + name.size()) continue;
        std::ifstream file(entry.path() / "cmdline", std::ios::binary);
        std::ostringstream read;
        read << file.rdbuf();  // nothing of a process that has ended meanwhile
        std::string words = read.str();
        if (!words.empty()) words.pop_back();  // the zero at the end
        if (words.substr(words.rfind('\0') + 1) == lastWord) found.push_back(process);
    }
    return found;
}

// Waits until the process has ended.
inline void waitForEndOf(pid_t process) {
    const int handle = static_cast<int>(::syscall(SYS_pidfd_open, process, 0));
    if (handle < 0) return;  // it has
    pollfd end = {handle, POLLIN, 0};
    ::poll(&end, 1, -1);
    ::close(handle);
}

}  // namespace halvane::testing

#endif
