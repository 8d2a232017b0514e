#include "tools/halvane/output/progress_bar.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <string_view>

using halvane::tool::ProgressBar;
using halvane::tool::progressBarText;
using halvane::tool::wantsProgressBar;

namespace {

constexpr std::uint64_t kMiB = 1024 * 1024;

TEST(ProgressBar, ShowsThePartDone) {
    struct Row {
        std::uint64_t done, total;
        std::size_t width;
        std::string_view text;
        const char* reason;
    };
    for (const Row& row : {
             Row{0, 100, 17, "[>         ]   0%", "nothing done"},
             Row{54, 100, 17, "[=====>    ]  54%", "in the middle"},
             Row{999, 1000, 17, "[=========>]  99%", "not yet all: never rounded up"},
             Row{100, 100, 17, "[==========] 100%", "all done"},
             Row{150, 100, 17, "[==========] 100%", "a file that grew meanwhile"},
             Row{UINT64_MAX / 2, UINT64_MAX, 11, "[==> ]  50%", "no overflow"},
             Row{1, 2, 10, "", "too narrow"},
             Row{1, 2, 0, "", "no columns"},
             Row{0, 0, 17, "", "nothing to do"},
         }) {
        EXPECT_EQ(progressBarText(row.done, row.total, row.width), row.text) << row.reason;
    }
}

TEST(ProgressBar, FillsTheWidthExactly) {
    for (std::size_t width = 11; width < 100; ++width) {
        for (std::uint64_t done = 0; done <= 100; ++done) {
            EXPECT_EQ(progressBarText(done, 100, width).size(), width) << done;
        }
    }
}

TEST(ProgressBar, IsWantedForLargeFilesOnATerminalWithoutNoColor) {
    EXPECT_TRUE(wantsProgressBar(4 * kMiB + 1, true, nullptr));
    EXPECT_TRUE(wantsProgressBar(4 * kMiB + 1, true, ""));
    EXPECT_FALSE(wantsProgressBar(4 * kMiB, true, nullptr));
    EXPECT_FALSE(wantsProgressBar(std::nullopt, true, nullptr));
    EXPECT_FALSE(wantsProgressBar(4 * kMiB + 1, false, nullptr));
    EXPECT_FALSE(wantsProgressBar(4 * kMiB + 1, true, "1"));
}

TEST(ProgressBar, WritesNothingToWhatIsNoTerminal) {
    std::FILE* file = std::tmpfile();
    ASSERT_NE(file, nullptr);
    {
        ProgressBar bar(file, 100 * kMiB);
        bar.update(50 * kMiB);
    }
    EXPECT_EQ(std::ftell(file), 0);
    std::fclose(file);
}

}  // namespace
