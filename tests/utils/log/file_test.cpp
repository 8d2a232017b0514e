// The output "file": folders, rotation and backups, step by step.
#include <bit>
#include <cerrno>
#include <cstddef>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <linux/bpf_common.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <map>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

#include "halvane/utils/log.h"
#include "halvane/utils/log/file_internal.h"

#include "tests/support/file_size_limit.h"
#include "tests/support/replaced_system.h"
#include "tests/support/temporary_folder.h"
#include "tests/utils/log/file_test_support.h"
#include "tests/utils/log/test_support.h"

namespace {

using halvane::testing::Files;
using halvane::testing::isFileSizeSignalUntouched;
using halvane::testing::kEnded;
using halvane::testing::limitFileSize;
using halvane::testing::LogFileTest;
using halvane::testing::resultInChild;
using halvane::testing::TestCategory;

TEST_F(LogFileTest, AppendsToTheFile) {
    write("log", "before\n");
    ASSERT_EQ(setFile("path=" + path()), kStatusOK);
    log("one\n");
    EXPECT_EQ(contents(), "before\none\n");  // at once: there is no buffer
    log("two\n");
    EXPECT_EQ(contents(), "before\none\ntwo\n");
}

TEST_F(LogFileTest, MakesTheFoldersOfItsPath) {
    const mode_t mask = ::umask(0);
    const HalvaneStatus status = setFile("path=" + path("a/b/log"));
    ::umask(mask);
    ASSERT_EQ(status, kStatusOK);
    for (const char* const name : {"a", "a/b"}) {
        const auto permissions = std::filesystem::status(path(name)).permissions();
        EXPECT_EQ(static_cast<unsigned>(permissions), 0770u) << name;
    }
    log("one\n");
    EXPECT_EQ(contents("a/b/log"), "one\n");
}

TEST_F(LogFileTest, RefusesWhatItCannotUse) {
    const std::string file = "path=" + path();
    write("file", "");
    ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);
    const struct {
        std::string parameters;
        HalvaneStatus status;
    } rows[] = {
        {"path=", kStatusBadPath},
        {"path=" + path() + ";path=", kStatusBadPath},
        {"path=" + path("file/log"), kStatusCannotOpen},         // a file in a folder's place
        {"path=" + folder_.path().string(), kStatusCannotOpen},  // a folder in a file's place
        {"path=" + path("pipe"), kStatusCannotOpen},             // that nobody reads
        {"path=" + path(std::string(256, 'x')), kStatusCannotOpen},
        {file + ";size=3", kStatusUnknownParameter},
        {file + ";PATH=x", kStatusUnknownParameter},
        {file + ";roll", kStatusMalformed},
        {"stdout;roll=1#2", kStatusMalformed},
        {"roll=1K#3", kStatusUnsupported},  // no file
        {file + ";roll=", kStatusUnsupported},
        {file + ";roll=#3", kStatusUnsupported},
        {file + ";roll=K#3", kStatusUnsupported},
        {file + ";roll=1", kStatusUnsupported},
        {file + ";roll=1K", kStatusUnsupported},
        {file + ";roll=1K#", kStatusUnsupported},
        {file + ";roll=1G#3", kStatusUnsupported},
        {file + ";roll=1k#3", kStatusUnsupported},
        {file + ";roll=1KK#3", kStatusUnsupported},
        {file + ";roll=-1K#3", kStatusUnsupported},
        {file + ";roll=1K#3x", kStatusUnsupported},
        {file + ";roll=1K#-3", kStatusUnsupported},
        {file + ";roll=18446744073709551616#3", kStatusUnsupported},
        {file + ";roll=18014398509481984K#3", kStatusUnsupported},  // 2^64 bytes
        {file + ";roll=1K#10001", kStatusUnsupported},
        {file + ";roll=1K#99999999999999999999", kStatusUnsupported},
        {file + ";backup=", kStatusUnsupported},
        {file + ";backup=x", kStatusUnsupported},
        {file + ";backup=#3", kStatusUnsupported},
        {file + ";backup=x#", kStatusUnsupported},
        {file + ";backup=x#y", kStatusUnsupported},
    };
    for (const auto& [parameters, status] : rows) {
        EXPECT_EQ(setFile(parameters), status) << parameters;
        LogControl(nullptr);
    }
}

