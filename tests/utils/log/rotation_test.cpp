#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <sys/resource.h>

#include "halvane/utils/log/rotation_internal.h"

#include "tests/support/child_process.h"
#include "tests/support/scarce_descriptors.h"
#include "tests/support/temporary_folder.h"

namespace {

using halvane::logging::copyLogFile;
using halvane::testing::isTrueInChild;
using halvane::testing::leaveDescriptorsAboveStandardStreams;
using halvane::testing::TemporaryFolder;

// Whether the log file can be copied with `count` descriptors above those of the standard streams.
bool canCopyWithDescriptors(rlim_t count) {
    const TemporaryFolder folder;
    const std::string from = (folder.path() / "log").string();
    const std::string to = from + ".1";
    std::ofstream(from) << "line\n";
    EXPECT_TRUE(isTrueInChild([&] {
        if (!leaveDescriptorsAboveStandardStreams(count)) return false;
        copyLogFile(from, to);
        return true;
    }));
    std::ifstream copy(to);
    const std::string text{std::istreambuf_iterator<char>(copy), {}};
    EXPECT_EQ(text, std::filesystem::exists(to) ? "line\n" : "");
    return std::filesystem::exists(to);
}

// A program that has closed its standard streams may open them again at any time.
TEST(LogRotation, KeepsItsFilesAboveTheStandardStreams) {
    EXPECT_FALSE(canCopyWithDescriptors(0));
    EXPECT_FALSE(canCopyWithDescriptors(1)) << "for the log file, but not for the copy";
    EXPECT_TRUE(canCopyWithDescriptors(2));
}

}  // namespace
