#include <array>
#include <cstdarg>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "halvane/base/status.h"
#include "halvane/platform/os/process_internal.h"
#include "halvane/utils/log.h"
#include "halvane/utils/scan/up_ticks.h"

#include "tests/support/replaced_system.h"
#include "tests/support/run_program.h"
#include "tests/support/temporary_folder.h"
#include "tests/utils/log/test_support.h"

using halvane::ScopedUpTime;
using halvane::testing::contentsOf;
using halvane::testing::LogRecorder;
using halvane::testing::LogTest;
using halvane::testing::TemporaryFolder;
using halvane::testing::TestCategory;

using Texts = std::vector<std::string>;

namespace {

constexpr const char* kFunction = "void ns::Class::func(int, char **)";

class LogMessageTest : public LogTest {
  protected:
    LogMessageTest() { record(category, recorder); }

    std::string loggedWith(std::uint32_t flags, std::uint32_t level = kLogLevelError) {
        category.flags = flags;
        const int length = LogPrintF(&category, kFunction, level, "text");
        const std::string text = recorder.take();
        EXPECT_EQ(length, static_cast<int>(text.size())) << text;
        return text;
    }

    LogRecorder recorder;
    TestCategory category{"Test_Message"};
};

const std::string kProgram(halvane::programName());
const std::string kPID = std::to_string(::getpid());

// The log line whose header has this text in brackets.
std::string headed(const std::string& bracket) {
    return std::string("[") + bracket + "] text";
}

// --- Headers ---

TEST_F(LogMessageTest, WithoutFlagsThereIsNoHeader) {
    EXPECT_EQ(loggedWith(0), "text");
}

TEST_F(LogMessageTest, EachFlagPrintsItsPart) {
    EXPECT_EQ(loggedWith(kLogHeaderPID), headed(kPID));
    EXPECT_EQ(loggedWith(kLogHeaderProgram), headed(kProgram));
    EXPECT_EQ(loggedWith(kLogHeaderCategory), "[Test_Message] text");
    EXPECT_EQ(loggedWith(kLogHeaderLevel), "[error] text");
    EXPECT_EQ(loggedWith(kLogHeaderPrefix), "[Test] text");
    EXPECT_EQ(loggedWith(kLogHeaderFunction), "[,ns::Class::func] text");
}

TEST_F(LogMessageTest, TheTimeStandsBeforeTheBracket) {
    const std::string time = "\\d{4}-\\d\\d-\\d\\d (0[1-9]|1[0-2]):\\d\\d:\\d\\d\\.\\d{6} [AP]M ";
    const std::string alone = loggedWith(kLogHeaderTime);
    EXPECT_TRUE(std::regex_match(alone, std::regex(time + "text"))) << alone;
    const std::string more = loggedWith(kLogHeaderTime | kLogHeaderLevel);
    EXPECT_TRUE(std::regex_match(more, std::regex(time + "\\[error\\] text"))) << more;
}

TEST_F(LogMessageTest, AllPartsStandInTheirOrder) {
    EXPECT_EQ(loggedWith(0x7E),
              headed(kProgram + ":" + kPID + ",Test_Message,ns::Class::func@error"));
    EXPECT_EQ(loggedWith(0x76), headed(kProgram + ":" + kPID + ",Test,ns::Class::func@error"));
}

TEST_F(LogMessageTest, SeparatorsStandBetweenPartsOnly) {
    constexpr std::uint32_t kPid = kLogHeaderPID, kProg = kLogHeaderProgram,
                            kCat = kLogHeaderCategory, kLev = kLogHeaderLevel,
                            kPre = kLogHeaderPrefix, kFun = kLogHeaderFunction;
    EXPECT_EQ(loggedWith(kProg | kPid), headed(kProgram + ":" + kPID));
    EXPECT_EQ(loggedWith(kProg | kCat), headed(kProgram + ",Test_Message"));
    EXPECT_EQ(loggedWith(kProg | kPre), headed(kProgram + ",Test"));
    EXPECT_EQ(loggedWith(kProg | kLev), headed(kProgram + "@error"));
    EXPECT_EQ(loggedWith(kPid | kCat), headed(kPID + ",Test_Message"));
    EXPECT_EQ(loggedWith(kPid | kLev), headed(kPID + "@error"));
    EXPECT_EQ(loggedWith(kCat | kLev), "[Test_Message@error] text");
    EXPECT_EQ(loggedWith(kPre | kLev), "[Test@error] text");
    EXPECT_EQ(loggedWith(kFun | kLev), "[,ns::Class::func@error] text");
    EXPECT_EQ(loggedWith(kCat | kFun), "[Test_Message,ns::Class::func] text");
}

TEST_F(LogMessageTest, TheCategoryTakesThePlaceOfThePrefix) {
    EXPECT_EQ(loggedWith(kLogHeaderPrefix | kLogHeaderCategory), "[Test_Message] text");
}

TEST_F(LogMessageTest, APrefixIsTheNameUpToItsFirstUnderscore) {
    struct Row {
        const char* name;
        const char* prefix;
    };
    for (const Row& row :
         {Row{"One_Two_Three", "One"}, Row{"Whole", "Whole"}, Row{"_x", ""}, Row{"x_", "x"}}) {
        TestCategory other(row.name);
        record(other, recorder);
        other.flags = kLogHeaderPrefix;
        LogPrintF(&other, "", kLogLevelError, "text");
        EXPECT_EQ(recorder.take(), headed(row.prefix));
    }
}

TEST_F(LogMessageTest, ThePrintedLevelIsTheMessagesOwn) {
    EXPECT_EQ(loggedWith(kLogHeaderLevel, 92), "[error+2] text");
    EXPECT_EQ(loggedWith(kLogHeaderLevel, kLogLevelChatty), "[chatty] text");
}

TEST_F(LogMessageTest, TheLevelWordMayAskForTheFunction) {
    EXPECT_EQ(loggedWith(0, kLogLevelError | kLogFlagFunction), "[,ns::Class::func] text");
    EXPECT_EQ(loggedWith(kLogHeaderCategory, kLogLevelError | kLogFlagFunction),
              "[Test_Message,ns::Class::func] text");
    EXPECT_EQ(kLogFlagFunction, 0x100000);
    EXPECT_EQ(category.flags, std::uint32_t{kLogHeaderCategory});  // of this message alone
}

TEST_F(LogMessageTest, OfAFunctionItsNameIsPrinted) {
    struct Row {
        const char* signature;
        const char* name;
    };
    for (const Row& row : {Row{"OSStatus LogUtils_Show(char **)", "LogUtils_Show"},
                           Row{"main", "main"}, Row{"-[Class method:]", "method:"}}) {
        category.flags = kLogHeaderFunction;
        LogPrintF(&category, row.signature, kLogLevelError, "text");
        EXPECT_EQ(recorder.take(), headed(std::string(",") + row.name));
    }
}

TEST_F(LogMessageTest, ARawMessageHasNoHeader) {
    EXPECT_EQ(loggedWith(0x7F, kLogLevelError | kLogFlagRaw), "text");
    EXPECT_EQ(loggedWith(0, kLogLevelError | kLogFlagRaw | kLogFlagFunction), "text");
    EXPECT_EQ(kLogFlagRaw, 0x80000);
}

// --- Formats and results ---

TEST_F(LogMessageTest, FormatsAreThoseOfTheEngine) {
    category.flags = kLogHeaderLevel;
    const std::array<std::uint8_t, 6> address = {0x00, 0x11, 0x22, 0x33, 0x44, 0x55};
    EXPECT_EQ(LogPrintF(&category, "f", kLogLevelInfo, "%.6a|%5d|%s", address.data(), 42, "x"), 32);
    EXPECT_EQ(recorder.take(), "[info] 00:11:22:33:44:55|   42|x");
}

TEST_F(LogMessageTest, AnEmptyMessageIsZeroBytesAndReachesNoOutput) {
    EXPECT_EQ(LogPrintF(&category, "f", kLogLevelError, ""), 0);
    EXPECT_TRUE(recorder.pieces.empty());
    category.flags = kLogHeaderLevel;
    EXPECT_EQ(LogPrintF(&category, "f", kLogLevelError, ""), 8);
    EXPECT_EQ(recorder.pieces, Texts{"[error] "});
}

TEST_F(LogMessageTest, AMalformedFormatEndsTheMessageWithItsStatus) {
    category.flags = kLogHeaderLevel;
    EXPECT_EQ(LogPrintF(&category, "f", kLogLevelError, "before %d%hldbehind", 1, 2), -1);
    EXPECT_EQ(recorder.take(), "[error] before 1");
    EXPECT_EQ(LogPrintF(&category, "f", kLogLevelError, "next"), 12);
    EXPECT_EQ(recorder.take(), "[error] next");
}

int logList(LogCategory* category, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int length = LogPrintFVAList(category, kFunction, kLogLevelError, format, arguments);
    va_end(arguments);
    return length;
}

TEST_F(LogMessageTest, AnArgumentListLogsTheSame) {
    category.flags = kLogHeaderFunction;
    EXPECT_EQ(logList(&category, "%s-%d", "list", 5), 25);
    EXPECT_EQ(recorder.take(), "[,ns::Class::func] list-5");
}

TEST_F(LogMessageTest, TheLevelIsNotTestedAgain) {
    category.level = kLogLevelOff;
    EXPECT_EQ(LogPrintF(&category, "f", kLogLevelAll, "text"), 4);
    EXPECT_EQ(recorder.take(), "text");
}

TEST_F(LogMessageTest, TheOutputLearnsOfTheMessage) {
    LogPrintF(&category, "f", kLogLevelError | kLogFlagRaw, "a");
    LogPrintF(&category, "f", 3, "b");
    EXPECT_EQ(recorder.levels, (std::vector<std::uint32_t>{kLogLevelError | kLogFlagRaw, 3}));
}

// --- The test before ---

TEST_F(LogMessageTest, AMessageGoesOutAtTheCategorysLevelAndAbove) {
    category.level = kLogLevelWarning;
    HALVANE_LOG(&category, kLogLevelWarning - 1, "below");
    HALVANE_LOG(&category, kLogLevelWarning, "at ");
    HALVANE_LOG(&category, kLogLevelWarning + 1, "above");
    EXPECT_EQ(recorder.take(), "at above");
}

TEST_F(LogMessageTest, FlagsOfTheLevelWordDoNotRaiseTheLevel) {
    category.level = kLogLevelWarning;
    HALVANE_LOG(&category, kLogLevelInfo | kLogFlagRaw, "below");
    HALVANE_LOG(&category, 0x100 | kLogLevelInfo, "below");
    EXPECT_EQ(recorder.take(), "");
    HALVANE_LOG(&category, kLogLevelError | kLogFlagRaw, "above");
    EXPECT_EQ(recorder.take(), "above");
}

TEST_F(LogMessageTest, AtLevelOffOnlyOffItselfGoesOut) {
    category.level = kLogLevelOff;
    HALVANE_LOG(&category, kLogLevelMax, "max");
    HALVANE_LOG(&category, kLogLevelOff, "off");
    EXPECT_EQ(recorder.take(), "off");
}

int timesEvaluated = 0;
int evaluated() {
    return ++timesEvaluated;
}

TEST_F(LogMessageTest, ADisabledMessageEvaluatesNothing) {
    timesEvaluated = 0;
    category.level = kLogLevelWarning;
    HALVANE_LOG(&category, kLogLevelInfo, "%d", evaluated());
    EXPECT_EQ(timesEvaluated, 0);
    HALVANE_LOG(&category, kLogLevelError, "%d", evaluated());
    EXPECT_EQ(timesEvaluated, 1);
    EXPECT_EQ(recorder.take(), "1");
}

TEST_F(LogMessageTest, CategoryAndLevelAreEvaluatedOnce) {
    int categories = 0;
    int levels = 0;
    HALVANE_LOG((++categories, &category), (++levels, kLogLevelError), "text");
    EXPECT_EQ(categories, 1);
    EXPECT_EQ(levels, 1);
}

TEST_F(LogMessageTest, TheMacroTellsTheFunctionItStandsIn) {
    category.flags = kLogHeaderFunction;
    HALVANE_LOG_AS(&category, kFunction, kLogLevelError, "x");
    EXPECT_EQ(recorder.take(), "[,ns::Class::func] x");
    HALVANE_LOG(&category, kLogLevelError, "x");
    EXPECT_NE(recorder.take().find("TestBody] x"), std::string::npos);
}

TEST_F(LogMessageTest, TheMacroIsOneStatement) {
    if (category.level == 12345)
        HALVANE_LOG(&category, kLogLevelError, "then");
    else
        HALVANE_LOG(&category, kLogLevelError, "else");
    EXPECT_EQ(recorder.take(), "else");
}

// --- The rate limit ---

class LogRateTest : public LogMessageTest {
  protected:
    LogRateTest() { EXPECT_EQ(control(category, "rate=2/1000"), kStatusOK); }

