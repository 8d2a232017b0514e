#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <sys/resource.h>

#include "halvane/platform/os/console_device_internal.h"

#include "tests/support/child_process.h"
#include "tests/support/replaced_system.h"
#include "tests/support/scarce_descriptors.h"
#include "tests/support/temporary_folder.h"

namespace {

using halvane::writeToConsoleDevice;
using halvane::testing::isTrueInChild;
using halvane::testing::leaveDescriptorsAboveStandardStreams;
using halvane::testing::TemporaryFolder;

// A program that has closed its standard streams may open them again at any time.
TEST(ConsoleDevice, IsOpenedAboveTheStandardStreams) {
    const TemporaryFolder folder;
    const std::string device = (folder.path() / "console").string();
    std::ofstream(device).close();
    const auto isWrittenWith = [&](rlim_t count) {
        return isTrueInChild([&] {
            halvane::replaceConsoleDevice(nullptr);
            return leaveDescriptorsAboveStandardStreams(count) &&
                   writeToConsoleDevice("text", device.c_str());
        });
    };
    EXPECT_FALSE(isWrittenWith(0));
    EXPECT_EQ(std::filesystem::file_size(device), 0u);
    EXPECT_TRUE(isWrittenWith(1));
    EXPECT_EQ(std::filesystem::file_size(device), 4u);
}

}  // namespace
