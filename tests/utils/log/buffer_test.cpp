// The output "file" with a buffer: when its text is written, and that none is lost or written
// twice.
#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <poll.h>
#include <string>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "halvane/base/status.h"
#include "halvane/utils/log.h"

#include "tests/support/sanitizers.h"
#include "tests/utils/log/file_test_support.h"
#include "tests/utils/log/test_support.h"

namespace {

using halvane::testing::Files;
using halvane::testing::kEnded;
using halvane::testing::LogFileTest;
using halvane::testing::resultInChild;

// Runs in a child at the very end of its process, after the library's own end.
void (*atVeryEnd)() = nullptr;
__attribute__((destructor(101))) void runAtVeryEnd() {
    if (atVeryEnd != nullptr) atVeryEnd();
}

class LogBufferTest : public LogFileTest {
  protected:
    HalvaneStatus setBuffer(const std::string& size, const std::string& more = "") const {
        return setFile("path=" + path() + ";buffer=" + size + more);
    }

    static void logError(const std::string& text) {
        LogPrintF(&category, "", kLogLevelError, "%s", text.c_str());
    }

    // Gives the category another output, so that the one of the test is closed.
    static void leave() { ASSERT_EQ(control(category, "output=console"), kStatusOK); }
};

// A pipe in the folder, with its reader.
class NamedPipe {
  public:
    explicit NamedPipe(const std::string& path) {
        if (::mkfifo(path.c_str(), 0600) == 0) {
            reader_ = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        }
    }
    ~NamedPipe() { ::close(reader_); }
    NamedPipe(const NamedPipe&) = delete;
    NamedPipe& operator=(const NamedPipe&) = delete;

