#include <filesystem>
#include <gtest/gtest.h>

#include "halvane/platform/os/process_internal.h"

namespace {

TEST(Process, IsNamedAfterItsProgram) {
    EXPECT_EQ(halvane::programName(),
              std::filesystem::read_symlink("/proc/self/exe").filename().string());
}

}  // namespace