TEST_F(LogFileTest, TakesEveryFormOfASize) {
    for (const char* const roll : {"0#0", "1#1", "1B#2", "1K#3", "1M#4", "18446744073709551615#5",
                                   "18014398509481983K#10000"}) {
        EXPECT_EQ(setFile("path=" + path() + ";roll=" + roll), kStatusOK) << roll;
    }
}

TEST_F(LogFileTest, KnowsHowLongAPathMayBe) {
    // Folders of 1024 bytes in all, and one byte more.
    std::string folders = folder_.path().string();
    while (folders.size() + 101 <= 1024) folders += "/" + std::string(99, 'd') + "x";
    folders.resize(1022, 'd');
    EXPECT_EQ(setFile("path=" + folders + "dd/log"), kStatusOK);
    EXPECT_EQ(setFile("path=" + folders + "ddd/log"), kStatusBadPath);

    // The name of a rotated file has the same limit.
    const std::string file = "path=" + folders.substr(0, 1016) + "/1234";
    EXPECT_EQ(setFile(file + ";roll=1K#10"), kStatusOK);   // 1023 bytes
    EXPECT_EQ(setFile(file + ";roll=1K#100"), kStatusOK);  // 1024 bytes
    EXPECT_EQ(setFile(file + ";roll=1K#101"), kStatusBadPath);
    EXPECT_EQ(setFile(file + ";roll=0#101"), kStatusOK);
    EXPECT_EQ(setFile("path=" + path() + ";backup=" + folders + "#10"), kStatusOK);
    EXPECT_EQ(setFile("path=" + path() + ";backup=" + folders + "#11"), kStatusBadPath);

    EXPECT_EQ(setFile("path=/" + std::string(1100, 'x')), kStatusCannotOpen);
}

TEST_F(LogFileTest, RotatesWhenAWriteWouldPassTheSize) {
    ASSERT_EQ(setFile("path=" + path() + ";roll=10#3"), kStatusOK);
    log("12345\n");
    log("789\n");
    EXPECT_EQ(files(), (Files{{"log", "12345\n789\n"}}));  // 10 bytes do not pass 10
    log("a\n");
    EXPECT_EQ(files(), (Files{{"log", "a\n"}, {"log.1", "12345\n789\n" + kEnded}}));
    log("bcdefgh\n");
    EXPECT_EQ(contents(), "a\nbcdefgh\n");
    log("c\n");
    EXPECT_EQ(files(), (Files{{"log", "c\n"},
                              {"log.1", "a\nbcdefgh\n" + kEnded},
                              {"log.2", "12345\n789\n" + kEnded}}));
    log("ddddddddd\n");  // the oldest goes
    EXPECT_EQ(files(), (Files{{"log", "ddddddddd\n"},
                              {"log.1", "c\n" + kEnded},
                              {"log.2", "a\nbcdefgh\n" + kEnded}}));
}

TEST_F(LogFileTest, RotatesAtAMegabyte) {
    ASSERT_EQ(setFile("path=" + path() + ";roll=1M#3"), kStatusOK);
    write("log.1", "one");
    write("log.2", "two");
    const std::string half(524288, 'x');
    log(half);
    log(half);
    EXPECT_EQ(contents().size(), 1048576u);
    EXPECT_EQ(contents("log.1"), "one");
    log("y");
    EXPECT_EQ(files(), (Files{{"log", "y"}, {"log.1", half + half + kEnded}, {"log.2", "one"}}));
}

TEST_F(LogFileTest, CountsWhatTheFileHeldBefore) {
    write("log", "12345678\n");
    ASSERT_EQ(setFile("path=" + path() + ";roll=10B#2"), kStatusOK);
    log("a");
    EXPECT_EQ(files(), (Files{{"log", "12345678\na"}}));
    log("b");
    EXPECT_EQ(files(), (Files{{"log", "b"}, {"log.1", "12345678\na" + kEnded}}));
}

TEST_F(LogFileTest, RotatesBehindAMessageLargerThanTheSize) {
    ASSERT_EQ(setFile("path=" + path() + ";roll=4#2"), kStatusOK);
    log("123456\n");
    EXPECT_EQ(files(), (Files{{"log", "123456\n"}}));
    log("x");
    EXPECT_EQ(files(), (Files{{"log", "x"}, {"log.1", "123456\n" + kEnded}}));
}

