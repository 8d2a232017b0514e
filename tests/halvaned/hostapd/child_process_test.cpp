#include "tools/halvaned/hostapd/child_process.h"

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <stdlib.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "tests/halvaned/hostapd/test_loop.h"
#include "tests/support/temporary_folder.h"

using namespace halvane;
using namespace halvane::hosting;
using halvane::testing::TemporaryFolder;
using halvane::testing::TestLoop;

namespace {

constexpr std::uint64_t kLong = 60'000'000;  // microseconds, which no test waits for

class ChildProcessTest : public ::testing::Test {
  protected:
    void start(const std::string& play) {
        std::ofstream(folder_.path() / "play") << play;
        auto started = ChildProcess::start(
            loop_.get(), {HALVANE_FAKE_HOSTAPD, folder_.path() / "hostapd.conf"},
            {.line = [this](std::string_view line) { lines_.emplace_back(line); },
             .ended = [this](const ChildEnd& end) { end_ = end; }});
        if (!started) FAIL() << started.error();
        child_ = *std::move(started);
    }

    void runToEnd() {
        loop_.runUntil([this] { return end_.has_value(); });
    }
    void runToLine(const std::string& line) {
        loop_.runUntil([&] { return !lines_.empty() && lines_.back() == line; });
    }

    TestLoop loop_;
    TemporaryFolder folder_;
    std::vector<std::string> lines_;
    std::optional<ChildEnd> end_;
    std::unique_ptr<ChildProcess> child_;
};

using Lines = std::vector<std::string>;

TEST_F(ChildProcessTest, TellsItsLinesAndItsEnd) {
    start("say one\nsay \nbegin three\nexit 3\n");
    runToEnd();
    EXPECT_EQ(lines_, (Lines{"one", "", "three"}));
    EXPECT_FALSE(end_->wasKilled);
    EXPECT_EQ(end_->text(), "with status 3");
    EXPECT_EQ(child_->process(), -1);
}

TEST_F(ChildProcessTest, InheritsNothing) {
    const int open = ::dup(STDERR_FILENO);
    ::setenv("HALVANE_SECRET", "secret", 1);
    const auto before = ::signal(SIGPIPE, SIG_IGN);
    start("facts\nexit 0\n");
    ::signal(SIGPIPE, before);
    ::close(open);
    ::unsetenv("HALVANE_SECRET");
    runToEnd();
    EXPECT_EQ(lines_, (Lines{"descriptors 3", "blocked 0", "ignored 0", "leader 1", "environment 0",
                             "death " + std::to_string(SIGTERM), "input 0"}));
}

TEST_F(ChildProcessTest, EndsWhenAsked) {
    start("say ready\n");
    runToLine("ready");
    child_->end(kLong);
    child_->end(kLong);
    runToEnd();
    EXPECT_EQ(end_->text(), "with status 0");
    child_->end(kLong);
}

TEST_F(ChildProcessTest, IsKilledIfItIgnoresThat) {
    start("stubborn\nsay ready\n");
    runToLine("ready");
    child_->end(1000);
    runToEnd();
    EXPECT_TRUE(end_->wasKilled);
    EXPECT_EQ(end_->text(), "by signal 9");
}

TEST_F(ChildProcessTest, IsKilledWhileItIsStopped) {
    start("say ready\n");
    runToLine("ready");
    ::kill(child_->process(), SIGSTOP);
    child_->end(1000);
    runToEnd();
    EXPECT_EQ(end_->number, SIGKILL);
}

TEST_F(ChildProcessTest, LeavesNoZombie) {
    start("exit 0\n");
    const pid_t process = child_->process();
    runToEnd();
    loop_.settle();
    EXPECT_EQ(::kill(process, 0), -1);
    EXPECT_EQ(errno, ESRCH);
}

TEST_F(ChildProcessTest, EndsWithItsOwner) {
    start("stubborn\nsay ready\n");
    runToLine("ready");
    const pid_t process = child_->process();
    child_.reset();
    EXPECT_EQ(::kill(process, 0), -1);
    EXPECT_FALSE(end_) << "no handler is called";
}

TEST_F(ChildProcessTest, CutsLongLinesAndLosesNone) {
    start("long 5000\nflood 20000\nexit 0\n");
    runToEnd();
    ASSERT_EQ(lines_.size(), 20001U);
    EXPECT_EQ(lines_[0], std::string(ChildProcess::kLongestLine, 'x'));
    EXPECT_EQ(lines_.back(), "line 19999");
}

TEST_F(ChildProcessTest, EndsThoughItsOutputStaysOpen) {
    start("linger\nsay ready\nexit 0\n");
    const pid_t group = child_->process();
    runToEnd();
    EXPECT_EQ(lines_, Lines{"ready"});
    ::kill(-group, SIGKILL);
}

TEST_F(ChildProcessTest, MayBeDestroyedByItsEnd) {
    std::ofstream(folder_.path() / "play") << "exit 0\n";
    bool hasEnded = false;
    auto started =
        ChildProcess::start(loop_.get(), {HALVANE_FAKE_HOSTAPD, folder_.path() / "hostapd.conf"},
                            {.ended = [&](const ChildEnd&) {
                                child_.reset();
                                hasEnded = true;
                            }});
    ASSERT_TRUE(started);
    child_ = *std::move(started);
    const pid_t process = child_->process();
    loop_.runUntil([&] { return hasEnded; });
    EXPECT_EQ(::kill(process, 0), -1);
}

TEST_F(ChildProcessTest, SaysWhyItCannotStart) {
    const auto missing = ChildProcess::start(loop_.get(), {folder_.path() / "none"}, {});
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.error(),
              (folder_.path() / "none").string() + " cannot be run: No such file or directory");
    EXPECT_FALSE(ChildProcess::start(loop_.get(), {folder_.path()}, {})) << "a folder";
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "no child is left";
}

}  // namespace
