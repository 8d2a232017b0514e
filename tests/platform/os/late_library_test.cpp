#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <string>

#include "halvane/platform/os/late_library_internal.h"

using halvane::LateLibrary;

// Functions and data as a library's header declares them.
extern "C" {
int halvaneLateNumber(int number);
int halvaneLateNumberOf(const char* format, ...);
const char* halvaneLateText() noexcept;
void halvaneLateNothing(const char* text);
extern const unsigned halvaneLateData;
}

#define HALVANE_NO_NAMES(NAME) \
    NAME(halvaneLateNumber)    \
    NAME(halvaneLateNumberOf)  \
    NAME(halvaneLateText)      \
    NAME(halvaneLateNothing)   \
    NAME(halvaneLateData)
#define HALVANE_SOME_NAMES(NAME) NAME(snprintf) NAME(halvaneLateNumber)
#define HALVANE_LIBC_NAMES(NAME) NAME(snprintf) NAME(getenv) NAME(stdout)

namespace {

HALVANE_LATE_LIBRARY(Missing, missing, "libhalvane-none.so.9", HALVANE_NO_NAMES)
HALVANE_LATE_LIBRARY(Partial, partial, "libc.so.6", HALVANE_SOME_NAMES)
HALVANE_LATE_LIBRARY(Whole, whole, "libc.so.6", HALVANE_LIBC_NAMES)

TEST(LateLibrary, HasItsFunctionsAndItsData) {
    ASSERT_EQ(whole().problem, nullptr);
    char text[8] = "";
    EXPECT_EQ(whole().snprintf(text, sizeof text, "%d%c", 12, 'x'), 3);
    EXPECT_STREQ(text, "12x");
    EXPECT_EQ(*whole().stdout, stdout);
    EXPECT_EQ(&whole(), &whole());
}

TEST(LateLibrary, FailsInEveryFunctionIfItIsMissing) {
    EXPECT_STREQ(missing().problem,
                 "libhalvane-none.so.9: cannot open shared object file: No such file or directory");
    EXPECT_EQ(missing().halvaneLateNumber(1), -ELIBACC);
    EXPECT_EQ(missing().halvaneLateNumberOf("%d", 1), -ELIBACC);
    EXPECT_EQ(missing().halvaneLateText(), nullptr);
    missing().halvaneLateNothing("");
    EXPECT_EQ(missing().halvaneLateData, nullptr);
}

// One whose functions are half there could not be used without asking before each call.
TEST(LateLibrary, FailsInEveryFunctionIfItLacksOne) {
    ASSERT_NE(partial().problem, nullptr);
    EXPECT_NE(std::string(partial().problem).find("halvaneLateNumber"), std::string::npos)
        << partial().problem;
    char text[8] = "";
    EXPECT_EQ(partial().snprintf(text, sizeof text, "%d", 1), -ELIBACC);
    EXPECT_EQ(partial().halvaneLateNumber(1), -ELIBACC);
}

TEST(LateLibrary, KeepsItsFirstProblem) {
    LateLibrary library("libc.so.6");
    EXPECT_EQ(library.problem(), nullptr);
    EXPECT_EQ(library.find("halvaneLateFirst"), nullptr);
    EXPECT_EQ(library.find("halvaneLateSecond"), nullptr);
    ASSERT_NE(library.problem(), nullptr);
    EXPECT_NE(std::string(library.problem()).find("halvaneLateFirst"), std::string::npos);
}

TEST(LateLibrary, LeavesTheLoadersTextToTheProgram) {
    LateLibrary library("libhalvane-none.so.9");
    EXPECT_EQ(::dlerror(), nullptr);
}

}  // namespace
