#include <algorithm>
#include <array>
#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <mutex>
#include <pthread.h>
#include <string>
#include <thread>
#include <vector>

#include "halvane/base/status.h"
#include "halvane/utils/log.h"
#include "halvane/utils/log/lock_internal.h"
#include "halvane/utils/printf.h"

#include "tests/support/private_logs.h"
#include "tests/support/run_program.h"
#include "tests/support/sanitizers.h"
#include "tests/support/temporary_folder.h"
#include "tests/utils/log/test_support.h"

using halvane::testing::contentsOf;
using halvane::testing::LogRecorder;
using halvane::testing::LogTest;
using halvane::testing::resultInChild;
using halvane::testing::ScopedDescriptor;
using halvane::testing::TemporaryFolder;
using halvane::testing::TestCategory;

namespace {

using Names = std::vector<std::string>;

class LogCategoryTest : public LogTest {
  protected:
    // Returns the names in the order of the list. Fails the test if the list has no end.
    static Names listedNames() {
        Names names;
        const LogCategory* category = halvane::logging::logState().categories;
        for (; category != nullptr && names.size() < 100; category = category->next) {
            names.emplace_back(category->name);
        }
        EXPECT_EQ(category, nullptr);
        return names;
    }
};

// --- The library's own ---

struct Definition {
    LogCategory* category;
    const char* name;
    std::int32_t defaultLevel;
    std::uint32_t flags;
    const char* initConfig;
};

// Every field as it is before the first test of a category.
void expectDefinedAs(const LogCategory& category, const Definition& definition) {
    EXPECT_STREQ(category.name, definition.name);
    EXPECT_EQ(category.defaultLevel, definition.defaultLevel) << definition.name;
    EXPECT_EQ(category.flags, definition.flags) << definition.name;
    EXPECT_EQ(std::string(category.prefix, category.prefixLength), definition.name);
    EXPECT_EQ(category.ratePeriod, 0u);
    EXPECT_EQ(category.rateIntervalEnd, 0u);
    EXPECT_EQ(category.rateMax, 0u);
    EXPECT_EQ(category.rateCount, 0u);
    const auto& configs = halvane::testing::definedInitConfigs();
    const auto config = configs.find(definition.name);
    if (definition.initConfig == nullptr) {
        EXPECT_EQ(category.initConfig, nullptr);
        EXPECT_EQ(config, configs.end());
    } else if (config == configs.end()) {
        ADD_FAILURE() << definition.name << " was defined without a control string";
    } else {
        EXPECT_EQ(config->second, definition.initConfig);
    }
}

TEST_F(LogCategoryTest, TheLibrarysAreDefinedAsDocumented) {
    for (const Definition& definition : {
             Definition{&gLogCategory_LogUtils, "LogUtils", 0, 1, nullptr},
             {&gLogCategory_WiFi, "WiFi", 90, 9, "?WiFi:output=file;path=/var/log/halvaned.log"},
             {&gLogCategory_WiFiBPF, "WiFiBPF", 90, 9,
              "?WiFiBPF:output=file;path=/var/log/halvaned.log"},
             {&gLogCategory_WiFiEAPOL, "WiFiEAPOL", 90, 9,
              "?WiFiEAPOL:output=file;path=/var/log/halvaned.log"},
             {&gLogCategory_WiFiIE, "WiFiIE", 90, 9,
              "?WiFiIE:output=file;path=/var/log/halvaned.log"},
             {&gLogCategory_WiFiIO80211, "WiFiIO80211", 90, 9,
              "?WiFiIO80211:output=file;path=/var/log/halvaned.log"},
             {&gLogCategory_WiFiJoin, "WiFiJoin", 90, 9,
              "?WiFiJoin:output=file;path=/var/log/halvaned.log"},
             {&gLogCategory_WiFiScan, "WiFiScan", 90, 9,
              "?WiFiScan:output=file;path=/var/log/halvaned.log"},
             {&gLogCategory_WiFiWPS, "WiFiWPS", 90, 9,
              "?WiFiWPS:output=file;path=/var/log/halvaned.log"},
             {&gLogCategory_WiFiXPC, "WiFiXPC", 90, 9,
              "?WiFiXPC:output=file;path=/var/log/halvaned.log"},
         }) {
        expectDefinedAs(*definition.category, definition);
    }
    EXPECT_EQ(halvane::testing::definedInitConfigs().size(), 9u);
}

HALVANE_LOG_CATEGORY(Test_Defined, kLogLevelNotice, kLogHeaderPID, nullptr);

TEST_F(LogCategoryTest, ADefinedCategoryIsNotInitialised) {
    EXPECT_EQ(gLogCategory_Test_Defined.level, -1);
    EXPECT_EQ(gLogCategory_Test_Defined.next, nullptr);
    EXPECT_EQ(gLogCategory_Test_Defined.output, nullptr);
    EXPECT_EQ(gLogCategory_Test_Defined.defaultLevel, kLogLevelNotice);
    EXPECT_EQ(gLogCategory_Test_Defined.flags, std::uint32_t{kLogHeaderPID});
    EXPECT_STREQ(gLogCategory_Test_Defined.name, "Test_Defined");
}

// --- The first test ---

TEST_F(LogCategoryTest, TheFirstTestInitialises) {
    TestCategory category("Test_First", kLogLevelWarning);
    EXPECT_FALSE(LogIsEnabled(&category, kLogLevelWarning - 1));
    EXPECT_EQ(category.level, kLogLevelWarning);
    EXPECT_EQ(std::string(category.prefix, category.prefixLength), "Test");
    EXPECT_EQ(outputOf(category), "console");
    EXPECT_EQ(category.output->refCount, 1u);
    EXPECT_EQ(listedNames(), Names{"Test_First"});
    EXPECT_TRUE(LogIsEnabled(&category, kLogLevelWarning));
}

TEST_F(LogCategoryTest, InitialisingAnswersWhetherTheLevelPasses) {
    for (const bool isSecondTime : {false, true}) {
        TestCategory category("Test", kLogLevelWarning);
        if (isSecondTime) LogIsEnabled(&category, kLogLevelMax);
        EXPECT_FALSE(__LogCategory_Initialize(&category, kLogLevelWarning - 1));
        EXPECT_TRUE(__LogCategory_Initialize(&category, kLogLevelWarning));
        EXPECT_TRUE(__LogCategory_Initialize(&category, kLogLevelWarning + 1));
        EXPECT_FALSE(__LogCategory_Initialize(&category, 0x100));  // of the lowest byte only
        EXPECT_TRUE(__LogCategory_Initialize(&category, 0xFFFFFFFF));
    }
}

TEST_F(LogCategoryTest, InitialisingAgainChangesNothing) {
    TestCategory category("Test");
    LogIsEnabled(&category, kLogLevelMax);
    category.level = 77;
    category.defaultLevel = 5;
    category.initConfig = "Test:flags=pid";
    EXPECT_TRUE(__LogCategory_Initialize(&category, 77));
    EXPECT_EQ(category.level, 77);
    EXPECT_EQ(category.flags, 0u);
    EXPECT_EQ(listedNames(), Names{"Test"});
    EXPECT_EQ(category.output->refCount, 1u);
}

TEST_F(LogCategoryTest, TheListIsSortedByNameInEitherCase) {
    std::array<TestCategory, 6> categories = {TestCategory("beta"),  TestCategory("Delta"),
                                              TestCategory("ALPHA"), TestCategory("gamma"),
                                              TestCategory("Beta"),  TestCategory("alpha_2")};
    for (TestCategory& category : categories) LogIsEnabled(&category, kLogLevelMax);
    // Of two equal names, the later category comes second.
    EXPECT_EQ(listedNames(), (Names{"ALPHA", "alpha_2", "beta", "Beta", "Delta", "gamma"}));
}

TEST_F(LogCategoryTest, ItsOwnControlStringIsApplied) {
    TestCategory category("TestOwn");
    category.initConfig = "TestOwn:level=error,TestOwn:flags=level,TestOwn:output=syslog";
    EXPECT_FALSE(LogIsEnabled(&category, kLogLevelInfo));
    EXPECT_EQ(category.level, kLogLevelError);
    EXPECT_EQ(category.flags, std::uint32_t{kLogHeaderLevel});
    EXPECT_EQ(outputOf(category), "syslog");
    EXPECT_EQ(outputs(), Names{"syslog"});
    EXPECT_EQ(settings().size(), 3u);
}

TEST_F(LogCategoryTest, ItsControlStringMayBeForOthersToo) {
    TestCategory other("TestOther");
    LogIsEnabled(&other, kLogLevelMax);
    TestCategory category("TestOwn");
    category.initConfig = "Test:level=error";
    LogIsEnabled(&category, kLogLevelMax);
    EXPECT_EQ(other.level, kLogLevelError);
    EXPECT_EQ(category.level, kLogLevelError);
}

TEST_F(LogCategoryTest, EarlierSettingsAreReplacedByItsControlString) {
    EXPECT_EQ(LogControl("TestOwn:level=trace,Test:flags=pid"), kStatusOK);
    TestCategory category("TestOwn");
    category.initConfig = "TestOwn:level=error";
    LogIsEnabled(&category, kLogLevelMax);
    EXPECT_EQ(category.level, kLogLevelError);
    EXPECT_EQ(category.flags, std::uint32_t{kLogHeaderPID});
}

TEST_F(LogCategoryTest, AMalformedControlStringLeavesADefaultCategory) {
    TestCategory category("TestOwn");
    category.initConfig = "TestOwn:level=error,TestOwn";
    EXPECT_TRUE(LogIsEnabled(&category, kLogLevelError));
    EXPECT_EQ(category.level, kLogLevelError);  // the setting before the fault applies
    EXPECT_EQ(outputOf(category), "console");
}

TEST_F(LogCategoryTest, AFileThatCannotBeOpenedGivesWayToTheConsole) {
    const TemporaryFolder folder;
    const std::string errors = (folder.path() / "errors").string();
    // A folder cannot be opened for writing, even by root.
    const std::string config = std::string("?TestOwn:output=file;path=") + folder.path().string();
    TestCategory category("TestOwn");
    category.initConfig = config.c_str();
    {
        const ScopedDescriptor error(STDERR_FILENO, errors.c_str());
        HALVANE_LOG(&category, kLogLevelError, "text\n");
    }
    EXPECT_EQ(outputOf(category), "console");
    EXPECT_EQ(contentsOf(errors), "text\n");
}

TEST_F(LogCategoryTest, TheFileOfItsControlStringIsMade) {
    const TemporaryFolder folder;
    const std::string path = (folder.path() / "sub" / "test.log").string();
    const std::string config = std::string("?TestOwn:output=file;path=") + path;
    TestCategory category("TestOwn");
    category.initConfig = config.c_str();
    HALVANE_LOG(&category, kLogLevelInfo, "one\n");
    HALVANE_LOG(&category, kLogLevelInfo, "two\n");
    EXPECT_EQ(contentsOf(path), "one\ntwo\n");
}

TEST_F(LogCategoryTest, PrintingToAnUntestedCategoryInitialisesIt) {
    LogRecorder recorder;
    EXPECT_EQ(LogControl((std::string("TestPrint:output=") + recorder.spec()).c_str()), kStatusOK);
    TestCategory category("TestPrint", kLogLevelOff);
    EXPECT_EQ(LogPrintF(&category, "f", kLogLevelChatty, "text"), 4);
    EXPECT_EQ(category.level, kLogLevelOff);
    EXPECT_EQ(recorder.text(), "text");
}

// --- The end ---

TEST_F(LogCategoryTest, FinalizingForgetsLevelOutputAndSettings) {
    TestCategory first("TestA");
    TestCategory second("TestB");
    for (TestCategory* category : {&first, &second}) LogIsEnabled(category, kLogLevelMax);
    EXPECT_EQ(LogControl("Test:level=error"), kStatusOK);
    LogUtils_Finalize();
    for (const TestCategory* category : {&first, &second}) {
        EXPECT_EQ(category->level, -1);
        EXPECT_EQ(category->output, nullptr);
    }
    EXPECT_EQ(settings(), Names{});
    EXPECT_EQ(outputs(), Names{});
    EXPECT_EQ(listedNames(), (Names{"TestA", "TestB"}));
}

TEST_F(LogCategoryTest, AfterFinalizingCategoriesInitialiseAnewInTheirPlaces) {
    // Two of the categories share a name.
    std::array<TestCategory, 4> categories = {TestCategory("TestB"), TestCategory("TestA"),
                                              TestCategory("TESTB"), TestCategory("TestC")};
    const Names sorted = {"TestA", "TestB", "TESTB", "TestC"};
    for (int round = 0; round < 3; ++round) {
        for (TestCategory& category : categories) {
            EXPECT_TRUE(LogIsEnabled(&category, kLogLevelInfo));
            EXPECT_EQ(category.level, kLogLevelInfo);
            EXPECT_EQ(outputOf(category), "console");
            if (round > 0) {
                EXPECT_EQ(listedNames(), sorted);
            }
        }
        EXPECT_EQ(listedNames(), sorted);
        EXPECT_EQ(categories[0].output->refCount, 4u);
        LogUtils_Finalize();
    }
}

TEST_F(LogCategoryTest, FinalizingTwiceOrBeforeAnythingIsHarmless) {
    LogUtils_Finalize();
    LogUtils_Finalize();
    EXPECT_EQ(LogUtils_EnsureInitialized(), 0);
    EXPECT_EQ(listedNames(), Names{});
}

// --- Within the lock ---

struct Reentry {
    LogCategory* category = nullptr;
    int printed = -1;
    bool isEnabled = true;
    bool isInitialized = true;
    HalvaneStatus controlled = kStatusOK;
    HalvaneStatus shown = kStatusOK;
    std::string text;
};

void logAgain(const LogMessage*, const char* text, std::size_t length, void* arg) {
    auto& reentry = *static_cast<Reentry*>(arg);
    TestCategory untested("TestUntested");
    reentry.printed = LogPrintF(reentry.category, "f", kLogLevelError, "inner");
    reentry.isInitialized = __LogCategory_Initialize(&untested, kLogLevelMax);
    reentry.controlled = LogControl("Test:level=off");
    char* report = nullptr;
    reentry.shown = LogUtils_Show(&report);
    LogSetAppID("org.example.inner");
    reentry.text.append(text, length);
}

TEST_F(LogCategoryTest, WhatACallbackLogsIsDropped) {
    TestCategory category("Test");
    Reentry reentry;
    reentry.category = &category;
    std::array<char, 100> output;
    SNPrintF(output.data(), output.size(), "output=callback;func=%p;arg=%p",
             reinterpret_cast<const void*>(&logAgain), &reentry);
    LogIsEnabled(&category, kLogLevelMax);
    ASSERT_EQ(control(category, output.data()), kStatusOK);
    EXPECT_EQ(LogPrintF(&category, "f", kLogLevelError, "outer"), 5);
    EXPECT_EQ(reentry.text, "outer");
    EXPECT_EQ(reentry.printed, 0);
    EXPECT_FALSE(reentry.isInitialized);
    EXPECT_EQ(reentry.controlled, kStatusUnsupported);
    EXPECT_EQ(reentry.shown, kStatusUnsupported);  // no report could be built
    EXPECT_EQ(category.level, kLogLevelInfo);
    EXPECT_EQ(halvane::logging::logState().applicationID, "");
    // The lock is free again.
    reentry.text.clear();
    EXPECT_EQ(LogPrintF(&category, "f", kLogLevelError, "next"), 4);
    EXPECT_EQ(reentry.text, "next");
    EXPECT_EQ(LogControl("Test:level=error"), kStatusOK);
}

// --- Withdrawing ---

TEST_F(LogCategoryTest, ARemovedCategoryIsTheCallersAgain) {
    TestCategory first("TestRemovedA");
    TestCategory second("TestRemovedB");
    TestCategory third("TestRemovedC");
    for (TestCategory* each : {&first, &second, &third}) LogIsEnabled(each, kLogLevelMax);
    ASSERT_EQ(control(second, "output=syslog"), kStatusOK);
    EXPECT_EQ(LogCategory_Remove(&second), kStatusOK);
    EXPECT_EQ(first.next, &third);
    EXPECT_EQ(second.next, nullptr);
    EXPECT_EQ(second.output, nullptr);
    EXPECT_EQ(second.level, kLogLevelUninitialized);
    EXPECT_EQ(outputs(), std::vector<std::string>{"console"});  // its own is closed
    EXPECT_EQ(first.output->refCount, 2u);
    EXPECT_EQ(LogControl("TestRemoved:level=error"), kStatusOK);
    EXPECT_EQ(second.level, kLogLevelUninitialized);
    EXPECT_EQ(third.level, kLogLevelError);
}

TEST_F(LogCategoryTest, ARemovedCategorySetsItselfUpAnew) {
    TestCategory category("TestRemoved");
    LogIsEnabled(&category, kLogLevelMax);
    ASSERT_EQ(control(category, "level=error"), kStatusOK);
    for (int i = 0; i < 2; ++i) EXPECT_EQ(LogCategory_Remove(&category), kStatusOK);
    category.name = "TestRenamed";  // another library's, at the same place
    EXPECT_TRUE(LogIsEnabled(&category, kLogLevelInfo));
    EXPECT_EQ(outputOf(category), "console");
}

TEST_F(LogCategoryTest, WithinTheLockNothingIsRemovedOrReopened) {
    struct Results {
        LogCategory* category;
        HalvaneStatus removed;
        HalvaneStatus reopened;
    };
    const LogCallback callback = [](const LogMessage*, const char*, std::size_t, void* arg) {
        auto* const results = static_cast<Results*>(arg);
        results->removed = LogCategory_Remove(results->category);
        results->reopened = LogReopen();
    };
    TestCategory category("TestWithin");
    Results results{&category, kStatusOK, kStatusOK};
    std::array<char, 100> setting;
    SNPrintF(setting.data(), setting.size(), "output=callback;func=%p;arg=%p",
             reinterpret_cast<const void*>(callback), &results);
    LogIsEnabled(&category, kLogLevelMax);
    ASSERT_EQ(control(category, setting.data()), kStatusOK);
    LogPrintF(&category, "", kLogLevelError, "text");
    EXPECT_EQ(results.removed, kStatusUnsupported);
    EXPECT_EQ(results.reopened, kStatusUnsupported);
}

// --- Cancelled threads and forks ---

void cancelSelf(const LogMessage*, const char*, std::size_t, void*) {
    pthread_cancel(pthread_self());
    pthread_testcancel();
}

struct CancelledThread {
    TestCategory category{"Test"};
    std::atomic<bool> isLogged = false;

