// The state of the logging system after a lack of memory, and how much memory logging takes.
#include <cstddef>
#include <cstdint>
#include <new>
#include <string>
#include <vector>

#include "halvane/base/status.h"
#include "halvane/utils/log.h"
#include "halvane/utils/log/settings_internal.h"

#include "tests/support/scarce_memory.h"
#include "tests/utils/log/test_support.h"

namespace {

using halvane::logging::LogAction;
using halvane::logging::LogActionList;
using halvane::testing::failEachAllocation;
using halvane::testing::LogTest;
using halvane::testing::ScarceMemory;
using halvane::testing::TestCategory;

using Texts = std::vector<std::string>;

// Too long for a string's internal buffer.
const std::string kPattern = "a pattern that is longer than a string's own room";
const std::string kName = "a name that is longer than a string's own room";
const std::string kValue = "a value that is longer than a string's own room";
const std::string kOther = "a value that is longer than the one before it, by some characters";

Texts textsOf(const LogActionList& list) {
    Texts texts;
    for (const LogAction& action : list) {
        texts.push_back(action.pattern + ":" + action.name + "=" + action.value);
    }
    return texts;
}

bool trySet(LogActionList& list, const std::string& pattern, const std::string& value) try {
    list.set(pattern, kName, value);
    return true;
} catch (const std::bad_alloc&) {
    return false;
}

TEST(LogActionListMemory, AFailureAddsNothing) {
    LogActionList list;
    list.set("first", "level", "1");
    Texts expected = textsOf(list);
    bool isSet = false;
    failEachAllocation([&] { isSet = trySet(list, kPattern, kValue); },
                       [&] {
                           if (isSet) expected.push_back(kPattern + ":" + kName + "=" + kValue);
                           ASSERT_EQ(textsOf(list), expected);
                       });
    EXPECT_TRUE(trySet(list, kPattern, kOther));  // finds it in its place
    expected.back() = kPattern + ":" + kName + "=" + kOther;
    EXPECT_EQ(textsOf(list), expected);
}

TEST(LogActionListMemory, AFailureReplacesNothing) {
    LogActionList list;
    list.set(kPattern, kName, kValue);
    list.age();
    bool isSet = false;
    failEachAllocation([&] { isSet = trySet(list, kPattern, kOther); },
                       [&] {
                           ASSERT_EQ(list.begin()->value, isSet ? kOther : kValue);
                           ASSERT_EQ(list.begin()->isNew, isSet);
                           ASSERT_EQ(list.newPlaces().size(), isSet ? 1u : 0u);
                       });
}

class LogMemoryTest : public LogTest {
  protected:
    LogMemoryTest() { LogIsEnabled(&category, kLogLevelMax); }

    TestCategory category{"MemoryTest"};
};

TEST_F(LogMemoryTest, AControlStringThatFailsIsTakenTheNextTime) {
    const std::string control = kPattern + ":" + kName + "=" + kValue +
                                ",Memory:level=error,Memory:output=syslog;level=error";
    HalvaneStatus status = kStatusOK;
    std::size_t failures = 0;
    failEachAllocation([&] { status = LogControl(control.c_str()); },
                       [&] {
                           failures += status == kStatusNoMemory ? 1 : 0;
                           ASSERT_EQ(LogControl(control.c_str()), kStatusOK);
                           ASSERT_EQ(settings().size(), 3u);
                           ASSERT_EQ(category.level, kLogLevelError);
                           ASSERT_EQ(outputs(), Texts{"syslog;level=error"});
                           ASSERT_EQ(category.output->refCount, 1u);
                           LogControl(nullptr);
                           LogControl("Memory:level=info,Memory:output=console");
                           LogControl(nullptr);
                       });
    EXPECT_GT(failures, 0u);
}

// A failed setup is repeated; a complete one is not.
TEST_F(LogMemoryTest, ACategoryWithoutMemorySetsItselfUpOnItsNextTest) {
    ASSERT_EQ(LogControl("Late:level=error,Late:output=syslog,Late:flags=pid"), kStatusOK);
    TestCategory late("LateTest");
    failEachAllocation([&] { LogIsEnabled(&late, kLogLevelMax); },
                       [&] {
                           ASSERT_TRUE(LogIsEnabled(&late, kLogLevelMax));
                           ASSERT_EQ(late.level, kLogLevelError);
                           ASSERT_EQ(late.flags, std::uint32_t{kLogHeaderPID});
                           ASSERT_EQ(outputOf(late), "syslog");
                           LogUtils_Finalize();
                           LogControl("Late:level=error,Late:output=syslog,Late:flags=pid");
                       });
}

// Otherwise a program that sets many patterns one by one would take quadratic time.
TEST_F(LogMemoryTest, AControlStringTakesNoMoreForTheSettingsBeforeIt) {
    const auto allocationsOfNext = [](int number) {
        const std::string control = "pattern" + std::to_string(number) + ":level=error";
        const ScarceMemory memory;
        EXPECT_EQ(LogControl(control.c_str()), kStatusOK);
        return memory.allocations();
    };
    const auto setMore = [&](int from, int to) {
        for (int number = from; number < to; ++number) allocationsOfNext(number);
    };
    setMore(1000, 1010);
    const std::size_t few = allocationsOfNext(1999);
    setMore(2000, 6000);
    EXPECT_LE(allocationsOfNext(9999), few + 2);  // a table that grows
}

}  // namespace
