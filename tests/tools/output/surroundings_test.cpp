#include "tools/halvane/output/surroundings.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <pty.h>
#include <string>
#include <sys/ioctl.h>

#include "tests/support/terminal_program.h"

using namespace halvane::tool;

namespace {

using Environment = std::map<std::string, std::string>;

using Stream = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

Surroundings around(const Stream& stream, const Environment& environment) {
    return surroundingsOf(stream.get(), [&](const char* name) -> const char* {
        const auto variable = environment.find(name);
        return variable == environment.end() ? nullptr : variable->second.c_str();
    });
}

// Returns what a stream that is no terminal has around it.
Surroundings around(const Environment& environment) {
    return around(Stream(std::fopen("/dev/null", "w"), std::fclose), environment);
}

TEST(Surroundings, AreNothingWithoutAnEnvironment) {
    const Surroundings none = around({});
    EXPECT_FALSE(none.isTerminal);
    EXPECT_FALSE(none.columns);
    EXPECT_FALSE(none.lines);
    EXPECT_FALSE(none.isUTF8);
    EXPECT_EQ(none.term + none.colorTerm + none.noColor, "");
}

TEST(Surroundings, HaveTheVariables) {
    const Surroundings found =
        around({{"TERM", "linux"}, {"COLORTERM", "truecolor"}, {"NO_COLOR", "1"}});
    EXPECT_EQ(found.term, "linux");
    EXPECT_EQ(found.colorTerm, "truecolor");
    EXPECT_EQ(found.noColor, "1");
}

TEST(Surroundings, KnowUTF8ByTheNameOfTheLocale) {
    for (const char* name : {"C.UTF-8", "en_US.utf8", "xx_XX.UTF-8", "de_DE.UTF-8@euro"}) {
        EXPECT_TRUE(around({{"LANG", name}}).isUTF8) << name;
    }
    for (const char* name : {"C", "POSIX", "en_US.ISO-8859-1", "de_DE@euro", "xx_XX", ".", "@"}) {
        EXPECT_FALSE(around({{"LANG", name}}).isUTF8) << name;
    }
}

TEST(Surroundings, TakeTheFirstLocaleThatIsNotEmpty) {
    EXPECT_FALSE(around({{"LC_ALL", "C"}, {"LANG", "C.UTF-8"}}).isUTF8);
    EXPECT_TRUE(around({{"LC_ALL", ""}, {"LC_CTYPE", "C.UTF-8"}, {"LANG", "C"}}).isUTF8);
    EXPECT_FALSE(around({{"LC_CTYPE", "C"}, {"LANG", "C.UTF-8"}}).isUTF8);
}

TEST(Surroundings, HaveTheSizeThatTheEnvironmentTells) {
    const Surroundings found = around({{"COLUMNS", "132"}, {"LINES", "43"}});
    EXPECT_EQ(found.columns, 132u);
    EXPECT_EQ(found.lines, 43u);
    EXPECT_EQ(around({{"COLUMNS", "65535"}}).columns, 65535u);
    for (const char* size : {"", "0", "-1", "+80", "80x", " 80", "65536", "99999999999999999999"}) {
        EXPECT_FALSE(around({{"COLUMNS", size}}).columns) << size;
    }
}

TEST(Surroundings, HaveTheSizeOfTheTerminal) {
    HALVANE_SKIP_WITHOUT_TERMINALS();
    int keyboard = -1;
    int terminal = -1;
    const winsize size = {.ws_row = 24, .ws_col = 80, .ws_xpixel = 0, .ws_ypixel = 0};
    ASSERT_EQ(::openpty(&keyboard, &terminal, nullptr, nullptr, &size), 0);
    const Stream keys(::fdopen(keyboard, "r"), std::fclose);
    const Stream screen(::fdopen(terminal, "w"), std::fclose);

    const Surroundings found = around(screen, {});
    EXPECT_TRUE(found.isTerminal);
    EXPECT_EQ(found.columns, 80u);
    EXPECT_EQ(found.lines, 24u);
    EXPECT_EQ(around(screen, {{"COLUMNS", "132"}}).columns, 132u);
    EXPECT_EQ(around(screen, {{"COLUMNS", "many"}}).columns, 80u);

    const winsize unknown = {};
    ASSERT_EQ(::ioctl(::fileno(screen.get()), TIOCSWINSZ, &unknown), 0);
    EXPECT_TRUE(around(screen, {}).isTerminal);
    EXPECT_FALSE(around(screen, {}).columns);
}

}  // namespace
