#include "tools/halvaned/hostapd/predecessor.h"

#include <csignal>
#include <cstddef>
#include <cstdint>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <sched.h>
#include <string>
#include <string_view>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <systemd/sd-event.h>
#include <unistd.h>
#include <utility>

#include "tests/halvaned/hostapd/test_loop.h"
#include "tests/support/child_process.h"
#include "tests/support/private_network.h"
#include "tests/support/temporary_folder.h"
#include "tools/halvaned/hostapd/child_process.h"

using namespace halvane;
using namespace halvane::hosting;
using halvane::testing::TemporaryFolder;
using halvane::testing::TestLoop;

namespace {

constexpr std::uint64_t kLong = 60'000'000;  // microseconds, which no test waits for

class PredecessorTest : public ::testing::Test {
  protected:
    // A process that was started for the file, and that says when it runs.
    void leave(const std::string& file, const std::string& play) {
        std::ofstream(folder_.path() / "play") << play + "say ready\n";
        bool isReady = false;
        auto started =
            ChildProcess::start(loop_.get(), {HALVANE_FAKE_HOSTAPD, folder_.path() / file},
                                {.line = [&](std::string_view) { isReady = true; },
                                 .ended = [this](const ChildEnd& end) { end_ = end; }});
        ASSERT_TRUE(started);
        child_ = *std::move(started);
        loop_.runUntil([&] { return isReady; });
    }

    void write(const std::string& name, const std::string& text) {
        std::ofstream(folder_.path() / name) << text;
    }
    void writeNumber(const std::string& name) {
        write(name, std::to_string(child_->process()) + "\n");
    }

    std::size_t end(std::uint64_t grace = kLong) {
        std::optional<std::size_t> ended;
        std::unique_ptr<Predecessor> predecessor;
        predecessor = std::make_unique<Predecessor>(loop_.get(), folder_.path(), grace,
                                                    [&](std::size_t count) {
                                                        ended = count;
                                                        predecessor.reset();
                                                    });
        EXPECT_FALSE(ended) << "not before the loop";
        loop_.runUntil([&] { return ended.has_value(); });
        return *ended;
    }

    bool has(const std::string& name) const {
        return std::filesystem::exists(folder_.path() / name);
    }

    TestLoop loop_;
    TemporaryFolder folder_;
    std::unique_ptr<ChildProcess> child_;
    std::optional<ChildEnd> end_;
};

TEST_F(PredecessorTest, FindsNothingInAnEmptyFolder) {
    EXPECT_EQ(end(), 0U);
    std::filesystem::remove_all(folder_.path());
    EXPECT_EQ(end(), 0U);
}

TEST_F(PredecessorTest, EndsItsHostapdAndRemovesItsFiles) {
    leave("wlan0.conf", "");
    write("wlan0.conf", "secret");
    writeNumber("wlan0.pid");
    write("wlan1.conf", "secret");
    write("wlan1.conf.new", "secret");
    write("other.txt", "kept");
    ASSERT_EQ(::mknod((folder_.path() / "control-1-1").c_str(), S_IFSOCK | 0600, 0), 0);
    EXPECT_EQ(end(), 1U);
    loop_.runUntil([this] { return end_.has_value(); });
    EXPECT_EQ(end_->text(), "with status 0");
    for (const char* name :
         {"wlan0.conf", "wlan0.pid", "wlan1.conf", "wlan1.conf.new", "control-1-1"}) {
        EXPECT_FALSE(has(name)) << name;
    }
    EXPECT_TRUE(has("other.txt"));
}

TEST_F(PredecessorTest, KillsWhoDoesNotEnd) {
    leave("wlan0.conf", "stubborn\n");
    writeNumber("wlan0.pid");
    EXPECT_EQ(end(1000), 1U);
    loop_.runUntil([this] { return end_.has_value(); });
    EXPECT_EQ(end_->text(), "by signal 9");
}

TEST_F(PredecessorTest, LeavesOtherProcessesAlone) {
    leave("wlan7.conf", "");
    writeNumber("wlan0.pid");
    EXPECT_EQ(end(1000), 0U);
    EXPECT_FALSE(has("wlan0.pid"));
    EXPECT_EQ(::kill(child_->process(), 0), 0);
    EXPECT_FALSE(end_);
}

TEST_F(PredecessorTest, LeavesProcessesAloneThatNoFileNames) {
    leave("wlan0.conf", "");
    const std::string number = std::to_string(child_->process());
    for (const std::string& text :
         {std::string(), std::string("x"), number + " ", number + "\n\n", "-" + number,
          std::string("0"), std::string("1"), std::string(4096, '1'), std::string("99999999999")}) {
        write("wlan0.pid", text);
        EXPECT_EQ(end(1000), 0U) << text;
    }
    EXPECT_EQ(::kill(child_->process(), 0), 0);
}

TEST_F(PredecessorTest, RemovesAFileThatWasNotYetInPlace) {
    write("wlan0.conf.new", "wpa_psk=...");
    EXPECT_EQ(end(), 0U);
    EXPECT_FALSE(has("wlan0.conf.new"));
}

TEST_F(PredecessorTest, KillsWhatItDoesNotWaitFor) {
    leave("wlan0.conf", "stubborn\n");
    writeNumber("wlan0.pid");
    {
        const Predecessor predecessor(loop_.get(), folder_.path(), kLong, [](std::size_t) {});
    }
    loop_.runUntil([&] { return end_.has_value(); });
}

// A process may end between an open() and a read() of its files, which then fails. So does the read
// of a folder in the place of the file.
TEST_F(PredecessorTest, LooksAtAProcessThatEndsMeanwhile) {
    const pid_t other = halvane::testing::startChild([] { return ::pause() == 0; });
    write("wlan0.pid", std::to_string(other) + "\n");
    const std::string facts = "/proc/" + std::to_string(other);
    const auto hide = [&facts] {
        return halvane::testing::enterNamespaces(CLONE_NEWNS) &&
               ::mount("none", facts.c_str(), "tmpfs", 0, nullptr) == 0 &&
               std::filesystem::create_directory(facts + "/cmdline");
    };
    if (halvane::testing::isTrueInChild(hide)) {
        EXPECT_TRUE(halvane::testing::isTrueInChild([&] {
            const TestLoop loop;  // one of the parent's turns nowhere else
            std::optional<std::size_t> ended;
            if (!hide()) return false;
            const Predecessor predecessor(loop.get(), folder_.path(), kLong,
                                          [&](std::size_t count) { ended = count; });
            while (!ended) {
                if (::sd_event_run(loop.get(), UINT64_MAX) < 0) return false;
            }
            return ended == 0U;
        }));
    }
    ::kill(other, SIGKILL);
    ::waitpid(other, nullptr, 0);
}

}  // namespace
