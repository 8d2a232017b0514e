#include "tools/halvaned/radio/system_files.h"

// <filesystem> includes what declares its namespace first.
// IWYU pragma: no_include <chrono>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <optional>
#include <string>

#include "halvane/base/mac_address.h"

#include "tests/support/temporary_folder.h"

using halvane::MacAddress;
using halvane::hosting::SystemFiles;
using halvane::testing::TemporaryFolder;
namespace fs = std::filesystem;

namespace {

class FilesOfTheSystem : public ::testing::Test {
  protected:
    FilesOfTheSystem() {
        const fs::path device = folder_.path() / "devices" / "usb1";
        fs::create_directories(device);
        fs::create_directories(folder_.path() / "bus" / "ath9k_htc");
        fs::create_symlink("../../bus/ath9k_htc", device / "driver");
        for (const char* of : {"ieee80211/phy0", "net/wlan0"}) {
            const fs::path place = folder_.path() / "class" / of;
            fs::create_directories(place);
            fs::create_symlink(device, place / "device");
        }
        put("02:00:00:00:00:0a\n");
    }

    void put(const std::string& address) const {
        std::ofstream(folder_.path() / "class/ieee80211/phy0/macaddress") << address;
    }

    const TemporaryFolder folder_{};
    const SystemFiles files_{folder_.path().string()};
};

TEST_F(FilesOfTheSystem, TellDriversAndAddresses) {
    EXPECT_EQ(files_.addressOfRadio("phy0"), MacAddress({2, 0, 0, 0, 0, 10}));
    EXPECT_EQ(files_.driverOfRadio("phy0"), "ath9k_htc");
    EXPECT_EQ(files_.driverOfInterface("wlan0"), "ath9k_htc");
}

TEST_F(FilesOfTheSystem, MayTellNothing) {
    for (const char* name : {"", ".", "..", "phy1", "../net/wlan0", "phy0/device"}) {
        EXPECT_EQ(files_.addressOfRadio(name), std::nullopt) << name;
        EXPECT_EQ(files_.driverOfRadio(name), "") << name;
        EXPECT_EQ(files_.driverOfInterface(name), "") << name;
    }
    for (const char* address : {"", "02:00:00:00:00\n", "an address of a radio\n"}) {
        put(address);
        EXPECT_EQ(files_.addressOfRadio("phy0"), std::nullopt) << address;
    }
}

}  // namespace