// The count includes the current file from two on. One and none both keep one old file.
TEST_F(LogFileTest, KeepsOneOldFileForACountOfOneAndNone) {
    for (const char* const count : {"1", "0"}) {
        const std::string name = std::string("log") + count;
        ASSERT_EQ(setFile("path=" + path(name) + ";roll=2#" + count), kStatusOK);
        for (const char* const text : {"aa", "bb", "cc"}) log(text);
        EXPECT_EQ(contents(name), "cc");
        EXPECT_EQ(contents(name + ".1"), "bb" + kEnded);
        EXPECT_FALSE(std::filesystem::exists(path(name + ".2")));
    }
}

TEST_F(LogFileTest, MovesOnlyTheFilesBeforeAGap) {
    ASSERT_EQ(setFile("path=" + path() + ";roll=1#5"), kStatusOK);
    write("log.3", "three");
    write("log.5", "not ours");
    log("a");
    log("b");
    EXPECT_EQ(
        files(),
        (Files{{"log", "b"}, {"log.1", "a" + kEnded}, {"log.3", "three"}, {"log.5", "not ours"}}));
}

TEST_F(LogFileTest, BacksUpBeforeItRotates) {
    const std::string parameters = "path=" + path() + ";roll=1#2;backup=" + path("save") + "#3";
    ASSERT_EQ(setFile(parameters), kStatusOK);
    log("a");
    log("b");
    EXPECT_EQ(files(), (Files{{"log", "b"}, {"log.1", "a" + kEnded}, {"save", "a"}}));
    log("c");
    EXPECT_EQ(files(),
              (Files{{"log", "c"}, {"log.1", "b" + kEnded}, {"save", "b"}, {"save.1", "a"}}));
    log("d");
    EXPECT_EQ(contents("save.2"), "a");
    log("e");
    EXPECT_EQ(files(), (Files{{"log", "e"},
                              {"log.1", "d" + kEnded},
                              {"save", "d"},
                              {"save.1", "c"},
                              {"save.2", "b"}}));
}

TEST_F(LogFileTest, BacksUpFilesLargerThanAPieceOfTheCopy) {
    const std::string parameters = "path=" + path() + ";roll=8K#2;backup=" + path("s#1") + "#1";
    ASSERT_EQ(setFile(parameters), kStatusOK);
    for (const std::size_t size : {8192u, 4097u, 4095u, 1u}) {
        const std::string text(size, 'x');
        write("log", "");
        ASSERT_EQ(control(category, "output=console"), kStatusOK);
        ASSERT_EQ(setFile(parameters), kStatusOK);
        log(text);
        log(std::string(8193, 'y'));
        EXPECT_EQ(contents("s#1"), text);
    }
}

TEST_F(LogFileTest, MakesNoBackupForACountOfNone) {
    ASSERT_EQ(setFile("path=" + path() + ";roll=1#2;backup=" + path("save") + "#0"), kStatusOK);
    log("a");
    log("b");
    EXPECT_EQ(files(), (Files{{"log", "b"}, {"log.1", "a" + kEnded}}));
}

// The log file and the backup would push each other's files out.
TEST_F(LogFileTest, RefusesABackupAmongItsOwnFiles) {
    for (const auto& [log, backup] :
         {std::pair{"log", "log"}, {"log", "log.1"}, {"log", "log.17"}, {"log.2", "log"}}) {
        const std::string parameters = "path=" + path(log) + ";roll=1#3;backup=" + path(backup);
        EXPECT_EQ(setFile(parameters + "#3"), kStatusUnsupported) << parameters;
    }
    for (const auto& backup : {"log.x", "log1", "log.1x", "lo", "log."}) {
        const std::string parameters = "path=" + path() + ";roll=1#3;backup=" + path(backup);
        EXPECT_EQ(setFile(parameters + "#3"), kStatusOK) << parameters;
    }
}

TEST_F(LogFileTest, KeepsABackupThatItCannotRename) {
    std::filesystem::create_directories(path("save.1/full"));
    write("save", "before");
    ASSERT_EQ(setFile("path=" + path() + ";roll=1#2;backup=" + path("save") + "#2"), kStatusOK);
    log("a");
    log("b");
    EXPECT_EQ(contents("save"), "before");
    EXPECT_EQ(contents("log.1"), "a" + kEnded);
}

TEST_F(LogFileTest, LeavesNothingBehindWhereItIsRefused) {
    EXPECT_EQ(setFile("path=" + path("a/log") + ";bogus=1"), kStatusUnknownParameter);
    EXPECT_EQ(setFile("path=" + path("b") + ";path=" + path("c")), kStatusOK);
    EXPECT_EQ(files(), (Files{{"c", ""}}));
}

