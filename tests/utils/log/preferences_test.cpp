#include "halvane/platform/plist/preferences.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/file.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "halvane/base/property_list_value.h"
#include "halvane/base/status.h"
#include "halvane/utils/log.h"
#include "halvane/utils/printf.h"

#include "tests/support/run_program.h"
#include "tests/support/scarce_memory.h"
#include "tests/support/scoped_environment.h"
#include "tests/support/temporary_folder.h"
#include "tests/utils/log/test_support.h"

using halvane::PropertyListValue;
using halvane::readPreference;
using halvane::writePreference;
using halvane::testing::contentsOf;
using halvane::testing::failEachAllocation;
using halvane::testing::LogRecorder;
using halvane::testing::LogTest;
using halvane::testing::resultInChild;
using halvane::testing::runProgram;
using halvane::testing::ScopedEnvironment;
using halvane::testing::TemporaryFolder;
using halvane::testing::TestCategory;

using Texts = std::vector<std::string>;

namespace {

constexpr const char* kKey = "logconfig";

std::string stored(const std::string& application = {}) {
    return readPreference(application, kKey).value.value_or("(none)");
}

void store(const std::string& text, const std::string& application = {}) {
    ASSERT_EQ(writePreference(application, kKey, text).status, kStatusOK);
}

class LogPreferencesTest : public LogTest {
  protected:
    LogPreferencesTest() { LogIsEnabled(&category, kLogLevelMax); }

