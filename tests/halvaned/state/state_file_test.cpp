#include "tools/halvaned/state/state_file.h"

// <filesystem> includes what declares its namespace first.
// IWYU pragma: no_include <chrono>
#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <optional>
#include <sched.h>
#include <string>
#include <sys/mount.h>
#include <unistd.h>
#include <vector>

#include "tests/halvaned/state/sample_state.h"
#include "tests/support/child_process.h"
#include "tests/support/file_size_limit.h"
#include "tests/support/made_config.h"
#include "tests/support/private_network.h"
#include "tests/support/temporary_folder.h"
#include "tools/halvaned/state/daemon_state.h"
#include "tools/halvaned/state/state_text.h"

using halvane::testing::enterNamespaces;
using halvane::testing::isTrueInChild;
using halvane::testing::limitFileSize;
using halvane::testing::openNetwork;
using halvane::testing::sampleState;
using halvane::testing::TemporaryFolder;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using namespace halvane::hosting;
namespace fs = std::filesystem;

namespace {

class StateFile : public ::testing::Test {
  protected:
    void put(const std::string& text) const {
        std::ofstream(path_, std::ios::binary | std::ios::trunc) << text;
    }
    std::string text() const { return textOfFile(path_); }
    static std::string textOfFile(const std::string& path) {
        std::ifstream stream(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder_.path())) {
            names.push_back(entry.path().filename().string());
        }
        std::ranges::sort(names);
        return names;
    }

    const TemporaryFolder folder_{};
    const std::string path_ = (folder_.path() / "state.plist").string();
};

TEST_F(StateFile, KeepsTheState) {
    ASSERT_EQ(saveState(path_, sampleState()), std::nullopt);
    EXPECT_EQ(fs::status(path_).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    const auto loaded = loadState(path_);
    ASSERT_TRUE(loaded) << loaded.error();
    EXPECT_EQ(loaded->state, sampleState());
    EXPECT_EQ(loaded->damage, std::nullopt);
    ASSERT_EQ(saveState(path_, {}), std::nullopt);
    EXPECT_EQ(loadState(path_)->state, DaemonState());
    EXPECT_THAT(names(), ElementsAre("state.plist"));
}

TEST_F(StateFile, MayBeMissing) {
    const auto loaded = loadState(path_);
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->state, DaemonState());
    EXPECT_EQ(loaded->damage, std::nullopt);
    EXPECT_THAT(names(), IsEmpty());
}

TEST_F(StateFile, GetsItsFolder) {
    const fs::path folder = folder_.path() / "lib" / "halvaned";
    ASSERT_EQ(saveState((folder / "state.plist").string(), sampleState()), std::nullopt);
    EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all);
    EXPECT_EQ(loadState((folder / "state.plist").string())->state, sampleState());
}

TEST_F(StateFile, IsSetAsideIfItIsDamaged) {
    const std::string kLater = "<plist><dict><key>Version</key><integer>2</integer></dict></plist>";
    struct Case {
        std::string text;
        std::string reason;
        std::string suffix;
    };
    const Case cases[] = {
        {"", "byte 0: it is no property list: ", ".damaged"},
        {kLater, "it has version 2, and this daemon reads 1; ", ".damaged.2"},
        {std::string(kLargestState + 1, ' '), "it has more than 16777216 bytes; ", ".damaged.3"},
    };
    for (const Case& one : cases) {
        put(one.text);
        const auto loaded = loadState(path_);
        ASSERT_TRUE(loaded) << loaded.error();
        EXPECT_EQ(loaded->state, DaemonState());
        ASSERT_TRUE(loaded->damage);
        EXPECT_THAT(*loaded->damage, ::testing::StartsWith(path_ + ": " + one.reason));
        EXPECT_THAT(*loaded->damage, ::testing::EndsWith("; it is now " + path_ + one.suffix));
        EXPECT_EQ(textOfFile(path_ + one.suffix), one.text);
        EXPECT_FALSE(fs::exists(path_));
    }
    EXPECT_EQ(loadState(path_)->damage, std::nullopt);
}