    static void* run(void* arg) {
        auto* const self = static_cast<CancelledThread*>(arg);
        LogPrintF(&self->category, "f", kLogLevelError, "text");
        self->isLogged = true;
        pthread_testcancel();
        return nullptr;
    }
};

TEST_F(LogCategoryTest, AThreadCancelledWhileItLogsLeavesTheLockFree) {
    // The address sanitizer of GCC 12 loses the stack of a thread that is unwound by force.
    if (HALVANE_IS_SANITIZED) GTEST_SKIP() << "a sanitizer cannot follow a cancelled thread";
    CancelledThread cancelled;
    std::array<char, 100> output;
    SNPrintF(output.data(), output.size(), "output=callback;func=%p",
             reinterpret_cast<const void*>(&cancelSelf));
    LogIsEnabled(&cancelled.category, kLogLevelMax);
    ASSERT_EQ(control(cancelled.category, output.data()), kStatusOK);
    pthread_t thread;
    ASSERT_EQ(pthread_create(&thread, nullptr, CancelledThread::run, &cancelled), 0);
    void* result = nullptr;
    ASSERT_EQ(pthread_join(thread, &result), 0);
    EXPECT_EQ(result, PTHREAD_CANCELED);
    EXPECT_TRUE(cancelled.isLogged);  // the message was ended first

    LogRecorder recorder;
    record(cancelled.category, recorder);
    EXPECT_EQ(LogPrintF(&cancelled.category, "f", kLogLevelError, "next"), 4);
    EXPECT_EQ(recorder.text(), "next");
}

// An output in which a thread waits.
struct Gate {
    std::mutex mutex;
    std::condition_variable changed;
    bool isEntered = false;
    bool isOpen = false;