    // Waits for text, at most a minute.
    std::string read() const {
        pollfd wait{reader_, POLLIN, 0};
        std::array<char, 4096> text;
        if (::poll(&wait, 1, 60'000) != 1) return "(nothing)";
        const auto length = ::read(reader_, text.data(), text.size());
        return {text.data(), static_cast<std::size_t>(std::max<ssize_t>(length, 0))};
    }

  private:
    int reader_ = -1;
};

TEST_F(LogBufferTest, TakesEveryFormOfASize) {
    for (const char* const size : {"0", "1", "100B", "64K", "16M", "16777216"}) {
        EXPECT_EQ(setBuffer(size), kStatusOK) << size;
    }
    for (const char* const size : {"", "K", "-1", "64k", "1G", "64K#1", "1KK", "16777217", "17M",
                                   "18446744073709551616", "18014398509481984K"}) {
        EXPECT_EQ(setBuffer(size), kStatusUnsupported) << size;
        LogControl(nullptr);
    }
    EXPECT_EQ(setFile("buffer=64K"), kStatusUnsupported);  // no file
    EXPECT_EQ(setFile("stdout;buffer=64K"), kStatusMalformed);
    EXPECT_EQ(control(category, "output=syslog;buffer=64K"), kStatusUnknownParameter);
}

TEST_F(LogBufferTest, WritesAtItsSize) {
    ASSERT_EQ(setBuffer("10"), kStatusOK);
    log("123\n");
    log("45678\n");
    EXPECT_EQ(contents(), "");  // 10 bytes fill the buffer
    log("9\n");
    EXPECT_EQ(contents(), "123\n45678\n");
    log("a text longer than the buffer\n");
    EXPECT_EQ(contents(), "123\n45678\n9\na text longer than the buffer\n");
}

TEST_F(LogBufferTest, WritesErrorsAndWhatCameBeforeThem) {
    ASSERT_EQ(setBuffer("64K"), kStatusOK);
    log("info\n");
    LogPrintF(&category, "", kLogLevelError - 1, "below\n");
    EXPECT_EQ(contents(), "");
    logError("error\n");
    EXPECT_EQ(contents(), "info\nbelow\nerror\n");
    LogPrintF(&category, "", kLogLevelMax | kLogFlagRaw, "%s\n", std::string(1000, 'x').c_str());
    EXPECT_EQ(contents(), "info\nbelow\nerror\n" + std::string(1000, 'x') + "\n");
}

TEST_F(LogBufferTest, WritesOnATimer) {
    const NamedPipe pipe(path("pipe"));
    ASSERT_EQ(setFile("path=" + path("pipe") + ";buffer=64K"), kStatusOK);
    for (const char* const text : {"first\n", "second\n"}) {
        log(text);
        EXPECT_EQ(pipe.read(), text);
    }
}

TEST_F(LogBufferTest, WritesOnATimerOfItsOwnInAChild) {
    if (HALVANE_IS_THREAD_SANITIZED) GTEST_SKIP() << "no thread after such a fork";
    const NamedPipe pipe(path("pipe"));
    ASSERT_EQ(setFile("path=" + path("pipe") + ";buffer=64K"), kStatusOK);
    log("parent\n");  // starts the parent's timer
    EXPECT_EQ(resultInChild([&pipe] {
                  if (pipe.read() != "parent\n") return 2;  // written before the fork
                  log("child\n");
                  return pipe.read() == "child\n" ? 0 : 3;
              }),
              0);
}

TEST_F(LogBufferTest, WritesWhenItsOutputGoes) {
    ASSERT_EQ(setBuffer("64K"), kStatusOK);
    log("a\n");
    leave();
    EXPECT_EQ(contents(), "a\n");
    ASSERT_EQ(setBuffer("64K"), kStatusOK);
    log("b\n");
    LogUtils_Finalize();
    EXPECT_EQ(contents(), "a\nb\n");
}

TEST_F(LogBufferTest, WritesBeforeAForkAndOnlyOnce) {
    if (HALVANE_IS_THREAD_SANITIZED) GTEST_SKIP() << "no thread after such a fork";
    ASSERT_EQ(setBuffer("64K"), kStatusOK);
    log("parent\n");
    EXPECT_EQ(resultInChild([this] {
                  if (contents() != "parent\n") return 2;
                  log("child\n");
                  return LogReopen() == kStatusOK ? 0 : 3;
              }),
              0);
    log("parent again\n");
    leave();
    EXPECT_EQ(contents(), "parent\nchild\nparent again\n");
}

// How a child ends that logs and then calls `end`.
int statusOfChild(const std::string& setting, const std::function<void()>& end) {
    std::fflush(nullptr);  // the child must not print it again
    const pid_t child = ::fork();
    if (child == 0) {
        ::alarm(60);
        if (LogControl(setting.c_str()) != kStatusOK) ::_exit(2);
        LogPrintF(&LogFileTest::category, "", kLogLevelInfo, "info\n");
        end();
        ::_exit(3);
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    return status;
}

TEST_F(LogBufferTest, WritesAtExit) {
    const int status = statusOfChild("^FileTest$:output=file;path=" + path() + ";buffer=64K", [] {
        std::atexit([] { log("in a handler\n"); });
        atVeryEnd = [] { log("at the very end\n"); };
        std::exit(0);
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(contents(), "info\nin a handler\nat the very end\n");
}

// A number that a child shares with its parent.
class SharedCounter {
  public:
    SharedCounter()
        : number_(::mmap(nullptr, sizeof(std::atomic<int>), PROT_READ | PROT_WRITE,
                         MAP_SHARED | MAP_ANONYMOUS, -1, 0)) {}
    ~SharedCounter() { ::munmap(number_, sizeof(std::atomic<int>)); }
    SharedCounter(const SharedCounter&) = delete;
    SharedCounter& operator=(const SharedCounter&) = delete;

    std::atomic<int>& operator*() const { return *static_cast<std::atomic<int>*>(number_); }

  private:
    void* number_;
};

// Unlike that of the fixture, it may be used until the process ends.
HALVANE_LOG_CATEGORY(Endless, kLogLevelInfo, 0, nullptr);

TEST_F(LogBufferTest, WritesAtExitWhatAnotherThreadLogsMeanwhile) {
    constexpr int kTrials = 20;
    for (int i = 0; i < kTrials; ++i) {
        const SharedCounter logged;
        const auto control =
            "^FileTest$:level=off,^Endless$:output=file;path=" + path() + ";buffer=64K";
        const int status = statusOfChild(control, [&] {
            std::thread([&] {
                for (;; ++*logged) HALVANE_LOG(&gLogCategory_Endless, kLogLevelInfo, "line\n");
            }).detach();
            while (*logged < 100) std::this_thread::yield();
            std::exit(0);
        });
        EXPECT_EQ(status, 0);
        EXPECT_GE(std::ranges::count(contents(), '\n'), *logged);
        std::filesystem::remove(path());
    }
}

TEST_F(LogBufferTest, LosesOnlyWhatWaitsWhenTheProcessIsKilled) {
    const int status = statusOfChild("^FileTest$:output=file;path=" + path() + ";buffer=64K", [] {
        logError("error\n");
        log("lost\n");
        ::raise(SIGKILL);
    });
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(contents(), "info\nerror\n");
}

// --- Files that move ---

TEST_F(LogBufferTest, RotatesAsWithoutABuffer) {
    const std::string rest = ";roll=100#4;backup=" + path("save") + "#3";
    std::vector<std::string> lines;
    std::uint32_t random = 1;
    for (int i = 0; i < 60; ++i) {
        random = random * 1664525 + 1013904223;
        lines.push_back(std::to_string(i) + std::string(random >> 26, '.') + "\n");
    }
    Files expected;
    for (const char* const size : {"0", "1", "40", "99", "100", "101", "1K"}) {
        ASSERT_EQ(setBuffer(size, rest), kStatusOK);
        for (const std::string& line : lines) log(line);
        leave();
        if (expected.empty()) expected = files();
        EXPECT_EQ(expected.size(), 7u);
        EXPECT_EQ(files(), expected) << size;
        for (const auto& [name, text] : files()) std::filesystem::remove(path(name));
    }
}

TEST_F(LogBufferTest, CountsWhatWaits) {
    ASSERT_EQ(setBuffer("64K", ";roll=10#3"), kStatusOK);
    log("12345\n");
    log("789\n");
    EXPECT_EQ(files(), (Files{{"log", ""}}));
    log("a\n");
    EXPECT_EQ(files(), (Files{{"log", ""}, {"log.1", "12345\n789\n" + kEnded}}));
    leave();
    EXPECT_EQ(contents(), "a\n");
}

TEST_F(LogBufferTest, FollowsItsPathWhenItWrites) {
    ASSERT_EQ(setBuffer("64K"), kStatusOK);
    logError("a\n");
    log("b\n");
    std::filesystem::rename(path(), path("old"));
    log("c\n");
    logError("d\n");
    EXPECT_EQ(files(), (Files{{"log", "b\nc\nd\n"}, {"old", "a\n"}}));
    log("e\n");
    std::filesystem::remove(path());
    EXPECT_EQ(LogReopen(), kStatusOK);
    EXPECT_EQ(contents(), "e\n");
}

// --- Files that take nothing ---

void setSizeLimit(rlim_t bytes) {
    const rlimit limit{bytes, RLIM_INFINITY};
    ::signal(SIGXFSZ, SIG_DFL);
    ::setrlimit(RLIMIT_FSIZE, &limit);
}

TEST_F(LogBufferTest, KeepsWhatAFullDiskDoesNotTake) {
    ASSERT_EQ(setBuffer("20"), kStatusOK);
    EXPECT_EQ(resultInChild([this] {
                  setSizeLimit(8);
                  log("12345\n");
                  logError("6789a\n");
                  if (contents() != "12345\n67") return 2;
                  log("bcd\n");
                  logError("too long for what is left\n");
                  setSizeLimit(RLIM_INFINITY);
                  logError("e\n");
                  return contents() == "12345\n6789a\nbcd\ne\n" ? 0 : 3;
              }),
              0);
}

// The parent keeps the text, and writes it later.
TEST_F(LogBufferTest, DoesNotPassOnToAChildWhatCouldNotBeWritten) {
    ASSERT_EQ(setBuffer("64K"), kStatusOK);
    EXPECT_EQ(resultInChild([this] {
                  setSizeLimit(0);
                  log("once\n");
                  const int status = resultInChild([] {
                      setSizeLimit(RLIM_INFINITY);
                      return LogReopen() == kStatusOK ? 0 : 4;
                  });
                  if (status != 0 || !contents().empty()) return 2;
                  setSizeLimit(RLIM_INFINITY);
                  LogReopen();
                  return contents() == "once\n" ? 0 : 3;
              }),
              0);
}

TEST_F(LogBufferTest, StopsNoProgramAtAPipeWithoutAReader) {
    {
        const NamedPipe pipe(path("pipe"));
        ASSERT_EQ(setFile("path=" + path("pipe") + ";buffer=10"), kStatusOK);
    }
    for (int i = 0; i < 20; ++i) EXPECT_EQ(LogPrintF(&category, "", kLogLevelError, "text\n"), 5);
}

// --- Threads ---

TEST_F(LogBufferTest, LosesNoLineOfManyThreads) {
    constexpr int kThreads = 4;
    constexpr int kLines = 2000;
    const std::string buffered = "output=file;path=" + path() + ";buffer=2K";
    ASSERT_EQ(control(category, buffered), kStatusOK);
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([] {
            for (int i = 0; i < kLines; ++i) {
                const bool isError = i % 64 == 0;
                HALVANE_LOG(&category, isError ? kLogLevelError : kLogLevelInfo, "line %03d\n", i);
            }
        });
    }
    for (int i = 0; i < 50; ++i) {
        EXPECT_EQ(control(category, "output=file;path=" + path()), kStatusOK);
        EXPECT_EQ(control(category, buffered), kStatusOK);
        EXPECT_EQ(LogReopen(), kStatusOK);
    }
    for (auto& thread : threads) thread.join();
    leave();
    const std::string text = contents();
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), kThreads * kLines);
}

}  // namespace
