// Ends the program if one of its tests hangs: writes the test's name and what each thread is at,
// and aborts. Without it, CTest ends the program later, and nobody learns which test it was.
#include <array>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <dirent.h>
#include <execinfo.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

// Longer than any test needs on a busy machine, and shorter than the limit of CTest.
constexpr unsigned kSeconds = 300;

std::array<char, 512> runningTest;

void writeText(const char* text) {
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, text, std::strlen(text));
}

void writeStack(int) {
    std::array<void*, 64> calls{};
    writeText("-- thread\n");
    ::backtrace_symbols_fd(calls.data(), ::backtrace(calls.data(), calls.size()), STDERR_FILENO);
}

// Asks the threads in turn, so that their stacks are not mixed.
void writeStacksOfOtherThreads() {
    DIR* threads = ::opendir("/proc/self/task");
    if (threads == nullptr) return;
    while (const dirent* entry = ::readdir(threads)) {
        const auto thread = static_cast<pid_t>(std::atoi(entry->d_name));
        if (thread == 0 || thread == ::gettid()) continue;
        ::syscall(SYS_tgkill, ::getpid(), thread, SIGUSR1);
        const timespec pause{.tv_sec = 0, .tv_nsec = 200'000'000};
        ::nanosleep(&pause, nullptr);
    }
    ::closedir(threads);
}

// The program ends here anyway, so functions that are unsafe in a signal handler do no harm.
void giveUp(int) {
    writeText("the test hangs: ");
    writeText(runningTest.data());
    writeText("\n");
    std::signal(SIGUSR1, writeStack);
    writeStack(SIGALRM);
    writeStacksOfOtherThreads();
    std::signal(SIGABRT, SIG_DFL);
    std::abort();
}

class TestDeadline final : public ::testing::EmptyTestEventListener {
    void OnTestStart(const ::testing::TestInfo& test) override {
        const std::string name = std::string(test.test_suite_name()) + "." + test.name();
        runningTest.fill('\0');
        name.copy(runningTest.data(), runningTest.size() - 1);
        std::signal(SIGALRM, giveUp);
        ::alarm(kSeconds);
    }

    void OnTestEnd(const ::testing::TestInfo&) override { ::alarm(0); }
};

// GoogleTest owns its listeners.
[[maybe_unused]] const bool isListening = [] {
    ::testing::UnitTest::GetInstance()->listeners().Append(new TestDeadline);
    return true;
}();

}  // namespace
