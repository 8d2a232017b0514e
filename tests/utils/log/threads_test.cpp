// Many threads at once.
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

#include "halvane/base/status.h"
#include "halvane/utils/log.h"

#include "tests/support/temporary_folder.h"
#include "tests/utils/log/test_support.h"

namespace {

using halvane::testing::LogRecorder;
using halvane::testing::LogTest;
using halvane::testing::TemporaryFolder;
using halvane::testing::TestCategory;

constexpr int kThreads = 8;
constexpr int kLines = 100'000;
constexpr int kLinesOfThread = kLines / kThreads;

TestCategory category("ThreadTest");

class LogThreadsTest : public LogTest {
  protected:
    LogThreadsTest() { category.reset(); }

    std::string path(const std::string& name = "log") const { return folder_.path() / name; }

    TemporaryFolder folder_;
};

void runThreads(const auto& body) {
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) threads.emplace_back(body, thread);
    for (auto& thread : threads) thread.join();
}

std::string lineOf(int thread, int number) {
    const std::string filling(static_cast<std::size_t>(number % 60), '.');
    return "thread " + std::to_string(thread) + " line " + std::to_string(number) + filling;
}

// The lines of a log file and of its rotated files, oldest first, without the lines that a rotation
// adds.
std::vector<std::string> linesOf(const std::string& path, int count) {
    std::vector<std::string> lines;
    for (int number = count; number >= 0; --number) {
        std::string name = path;
        if (number > 0) name.append(".").append(std::to_string(number));
        std::ifstream file(name);
        for (std::string line; std::getline(file, line);) {
            if (!line.empty() && line != "LOG ENDED, CONTINUES IN NEXT LOG FILE") {
                lines.push_back(line);
            }
        }
    }
    return lines;
}

void logAllLines(int thread) {
    for (int number = 0; number < kLinesOfThread; ++number) {
        HALVANE_LOG(&category, kLogLevelInfo, "thread %d line %d%.*s\n", thread, number,
                    number % 60, "............................................................");
    }
}

TEST_F(LogThreadsTest, LoseNoLineAcrossRotations) {
    LogIsEnabled(&category, kLogLevelInfo);
    ASSERT_EQ(control(category, "output=file;path=" + path() + ";roll=64K#1000"), kStatusOK);
    runThreads(logAllLines);

    std::vector<int> next(kThreads, 0);
    for (const std::string& line : linesOf(path(), 1000)) {
        int thread = -1;
        ASSERT_EQ(std::sscanf(line.c_str(), "thread %d line", &thread), 1) << line;
        ASSERT_TRUE(thread >= 0 && thread < kThreads) << line;
        int& number = next[static_cast<std::size_t>(thread)];
        ASSERT_EQ(line, lineOf(thread, number));  // whole, and in the thread's order
        ++number;
    }
    EXPECT_EQ(next, std::vector<int>(kThreads, kLinesOfThread));
    EXPECT_TRUE(std::filesystem::exists(path() + ".50"));  // there were rotations
}

TEST_F(LogThreadsTest, LoseOnlyTheOldestFilesWhereFewAreKept) {
    LogIsEnabled(&category, kLogLevelInfo);
    ASSERT_EQ(control(category, "output=file;path=" + path() + ";roll=64K#4"), kStatusOK);
    runThreads(logAllLines);

    std::vector<int> next(kThreads, -1);
    for (const std::string& line : linesOf(path(), 4)) {
        int thread = -1;
        int number = -1;
        ASSERT_EQ(std::sscanf(line.c_str(), "thread %d line %d", &thread, &number), 2) << line;
        ASSERT_TRUE(thread >= 0 && thread < kThreads) << line;
        int& expected = next[static_cast<std::size_t>(thread)];
        if (expected < 0) expected = number;  // the first one stays
        ASSERT_EQ(line, lineOf(thread, expected));
        ++expected;
    }
    int finished = 0;
    for (const int number : next) finished += number == kLinesOfThread || number == -1;
    EXPECT_EQ(finished, kThreads);
    EXPECT_FALSE(std::filesystem::exists(path() + ".4"));
    EXPECT_TRUE(std::filesystem::exists(path() + ".3"));
}

TEST_F(LogThreadsTest, MayLogWhileACategoryIsControlled) {
    LogIsEnabled(&category, kLogLevelInfo);
    const std::string file = "output=file;path=" + path() + ";roll=16K#3";
    ASSERT_EQ(control(category, file), kStatusOK);
    std::atomic<bool> isDone = false;
    std::thread controller([&] {
        const std::vector<std::string> settings = {
            "flags=time;pid;program;category;level;prefix;function",
            "output=file;path=" + path("log2"),
            "level=warning",
            "rate=1000000/1",
            "flags=none",
            file,
            "level=all",
            "rate=0/0",
        };
        for (std::size_t i = 0; !isDone; ++i) {
            EXPECT_EQ(control(category, settings[i % settings.size()]), kStatusOK);
            char* report = nullptr;
            EXPECT_EQ(LogUtils_Show(&report), kStatusOK);
            std::free(report);
        }
    });
    runThreads([](int) {
        for (int i = 0; i < 2000; ++i) HALVANE_LOG(&category, kLogLevelInfo, "line %d\n", i);
    });
    isDone = true;
    controller.join();
}

// Each first test also makes the library read the preferences again.
TEST_F(LogThreadsTest, LoseNoMessageOfFirstTests) {
    static TestCategory untested[] = {TestCategory("ThreadTestA"), TestCategory("ThreadTestB"),
                                      TestCategory("ThreadTestC"), TestCategory("ThreadTestD")};
    const LogRecorder recorder;
    const std::string config = "?^ThreadTest:output=" + recorder.spec();
    for (auto& each : untested) each.initConfig = config.c_str();
    runThreads([](int) {
        for (auto& each : untested) HALVANE_LOG(&each, kLogLevelError, "x");
    });
    EXPECT_EQ(recorder.text(), std::string(kThreads * std::size(untested), 'x'));
    LogUtils_Finalize();
    for (auto& each : untested) each.initConfig = nullptr;
}

TEST_F(LogThreadsTest, SetACategoryUpOnce) {
    static TestCategory untested[] = {TestCategory("ThreadTestA"), TestCategory("ThreadTestB"),
                                      TestCategory("ThreadTestC")};
    runThreads([](int) {
        for (auto& each : untested) EXPECT_TRUE(LogIsEnabled(&each, kLogLevelError));
    });
    char* report = nullptr;
    ASSERT_EQ(LogUtils_Show(&report), kStatusOK);
    const std::string text = report;
    std::free(report);
    for (const auto& each : untested) {
        const auto first = text.find(each.name);
        EXPECT_NE(first, std::string::npos);
        EXPECT_EQ(text.find(each.name, first + 1), std::string::npos) << each.name;
    }
}

}  // namespace