    int log(const char* text, std::uint32_t level = kLogLevelError) {
        return LogPrintF(&category, "f", level, "%s", text);
    }

    const std::uint64_t second_ = UpTicksPerSecond();
    ScopedUpTime time{5000};
};

TEST_F(LogRateTest, TheFirstMessageOpensAnInterval) {
    EXPECT_EQ(category.rateIntervalEnd, 0u);
    EXPECT_EQ(log("1"), 1);
    EXPECT_EQ(category.rateIntervalEnd, 5000 + second_);
    EXPECT_EQ(category.rateCount, 1u);
}

TEST_F(LogRateTest, BeyondTheLimitMessagesAreDropped) {
    EXPECT_EQ(log("1"), 1);
    EXPECT_EQ(log("2"), 1);
    EXPECT_EQ(log("3"), 0);
    time.advance(second_ - 1);
    EXPECT_EQ(log("4"), 0);
    EXPECT_EQ(category.rateCount, 2u);
    EXPECT_EQ(recorder.take(), "12");
}

TEST_F(LogRateTest, AtItsEndTheIntervalIsClosedAndTheCountStartsAnew) {
    log("1");
    log("2");
    time.advance(second_);
    EXPECT_EQ(log("3"), 1);
    EXPECT_EQ(category.rateIntervalEnd, 0u);
    EXPECT_EQ(category.rateCount, 1u);
    // The next message opens the next interval.
    time.advance(10);
    EXPECT_EQ(log("4"), 1);
    EXPECT_EQ(category.rateIntervalEnd, 5000 + second_ + 10 + second_);
    EXPECT_EQ(category.rateCount, 2u);
    EXPECT_EQ(log("5"), 0);
    EXPECT_EQ(recorder.take(), "1234");
}

TEST_F(LogRateTest, ARawMessageIsNeitherCountedNorDropped) {
    EXPECT_EQ(log("r", kLogLevelError | kLogFlagRaw), 1);
    EXPECT_EQ(category.rateCount, 0u);
    EXPECT_EQ(category.rateIntervalEnd, 0u);
    log("1");
    log("2");
    EXPECT_EQ(log("r", kLogLevelError | kLogFlagRaw), 1);
    EXPECT_EQ(log("3"), 0);
    EXPECT_EQ(recorder.take(), "r12r");
}

TEST_F(LogRateTest, ALimitOfZeroIsNone) {
    EXPECT_EQ(control(category, "rate=0/1000"), kStatusOK);
    for (int i = 0; i < 100; ++i) EXPECT_EQ(log("x"), 1);
    EXPECT_EQ(category.rateCount, 0u);
    EXPECT_EQ(category.rateIntervalEnd, 0u);
}

TEST_F(LogRateTest, AnIntervalWithoutLengthNeverFills) {
    EXPECT_EQ(control(category, "rate=1/0"), kStatusOK);
    for (int i = 0; i < 10; ++i) EXPECT_EQ(log("x"), 1);
}

TEST_F(LogRateTest, AnIntervalOfTheGreatestLengthDoesNotEndEarly) {
    EXPECT_EQ(control(category, "rate=1/18446744073709551615"), kStatusOK);
    EXPECT_EQ(log("1"), 1);
    EXPECT_EQ(category.rateIntervalEnd, UINT64_MAX);
    time.set(UINT64_MAX - 1);
    EXPECT_EQ(log("2"), 0);
}

TEST_F(LogRateTest, EachCategoryHasItsOwnCount) {
    TestCategory other("OtherMessage");
    record(other, recorder);
    log("1");
    log("2");
    EXPECT_EQ(LogPrintF(&other, "f", kLogLevelError, "o"), 1);
    EXPECT_EQ(log("3"), 0);
}

// --- The pieces that an output gets ---

class LogPiecesTest : public LogMessageTest {
  protected:
    // Logs one formatted piece of each of these lengths, and returns the lengths that the output
    // received.
    std::vector<std::size_t> arrived(const std::vector<std::size_t>& lengths) {
        std::array<std::string, 4> texts;
        std::string all;
        for (std::size_t i = 0; i < lengths.size(); ++i) {
            texts.at(i) = std::string(lengths[i], static_cast<char>('a' + i));
            all += texts[i];
        }
        EXPECT_EQ(LogPrintF(&category, "f", kLogLevelError, "%s%s%s%s", texts[0].c_str(),
                            texts[1].c_str(), texts[2].c_str(), texts[3].c_str()),
                  static_cast<int>(all.size()));
        EXPECT_EQ(recorder.text(), all);
        std::vector<std::size_t> sizes;
        for (const std::string& piece : recorder.pieces) sizes.push_back(piece.size());
        recorder.take();
        return sizes;
    }
};

using Sizes = std::vector<std::size_t>;

TEST_F(LogPiecesTest, SmallPiecesOf256BytesInAllArriveInOneCall) {
    EXPECT_EQ(arrived({100, 100, 56}), (Sizes{256}));
    EXPECT_EQ(arrived({1, 255}), (Sizes{256}));
    EXPECT_EQ(arrived({64, 64, 64, 64}), (Sizes{256}));
}

TEST_F(LogPiecesTest, APieceThatWouldExceed256BytesComesAfterWhatWasCollected) {
    EXPECT_EQ(arrived({100, 100, 57}), (Sizes{200, 57}));
    EXPECT_EQ(arrived({2, 255}), (Sizes{2, 255}));
    EXPECT_EQ(arrived({255, 1}), (Sizes{256}));
    EXPECT_EQ(arrived({255, 2}), (Sizes{255, 2}));
    EXPECT_EQ(arrived({256, 1}), (Sizes{256, 1}));
    EXPECT_EQ(arrived({256, 256, 256, 256}), (Sizes{256, 256, 256, 256}));
}

TEST_F(LogPiecesTest, ASinglePieceIsCollectedUpTo256BytesAndDirectAbove) {
    EXPECT_EQ(arrived({255}), (Sizes{255}));
    EXPECT_EQ(arrived({256}), (Sizes{256}));
    EXPECT_EQ(arrived({257}), (Sizes{257}));
    EXPECT_EQ(arrived({5000}), (Sizes{5000}));
    EXPECT_EQ(arrived({1, 256, 1}), (Sizes{1, 256, 1}));
    EXPECT_EQ(arrived({1, 257, 1}), (Sizes{1, 257, 1}));
}

TEST_F(LogPiecesTest, APieceOf300BytesComesByItselfAfterWhatWasCollected) {
    EXPECT_EQ(arrived({10, 300, 10, 20}), (Sizes{10, 300, 30}));
    EXPECT_EQ(arrived({300, 300}), (Sizes{300, 300}));
}

TEST_F(LogPiecesTest, HeaderAndBodyAreCollectedTogether) {
    category.flags = kLogHeaderLevel;  // "[error] "
    const std::string body(248, 'x');
    EXPECT_EQ(LogPrintF(&category, "f", kLogLevelError, "%s", body.c_str()), 256);
    EXPECT_EQ(recorder.pieces, Texts{std::string("[error] ") + body});
    recorder.take();
    EXPECT_EQ(LogPrintF(&category, "f", kLogLevelError, "%sy", body.c_str()), 257);
    EXPECT_EQ(recorder.pieces, (Texts{std::string("[error] ") + body, "y"}));
    recorder.take();
    const std::string large(300, 'z');
    EXPECT_EQ(LogPrintF(&category, "f", kLogLevelError, "%s", large.c_str()), 308);
    EXPECT_EQ(recorder.pieces, (Texts{"[error] ", large}));
}

TEST_F(LogPiecesTest, NothingIsLeftForTheNextMessage) {
    EXPECT_EQ(arrived({200}), (Sizes{200}));
    EXPECT_EQ(arrived({200}), (Sizes{200}));
}

// --- The copy to the console ---

class LogConsoleCopyTest : public LogMessageTest {
  protected:
    LogConsoleCopyTest() {
        std::ofstream(path).flush();  // opening it does not create it
        halvane::replaceConsoleDevice(path.c_str());
    }
    ~LogConsoleCopyTest() override { halvane::replaceConsoleDevice(nullptr); }

