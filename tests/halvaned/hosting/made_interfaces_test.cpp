#include "tools/halvaned/hosting/made_interfaces.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <optional>
#include <string>

#include "tests/support/temporary_folder.h"

namespace halvane::hosting {
namespace {

class MadeInterfacesTest : public ::testing::Test {
  protected:
    halvane::testing::TemporaryFolder folder_;
    const std::string path_ = folder_.path() / "made";
};

TEST_F(MadeInterfacesTest, OutlivesTheDaemon) {
    {
        MadeInterfaces made(path_);
        EXPECT_FALSE(made.ownerOf("wlan0_1"));
        made.add("wlan0_1", "wlan0");
        made.add("wlan0_2", "wlan0");
        made.add("wlan1_1", "wlan1");
        made.remove("wlan0_2");
        made.remove("wlan7");
    }
    const MadeInterfaces made(path_);
    EXPECT_EQ(made.ownerOf("wlan0_1"), "wlan0");
    EXPECT_EQ(made.ownerOf("wlan1_1"), "wlan1");
    EXPECT_FALSE(made.ownerOf("wlan0_2"));
    EXPECT_FALSE(made.ownerOf("wlan0"));
}

TEST_F(MadeInterfacesTest, HasOneOwnerForEach) {
    MadeInterfaces made(path_);
    made.add("wlan0_1", "wlan0");
    made.add("wlan0_1", "wlan1");
    EXPECT_EQ(made.ownerOf("wlan0_1"), "wlan1");
    EXPECT_EQ(MadeInterfaces(path_).ownerOf("wlan0_1"), "wlan1");
}

TEST_F(MadeInterfacesTest, ReadsWhatMakesSense) {
    std::ofstream(path_) << "a/b wlan0\nwlan0_1 wlan0\nname-that-is-too-long wlan0\nwlan0_2";
    const MadeInterfaces made(path_);
    EXPECT_EQ(made.ownerOf("wlan0_1"), "wlan0");
    EXPECT_FALSE(made.ownerOf("a/b"));
    EXPECT_FALSE(made.ownerOf("wlan0_2"));
}

TEST_F(MadeInterfacesTest, HoldsWhatItCannotWrite) {
    std::filesystem::create_directories(path_ + ".new/x");
    MadeInterfaces made(path_);
    made.add("wlan0_1", "wlan0");
    EXPECT_EQ(made.ownerOf("wlan0_1"), "wlan0");
}

}  // namespace
}  // namespace halvane::hosting