// The reader of a pipe must not be able to stop the program.
TEST_F(LogFileTest, IgnoresAPipeWhoseReaderIsSlowOrGone) {
    ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);
    const int reader = ::open(path("pipe").c_str(), O_RDONLY | O_NONBLOCK);
    ASSERT_GE(reader, 0);
    ASSERT_EQ(setFile("path=" + path("pipe")), kStatusOK);
    log("one\n");
    char text[5] = "";
    EXPECT_EQ(::read(reader, text, 4), 4);
    EXPECT_STREQ(text, "one\n");
    for (int i = 0; i < 40; ++i) log(std::string(4096, 'x'));  // more than a pipe holds
    ::close(reader);
    log("two\n");
}

// If the program has closed a standard stream, the log file does not take its number.
TEST_F(LogFileTest, LeavesTheStandardDescriptorsAlone) {
    const int kept = ::dup(STDIN_FILENO);
    ::close(STDIN_FILENO);
    const HalvaneStatus status = setFile("path=" + path());
    const bool isFree = ::fcntl(STDIN_FILENO, F_GETFD) < 0;
    if (kept >= 0) {
        ::dup2(kept, STDIN_FILENO);
        ::close(kept);
    }
    EXPECT_EQ(status, kStatusOK);
    EXPECT_TRUE(isFree);
    log("a");
    EXPECT_EQ(contents(), "a");
}

TEST_F(LogFileTest, LeavesErrnoAlone) {
    ASSERT_EQ(setFile("path=/dev/full"), kStatusOK);
    errno = EDOM;
    log("a");
    EXPECT_EQ(errno, EDOM);
    EXPECT_EQ(setFile("path=/dev/full/x"), kStatusCannotOpen);
    EXPECT_EQ(errno, EDOM);
}

// Only regular files are moved, because the path may name a device.
TEST_F(LogFileTest, LeavesAloneWhatIsNoFile) {
    ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);
    ASSERT_EQ(setFile("path=" + path() + ";roll=1#2;backup=" + path("pipe") + "#2"), kStatusOK);
    log("a");
    log("b");
    EXPECT_TRUE(std::filesystem::is_fifo(path("pipe")));
    EXPECT_EQ(contents("log.1"), "a" + kEnded);
}

TEST_F(LogFileTest, NeverRotatesADevice) {
    ASSERT_EQ(setFile("path=/dev/null;roll=1#2"), kStatusOK);
    log("aa");
    log("bb");
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
    EXPECT_FALSE(std::filesystem::exists("/dev/null.1"));
}

TEST_F(LogFileTest, IgnoresAFullDisk) {
    ASSERT_EQ(setFile("path=/dev/full"), kStatusOK);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(LogPrintF(&category, "", kLogLevelInfo, "abc\n"), 4);
}

// Like a full disk, the limit does not end the program, not even by the signal SIGXFSZ.
TEST_F(LogFileTest, IgnoresALimitOfTheSizeOfFiles) {
    ASSERT_EQ(setFile("path=" + path()), kStatusOK);
    EXPECT_EQ(resultInChild([] {
                  if (!limitFileSize(8)) return 2;
                  for (int i = 0; i < 3; ++i) log("abcde\n");
                  return isFileSizeSignalUntouched() ? 0 : 3;
              }),
              0);
    EXPECT_EQ(contents(), "abcde\nab");
}

TEST_F(LogFileTest, RotatesUnderALimitOfTheSizeOfFiles) {
    write("log", std::string(100, 'x'));
    ASSERT_EQ(setFile("path=" + path() + ";roll=100#2;backup=" + path("backup") + "#2"), kStatusOK);
    EXPECT_EQ(resultInChild([] {
                  if (!limitFileSize(50)) return 2;
                  log("abc\n");
                  return isFileSizeSignalUntouched() ? 0 : 3;
              }),
              0);
    EXPECT_EQ(files(), (Files{{"backup", std::string(50, 'x')},
                              {"log", "abc\n"},
                              {"log.1", std::string(100, 'x')}}));
}

TEST_F(LogFileTest, GoesOnBehindAFileThatWasRemoved) {
    ASSERT_EQ(setFile("path=" + path() + ";roll=4#2"), kStatusOK);
    log("abc\n");
    std::filesystem::remove(path());
    EXPECT_EQ(LogPrintF(&category, "", kLogLevelInfo, "d\n"), 2);  // rotates a missing file
    EXPECT_EQ(files(), (Files{{"log", "d\n"}}));
}

