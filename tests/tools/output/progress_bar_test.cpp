#include "tools/halvane/output/progress_bar.h"

#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <optional>
#include <poll.h>
#include <pty.h>
#include <string>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/support/scoped_environment.h"
#include "tests/support/terminal_program.h"
#include "tools/halvane/output/message.h"

using namespace halvane::tool;
using namespace std::chrono_literals;
using halvane::testing::ScopedEnvironment;

namespace {

const ProgressOf kFile = {.name = "walk-2023.pcapng", .total = 1'020'000'000};
constexpr std::uint64_t kDone = 541'000'000;

TEST(ProgressText, FitsTheWidth) {
    struct Row {
        std::size_t width;
        const char* text;
    };
    for (const Row& row : {
             Row{120,
                 "walk-2023.pcapng  [################...............]  53%  541 MB of 1.02 GB"
                 "  4 s"},
             Row{60, "walk-2023.pcapng  [#####......]  53%  541 MB of 1.02 GB  4 s"},
             Row{50, "walk-2023.pcapng  [##########..........]  53%  4 s"},
             Row{38, "walk-2023.pcapng  [####....]  53%  4 s"},
             Row{37, "walk-2023.pcapng  53%  4 s"},
             Row{24, "walk-202~capng  53%  4 s"},
             Row{9, "53%"},
             Row{2, ""},
         }) {
        const std::string text = progressText(kFile, kDone, 4s, row.width);
        EXPECT_LE(text.size(), row.width);
        EXPECT_EQ(text, row.text);
    }
}

TEST(ProgressText, IsNeverWiderThanTheTerminal) {
    for (std::size_t width = 0; width < 140; ++width) {
        for (const std::optional<std::uint64_t> total :
             {std::optional<std::uint64_t>(), std::optional<std::uint64_t>(0),
              std::optional<std::uint64_t>(2'000)}) {
            for (const std::size_t count : {1u, 12u}) {
                const ProgressOf what = {
                    .name = "walk.pcap", .total = total, .number = 7, .count = count};
                EXPECT_LE(progressText(what, 1'999, 3600s, width).size(), width);
            }
        }
    }
}

TEST(ProgressText, CountsSeveralFiles) {
    const ProgressOf what = {.name = "walk-3.pcapng", .total = 100, .number = 3, .count = 8};
    EXPECT_EQ(progressText(what, 50, 0s, 31), "3 of 8  walk-3.pcapng  50%  0 s");
}

TEST(ProgressText, HasNoPartOfAPipe) {
    const ProgressOf what = {.name = "standard input"};
    EXPECT_EQ(progressText(what, kDone, 4s, 120), "standard input  541 MB  4 s");
}

TEST(ProgressText, IsNeverWholeBeforeTheEnd) {
    const ProgressOf what = {.name = "a", .total = 1000};
    EXPECT_EQ(progressText(what, 1000, 0s, 14), "a  99%  0 s");
    EXPECT_EQ(progressText(what, 2000, 0s, 14), "a  99%  0 s");
}

TEST(ByteText, HasThreeDigits) {
    struct Row {
        std::uint64_t bytes;
        const char* text;
    };
    for (const Row& row :
         {Row{0, "0 B"}, Row{999, "999 B"}, Row{1000, "1.00 kB"}, Row{9'999, "10.0 kB"},
          Row{99'960, "100 kB"}, Row{999'499, "999 kB"}, Row{999'500, "1.00 MB"},
          Row{541'000'000, "541 MB"}, Row{1'020'000'000, "1.02 GB"}, Row{UINT64_MAX, "18.4 EB"}}) {
        EXPECT_EQ(byteText(row.bytes), row.text) << row.bytes;
    }
}

// A terminal, whose time is the test's.
class ProgressBarTest : public ::testing::Test {
  protected:
    void SetUp() override {
        HALVANE_SKIP_WITHOUT_TERMINALS();
        winsize size{};
        size.ws_col = 60;
        ASSERT_EQ(::openpty(&keyboard_, &terminal_, nullptr, nullptr, &size), 0);
        ::fcntl(keyboard_, F_SETFL, O_NONBLOCK);
    }
    ~ProgressBarTest() override {
        if (keyboard_ >= 0) ::close(keyboard_);
        if (terminal_ >= 0) ::close(terminal_);
    }

    // What has come to the screen since the last call.
    std::string screen() const {
        std::string text;
        char part[1024];
        for (pollfd file = {keyboard_, POLLIN, 0}; ::poll(&file, 1, 0) == 1;) {
            const ssize_t count = ::read(keyboard_, part, sizeof(part));
            if (count <= 0) break;
            text.append(part, static_cast<std::size_t>(count));
        }
        return text;
    }

    void setColumns(unsigned short columns) const {
        winsize size{};
        size.ws_col = columns;
        ::ioctl(terminal_, TIOCSWINSZ, &size);
    }

    ProgressBar::Clock clock() {
        return [this] { return std::chrono::steady_clock::time_point(now_); };
    }

    std::chrono::milliseconds now_ = 1h;
    int keyboard_ = -1;
    int terminal_ = -1;
    const ScopedEnvironment term_{"TERM", "xterm"};
    const ScopedEnvironment noColor_{"NO_COLOR", "1"};
};

constexpr const char* kErase = "\r\x1B[K";

TEST_F(ProgressBarTest, ComesAfterAWhileAndChangesAFewTimesASecond) {
    ProgressBar bar(terminal_, ResultsAre::Kept, clock());
    ASSERT_TRUE(bar.isShown());
    bar.update(kFile, kDone);
    now_ += 299ms;
    bar.update(kFile, kDone);
    EXPECT_EQ(screen(), "");
    now_ += 1ms;
    bar.update(kFile, kDone);
    EXPECT_EQ(screen(), kErase + progressText(kFile, kDone, 0s, 59));
    now_ += 99ms;
    bar.update(kFile, kDone + 1);
    EXPECT_EQ(screen(), "");
    now_ += 1ms;
    bar.update(kFile, kDone + 1);
    EXPECT_EQ(screen(), kErase + progressText(kFile, kDone + 1, 0s, 59));
}

TEST_F(ProgressBarTest, FitsTheTerminalAfterAResize) {
    ProgressBar bar(terminal_, ResultsAre::Kept, clock());
    now_ += 2s;
    bar.update(kFile, kDone);
    EXPECT_EQ(screen(), kErase + progressText(kFile, kDone, 2s, 59));
    setColumns(30);
    now_ += 1s;
    bar.update(kFile, kDone);
    EXPECT_EQ(screen(), kErase + progressText(kFile, kDone, 3s, 29));
}

TEST_F(ProgressBarTest, GoesAtItsEndAndBeforeOtherOutput) {
    {
        ProgressBar bar(terminal_, ResultsAre::Kept, clock());
        now_ += 1s;
        bar.update(kFile, kDone);
        screen();
        bar.clear();
        EXPECT_EQ(screen(), kErase);
        bar.clear();
        EXPECT_EQ(screen(), "") << "there is nothing to clear";
        now_ += 1s;
        bar.update(kFile, kDone);
        screen();
        ProgressBar::clearCurrent();
        EXPECT_EQ(screen(), kErase);
        now_ += 1s;
        bar.update(kFile, kDone);
        screen();
    }
    EXPECT_EQ(screen(), kErase);
    ProgressBar::clearCurrent();
    EXPECT_EQ(screen(), "");
}

TEST_F(ProgressBarTest, GoesWhenASignalEndsTheProgram) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
        const pid_t child = ::fork();
        if (child == 0) {
            std::signal(signal, SIG_DFL);
            ProgressBar bar(terminal_, ResultsAre::Kept, clock());
            now_ += 1s;
            bar.update(kFile, kDone);
            ::raise(signal);
            ::_exit(0);
        }
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status));
        EXPECT_EQ(WTERMSIG(status), signal);
        EXPECT_EQ(screen(), kErase + progressText(kFile, kDone, 1s, 59) + kErase);
    }
}

TEST_F(ProgressBarTest, LeavesIgnoredSignalsIgnored) {
    const auto before = std::signal(SIGHUP, SIG_IGN);
    {
        const ProgressBar bar(terminal_, ResultsAre::Kept, clock());
        EXPECT_EQ(std::signal(SIGHUP, SIG_IGN), SIG_IGN);
    }
    EXPECT_EQ(std::signal(SIGHUP, before), SIG_IGN);
}

TEST_F(ProgressBarTest, IsOnNoOtherTerminal) {
    for (const char* term : {"dumb", ""}) {
        const ScopedEnvironment environment("TERM", std::string(term));
        EXPECT_FALSE(ProgressBar(terminal_, ResultsAre::Kept, clock()).isShown()) << term;
    }
    const ScopedEnvironment unset("TERM", std::nullopt);
    EXPECT_FALSE(ProgressBar(terminal_, ResultsAre::Kept, clock()).isShown());
}

TEST_F(ProgressBarTest, SharesNoTerminalWithResultsAsTheyCome) {
    const int output = ::dup(STDOUT_FILENO);
    ::dup2(terminal_, STDOUT_FILENO);
    const bool isShownBesideResults = ProgressBar(terminal_, ResultsAre::Streamed).isShown();
    const bool isShownBeforeThem = ProgressBar(terminal_, ResultsAre::Kept).isShown();
    ::dup2(output, STDOUT_FILENO);
    ::close(output);
    EXPECT_FALSE(isShownBesideResults);
    EXPECT_TRUE(isShownBeforeThem);
}

TEST(ProgressBarWithoutATerminal, WritesNothing) {
    int ends[2] = {-1, -1};
    ASSERT_EQ(::pipe(ends), 0);
    ProgressBar bar(ends[1]);
    EXPECT_FALSE(bar.isShown());
    bar.update(kFile, kDone);
    pollfd file = {ends[0], POLLIN, 0};
    EXPECT_EQ(::poll(&file, 1, 0), 0);
    ::close(ends[0]);
    ::close(ends[1]);
}

}  // namespace
