#include "tools/halvane/output/standard_output.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/support/child_process.h"

using namespace halvane::tool;
using halvane::testing::isTrueInChild;
using halvane::testing::startChild;

namespace {

// Runs `run` in a child whose standard output is the file.
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

// With the asan preset a null pointer for fwrite() is an error.
TEST(StandardOutput, TakesATextWithoutAnAddress) {
    EXPECT_TRUE(isTrueWithOutputTo("/dev/null", [] {
        put(std::string_view());
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

TEST(StandardOutput, IsLostAtOnceWhereNothingWaitsToBeFlushed) {
    EXPECT_TRUE(isTrueWithOutputTo("/dev/null", [] { return putAtOnce("text") && flushOutput(); }));
    EXPECT_TRUE(isTrueWithOutputTo("/dev/full", [] {
        const bool isPut = putAtOnce("text");
        errno = ENOPROTOOPT;
        return !isPut && !flushOutput() && lostOutputReason() == std::strerror(ENOSPC);
    }));
}

TEST(StandardOutput, IsWholeWhereItsFileDoesNotWait) {
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    ASSERT_EQ(::fcntl(ends[1], F_SETFL, O_NONBLOCK), 0);
    const std::string text(1 << 20, 'x');  // more than a pipe holds
    const pid_t child = startChild([&] {
        ::dup2(ends[1], STDOUT_FILENO);
        return putAtOnce(text);
    });
    ::close(ends[1]);
    std::string received;
    std::array<char, 4096> part{};
    for (ssize_t count = 0; (count = ::read(ends[0], part.data(), part.size())) > 0;) {
        received.append(part.data(), static_cast<std::size_t>(count));
    }
    ::close(ends[0]);
    EXPECT_TRUE(received == text);
    int status = -1;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
}

}  // namespace
