#include "tools/halvane/commands/command.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <new>
#include <stdexcept>

#include "tests/support/captured_stream.h"

using namespace halvane::tool;
using halvane::testing::CapturedStream;

namespace {

TEST(ExitStatus, OfAParserWithoutMemoryComesWithAMessage) {
    const CapturedStream errors(stderr);
    EXPECT_EQ(exitStatusOfParser(kCLINoMemory), kExitFailed);
    EXPECT_EQ(errors.text(), "halvane: out of memory\n");
}

TEST(ExitStatus, OfAnyOtherResultComesWithoutAMessage) {
    const CapturedStream errors(stderr);
    gExitCode = kExitFailed;
    EXPECT_EQ(exitStatusOfParser(0), kExitFailed) << "that of the command";
    gExitCode = kCLIUsageError;
    EXPECT_EQ(exitStatusOfParser(0), kExitUsage);
    gExitCode = kExitDone;
    EXPECT_EQ(exitStatusOfParser(0), kExitDone);
    EXPECT_EQ(exitStatusOfParser(kCLIUsageError), kExitUsage);
    EXPECT_EQ(exitStatusOfParser(kCLIUnknownType), kExitFailed);
    EXPECT_EQ(errors.text(), "");
}

TEST(ExitStatus, OfACommandThatThrowsComesWithAMessage) {
    const CapturedStream errors(stderr);
    EXPECT_EQ(exitStatusOf([]() -> int { throw std::bad_alloc(); }), kExitFailed);
    EXPECT_EQ(exitStatusOf([]() -> int { throw std::runtime_error("lost"); }), kExitFailed);
    EXPECT_EQ(errors.text(), "halvane: out of memory\nhalvane: lost\n");
}

TEST(Refusal, NamesTheCommand) {
    const CapturedStream errors(stderr);
    EXPECT_EQ(refuse("pin", "no"), kExitUsage);
    EXPECT_EQ(errors.text(), "halvane: pin: no\n");
}

}  // namespace