TEST_F(LogFileTest, MakesItsFolderAnewThatWasRemoved) {
    ASSERT_EQ(setFile("path=" + path("sub/log")), kStatusOK);
    log("a");
    std::filesystem::remove_all(path("sub"));
    log("b");
    EXPECT_EQ(contents("sub/log"), "b");
}

TEST_F(LogFileTest, WritesAgainOnceItsFolderCanBeHad) {
    ASSERT_EQ(setFile("path=" + path("sub/log") + ";roll=1#2"), kStatusOK);
    log("a");
    std::filesystem::remove_all(path("sub"));
    write("sub", "a file in the folder's place");
    log("b");
    log("c");
    EXPECT_EQ(contents("sub"), "a file in the folder's place");
    std::filesystem::remove(path("sub"));
    log("d");
    EXPECT_EQ(contents("sub/log"), "d");
}

TEST_F(LogFileTest, WritesToItsPathAgainWhenTheFileWasRenamed) {
    ASSERT_EQ(setFile("path=" + path()), kStatusOK);
    log("a");
    std::filesystem::rename(path(), path("log.old"));
    log("b");
    EXPECT_EQ(files(), (Files{{"log", "b"}, {"log.old", "a"}}));
    std::filesystem::rename(path(), path("log.older"));
    write("log", "another's\n");  // which is there already
    log("c");
    EXPECT_EQ(files(), (Files{{"log", "another's\nc"}, {"log.old", "a"}, {"log.older", "b"}}));
}

TEST_F(LogFileTest, CountsAnewInTheFileThatItOpensAnew) {
    ASSERT_EQ(setFile("path=" + path() + ";roll=4#3"), kStatusOK);
    log("abcd");
    std::filesystem::rename(path(), path("old"));
    log("efg");
    EXPECT_EQ(files(), (Files{{"log", "efg"}, {"old", "abcd"}}));
    log("hi");
    EXPECT_EQ(contents("log.1"), "efg" + kEnded);
}

// During a burst, some lines do not check the path. When the clock moves on, lines check it again.
TEST_F(LogFileTest, LooksForARenamedFileInABurstAtLeastOnceAStep) {
    constexpr unsigned kLooks = halvane::logging::LookCount::kMostInAStep;
    halvane::ScopedUpTime clock(1'000'000);
    ASSERT_EQ(setFile("path=" + path()), kStatusOK);
    for (unsigned i = 1; i < kLooks; ++i) log("a");
    std::filesystem::rename(path(), path("first"));
    log("b");  // the last line that checks
    EXPECT_EQ(files(), (Files{{"first", std::string(kLooks - 1, 'a')}, {"log", "b"}}));
    std::filesystem::rename(path(), path("second"));
    log("c");
    EXPECT_EQ(contents("second"), "bc");
    clock.advance(1);
    log("d");
    EXPECT_EQ(contents(), "d");
    EXPECT_EQ(contents("second"), "bc");
}

TEST_F(LogFileTest, ReopensOnDemand) {
    ASSERT_EQ(setFile("path=" + path()), kStatusOK);
    log("a");
    std::filesystem::rename(path(), path("log.old"));
    EXPECT_EQ(LogReopen(), kStatusOK);
    EXPECT_EQ(files(), (Files{{"log", ""}, {"log.old", "a"}}));
    log("b");
    EXPECT_EQ(contents(), "b");
    EXPECT_EQ(LogReopen(), kStatusOK);  // nothing has moved
    log("c");
    EXPECT_EQ(contents(), "bc");
}

TEST_F(LogFileTest, KeepsTheFileThatItCannotReopen) {
    ASSERT_EQ(setFile("path=" + path()), kStatusOK);
    std::filesystem::rename(path(), path("log.old"));
    std::filesystem::create_directory(path());
    EXPECT_EQ(LogReopen(), kStatusCannotOpen);
    log("a");
    EXPECT_EQ(contents("log.old"), "a");
}

TEST_F(LogFileTest, ReopensNoStream) {
    ASSERT_EQ(control(category, "output=console"), kStatusOK);
    EXPECT_EQ(LogReopen(), kStatusOK);
}

// --- What successors and backups inherit ---

