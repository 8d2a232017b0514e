#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <mutex>
#include <optional>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <time.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "halvane/platform/os/file_internal.h"

#include "tests/support/child_process.h"
#include "tests/support/file_size_limit.h"
#include "tests/support/replaced_system.h"
#include "tests/support/scarce_descriptors.h"
#include "tests/support/temporary_folder.h"

namespace fs = std::filesystem;

using halvane::aboveStandardStreams;
using halvane::FileDescriptor;
using halvane::FileLock;
using halvane::folderOf;
using halvane::kPrivateFolderMode;
using halvane::makeFolders;
using halvane::readFile;
using halvane::replaceFile;
using halvane::setFileAside;
using halvane::writeAll;
using halvane::testing::isFileSizeSignalUntouched;
using halvane::testing::isTrueInChild;
using halvane::testing::leaveDescriptorsAboveStandardStreams;
using halvane::testing::limitFileSize;
using halvane::testing::TemporaryFolder;

namespace {

void put(const fs::path& path, const std::string& contents) {
    std::ofstream(path, std::ios::binary) << contents;
}

TEST(File, IsReadUpToTheLimit) {
    const TemporaryFolder folder;
    const auto path = (folder.path() / "file").string();
    // The sizes lie around the size of the steps in which a file is read.
    for (const std::size_t size : {0u, 1u, 65535u, 65536u, 65537u, 200000u}) {
        const std::string text(size, 'x');
        put(path, text);
        for (const std::size_t limit : {size, size + 1, size + 100000}) {
            const auto file = readFile(path, limit);
            EXPECT_EQ(file.status, kStatusOK);
            EXPECT_TRUE(file.isThere);
            EXPECT_FALSE(file.isTooLong);
            EXPECT_EQ(file.text, text);
        }
        if (size > 0) {
            EXPECT_TRUE(readFile(path, size - 1).isTooLong);
            EXPECT_EQ(readFile(path, size - 1).text, "");
        }
    }
}

TEST(File, IsNoFailureWhereItIsNot) {
    const TemporaryFolder folder;
    put(folder.path() / "file", "");
    for (const char* name : {"none", "none/none", "file/none"}) {
        const auto file = readFile((folder.path() / name).string(), 100);
        EXPECT_EQ(file.status, kStatusOK) << name;
        EXPECT_FALSE(file.isThere) << name;
    }
}

TEST(File, IsReplacedAsAWhole) {
    const TemporaryFolder folder;
    const auto path = (folder.path() / "file").string();
    EXPECT_EQ(replaceFile(path, "first"), kStatusOK);
    EXPECT_EQ(readFile(path, 100).text, "first");
    // A program that has the old file open keeps it.
    std::ifstream old(path, std::ios::binary);
    EXPECT_EQ(replaceFile(path, ""), kStatusOK);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(old), {}), "first");
    EXPECT_TRUE(readFile(path, 100).isThere);
    EXPECT_EQ(readFile(path, 100).text, "");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 1);
    EXPECT_EQ(replaceFile((folder.path() / "none" / "file").string(), "x"), kStatusBadPath);
}

TEST(File, LeavesNoNewOneBehindWhereItCannotBeReplaced) {
    const TemporaryFolder folder;
    const auto path = folder.path() / "file";
    fs::create_directories(path / "in the way");
    EXPECT_EQ(replaceFile(path.string(), "text"), kStatusCannotOpen);
    EXPECT_TRUE(fs::is_directory(path));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 1);
}

TEST(File, StaysAsItWasWhereTheNewOneWouldBeTooLarge) {
    const TemporaryFolder folder;
    const auto path = (folder.path() / "file").string();
    put(path, "old");
    EXPECT_TRUE(isTrueInChild([&path] {
        return limitFileSize(4) && replaceFile(path, "longer") == kStatusNoRoom &&
               isFileSizeSignalUntouched();
    }));
    EXPECT_EQ(readFile(path, 100).text, "old");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 1);
}

TEST(FileDescriptor, IsGivenUpWhereItIsReleased) {
    FileDescriptor file(::open("/dev/null", O_RDONLY | O_CLOEXEC));
    ASSERT_TRUE(file);
    const int number = file.release();
    EXPECT_FALSE(file);
    EXPECT_EQ(::close(number), 0);
}

