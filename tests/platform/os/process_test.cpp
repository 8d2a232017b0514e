#include <filesystem>
#include <gtest/gtest.h>

#include "halvane/platform/os/process_internal.h"

#include "tests/support/child_process.h"

namespace {

using halvane::HomeProcess;
using halvane::testing::isTrueInChild;

TEST(Process, IsNamedAfterItsProgram) {
    EXPECT_EQ(halvane::programName(),
              std::filesystem::read_symlink("/proc/self/exe").filename().string());
}

TEST(HomeProcess, IsTheOneThatMadeTheObject) {
    const HomeProcess home;
    EXPECT_TRUE(home.isCurrent());
    EXPECT_TRUE(isTrueInChild([&] {
        const HomeProcess child;
        return !home.isCurrent() && child.isCurrent() && isTrueInChild([&] {
            return !home.isCurrent() && !child.isCurrent() && HomeProcess().isCurrent();
        }) && child.isCurrent();
    }));
    EXPECT_TRUE(home.isCurrent());
}

}  // namespace