    TestCategory category{"WiFiScanTest"};
};

// --- Storing ---

TEST_F(LogPreferencesTest, APlusStoresTheEntryWithoutIt) {
    EXPECT_EQ(LogControl("+WiFiScan:flags=time;level"), kStatusOK);
    EXPECT_EQ(stored(), "WiFiScan:flags=time;level");
    EXPECT_EQ(category.flags, std::uint32_t{kLogHeaderTime | kLogHeaderLevel});
}

TEST_F(LogPreferencesTest, APlusStoresAllSettings) {
    EXPECT_EQ(LogControl("B:level=info,A:bogus=x=y:z"), kStatusOK);
    EXPECT_EQ(stored(), "(none)");
    EXPECT_EQ(LogControl("+WiFiScan:flags=time;level,b:LEVEL=5"), kStatusOK);
    EXPECT_EQ(stored(), "B:level=5,A:bogus=x=y:z,WiFiScan:flags=time;level");
    // A "+" without an entry of its own stores them, too.
    EXPECT_EQ(LogControl("C:level=1"), kStatusOK);
    EXPECT_EQ(LogControl("+"), kStatusOK);
    EXPECT_EQ(stored(), "B:level=5,A:bogus=x=y:z,WiFiScan:flags=time;level,C:level=1");
}

TEST_F(LogPreferencesTest, WithoutSettingsAPlusStoresAnEmptyText) {
    store("B:level=5");
    EXPECT_EQ(LogControl(nullptr), kStatusOK);
    EXPECT_EQ(stored(), "B:level=5");
    EXPECT_EQ(LogControl("+"), kStatusOK);
    EXPECT_EQ(stored(), "");
}

TEST_F(LogPreferencesTest, AFailingStringIsNotStored) {
    EXPECT_EQ(LogControl("+WiFi:level=5,WiFi"), kStatusMalformed);
    EXPECT_EQ(stored(), "(none)");
    EXPECT_EQ(LogControl("+WiFi:output=bogus"), kStatusUnsupported);
    EXPECT_EQ(stored(), "(none)");
}

TEST_F(LogPreferencesTest, ADefaultIsNotStored) {
    EXPECT_EQ(LogControl("?+WiFi:level=5"), kStatusOK);
    EXPECT_EQ(stored(), "(none)");
    EXPECT_EQ(category.level, 5);
}

TEST_F(LogPreferencesTest, WhatCannotBeStoredIsLeftOut) {
    EXPECT_EQ(LogControl("A:level=\xFF"), kStatusOK);
    EXPECT_EQ(LogControl("+B:level=5"), kStatusOK);
    EXPECT_EQ(stored(), "B:level=5");
    EXPECT_EQ(LogControl("+C:level=\xFF,D:level=6"), kStatusConversionFailed);
    EXPECT_EQ(stored(), "B:level=5,D:level=6");
}

TEST_F(LogPreferencesTest, StoringACharacterThatTheyCannotHoldFails) {
    const PropertyListValue value(std::string("+A:level=\xEF\xBF\xBE,D:level=6"));
    EXPECT_EQ(LogControlCF(&value), kStatusConversionFailed);
    EXPECT_EQ(stored(), "D:level=6");
    EXPECT_EQ(settings().size(), 2u);
}

TEST_F(LogPreferencesTest, APatternThatLooksLikeAPrefixComesBackAsItWas) {
    for (const std::string pattern : {"+B", "?B", "?+B", "++"}) {
        EXPECT_EQ(LogControl(nullptr), kStatusOK);
        const std::string control = std::string("?+") + pattern + ":level=5";
        EXPECT_EQ(LogControl(control.c_str()), kStatusOK);
        EXPECT_EQ(LogControl("+"), kStatusOK);
        EXPECT_EQ(LogControl(nullptr), kStatusOK);
        EXPECT_EQ(LogControl("?"), kStatusOK);
        EXPECT_EQ(settings(), Texts{pattern + ":level=5"});
        ASSERT_EQ(writePreference("", kKey, std::nullopt).status, kStatusOK);
    }
}

TEST_F(LogPreferencesTest, ManySettingsTakeTimeInProportion) {
    std::string text;
    for (int i = 0; i < 50'000; ++i)
        text.append(1, 'p').append(std::to_string(i)).append(":level=1,");
    store(text);
    EXPECT_EQ(LogControl("?"), kStatusOK);  // comparing each with all others would take an hour
    EXPECT_EQ(settings().size(), 50'000u);
}

// --- Reading ---

TEST_F(LogPreferencesTest, WhatIsStoredWinsOverDefaults) {
    store("WiFi:level=trace");
    EXPECT_EQ(LogControl("?WiFi:level=info"), kStatusOK);
    EXPECT_EQ(category.level, 30);
    EXPECT_EQ(settings(), Texts{"WiFi:level=trace"});
}

TEST_F(LogPreferencesTest, WhatIsStoredIsAppliedBesideDefaults) {
    store("WiFi:flags=pid,Other:level=1");
    EXPECT_EQ(LogControl("?WiFi:level=info"), kStatusOK);
    EXPECT_EQ(category.level, kLogLevelInfo);
    EXPECT_EQ(category.flags, std::uint32_t{kLogHeaderPID});
    EXPECT_EQ(settings(), (Texts{"WiFi:level=info", "WiFi:flags=pid", "Other:level=1"}));
}

TEST_F(LogPreferencesTest, WithoutAQuestionMarkTheyAreNotRead) {
    store("WiFi:level=trace");
    EXPECT_EQ(LogControl("WiFi:level=error"), kStatusOK);
    EXPECT_EQ(category.level, kLogLevelError);
    EXPECT_EQ(LogControl("+WiFi:level=notice"), kStatusOK);
    EXPECT_EQ(category.level, kLogLevelNotice);
    EXPECT_EQ(stored(), "WiFi:level=notice");
}

TEST_F(LogPreferencesTest, TheControlStringOfACategoryIsADefaultToo) {
    store("WiFiOwn:level=trace");
    TestCategory own("WiFiOwn");
    own.initConfig = "?WiFiOwn:level=error,WiFiOwn:flags=pid";
    EXPECT_TRUE(LogIsEnabled(&own, kLogLevelTrace));
    EXPECT_EQ(own.level, kLogLevelTrace);
    EXPECT_EQ(own.flags, std::uint32_t{kLogHeaderPID});
}

TEST_F(LogPreferencesTest, TheyAreReadBehindADefaultThatFails) {
    store("WiFi:level=trace,WiFi:output=syslog");
    EXPECT_EQ(LogControl("?WiFi:output=bogus"), kStatusUnsupported);
    EXPECT_EQ(category.level, kLogLevelTrace);
    EXPECT_EQ(outputOf(category), "syslog");
}

TEST_F(LogPreferencesTest, WhatFailsInThemFailsNoControlString) {
    store("WiFi:output=bogus,WiFi:level=trace");
    EXPECT_EQ(LogControl("?WiFi:flags=pid"), kStatusOK);
    EXPECT_EQ(category.level, kLogLevelTrace);
    store("WiFi:level=notice,WiFi");  // kept up to the fault, and not applied
    EXPECT_EQ(LogControl("?WiFi:flags=pid"), kStatusOK);
    EXPECT_EQ(category.level, kLogLevelTrace);
    EXPECT_EQ(LogControl(""), kStatusOK);
    EXPECT_EQ(category.level, kLogLevelNotice);
}

TEST_F(LogPreferencesTest, AStoredQuestionMarkIsNotReadAgainAndAgain) {
    store("?WiFi:level=trace");
    EXPECT_EQ(LogControl("?WiFi:level=info"), kStatusOK);
    EXPECT_EQ(category.level, kLogLevelTrace);
}

TEST_F(LogPreferencesTest, AStoredPlusIsNotStoredAgain) {
    for (const char* text : {"+WiFi:level=trace", "?+WiFi:level=trace"}) {
        store(text);
        EXPECT_EQ(LogControl("?WiFi:level=info,Other:level=1"), kStatusOK);
        EXPECT_EQ(category.level, kLogLevelTrace);
        EXPECT_EQ(stored(), text);
    }
}

TEST_F(LogPreferencesTest, CallbacksInThemAreIgnored) {
    // Another process stored the settings. Its addresses mean something else here.
    LogRecorder recorder;
    const std::string callback = recorder.spec();
    for (const char* name : {"output", "OUTPUT", "Output"}) {
        LogControl(nullptr);
        EXPECT_EQ(LogControl("WiFi:output=console"), kStatusOK);
        store(std::string("WiFi:") + name + "=" + callback + ",WiFi:level=trace");
        EXPECT_EQ(LogControl("?WiFi:level=info"), kStatusOK);
        EXPECT_EQ(category.level, kLogLevelTrace) << name;
        EXPECT_EQ(outputOf(category), "console") << name;
        EXPECT_EQ(settings(), (Texts{"WiFi:output=console", "WiFi:level=trace"})) << name;
    }
    store(std::string("WiFi:output=CallBack") + callback.substr(8));
    EXPECT_EQ(LogControl("?"), kStatusOK);
    EXPECT_EQ(outputOf(category), "console");
    EXPECT_EQ(recorder.text(), "");
}

TEST_F(LogPreferencesTest, WhileTheyAreReadNoCategoryIsInitialised) {
    TestCategory untested("WiFiUntested");
    gLogUtilsInitializing = 1;
    EXPECT_FALSE(__LogCategory_Initialize(&untested, kLogLevelOff));
    EXPECT_EQ(untested.level, kLogLevelUninitialized);
    EXPECT_FALSE(LogIsEnabled(&untested, kLogLevelOff));
    EXPECT_FALSE(__LogCategory_Initialize(&category, kLogLevelOff));
    EXPECT_EQ(LogUtils_EnsureInitialized(), 0);
    gLogUtilsInitializing = 0;
    EXPECT_TRUE(LogIsEnabled(&untested, kLogLevelOff));
}

TEST_F(LogPreferencesTest, TheMarkOfReadingIsGoneAfterwards) {
    store("WiFi:level=trace");
    EXPECT_EQ(LogControl("?"), kStatusOK);
    EXPECT_EQ(gLogUtilsInitializing, 0);
}

// --- Applications ---

TEST_F(LogPreferencesTest, TheApplicationChoosesThePreferences) {
    LogSetAppID("org.example.one");
    EXPECT_EQ(LogControl("+WiFi:level=trace"), kStatusOK);
    EXPECT_EQ(stored("org.example.one"), "WiFi:level=trace");
    EXPECT_EQ(stored(), "(none)");

    LogSetAppID("org.example.two");
    EXPECT_EQ(LogControl("?WiFi:level=info"), kStatusOK);
    EXPECT_EQ(category.level, kLogLevelInfo);
    LogSetAppID("org.example.one");
    EXPECT_EQ(LogControl("?WiFi:level=info"), kStatusOK);
    EXPECT_EQ(category.level, kLogLevelTrace);

    LogSetAppID(nullptr);
    EXPECT_EQ(LogControl("+WiFi:level=error"), kStatusOK);
    EXPECT_EQ(stored(), "WiFi:level=error");
    EXPECT_EQ(stored("org.example.one"), "WiFi:level=trace");
    EXPECT_EQ(stored("org.example.two"), "(none)");
    writePreference("org.example.one", kKey, std::nullopt);
}

TEST_F(LogPreferencesTest, TheTextOfTheApplicationIsCopied) {
    std::string application = "org.example.copied";
    LogSetAppID(application.c_str());
    application.assign(application.size(), '#');
    EXPECT_EQ(LogControl("+WiFi:level=trace"), kStatusOK);
    EXPECT_EQ(stored("org.example.copied"), "WiFi:level=trace");
    writePreference("org.example.copied", kKey, std::nullopt);
}

TEST_F(LogPreferencesTest, FinalizingReleasesTheApplication) {
    LogSetAppID("org.example.gone");
    LogUtils_Finalize();
    EXPECT_EQ(LogControl("+WiFi:level=trace"), kStatusOK);
    EXPECT_EQ(stored(), "WiFi:level=trace");
    EXPECT_EQ(stored("org.example.gone"), "(none)");
}

// --- Damage ---

// Keeps the preferences in a folder of the test.
class PreferencesFolder {
  public:
    const std::filesystem::path& path() const { return folder_.path(); }

    std::vector<std::filesystem::path> files() const {
        std::vector<std::filesystem::path> files;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder_.path())) {
            if (entry.is_regular_file()) files.push_back(entry.path());
        }
        return files;
    }

    // Writes nonsense into the file of the one setting that is stored.
    void damage() const {
        store("WiFi:level=trace");
        for (const auto& file : files()) {
            if (contentsOf(file).find("WiFi:level=trace") == std::string::npos) continue;
            std::ofstream(file, std::ios::trunc) << "nonsense";
            return;
        }
        FAIL() << "the setting is in no file";
    }

    // The file of the settings.
    std::filesystem::path settings() const {
        for (const auto& file : files()) {
            if (file.extension() == ".plist") return file;
        }
        ADD_FAILURE() << "there is no such file";
        return {};
    }

    // Replaces the file of the settings by a folder, which cannot be read.
    void replaceByFolders() const {
        for (const auto& file : files()) {
            if (file.extension() != ".plist") continue;
            std::filesystem::remove(file);
            std::filesystem::create_directory(file);
        }
    }

    void removeFolders() const {
        for (const auto& entry : std::filesystem::directory_iterator(folder_.path() / "halvane")) {
            if (entry.is_directory()) std::filesystem::remove(entry.path());
        }
    }

  private:
    TemporaryFolder folder_;
    ScopedEnvironment environment_{"XDG_CONFIG_HOME", folder_.path().string()};
};

bool anyHolds(const std::vector<std::filesystem::path>& files, const std::string& text) {
    for (const auto& file : files) {
        if (contentsOf(file) == text) return true;
    }
    return false;
}

TEST_F(LogPreferencesTest, DamagedOnesAreSetAsideWithOneWarning) {
    LogRecorder recorder;
    record(gLogCategory_LogUtils, recorder);
    EXPECT_EQ(control(gLogCategory_LogUtils, "flags=level"), kStatusOK);
    const PreferencesFolder folder;
    folder.damage();

    EXPECT_EQ(LogControl("?WiFi:level=info"), kStatusOK);
    EXPECT_EQ(category.level, kLogLevelInfo);
    const std::string warning = recorder.take();
    const std::string start = "[warning] ### The preferences were damaged and stand aside in ";
    ASSERT_EQ(warning.substr(0, start.size()), start);
    ASSERT_EQ(warning.back(), '\n');
    const std::string aside = warning.substr(start.size(), warning.size() - start.size() - 1);
    EXPECT_EQ(contentsOf(aside), "nonsense");

    EXPECT_EQ(LogControl("?WiFi:level=info"), kStatusOK);
    EXPECT_EQ(recorder.text(), "");
    gLogCategory_LogUtils.flags = kLogHeaderTime;
}

TEST_F(LogPreferencesTest, OnesThatCannotBeReadAreWarnedOfOnce) {
    LogRecorder recorder;
    record(gLogCategory_LogUtils, recorder);
    EXPECT_EQ(control(gLogCategory_LogUtils, "flags=none"), kStatusOK);
    const PreferencesFolder folder;
    folder.damage();
    const std::filesystem::path file = folder.settings();
    folder.replaceByFolders();
    EXPECT_EQ(LogControl("?WiFi:level=info"), kStatusOK);
    EXPECT_EQ(LogControl("?WiFi:level=info"), kStatusOK);
    EXPECT_EQ(recorder.take(),
              "### The preferences in " + file.string() + " could not be used: Is a directory\n");
    gLogCategory_LogUtils.flags = kLogHeaderTime;
}

TEST_F(LogPreferencesTest, DamagedOnesDoNotKeepNewOnesFromBeingStored) {
    LogRecorder recorder;
    record(gLogCategory_LogUtils, recorder);
    const PreferencesFolder folder;
    folder.damage();
    LogControl(nullptr);
    EXPECT_EQ(LogControl("+WiFi:level=notice"), kStatusOK);
    EXPECT_EQ(stored(), "WiFi:level=notice");
    EXPECT_TRUE(anyHolds(folder.files(), "nonsense"));
    EXPECT_NE(recorder.text().find("### The preferences were damaged"), std::string::npos);
}

// Allocates nothing, unlike a recorder.
std::size_t bytesTold = 0;
void countBytes(const LogMessage*, const char*, std::size_t length, void*) {
    bytesTold += length;
}

// A notice that failed for lack of memory does not count as given.
TEST_F(LogPreferencesTest, AWarningThatMemoryIsLackingForIsGivenLater) {
    std::array<char, 100> output;
    SNPrintF(output.data(), output.size(), "output=callback;func=%p",
             reinterpret_cast<const void*>(&countBytes));
    LogIsEnabled(&gLogCategory_LogUtils, kLogLevelMax);
    ASSERT_EQ(control(gLogCategory_LogUtils, output.data()), kStatusOK);
    const PreferencesFolder folder;
    std::size_t failures = 0;
    HalvaneStatus status = kStatusOK;
    const auto unreadable = [&] {
        store("WiFi:level=trace");
        EXPECT_EQ(LogControl("?"), kStatusOK);  // nothing is wrong with them
        bytesTold = 0;
        folder.replaceByFolders();
    };
    unreadable();
    failEachAllocation([&] { status = LogControl("?WiFi:level=info"); },
                       [&] {
                           failures += status == kStatusOK ? 0 : 1;
                           ASSERT_EQ(LogControl("?WiFi:level=info"), kStatusOK);
                           ASSERT_GT(bytesTold, 0u);
                           folder.removeFolders();
                           unreadable();
                       });
    EXPECT_GT(failures, 0u);
}

// --- Other processes ---

// Holds the lock like another process, so that writing waits.
class HeldPreferences {
  public:
    explicit HeldPreferences(const PreferencesFolder& folder) {
        for (const auto& file : folder.files()) {
            if (file.extension() == ".lock") file_ = ::open(file.c_str(), O_RDWR | O_CLOEXEC);
        }
        if (file_ < 0 || ::flock(file_, LOCK_EX) != 0) ADD_FAILURE() << "no lock";
    }
    ~HeldPreferences() { ::close(file_); }
    HeldPreferences(const HeldPreferences&) = delete;
    HeldPreferences& operator=(const HeldPreferences&) = delete;

