// What tests of the logging system share: a fresh start for each test, and categories to play
// with.
#ifndef TESTS_UTILS_LOG_TEST_SUPPORT_H
#define TESTS_UTILS_LOG_TEST_SUPPORT_H

#include <gtest/gtest.h>
#include <string>

#include "halvane/utils/log.h"

#include "tests/support/log_recorder.h"

namespace halvane::testing {

// A category of a test's own. Static only: once tested it stays in the library's list.
struct TestCategory : LogCategory {
    explicit TestCategory(const char* itsName, std::int32_t itsDefaultLevel = kLogLevelInfo)
        : LogCategory{} {
        name = itsName;
        defaultLevel = itsDefaultLevel;
        reset();
    }

    // As it was defined, but for its place in the list.
    void reset() {
        level = kLogLevelUninitialized;
        initConfig = nullptr;
        flags = 0;
        prefix = name;
        prefixLength = std::char_traits<char>::length(name);
        output = nullptr;
        ratePeriod = rateIntervalEnd = 0;
        rateMax = rateCount = 0;
    }
};

// Finds the library without settings before and after each test.
class LogTest : public ::testing::Test {
  protected:
    LogTest() {
        LogUtils_EnsureInitialized();
        LogUtils_Finalize();
    }
    ~LogTest() override { LogUtils_Finalize(); }

    // Applies "<name>:<setting>", for the category of exactly that name.
    static HalvaneStatus control(const LogCategory& category, const std::string& setting) {
        return LogControl((std::string("^") + category.name + "$:" + setting).c_str());
    }
};

}  // namespace halvane::testing

#endif
