#include "halvane/utils/log.h"

#include "tests/utils/log/test_support.h"

extern "C" {
int checkLevelsFromC(void);
int checkCategoryFromC(void);
int checkMessagesFromC(void);
int checkControlFromC(void);
LogCategory* categoryFromC(void);
}

namespace {

using LogFromC = halvane::testing::LogTest;

TEST_F(LogFromC, EveryCallWorks) {
    halvane::testing::LogRecorder recorder;
    record(gLogCategory_LogUtils, recorder);
    EXPECT_EQ(checkLevelsFromC(), 0);
    EXPECT_EQ(checkCategoryFromC(), 0);
    EXPECT_EQ(checkMessagesFromC(), 0);
    EXPECT_EQ(checkControlFromC(), 0);
    EXPECT_NE(recorder.text().find("  Category: TestC_Code"), std::string::npos);
}

TEST_F(LogFromC, BothLanguagesSeeOneRecord) {
    LogCategory& category = *categoryFromC();
    EXPECT_STREQ(category.name, "TestC_Code");
    EXPECT_EQ(category.defaultLevel, kLogLevelWarning);
    EXPECT_STREQ(category.initConfig, "TestC:rate=9/1000");
}

}  // namespace