    static void wait(const LogMessage*, const char*, std::size_t, void* arg) {
        auto& gate = *static_cast<Gate*>(arg);
        std::unique_lock lock(gate.mutex);
        gate.isEntered = true;
        gate.changed.notify_all();
        gate.changed.wait(lock, [&gate] { return gate.isOpen; });
    }
    void awaitEntry() {
        std::unique_lock lock(mutex);
        changed.wait(lock, [this] { return isEntered; });
    }
    void open() {
        const std::lock_guard lock(mutex);
        isOpen = true;
        changed.notify_all();
    }
};

Gate* gateOfFork = nullptr;

// Runs before the library's fork handler, because it is registered later.
void openGateOfFork() {
    if (gateOfFork != nullptr) gateOfFork->open();
}

// Runs after the library's fork handler, because it is registered earlier.
bool isLockedAtFork = false;
void seeLockAtFork() {
    const halvane::logging::LogLock lock;
    isLockedAtFork = !lock;
}
[[maybe_unused]] const int isWatched = pthread_atfork(seeLockAtFork, nullptr, nullptr);

TEST_F(LogCategoryTest, AForkWhileAnotherThreadLogsLeavesTheChildAbleToLog) {
    Gate gate;
    TestCategory slow("TestSlow");
    TestCategory category("TestFork");
    LogRecorder recorder;
    std::array<char, 100> output;
    SNPrintF(output.data(), output.size(), "output=callback;func=%p;arg=%p",
             reinterpret_cast<const void*>(&Gate::wait), &gate);
    LogIsEnabled(&slow, kLogLevelMax);
    ASSERT_EQ(control(slow, output.data()), kStatusOK);
    record(category, recorder);

    std::thread logger([&slow] { LogPrintF(&slow, "f", kLogLevelError, "slow"); });
    gate.awaitEntry();
    // The fork waits for the message, which continues when the fork has begun.
    gateOfFork = &gate;
    ASSERT_EQ(pthread_atfork(openGateOfFork, nullptr, nullptr), 0);
    isLockedAtFork = false;
    EXPECT_EQ(resultInChild([&category, &recorder] {
                  const int length = LogPrintF(&category, "f", kLogLevelError, "child");
                  return length == 5 && recorder.text() == "child" ? 42 : 1;
              }),
              42);
    EXPECT_TRUE(isLockedAtFork);
    gateOfFork = nullptr;
    logger.join();
    EXPECT_EQ(LogPrintF(&category, "f", kLogLevelError, "parent"), 6);
    EXPECT_EQ(recorder.text(), "parent");
}

void forkHere(const LogMessage*, const char*, std::size_t, void* arg) {
    *static_cast<int*>(arg) = resultInChild([] { return 42; });
}

TEST_F(LogCategoryTest, AForkWithinACallbackDoesNotWaitForItself) {
    int result = 0;
    TestCategory category("TestFork");
    std::array<char, 100> output;
    SNPrintF(output.data(), output.size(), "output=callback;func=%p;arg=%p",
             reinterpret_cast<const void*>(&forkHere), &result);
    LogIsEnabled(&category, kLogLevelMax);
    ASSERT_EQ(control(category, output.data()), kStatusOK);
    EXPECT_EQ(LogPrintF(&category, "f", kLogLevelError, "text"), 4);
    EXPECT_EQ(result, 42);
    LogRecorder recorder;
    record(category, recorder);
    EXPECT_EQ(LogPrintF(&category, "f", kLogLevelError, "next"), 4);
}

// The child runs within the callback, as its parent does.
void logInAChild(const LogMessage* message, const char*, std::size_t, void* arg) {
    auto* const category = const_cast<LogCategory*>(message->category);
    *static_cast<int*>(arg) = resultInChild([category] {
        const bool isDropped = LogPrintF(category, "f", kLogLevelError, "again") == 0;
        return isDropped && LogControl("x:level=1") == kStatusUnsupported ? 42 : 1;
    });
}

TEST_F(LogCategoryTest, TheChildOfACallbackLogsNothingEither) {
    int result = 0;
    TestCategory category("TestForkLog");
    std::array<char, 100> output;
    SNPrintF(output.data(), output.size(), "output=callback;func=%p;arg=%p",
             reinterpret_cast<const void*>(&logInAChild), &result);
    LogIsEnabled(&category, kLogLevelMax);
    ASSERT_EQ(control(category, output.data()), kStatusOK);
    EXPECT_EQ(LogPrintF(&category, "f", kLogLevelError, "text"), 4);
    EXPECT_EQ(result, 42);
}

TEST_F(LogCategoryTest, ANegativeDefaultLevelIsAll) {
    TestCategory category("TestNegative");
    category.defaultLevel = -1;
    EXPECT_TRUE(LogIsEnabled(&category, kLogLevelAll));
    EXPECT_EQ(category.level, kLogLevelAll);
    EXPECT_EQ(control(category, "level=error"), kStatusOK);
    EXPECT_FALSE(LogIsEnabled(&category, kLogLevelInfo));
}

TEST(LogCategory, HasItsFieldsInOrder) {
    const std::size_t offsets[] = {offsetof(LogCategory, level),
                                   offsetof(LogCategory, defaultLevel),
                                   offsetof(LogCategory, initConfig),
                                   offsetof(LogCategory, flags),
                                   offsetof(LogCategory, name),
                                   offsetof(LogCategory, prefix),
                                   offsetof(LogCategory, prefixLength),
                                   offsetof(LogCategory, next),
                                   offsetof(LogCategory, output),
                                   offsetof(LogCategory, ratePeriod),
                                   offsetof(LogCategory, rateIntervalEnd),
                                   offsetof(LogCategory, rateMax),
                                   offsetof(LogCategory, rateCount)};
    EXPECT_TRUE(std::ranges::is_sorted(offsets));
}

TEST_F(LogCategoryTest, TheLockIsNotRecursive) {
    {
        const halvane::logging::LogLock first;
        ASSERT_TRUE(static_cast<bool>(first));
        const halvane::logging::LogLock second;
        EXPECT_FALSE(static_cast<bool>(second));
        const halvane::logging::LogLock third;
        EXPECT_FALSE(static_cast<bool>(third));
    }
    const halvane::logging::LogLock again;
    EXPECT_TRUE(static_cast<bool>(again));
}

}  // namespace
