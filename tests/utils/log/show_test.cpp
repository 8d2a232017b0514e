#include <cstdlib>
#include <memory>
#include <string>

#include "halvane/base/status.h"
#include "halvane/platform/os/process_internal.h"
#include "halvane/utils/log.h"

#include "tests/support/run_program.h"
#include "tests/utils/log/test_support.h"

using halvane::testing::contentsOf;
using halvane::testing::LogRecorder;
using halvane::testing::LogTest;
using halvane::testing::ScopedDescriptor;
using halvane::testing::TemporaryFolder;
using halvane::testing::TestCategory;

namespace {

class LogShowTest : public LogTest {
  protected:
    static std::string shown() {
        char* text = nullptr;
        EXPECT_EQ(LogUtils_Show(&text), kStatusOK);
        if (text == nullptr) return "(null)";
        const std::unique_ptr<char, decltype(&std::free)> owner(text, std::free);
        return text;
    }
};

const std::string kHeading = std::string("=== LogUtils (") + std::string(halvane::programName()) +
                             ", PID " + std::to_string(::getpid()) + ") ===\n";

TEST_F(LogShowTest, WithoutCategoriesAndSettingsThereIsTheHeading) {
    EXPECT_EQ(shown(), kHeading);
}

TEST_F(LogShowTest, OneCategoryIsOneLineAndAnEmptyOne) {
    TestCategory category("TestShow");
    LogIsEnabled(&category, kLogLevelMax);
    EXPECT_EQ(shown(),
              kHeading +
                  "  Category: TestShow  level info  flags 0x00  rate 0/0     output 'console'\n"
                  "\n");
}

TEST_F(LogShowTest, SettingsFollowTheCategoriesInTheOrderFirstSet) {
    EXPECT_EQ(LogControl("B:flags=pid,A:level=5,B:bogus=x;y=z"), kStatusOK);
    EXPECT_EQ(LogControl("b:FLAGS=time"), kStatusOK);
    EXPECT_EQ(shown(), kHeading +
                           "  Action: B:flags=time\n"
                           "  Action: A:level=5\n"
                           "  Action: B:bogus=x;y=z\n");
}

TEST_F(LogShowTest, ColumnsAreAsWideAsTheirLongestText) {
    TestCategory first("TestB", kLogLevelError);
    TestCategory second("TestLongest", 92);
    TestCategory third("testa", kLogLevelAll);
    for (TestCategory* category : {&first, &second, &third}) {
        LogIsEnabled(category, kLogLevelMax);
    }
    EXPECT_EQ(LogControl("TestB:flags=time;pid;program;category;level;prefix;function,"
                         "testa:rate=5/12345,TestL:rate=4294967295/250,testa:output=syslog"),
              kStatusOK);
    first.flags = 0x1FF;
    EXPECT_EQ(
        shown(),
        kHeading +
            "  Category: testa        level all      flags 0x00  rate 5/12345  output 'syslog'\n"
            "  Category: TestB        level error    flags 0x1FF  rate 0/0     output 'console'\n"
            "  Category: TestLongest  level error+2  flags 0x00  rate 4294967295/250   "
            "output 'console'\n"
            "\n"
            "  Action: TestB:flags=time;pid;program;category;level;prefix;function\n"
            "  Action: testa:rate=5/12345\n"
            "  Action: TestL:rate=4294967295/250\n"
            "  Action: testa:output=syslog\n");
}

TEST_F(LogShowTest, ALevelBetweenNamesWidensItsColumn) {
    TestCategory first("TestA", 0);
    TestCategory second("TestB", 117);
    for (TestCategory* category : {&first, &second}) LogIsEnabled(category, kLogLevelMax);
    EXPECT_EQ(
        shown(),
        kHeading +
            "  Category: TestA  level all          flags 0x00  rate 0/0     output 'console'\n"
            "  Category: TestB  level emergency-3  flags 0x00  rate 0/0     output 'console'\n"
            "\n");
}

TEST_F(LogShowTest, FlagsAreTwoDigitsAtLeast) {
    TestCategory category("TestShow");
    LogIsEnabled(&category, kLogLevelMax);
    category.flags = 0x7A;
    EXPECT_NE(shown().find("  flags 0x7A  "), std::string::npos);
}

TEST_F(LogShowTest, ACategoryBeforeItsNextFirstTestHasNoOutput) {
    TestCategory category("TestShow");
    LogIsEnabled(&category, kLogLevelMax);
    LogUtils_Finalize();
    EXPECT_EQ(shown(), kHeading +
                           "  Category: TestShow  level off  flags 0x00  rate 0/0     output ''\n"
                           "\n");
}

TEST_F(LogShowTest, APercentSignInASettingIsPrintedAsItIs) {
    LogRecorder recorder;
    record(gLogCategory_LogUtils, recorder);
    gLogCategory_LogUtils.flags = 0;
    EXPECT_EQ(LogControl("%s%n:%d=%s"), kStatusOK);
    EXPECT_EQ(LogUtils_Show(nullptr), kStatusOK);
    EXPECT_NE(recorder.text().find("  Action: %s%n:%d=%s\n"), std::string::npos);
    gLogCategory_LogUtils.flags = kLogHeaderTime;
}

TEST_F(LogShowTest, WithoutAPlaceForItTheReportIsLogged) {
    LogRecorder recorder;
    record(gLogCategory_LogUtils, recorder);
    const std::string report = shown();
    EXPECT_EQ(control(gLogCategory_LogUtils, "flags=function;level"), kStatusOK);
    EXPECT_EQ(LogUtils_Show(nullptr), kStatusOK);
    const std::string logged = recorder.text();
    const std::string header = "[,LogUtils_Show@max] ";
    ASSERT_EQ(logged.substr(0, header.size()), header);
    EXPECT_EQ(logged.substr(header.size(), kHeading.size()), kHeading);
    EXPECT_NE(logged.find(recorder.spec()), std::string::npos);
    gLogCategory_LogUtils.flags = kLogHeaderTime;
}

TEST_F(LogShowTest, TheLoggedReportIsTheOneThatIsReturned) {
    LogRecorder recorder;
    record(gLogCategory_LogUtils, recorder);
    gLogCategory_LogUtils.flags = 0;
    const std::string report = shown();
    EXPECT_EQ(LogUtils_Show(nullptr), kStatusOK);
    EXPECT_EQ(recorder.text(), report);
    gLogCategory_LogUtils.flags = kLogHeaderTime;
}

TEST_F(LogShowTest, AtLevelOffTheReportIsNotLogged) {
    LogRecorder recorder;
    record(gLogCategory_LogUtils, recorder);
    EXPECT_EQ(control(gLogCategory_LogUtils, "level=off"), kStatusOK);
    EXPECT_EQ(LogUtils_Show(nullptr), kStatusOK);
    EXPECT_EQ(recorder.text(), "");
    EXPECT_EQ(control(gLogCategory_LogUtils, "level=max"), kStatusOK);
    EXPECT_EQ(LogUtils_Show(nullptr), kStatusOK);
    EXPECT_NE(recorder.text(), "");
}

}  // namespace
