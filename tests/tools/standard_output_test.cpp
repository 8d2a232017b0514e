#include "tools/halvane/standard_output.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

#include "tests/support/child_process.h"

using namespace halvane::tool;
using halvane::testing::isTrueInChild;

namespace {

// In a child whose standard output is the file.
template <typename Run>
bool isTrueWithOutputTo(const char* path, Run run) {
    std::fflush(stdout);
    return isTrueInChild([&] {
        ::dup2(::open(path, O_WRONLY), STDOUT_FILENO);
        return run();
    });
}

TEST(StandardOutput, IsNotLostWhereItIsWritten) {
    EXPECT_TRUE(isTrueWithOutputTo("/dev/null", [] {
        put("text");
        std::puts("more");
        return flushOutput();
    }));
}

TEST(StandardOutput, IsLostForTheReasonThatCameFirst) {
    EXPECT_TRUE(isTrueWithOutputTo("/dev/full", [] {
        put(std::string(1 << 20, 'x'));  // more than waits to be flushed
        errno = ENOPROTOOPT;
        noteLostOutput(EPIPE);
        return !flushOutput() && lostOutputReason() == std::strerror(ENOSPC);
    }));
    EXPECT_TRUE(isTrueWithOutputTo("/dev/full", [] {
        put("text");
        return !flushOutput() && lostOutputReason() == std::strerror(ENOSPC);
    }));
}

TEST(StandardOutput, HasNoReasonThatIsAnothersWhereNoneIsKnown) {
    EXPECT_TRUE(isTrueWithOutputTo("/dev/full", [] {
        std::setvbuf(stdout, nullptr, _IONBF, 0);
        std::puts("text");
        errno = ENOPROTOOPT;
        return !flushOutput() && lostOutputReason() == "not all of it was written";
    }));
}

}  // namespace