    TemporaryFolder folder;
    const std::string path = (folder.path() / "console").string();
    ScopedUpTime time;
};

TEST_F(LogConsoleCopyTest, AFlaggedMessageIsCopiedWithItsHeader) {
    category.flags = kLogHeaderLevel;
    EXPECT_EQ(LogPrintF(&category, "f", kLogLevelError | kLogFlagConsole, "text\n"), 13);
    EXPECT_EQ(recorder.take(), "[error] text\n");
    EXPECT_EQ(contentsOf(path), "[error] text\n");
    EXPECT_EQ(kLogFlagConsole, 0x40000);
}

TEST_F(LogConsoleCopyTest, EachCopyIsFollowedByAPauseOf200Microseconds) {
    LogPrintF(&category, "f", kLogLevelError | kLogFlagConsole, "text");
    EXPECT_EQ(time.sleepCount(), 1u);
    EXPECT_EQ(time.lastSleep().tv_sec, 0);
    EXPECT_EQ(time.lastSleep().tv_nsec, 200'000);
    const std::string large(300, 'x');
    LogPrintF(&category, "f", kLogLevelError | kLogFlagConsole, "a%sb", large.c_str());
    EXPECT_EQ(recorder.pieces.size(), 4u);
    EXPECT_EQ(time.sleepCount(), 4u);
}

TEST_F(LogConsoleCopyTest, AnotherMessageIsNotCopied) {
    LogPrintF(&category, "f", kLogLevelError | kLogFlagRaw | kLogFlagFunction, "text");
    EXPECT_EQ(contentsOf(path), "");
    EXPECT_EQ(time.sleepCount(), 0u);
}

TEST_F(LogConsoleCopyTest, AConsoleThatCannotBeOpenedHarmsNoMessage) {
    halvane::replaceConsoleDevice("/nonexistent/console");
    EXPECT_EQ(LogPrintF(&category, "f", kLogLevelError | kLogFlagConsole, "text"), 4);
    EXPECT_EQ(recorder.take(), "text");
}

TEST_F(LogConsoleCopyTest, AMessageThatTheRateLimitDropsIsNotCopied) {
    EXPECT_EQ(control(category, "rate=1/1000"), kStatusOK);
    LogPrintF(&category, "f", kLogLevelError | kLogFlagConsole, "1");
    category.rateIntervalEnd = UINT64_MAX;
    LogPrintF(&category, "f", kLogLevelError | kLogFlagConsole, "2");
    EXPECT_EQ(recorder.take(), "1");
    EXPECT_EQ(time.sleepCount(), 1u);
}

}  // namespace