  private:
    int file_ = -1;
};

TEST_F(LogPreferencesTest, MessagesGoOutWhileStoringWaitsForAnotherProcess) {
    LogRecorder recorder;
    record(category, recorder);
    const PreferencesFolder folder;
    store("WiFi:level=info");
    std::thread storing;
    HalvaneStatus status = kStatusUnsupported;
    {
        const HeldPreferences held(folder);
        storing = std::thread([&] { status = LogControl("+WiFiScanTest:level=trace"); });
        while (__atomic_load_n(&category.level, __ATOMIC_RELAXED) != kLogLevelTrace) {
            std::this_thread::yield();
        }
        EXPECT_GT(LogPrintF(&category, "", kLogLevelError, "meanwhile\n"), 0);
        EXPECT_EQ(LogControl("WiFiScanTest:flags=none"), kStatusOK);
        EXPECT_EQ(recorder.text(), "meanwhile\n");
    }
    storing.join();
    EXPECT_EQ(status, kStatusOK);
    EXPECT_NE(stored().find("WiFiScanTest:level=trace"), std::string::npos);
}

TEST_F(LogPreferencesTest, WhatOneProcessStoresAnotherFinds) {
    EXPECT_EQ(resultInChild([] { return LogControl("+WiFi:level=trace") == kStatusOK ? 42 : 1; }),
              42);
    EXPECT_EQ(category.level, kLogLevelInfo);
    EXPECT_EQ(LogControl("?WiFi:level=info"), kStatusOK);
    EXPECT_EQ(category.level, kLogLevelTrace);
}

// --- The first call of a process ---

// Each of these may be the first call of a process.
struct FirstCall {
    const char* name;
    void (*call)(LogCategory& category);
};
constexpr std::array<FirstCall, 7> kFirstCalls = {{
    {"LogUtils_EnsureInitialized", [](LogCategory&) { LogUtils_EnsureInitialized(); }},
    {"LogControl", [](LogCategory&) { LogControl(""); }},
    {"LogControlCF",
     [](LogCategory&) {
         const halvane::PropertyListValue other(std::string("Other:level=1"));
         LogControlCF(&other);
     }},
    {"LogUtils_Show",
     [](LogCategory&) {
         char* text = nullptr;
         LogUtils_Show(&text);
         std::free(text);
     }},
    {"LogIsEnabled", [](LogCategory& category) { LogIsEnabled(&category, kLogLevelMax); }},
    {"__LogCategory_Initialize",
     [](LogCategory& category) { __LogCategory_Initialize(&category, kLogLevelMax); }},
    {"LogPrintF", [](LogCategory& category) { LogPrintF(&category, "f", kLogLevelMax, "text"); }},
}};

constexpr const char* kFolderVariable = "HALVANE_TEST_PREFERENCES";
constexpr const char* kCallVariable = "HALVANE_TEST_FIRST_CALL";

// Runs the calling test, and no other, in a new process with these preferences.
halvane::testing::ProgramResult runTestAnew(const PreferencesFolder& folder, const char* call) {
    const auto* const test = ::testing::UnitTest::GetInstance()->current_test_info();
    // The preferences depend on the program's name, so it runs by its own name.
    const std::string program = std::filesystem::read_symlink("/proc/self/exe").string();
    const ScopedEnvironment folderVariable(kFolderVariable, folder.path().string());
    const ScopedEnvironment callVariable(kCallVariable, call);
    // The test runs there even if this process is one shard of several.
    const ScopedEnvironment shardsVariable("GTEST_TOTAL_SHARDS", "1");
    const ScopedEnvironment shardVariable("GTEST_SHARD_INDEX", "0");
    auto result = runProgram(
        {program, std::string("--gtest_filter=") + test->test_suite_name() + "." + test->name()});
    EXPECT_NE(result.output.find("1 test from 1 test suite ran"), std::string::npos)
        << result.output;
    return result;
}

bool isNewProcess() {
    const char* const folder = std::getenv(kFolderVariable);
    if (folder != nullptr) ::setenv("XDG_CONFIG_HOME", folder, 1);
    return folder != nullptr;
}

TEST(LogFirstCall, ReadsThePreferences) {
    if (isNewProcess()) {
        TestCategory category("WiFiFirst");
        for (const FirstCall& row : kFirstCalls) {
            if (row.name == std::string(std::getenv(kCallVariable))) row.call(category);
        }
        const auto& actions = halvane::logging::logState().actions;
        ASSERT_NE(actions.begin(), actions.end());
        EXPECT_EQ(actions.begin()->value, "trace");
        EXPECT_TRUE(LogIsEnabled(&category, kLogLevelTrace));
        EXPECT_EQ(category.level, kLogLevelTrace);
        return;
    }
    const PreferencesFolder folder;
    store("WiFi:level=trace");
    for (const FirstCall& row : kFirstCalls) {
        const auto result = runTestAnew(folder, row.name);
        EXPECT_EQ(result.status, 0) << row.name << '\n' << result.output;
    }
}

TEST(LogFirstCall, IsTheOnlyOneThatReadsThem) {
    if (isNewProcess()) {
        LogUtils_EnsureInitialized();
        store("WiFi:level=error");
        TestCategory category("WiFiFirst");
        LogIsEnabled(&category, kLogLevelMax);
        EXPECT_EQ(category.level, kLogLevelTrace);
        return;
    }
    const PreferencesFolder folder;
    store("WiFi:level=trace");
    const auto result = runTestAnew(folder, "");
    EXPECT_EQ(result.status, 0) << result.output;
}

TEST(LogFirstCall, ReadsThoseOfTheApplicationThatIsSetBefore) {
    if (isNewProcess()) {
        LogSetAppID("org.example.first");
        TestCategory category("WiFiFirst");
        LogIsEnabled(&category, kLogLevelMax);
        EXPECT_EQ(category.level, kLogLevelNotice);
        return;
    }
    const PreferencesFolder folder;
    store("WiFi:level=trace");
    store("WiFi:level=notice", "org.example.first");
    const auto result = runTestAnew(folder, "");
    EXPECT_EQ(result.status, 0) << result.output;
}

TEST(LogFirstCall, WarnsOfDamagedOnesOnStandardError) {
    if (isNewProcess()) {
        LogUtils_EnsureInitialized();
        LogUtils_EnsureInitialized();
        return;
    }
    const PreferencesFolder folder;
    folder.damage();
    const auto result = runTestAnew(folder, "");
    EXPECT_EQ(result.status, 0) << result.output;
    EXPECT_EQ(std::ranges::count(result.errors, '\n'), 1) << result.errors;
    EXPECT_NE(result.errors.find("M ### The preferences were damaged and stand aside in "),
              std::string::npos)
        << result.errors;
}

}  // namespace
