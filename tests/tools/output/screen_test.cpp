#include "tools/halvane/output/screen.h"

#include <array>
#include <cstddef>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

using namespace halvane::tool;

namespace {

TEST(Redrawn, WritesTheLinesThatDiffer) {
    EXPECT_EQ(redrawn({"a", "b", "c"}, {"a", "x", "c"}), "\x1B[?2026h\x1B[2;1Hx\x1B[K\x1B[?2026l");
    EXPECT_EQ(redrawn({"a", "b"}, {"a", ""}), "\x1B[?2026h\x1B[2;1H\x1B[K\x1B[?2026l");
}

TEST(Redrawn, WritesNothingIfNothingDiffers) {
    EXPECT_EQ(redrawn({"a", "b"}, {"a", "b"}), "");
    EXPECT_EQ(redrawn({}, {}), "");
}

TEST(Redrawn, WritesAllLinesOnAnotherScreen) {
    const std::string all = "\x1B[?2026h\x1B[H\x1B[2J\x1B[1;1Ha\x1B[K\x1B[2;1Hb\x1B[K\x1B[?2026l";
    EXPECT_EQ(redrawn({}, {"a", "b"}), all);
    EXPECT_EQ(redrawn({"a"}, {"a", "b"}), all);
    EXPECT_EQ(redrawn({"a", "b", "c"}, {"a", "b"}), all);
}

TEST(Screen, LosesNothingOnATerminalThatDoesNotBlock) {
    constexpr std::size_t kMoreThanFits = std::size_t{1} << 20;
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    ASSERT_EQ(::fcntl(ends[1], F_SETFL, O_NONBLOCK), 0);
    std::string read;
    std::thread reader([&] {
        std::array<char, 4096> room{};
        for (ssize_t count = 0; (count = ::read(ends[0], room.data(), room.size())) > 0;) {
            read.append(room.data(), static_cast<std::size_t>(count));
        }
    });
    Screen screen(ends[1], -1);
    const std::string line(kMoreThanFits, 'x');
    screen.show({line});
    screen.leave();
    ::close(ends[1]);
    reader.join();
    ::close(ends[0]);
    EXPECT_NE(read.find(line), std::string::npos);
    EXPECT_TRUE(read.ends_with("\x1B[?1049l"));
}

}  // namespace