unsigned permissionsOf(const std::string& path) {
    return static_cast<unsigned>(std::filesystem::status(path).permissions());
}

TEST_F(LogFileTest, HandsItsModeOn) {
    ASSERT_EQ(setFile("path=" + path() + ";roll=1#2;backup=" + path("save") + "#2"), kStatusOK);
    log("a");
    for (const unsigned mode : {0640u, 0606u, 0600u}) {
        ASSERT_EQ(::chmod(path().c_str(), mode), 0);
        log("b");  // makes a backup and a new file
        EXPECT_EQ(permissionsOf(path()), mode);
        EXPECT_EQ(permissionsOf(path("save")), mode);
        std::filesystem::rename(path(), path("old"));
        log("c");
        EXPECT_EQ(permissionsOf(path()), mode);
        log("d");
    }
}

// An existing file stays as it is.
TEST_F(LogFileTest, LeavesTheModeOfAnotherFileAlone) {
    ASSERT_EQ(setFile("path=" + path()), kStatusOK);
    ASSERT_EQ(::chmod(path().c_str(), 0600), 0);
    std::filesystem::rename(path(), path("old"));
    write("log", "");
    ASSERT_EQ(::chmod(path().c_str(), 0644), 0);
    log("a");
    EXPECT_EQ(permissionsOf(path()), 0644u);
}

TEST_F(LogFileTest, HandsItsOwnerOn) {
    if (::geteuid() != 0) GTEST_SKIP() << "only root gives files away";
    ASSERT_EQ(setFile("path=" + path() + ";roll=1#2;backup=" + path("save") + "#2"), kStatusOK);
    log("a");
    if (::chown(path().c_str(), 1, 2) != 0) GTEST_SKIP() << "not even root, here";
    ASSERT_EQ(::chmod(path().c_str(), 0640), 0);
    log("b");
    for (const char* const name : {"log", "log.1", "save"}) {
        struct stat status {};
        ASSERT_EQ(::stat(path(name).c_str(), &status), 0);
        EXPECT_EQ(status.st_uid, 1u) << name;
        EXPECT_EQ(status.st_gid, 2u) << name;
        EXPECT_EQ(status.st_mode & 07777u, 0640u) << name;
    }
}

// --- Gaps ---

// These files remain if a process ends between two renames.
TEST_F(LogFileTest, ShiftsFilesNoFurtherThanToTheFirstGap) {
    struct Row {
        std::vector<int> numbers;
        std::vector<int> afterwards;  // where these files are then
    };
    const Row rows[] = {
        {{1, 2, 3}, {2, 3, 0}},  // the last one is removed
        {{1, 2}, {2, 3}},
        {{2, 3}, {2, 3}},
        {{1, 3}, {2, 3}},
        {{3}, {3}},
        {{1}, {2}},
        {{}, {}},
    };
    for (const auto& [numbers, afterwards] : rows) {
        for (const auto& [name, text] : files()) std::filesystem::remove(path(name));
        Files expected = {{"log", "b"}, {"log.1", "a" + kEnded}};
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            const std::string number = std::to_string(numbers[i]);
            write("log." + number, number);
            if (afterwards[i] > 0) expected["log." + std::to_string(afterwards[i])] = number;
        }
        write("log", "a");
        ASSERT_EQ(setFile("path=" + path() + ";roll=1#4"), kStatusOK);
        log("b");
        EXPECT_EQ(files(), expected);
        ASSERT_EQ(control(category, "output=console"), kStatusOK);
    }
}

// The process ended after it had renamed the backup and before it made the next.
TEST_F(LogFileTest, ShiftsNoBackupsWhereTheNewestIsMissing) {
    write("save.1", "one");
    write("save.2", "two");
    ASSERT_EQ(setFile("path=" + path() + ";roll=1#2;backup=" + path("save") + "#3"), kStatusOK);
    log("a");
    log("b");
    EXPECT_EQ(files(), (Files{{"log", "b"},
                              {"log.1", "a" + kEnded},
                              {"save", "a"},
                              {"save.1", "one"},
                              {"save.2", "two"}}));
}

constexpr int kNotHere = 77;