// A daemon that went on would replace what it could not read.
TEST_F(StateFile, IsAnErrorIfItCannotBeRead) {
    fs::create_directory(path_);
    EXPECT_EQ(loadState(path_).error(), path_ + ": Is a directory");
    EXPECT_TRUE(saveState(path_, sampleState()));
    EXPECT_TRUE(fs::is_directory(path_));
    EXPECT_THAT(names(), ElementsAre("state.plist"));
}

TEST_F(StateFile, StaysWholeIfTheStateCannotBeWritten) {
    ASSERT_EQ(saveState(path_, sampleState()), std::nullopt);
    const std::string before = text();
    DaemonState unnamed = sampleState();
    unnamed.interfaces["no/name"] = {};
    EXPECT_EQ(saveState(path_, unnamed), path_ + ": no interface has the name no/name");
    EXPECT_EQ(text(), before);
}

TEST_F(StateFile, StaysWholeIfTheNewOneIsTooLarge) {
    ASSERT_EQ(saveState(path_, sampleState()), std::nullopt);
    const std::string before = text();
    DaemonState larger = sampleState();
    larger.interfaces["wlan9"].configurations.assign(100, openNetwork());
    EXPECT_TRUE(isTrueInChild(
        [&] { return limitFileSize(4096) && saveState(path_, larger) == path_ + ": no room"; }));
    EXPECT_EQ(text(), before);
    EXPECT_THAT(names(), ElementsAre("state.plist"));
}

// Mounts a file system of some pages over the folder, for this process and its children.
bool enterTinyDisk(const std::string& folder) {
    if (!enterNamespaces(CLONE_NEWNS)) return false;
    const std::string size = "size=" + std::to_string(4 * ::sysconf(_SC_PAGESIZE));
    return ::mount("tmpfs", folder.c_str(), "tmpfs", MS_NOSUID, size.c_str()) == 0;
}

TEST_F(StateFile, StaysWholeIfTheDiskIsFull) {
    const auto onTinyDisk = [this](auto test) {
        return isTrueInChild([&] { return enterTinyDisk(folder_.path().string()) && test(); });
    };
    if (!onTinyDisk([] { return true; })) GTEST_SKIP() << "this system has no mount namespaces";
    EXPECT_TRUE(onTinyDisk([this] {
        EXPECT_EQ(saveState(path_, sampleState()), std::nullopt);
        const std::string before = text();
        DaemonState larger = sampleState();
        larger.interfaces["wlan9"].configurations.assign(100, openNetwork());
        EXPECT_EQ(saveState(path_, larger), path_ + ": no room");
        EXPECT_EQ(text(), before);
        EXPECT_THAT(names(), ElementsAre("state.plist"));
        EXPECT_EQ(loadState(path_)->state, sampleState());
        // There is room for a small one.
        EXPECT_EQ(saveState(path_, {}), std::nullopt);
        EXPECT_EQ(loadState(path_)->state, DaemonState());
        return !HasFailure();
    }));
}

TEST_F(StateFile, StaysWholeWithoutRights) {
    ASSERT_EQ(saveState(path_, sampleState()), std::nullopt);
    const std::string before = text();
    fs::permissions(folder_.path(), fs::perms::owner_read | fs::perms::owner_exec);
    const bool isRefused = isTrueInChild([this] {
        // Without capabilities only the permissions count.
        constexpr uid_t kNobody = 65534;
        if (::geteuid() == 0) {
            fs::permissions(folder_.path(), fs::perms::owner_read | fs::perms::owner_exec |
                                                fs::perms::others_read | fs::perms::others_exec);
            if (::setresuid(kNobody, kNobody, kNobody) != 0) return false;
        }
        return saveState(path_, {}) == path_ + ": cannot open file";
    });
    fs::permissions(folder_.path(), fs::perms::owner_all);
    EXPECT_TRUE(isRefused);
    EXPECT_EQ(text(), before);
}

}  // namespace
