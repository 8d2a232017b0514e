#include "tools/halvane/output/standard_files.h"

#include <cerrno>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/support/child_process.h"

using halvane::testing::isTrueInChild;
using halvane::tool::openStandardFiles;

namespace {

TEST(StandardFiles, AreTakenAndOfNoUseWhereTheyWereClosed) {
    EXPECT_TRUE(isTrueInChild([] {
        for (const int file : {0, 1, 2}) ::close(file);
        openStandardFiles();
        char byte = 0;
        bool isRight = ::read(0, &byte, 1) == -1 && errno == EBADF;
        for (const int file : {1, 2}) {
            isRight = isRight && ::write(file, &byte, 1) == -1 && errno == EBADF;
        }
        return isRight && ::open("/dev/null", O_RDONLY) > 2;
    }));
}

TEST(StandardFiles, StayAsTheyAreWhereTheyAreOpen) {
    EXPECT_TRUE(isTrueInChild([] {
        ::dup2(::open("/dev/zero", O_RDONLY), 0);
        ::dup2(::open("/dev/null", O_WRONLY), 1);
        ::close(2);
        openStandardFiles();
        char byte = 1;
        return ::read(0, &byte, 1) == 1 && byte == 0 && ::write(1, &byte, 1) == 1;
    }));
}

}  // namespace