// From now on a write of 4096 bytes or more ends the process at once.
bool endAtLongWrite() {
    constexpr bool kIsBigEndian = std::endian::native == std::endian::big;
    constexpr auto kLength = offsetof(seccomp_data, args[2]) + (kIsBigEndian ? 4 : 0);
    sock_filter rules[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_write, 0, 3),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, kLength),
        BPF_JUMP(BPF_JMP | BPF_JGE | BPF_K, 4096, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog program = {static_cast<unsigned short>(std::size(rules)), rules};
    const rlimit noCore = {0, 0};
    return ::setrlimit(RLIMIT_CORE, &noCore) == 0 &&
           ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

// Rotates in a child that ends during the copy. Returns -1 if it did end.
int endWithinCopy(const std::string& setting) {
    return resultInChild([&] {
        if (LogControl(setting.c_str()) != kStatusOK) return 2;
        if (!endAtLongWrite()) return kNotHere;
        LogPrintF(&LogFileTest::category, "", kLogLevelInfo, "b");
        return 3;
    });
}

// A backup holds the whole log file, or does not exist.
TEST_F(LogFileTest, LeavesNoPartOfABackupWhenAProgramEndsWithinTheCopy) {
    const std::string parameters = "path=" + path() + ";roll=1#2;backup=" + path("save") + "#3";
    const std::string text(20000, 'a');
    write("log", text);
    write("save", "saved");
    for (int i = 0; i < 2; ++i) {
        const int result = endWithinCopy("^FileTest$:output=file;" + parameters);
        if (result == kNotHere) GTEST_SKIP() << "no filter of system calls";
        ASSERT_EQ(result, -1);
        EXPECT_TRUE(contents() == text);  // a long one to print
        EXPECT_FALSE(std::filesystem::exists(path("save")));
        EXPECT_EQ(contents("save.1").size(), 5u);
    }
    // The next rotation makes the backup, and leaves no other file.
    ASSERT_EQ(setFile(parameters), kStatusOK);
    log("b");
    const Files expected = {
        {"log", "b"}, {"log.1", text + kEnded}, {"save", text}, {"save.1", "saved"}};
    EXPECT_TRUE(files() == expected);
}

TEST_F(LogFileTest, LeavesAloneWhatIsNoFileInThePlaceOfAnUnfinishedBackup) {
    ASSERT_EQ(::mkfifo(path("save.0").c_str(), 0600), 0);
    ASSERT_EQ(setFile("path=" + path() + ";roll=1#2;backup=" + path("save") + "#2"), kStatusOK);
    log("a");
    log("b");
    EXPECT_TRUE(std::filesystem::is_fifo(path("save.0")));
    EXPECT_EQ(contents("log.1"), "a" + kEnded);
}

TEST_F(LogFileTest, AnEmptyFileTakesNoPlace) {
    write("log.1", "one");
    write("save", "saved");
    ASSERT_EQ(setFile("path=" + path() + ";roll=1#2;backup=" + path("save") + "#2"), kStatusOK);
    log("abc");  // more than the size by itself
    EXPECT_EQ(files(), (Files{{"log", "abc"}, {"log.1", "one"}, {"save", "saved"}}));
    ASSERT_EQ(::truncate(path().c_str(), 0), 0);
    log("def");
    EXPECT_EQ(files(), (Files{{"log", "def"}, {"log.1", "one"}, {"save", "saved"}}));
    log("g");
    EXPECT_EQ(
        files(),
        (Files{{"log", "g"}, {"log.1", "def" + kEnded}, {"save", "def"}, {"save.1", "saved"}}));
}

// --- Folders ---

TEST_F(LogFileTest, TellsOfABackupWithoutAFolder) {
    const std::string file = "path=" + path("logs/log") + ";roll=1#2;backup=";
    EXPECT_EQ(setFile(file + path("none/save") + "#2"), kStatusBadPath);
    EXPECT_EQ(setFile(file + path("none/save") + "#0"), kStatusOK);  // none is made
    EXPECT_EQ(setFile(file + path("logs/save") + "#2"), kStatusOK);
}

class ScopedWorkingFolder {
  public:
    explicit ScopedWorkingFolder(const std::filesystem::path& path)
        : before_(std::filesystem::current_path()) {
        std::filesystem::current_path(path);
    }
    ~ScopedWorkingFolder() { std::filesystem::current_path(before_); }
    ScopedWorkingFolder(const ScopedWorkingFolder&) = delete;
    ScopedWorkingFolder& operator=(const ScopedWorkingFolder&) = delete;

  private:
    std::filesystem::path before_;
};

TEST_F(LogFileTest, StaysInTheFolderThatItsPathWasGivenIn) {
    const ScopedWorkingFolder folder(folder_.path());
    ASSERT_EQ(setFile("path=log;roll=1#2;backup=save#2"), kStatusOK);
    std::filesystem::create_directory("elsewhere");
    std::filesystem::current_path("elsewhere");
    log("a");
    log("b");
    EXPECT_EQ(files(),
              (Files{{"elsewhere", ""}, {"log", "b"}, {"log.1", "a" + kEnded}, {"save", "a"}}));
    EXPECT_TRUE(std::filesystem::is_empty(path("elsewhere")));
}

// The two paths name one file, which a rotation would push out.
TEST_F(LogFileTest, KnowsARelativeBackupForTheFileItself) {
    const ScopedWorkingFolder folder(folder_.path());
    EXPECT_EQ(setFile("path=log;roll=1#2;backup=" + path("log.1") + "#2"), kStatusUnsupported);
}

// If a file cannot be renamed, the output appends to it instead of emptying it.
TEST_F(LogFileTest, KeepsTheFileThatItCannotRename) {
    std::filesystem::create_directories(path("log.1/full"));  // renames onto it fail for root too
    ASSERT_EQ(setFile("path=" + path() + ";roll=1#2"), kStatusOK);
    log("a");
    log("b");
    EXPECT_EQ(contents(), "a" + kEnded + "b");
}

TEST_F(LogFileTest, OpensTheSameFileOnceForAllCategories) {
    static TestCategory second("FileTestSecond");
    second.reset();
    LogIsEnabled(&second, kLogLevelInfo);
    const std::string setting = "output=file;path=" + path() + ";roll=4#2";
    ASSERT_EQ(LogControl(("FileTest:" + setting).c_str()), kStatusOK);
    EXPECT_EQ(category.output, second.output);
    log("abcd");
    LogPrintF(&second, "", kLogLevelInfo, "e");
    EXPECT_EQ(files(), (Files{{"log", "e"}, {"log.1", "abcd" + kEnded}}));
}

// So the cost of a control string does not grow with the number of earlier outputs.
TEST_F(LogFileTest, OpensNoFileOfASettingThatALaterOneHides) {
    ASSERT_EQ(LogControl(("File:output=file;path=" + path("hidden")).c_str()), kStatusOK);
    ASSERT_EQ(setFile("path=" + path()), kStatusOK);
    std::filesystem::remove(path("hidden"));
    ASSERT_EQ(LogControl("Another:level=info"), kStatusOK);
    EXPECT_EQ(files(), (Files{{"log", ""}}));
}

// If the last setting fails, the output of the one before is used.
TEST_F(LogFileTest, OpensTheFileBehindASettingThatFails) {
    ASSERT_EQ(setFile("path=" + path()), kStatusOK);
    EXPECT_EQ(LogControl("File:output=bogus"), kStatusUnsupported);
    category.reset();
    LogIsEnabled(&category, kLogLevelInfo);
    EXPECT_EQ(outputOf(category), "file;path=" + path());
}

// A control string applies all settings, so an output that failed is tried again.
TEST_F(LogFileTest, TriesASettingThatFailsAgainWithTheNextControlString) {
    write("sub", "a file in a folder's place");
    ASSERT_EQ(setFile("path=" + path("log")), kStatusOK);
    EXPECT_EQ(LogControl(("FileTest:output=file;path=" + path("sub/log")).c_str()),
              kStatusCannotOpen);
    EXPECT_EQ(LogControl("Another:level=info"), kStatusOK);  // reports only new faults
    EXPECT_EQ(outputOf(category), "file;path=" + path("log"));
    std::filesystem::remove(path("sub"));
    EXPECT_EQ(LogControl("Another:level=info"), kStatusOK);
    EXPECT_EQ(outputOf(category), "file;path=" + path("sub/log"));
}

TEST_F(LogFileTest, ClosesTheFileThatNoCategoryUses) {
    const auto openFiles = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
    };
    const auto before = openFiles();
    ASSERT_EQ(setFile("path=" + path()), kStatusOK);
    EXPECT_EQ(openFiles(), before + 1);
    ASSERT_EQ(control(category, "output=console"), kStatusOK);
    EXPECT_EQ(openFiles(), before);
    ASSERT_EQ(LogControl(("NoSuchCategory:output=file;path=" + path()).c_str()), kStatusOK);
    EXPECT_EQ(openFiles(), before);
}

}  // namespace