TEST(FileDescriptor, StandsAboveTheStandardStreams) {
    EXPECT_FALSE(aboveStandardStreams(FileDescriptor()));
    EXPECT_TRUE(isTrueInChild([] {
        ::close(STDIN_FILENO);
        FileDescriptor low(::open("/dev/null", O_RDONLY | O_CLOEXEC));
        if (low.number() != STDIN_FILENO) return false;
        const FileDescriptor file = aboveStandardStreams(std::move(low));
        const int number = file.number();
        const bool isClosedOnExec = (::fcntl(number, F_GETFD) & FD_CLOEXEC) != 0;
        return number > STDERR_FILENO && isClosedOnExec && ::close(STDIN_FILENO) != 0;
    }));
}

TEST(FileDescriptor, StaysWhereItIsAboveTheStandardStreams) {
    FileDescriptor file(::open("/dev/null", O_RDONLY | O_CLOEXEC));
    const int number = file.number();
    ASSERT_GT(number, STDERR_FILENO);
    EXPECT_EQ(aboveStandardStreams(std::move(file)).number(), number);
}

// A program that has closed its standard streams may open them again at any time.
TEST(File, IsOpenedAboveTheStandardStreams) {
    const TemporaryFolder folder;
    const auto path = (folder.path() / "file").string();
    ASSERT_EQ(replaceFile(path, "text"), kStatusOK);
    const auto isTrueWithDescriptors = [](rlim_t count, auto isTrue) {
        return isTrueInChild(
            [&] { return leaveDescriptorsAboveStandardStreams(count) && isTrue(); });
    };
    const auto isRead = [&] { return readFile(path, 100).status == kStatusOK; };
    const auto isLocked = [&] { return FileLock(path + ".lock").status() == kStatusOK; };
    const auto isReplaced = [&] { return replaceFile(path, "new") == kStatusOK; };
    EXPECT_FALSE(isTrueWithDescriptors(0, isRead));
    EXPECT_TRUE(isTrueWithDescriptors(1, isRead));
    EXPECT_FALSE(isTrueWithDescriptors(0, isLocked));
    EXPECT_TRUE(isTrueWithDescriptors(1, isLocked));
    EXPECT_FALSE(isTrueWithDescriptors(1, isReplaced));
    EXPECT_TRUE(isTrueWithDescriptors(2, isReplaced));
}

TEST(File, IsWrittenWholeOrTellsWhatFailed) {
    const TemporaryFolder folder;
    const auto path = (folder.path() / "file").string();
    const std::string text(200000, 'x');
    {
        const FileDescriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
        EXPECT_EQ(writeAll(file.number(), text), 0);
        EXPECT_EQ(writeAll(file.number(), ""), 0);
    }
    EXPECT_EQ(readFile(path, 1000000).text, text);
    const FileDescriptor forReading(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    EXPECT_EQ(writeAll(forReading.number(), "x"), EBADF);
    EXPECT_EQ(writeAll(FileDescriptor(::open("/dev/full", O_WRONLY)).number(), "x"), ENOSPC);
}

TEST(File, HasAFolder) {
    EXPECT_EQ(folderOf("/a/b"), "/a");
    EXPECT_EQ(folderOf("/a"), "/");
    EXPECT_EQ(folderOf("a/b/c"), "a/b");
    EXPECT_EQ(folderOf("a"), ".");
}

TEST(File, GoesIntoFoldersOfTheModeThatIsWanted) {
    const TemporaryFolder folder;
    const auto path = folder.path() / "a" / "b";
    const mode_t before = ::umask(0027);
    EXPECT_EQ(makeFolders(path.string(), 0770), kStatusOK);
    ::umask(before);
    for (const auto& made : {path, folder.path() / "a"}) {
        EXPECT_EQ(fs::status(made).permissions(), fs::perms(0750)) << made;
    }
}

TEST(File, GoesIntoFoldersThatAreMade) {
    const TemporaryFolder folder;
    const auto path = folder.path() / "a" / "b" / "c";
    EXPECT_EQ(makeFolders(path.string(), kPrivateFolderMode), kStatusOK);
    EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_all);
    EXPECT_EQ(makeFolders(path.string(), kPrivateFolderMode), kStatusOK);
    EXPECT_EQ(makeFolders(path.string() + "//d/", kPrivateFolderMode), kStatusOK);
    EXPECT_TRUE(fs::is_directory(path / "d"));
    put(path / "file", "");
    EXPECT_EQ(makeFolders((path / "file" / "e").string(), kPrivateFolderMode), kStatusBadPath);
    EXPECT_EQ(makeFolders("/", kPrivateFolderMode), kStatusOK);
}

TEST(File, IsSetAsideUntilTheNamesRunOut) {
    const TemporaryFolder folder;
    const auto path = (folder.path() / "file").string();
    put(path, "damaged");
    put(path + ".damaged", "earlier");
    for (int i = 2; i < 9999; ++i) put(path + ".damaged." + std::to_string(i), "");
    const auto aside = setFileAside(path);
    ASSERT_TRUE(aside);
    EXPECT_EQ(*aside, path + std::string(halvane::kLongestFileSuffix));
    EXPECT_FALSE(fs::exists(path));
    EXPECT_EQ(readFile(path + ".damaged", 100).text, "earlier");

    put(path, "damaged again");
    const auto none = setFileAside(path);
    ASSERT_FALSE(none);
    EXPECT_EQ(none.error(), kStatusNoRoom);
    EXPECT_EQ(readFile(path, 100).text, "damaged again");
}

TEST(File, LetsOneHolderOfALockInAtATime) {
    const TemporaryFolder folder;
    const auto path = (folder.path() / "lock").string();
    constexpr int kRounds = 2000;
    // Counts in two steps. If two threads held the lock at once, one of their counts would be lost.
    std::atomic<int> count = 0;
    const auto countUp = [&] {
        for (int i = 0; i < kRounds; ++i) {
            const FileLock lock(path);
            ASSERT_EQ(lock.status(), kStatusOK);
            const int before = count;
            std::this_thread::yield();
            count = before + 1;
        }
    };
    std::thread other(countUp);
    countUp();
    other.join();
    EXPECT_EQ(count, 2 * kRounds);
    EXPECT_EQ(FileLock((folder.path() / "none" / "lock").string()).status(), kStatusBadPath);
}

// Whether somebody waits for the lock and is next.
bool isWaitedFor(const std::string& path) {
    const halvane::FileDescriptor file(::open(path.c_str(), O_RDWR | O_CLOEXEC));
    struct flock turn {};
    turn.l_type = F_WRLCK;
    turn.l_start = 1;
    turn.l_len = 1;
    EXPECT_EQ(::fcntl(file.number(), F_OFD_GETLK, &turn), 0);
    return turn.l_type != F_UNLCK;
}

TEST(File, GivesALockToWhoWaitsBeforeItsHolderHasItAgain) {
    const TemporaryFolder folder;
    const auto path = (folder.path() / "lock").string();
    for (int round = 0; round < 20; ++round) {
        std::atomic<bool> hadIt = false;
        std::optional<FileLock> held(path);
        std::thread waiter([&] {
            const FileLock lock(path);
            hadIt = lock.status() == kStatusOK;
        });
        while (!isWaitedFor(path)) std::this_thread::yield();
        held.reset();
        held.emplace(path);
        EXPECT_EQ(held->status(), kStatusOK);
        EXPECT_TRUE(hadIt);
        held.reset();
        waiter.join();
    }
}

// Each owner keeps the lock for longer than any waiter pauses, so all others wait for it.
TEST(File, HandsALockRoundAmongAllWhoWantItAgain) {
    constexpr std::size_t kWaiters = 4;
    constexpr std::size_t kTurns = 120;
    constexpr timespec kHold = {0, 3'000'000};
    const TemporaryFolder folder;
    const auto path = (folder.path() / "lock").string();
    std::mutex mutex;
    std::vector<std::size_t> turns;  // guarded by the mutex, which a sanitizer sees
    std::vector<std::thread> waiters;
    for (std::size_t i = 0; i < kWaiters; ++i) {
        waiters.emplace_back([&, i] {
            for (bool isDone = false; !isDone;) {
                const FileLock lock(path);
                ASSERT_EQ(lock.status(), kStatusOK);
                {
                    const std::scoped_lock guard(mutex);
                    isDone = turns.size() >= kTurns;
                    if (!isDone) turns.push_back(i);
                }
                ::nanosleep(&kHold, nullptr);
            }
        });
    }
    for (std::thread& waiter : waiters) waiter.join();
    for (std::size_t i = 0; i < kWaiters; ++i) {
        EXPECT_GE(std::ranges::count(turns, i), 12) << i;
    }
}

TEST(File, WaitsForALockTenSecondsAtMost) {
    const TemporaryFolder folder;
    const auto path = (folder.path() / "lock").string();
    const halvane::ScopedUpTime clock;
    const FileLock held(path);
    ASSERT_EQ(held.status(), kStatusOK);
    EXPECT_EQ(FileLock(path).status(), kStatusCannotOpen);
    EXPECT_GE(clock.now(), 10'000'000'000u);
    EXPECT_LT(clock.now(), 10'100'000'000u);
}

}  // namespace
