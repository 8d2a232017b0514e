#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "halvane/base/property_list_value.h"
#include "halvane/base/status.h"
#include "halvane/utils/log.h"
#include "halvane/utils/log/output_internal.h"
#include "halvane/utils/scan/up_ticks.h"

#include "tests/support/temporary_folder.h"
#include "tests/utils/log/test_support.h"

using halvane::PropertyListValue;
using halvane::testing::LogRecorder;
using halvane::testing::LogTest;
using halvane::testing::TemporaryFolder;
using halvane::testing::TestCategory;

using Texts = std::vector<std::string>;

namespace {

class LogControlTest : public LogTest {
  protected:
    LogControlTest() {
        for (TestCategory* category : {&alpha, &beta, &gamma}) {
            LogIsEnabled(category, kLogLevelMax);
        }
    }

    TestCategory alpha{"TestAlpha"};
    TestCategory beta{"TestBeta"};
    TestCategory gamma{"Gamma_Test"};
};

// --- The grammar ---

TEST_F(LogControlTest, AnEntrySetsTheCategoriesOfItsPattern) {
    EXPECT_EQ(LogControl("Beta:level=error"), kStatusOK);
    EXPECT_EQ(alpha.level, kLogLevelInfo);
    EXPECT_EQ(beta.level, kLogLevelError);
    EXPECT_EQ(LogControl("^Test:level=chatty"), kStatusOK);
    EXPECT_EQ(alpha.level, kLogLevelChatty);
    EXPECT_EQ(beta.level, kLogLevelChatty);
    EXPECT_EQ(gamma.level, kLogLevelInfo);
}

TEST_F(LogControlTest, EntriesAreSeparatedByCommas) {
    EXPECT_EQ(LogControl("Alpha:level=1,Beta:flags=pid;level,Gamma:rate=3/4"), kStatusOK);
    EXPECT_EQ(settings(), (Texts{"Alpha:level=1", "Beta:flags=pid;level", "Gamma:rate=3/4"}));
    EXPECT_EQ(alpha.level, 1);
    EXPECT_EQ(beta.flags, std::uint32_t{kLogHeaderPID | kLogHeaderLevel});
    EXPECT_EQ(gamma.rateMax, 3u);
}

TEST_F(LogControlTest, EachPartRunsToItsOwnSeparator) {
    struct Row {
        const char* control;
        Texts settings;
    };
    const std::vector<Row> rows = {
        {"a:b=c=d:e;f", {"a:b=c=d:e;f"}},  // a value holds anything but ','
        {"a=b:c=d", {"a=b:c=d"}},          // a pattern anything but ':'
        {"a,b:c=d", {"a,b:c=d"}},
        {"a:b:c=d", {"a:b:c=d"}},  // a name anything but '='
        {"a:b,c:d=e", {"a:b,c:d=e"}},
        {":=", {":="}},
        {"::=,", {"::="}},
        {"a:b=,c:d=", {"a:b=", "c:d="}},
        {" a : b = c ", {" a : b = c "}},  // blanks are no separators
        {"a:b=c,", {"a:b=c"}},             // nothing follows the last ','
        {"", {}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(LogControl(nullptr), kStatusOK);
        EXPECT_EQ(LogControl(row.control), kStatusOK) << row.control;
        EXPECT_EQ(settings(), row.settings) << row.control;
    }
    // Shows which part ends at each separator.
    LogControl(nullptr);
    LogControl("a:b:c=d=e");
    ASSERT_EQ(settings().size(), 1u);
    const auto& action = *halvane::logging::logState().actions.begin();
    EXPECT_EQ(action.pattern, "a");
    EXPECT_EQ(action.name, "b:c");
    EXPECT_EQ(action.value, "d=e");
}

TEST_F(LogControlTest, PrefixesAreNoPartOfThePattern) {
    for (const char* prefix : {"?", "+", "?+"}) {
        EXPECT_EQ(LogControl(nullptr), kStatusOK);
        EXPECT_EQ(LogControl((std::string(prefix) + "Alpha:level=5").c_str()), kStatusOK);
        EXPECT_EQ(settings().back(), "Alpha:level=5") << prefix;
    }
}

TEST_F(LogControlTest, PrefixesInAnotherOrderBelongToThePattern) {
    EXPECT_EQ(LogControl("??Alpha:level=5"), kStatusOK);
    EXPECT_EQ(settings(), Texts{"?Alpha:level=5"});
    EXPECT_EQ(LogControl(nullptr), kStatusOK);
    EXPECT_EQ(LogControl(" +Alpha:level=5"), kStatusOK);
    EXPECT_EQ(settings(), Texts{" +Alpha:level=5"});
    EXPECT_EQ(alpha.level, kLogLevelInfo);
}

// --- Replacement and order ---

TEST_F(LogControlTest, AnEqualPatternAndNameReplaceTheValueInPlace) {
    EXPECT_EQ(LogControl("Alpha:level=1,Beta:level=2,Gamma:level=3"), kStatusOK);
    EXPECT_EQ(LogControl("Alpha:level=7"), kStatusOK);
    EXPECT_EQ(settings(), (Texts{"Alpha:level=7", "Beta:level=2", "Gamma:level=3"}));
    EXPECT_EQ(alpha.level, 7);
}

TEST_F(LogControlTest, PatternsAndNamesAreTheSameInEitherCase) {
    EXPECT_EQ(LogControl("Alpha:level=1,Beta:level=2"), kStatusOK);
    EXPECT_EQ(LogControl("ALPHA:Level=8"), kStatusOK);
    // The first spelling stays, and still matches the same categories.
    EXPECT_EQ(settings(), (Texts{"Alpha:level=8", "Beta:level=2"}));
    EXPECT_EQ(alpha.level, 8);
}

TEST_F(LogControlTest, AnotherPatternOrNameIsASettingOfItsOwn) {
    EXPECT_EQ(LogControl("Alpha:level=1,Alpha:flags=pid,Alph:level=2"), kStatusOK);
    EXPECT_EQ(settings(), (Texts{"Alpha:level=1", "Alpha:flags=pid", "Alph:level=2"}));
    EXPECT_EQ(alpha.level, 2);
}

TEST_F(LogControlTest, TheLaterSettingWins) {
    EXPECT_EQ(LogControl("Test:level=10,Alpha:level=20"), kStatusOK);
    EXPECT_EQ(alpha.level, 20);
    EXPECT_EQ(beta.level, 10);
    // The setting is replaced in its place, and does not move to the end.
    EXPECT_EQ(LogControl("Test:level=30"), kStatusOK);
    EXPECT_EQ(alpha.level, 20);
    EXPECT_EQ(beta.level, 30);
}

TEST_F(LogControlTest, AllSettingsAreAppliedEachTime) {
    EXPECT_EQ(LogControl("Alpha:level=10"), kStatusOK);
    alpha.level = 77;
    EXPECT_EQ(LogControl(""), kStatusOK);
    EXPECT_EQ(alpha.level, 10);
    alpha.level = 77;
    EXPECT_EQ(LogControl("Beta:level=20"), kStatusOK);
    EXPECT_EQ(alpha.level, 10);
}

TEST_F(LogControlTest, ACategoryThatComesLaterTakesAllSettings) {
    EXPECT_EQ(LogControl("Late:level=33,Late:flags=program,Late:rate=5/1000,Late:output=syslog"),
              kStatusOK);
    TestCategory late("LateTest");
    EXPECT_TRUE(LogIsEnabled(&late, 33));
    EXPECT_FALSE(LogIsEnabled(&late, 32));
    EXPECT_EQ(late.level, 33);
    EXPECT_EQ(late.flags, std::uint32_t{kLogHeaderProgram});
    EXPECT_EQ(late.rateMax, 5u);
    EXPECT_EQ(outputOf(late), "syslog");
}

TEST_F(LogControlTest, ACategoryNotYetTestedIsLeftToItsFirstTest) {
    LogUtils_Finalize();  // leaves it listed
    EXPECT_EQ(LogControl("Alpha:level=error,Alpha:output=syslog"), kStatusOK);
    EXPECT_EQ(alpha.level, kLogLevelUninitialized);
    EXPECT_EQ(alpha.output, nullptr);
    EXPECT_FALSE(LogIsEnabled(&alpha, kLogLevelInfo));
    EXPECT_EQ(alpha.level, kLogLevelError);
    EXPECT_EQ(outputOf(alpha), "syslog");
}

TEST_F(LogControlTest, NullForgetsTheSettingsAndKeepsWhatTheyDid) {
    EXPECT_EQ(LogControl("Alpha:level=11,Alpha:flags=pid,Alpha:output=syslog"), kStatusOK);
    EXPECT_EQ(LogControl(nullptr), kStatusOK);
    EXPECT_EQ(settings(), Texts{});
    EXPECT_EQ(alpha.level, 11);
    EXPECT_EQ(alpha.flags, std::uint32_t{kLogHeaderPID});
    EXPECT_EQ(outputOf(alpha), "syslog");
    TestCategory another("AnotherAlpha");
    LogIsEnabled(&another, kLogLevelMax);
    EXPECT_EQ(another.level, kLogLevelInfo);
}

TEST_F(LogControlTest, UnknownNamesAreKeptAndDoNothing) {
    EXPECT_EQ(LogControl("Alpha:colour=red,Alpha:level=12"), kStatusOK);
    EXPECT_EQ(settings(), (Texts{"Alpha:colour=red", "Alpha:level=12"}));
    EXPECT_EQ(alpha.level, 12);
}

TEST_F(LogControlTest, NamesAreCaseSensitiveWhereTheyAct) {
    EXPECT_EQ(LogControl("Alpha:Level=12,Alpha:FLAGS=pid,Alpha:Rate=1/2,Alpha:OUTPUT=bogus"),
              kStatusOK);
    EXPECT_EQ(settings().size(), 4u);
    EXPECT_EQ(alpha.level, kLogLevelInfo);
    EXPECT_EQ(alpha.flags, 0u);
    EXPECT_EQ(alpha.rateMax, 0u);
    EXPECT_EQ(outputOf(alpha), "console");
}

// --- What each name sets ---

TEST_F(LogControlTest, AnInvalidLevelIsIgnored) {
    EXPECT_EQ(LogControl("Alpha:level=error"), kStatusOK);
    EXPECT_EQ(LogControl("Alpha:level=warn5"), kStatusOK);
    EXPECT_EQ(alpha.level, kLogLevelError);
    EXPECT_EQ(LogControl("Alpha:level=-1"), kStatusOK);
    EXPECT_EQ(alpha.level, kLogLevelError);
    EXPECT_EQ(LogControl("Alpha:level="), kStatusOK);
    EXPECT_EQ(alpha.level, 0);
    EXPECT_EQ(LogControl("Alpha:level=warning+5"), kStatusOK);
    EXPECT_EQ(alpha.level, 65);
}

TEST_F(LogControlTest, FlagsAreTheirWordsInEitherCase) {
    struct Row {
        const char* value;
        std::uint32_t flags;
    };
    for (const Row& row : {
             Row{"time", 1},
             Row{"pid", 2},
             Row{"program", 4},
             Row{"category", 8},
             Row{"level", 16},
             Row{"prefix", 32},
             Row{"function", 64},
             Row{"none", 0},
             Row{"", 0},
             Row{"time;pid;program;category;level;prefix;function", 127},
             Row{"function;time", 65},
             Row{"TIME;PiD", 3},
             Row{"time;none", 0},  // clears the keywords before it
             Row{"time;none;pid", 2},
             Row{"NONE;pid;None;level", 16},
             Row{"time;bogus;pid", 3},  // an unknown word is ignored
             Row{"tim;timer;time ; pid", 0},
             Row{"time;;pid;", 3},
             Row{";;", 0},
             Row{"127", 0},
         }) {
        alpha.flags = 0x55;
        EXPECT_EQ(control(alpha, std::string("flags=") + row.value), kStatusOK);
        EXPECT_EQ(alpha.flags, row.flags) << row.value;
    }
}

TEST_F(LogControlTest, TheFlagPrefixSetsThePrefix) {
    gamma.prefix = "other";
    gamma.prefixLength = 5;
    EXPECT_EQ(LogControl("Gamma:flags=time"), kStatusOK);
    EXPECT_EQ(gamma.prefixLength, 5u);
    EXPECT_EQ(LogControl("Gamma:flags=prefix"), kStatusOK);
    EXPECT_EQ(std::string(gamma.prefix, gamma.prefixLength), "Gamma");
}

TEST_F(LogControlTest, ARateIsACountAndMilliseconds) {
    struct Row {
        const char* value;
        std::uint32_t max;
        std::uint64_t ticks;
    };
    const std::uint64_t second = UpTicksPerSecond();
    for (const Row& row : {
             Row{"3/1000", 3, second},
             Row{"3;1000", 3, second},  // any one character between
             Row{"3:1500", 3, second * 3 / 2},
             Row{"3/1", 3, second / 1000},
             Row{"10/60000", 10, second * 60},
             Row{"0/1000", 0, second},
             Row{"3", 3, 0},
             Row{"3/", 3, 0},
             Row{"3//1000", 3, 0},  // only one is skipped
             Row{"3/1000/5", 3, second},
             Row{"3/10x", 3, second / 100},
             Row{"", 0, 0},
             Row{"x7", 0, second * 7 / 1000},
             Row{"007/0020", 7, second / 50},
             Row{"4294967295/1", UINT32_MAX, second / 1000},
             Row{"4294967296/1", UINT32_MAX, second / 1000},  // no larger one than that
             Row{"99999999999999999999/2000", UINT32_MAX, second * 2},
             Row{"1/18446744073709551615", 1, UINT64_MAX},
             Row{"1/99999999999999999999", 1, UINT64_MAX},
             Row{"1/18446744072999", 1, 18'446'744'072'999 * (second / 1000)},
         }) {
        EXPECT_EQ(control(alpha, std::string("rate=") + row.value), kStatusOK);
        EXPECT_EQ(alpha.rateMax, row.max) << row.value;
        EXPECT_EQ(alpha.ratePeriod, row.ticks) << row.value;
    }
}

// --- Outputs ---

TEST_F(LogControlTest, OneSpecificationIsOneOutput) {
    EXPECT_EQ(outputs(), Texts{"console"});
    EXPECT_EQ(LogControl("Test:output=syslog;level=error"), kStatusOK);
    EXPECT_EQ(alpha.output, beta.output);
    EXPECT_EQ(alpha.output, gamma.output);
    EXPECT_EQ(alpha.output->refCount, 3u);
    EXPECT_EQ(outputs(), Texts{"syslog;level=error"});
}

TEST_F(LogControlTest, SpecificationsAreComparedExactly) {
    EXPECT_EQ(LogControl("Alpha:output=syslog,Beta:output=Syslog,Gamma:output=syslog;"), kStatusOK);
    EXPECT_EQ(outputs(), (Texts{"Syslog", "syslog", "syslog;"}));
    EXPECT_NE(alpha.output, beta.output);
    EXPECT_NE(alpha.output, gamma.output);
}

TEST_F(LogControlTest, AnOutputGoesWithItsLastCategory) {
    EXPECT_EQ(LogControl("Alpha:output=syslog,Beta:output=syslog"), kStatusOK);
    EXPECT_EQ(outputs(), (Texts{"console", "syslog"}));
    EXPECT_EQ(gamma.output->refCount, 1u);
    EXPECT_EQ(LogControl("Alpha:output=console"), kStatusOK);
    EXPECT_EQ(outputs(), (Texts{"console", "syslog"}));
    EXPECT_EQ(beta.output->refCount, 1u);
    EXPECT_EQ(LogControl("Beta:output=console"), kStatusOK);
    EXPECT_EQ(outputs(), Texts{"console"});
    EXPECT_EQ(alpha.output->refCount, 3u);
}

TEST_F(LogControlTest, ApplyingTheSameOutputAgainKeepsIt) {
    EXPECT_EQ(LogControl("Alpha:output=syslog"), kStatusOK);
    const LogOutput* const before = alpha.output;
    EXPECT_EQ(LogControl("Alpha:output=syslog"), kStatusOK);
    EXPECT_EQ(LogControl("Beta:level=5"), kStatusOK);
    EXPECT_EQ(alpha.output, before);
    EXPECT_EQ(alpha.output->refCount, 1u);
}

TEST_F(LogControlTest, AnOutputForNoCategoryIsNotKept) {
    EXPECT_EQ(LogControl("Nobody:output=syslog"), kStatusOK);
    EXPECT_EQ(settings(), Texts{"Nobody:output=syslog"});
    EXPECT_EQ(outputs(), Texts{"console"});
}

// --- Failures ---

TEST_F(LogControlTest, AnEntryWithoutItsSeparatorsIsMalformed) {
    for (const char* malformed : {"WiFi", "WiFi:", "WiFi:level", "WiFi=level", "level=3", "?WiFi",
                                  "+WiFi:level", "?", "+", "?+", ",", "a:b=c,,"}) {
        LogControl(nullptr);
        const bool isEmpty = std::string(malformed).find_first_not_of("?+") == std::string::npos;
        EXPECT_EQ(LogControl(malformed), isEmpty ? kStatusOK : kStatusMalformed) << malformed;
    }
    EXPECT_EQ(kStatusMalformed, -6742);
}

TEST_F(LogControlTest, WhatStandsBeforeAMalformedEntryIsKeptAndNotApplied) {
    EXPECT_EQ(LogControl("Alpha:level=1,Beta:level=2,Gamma:level"), kStatusMalformed);
    EXPECT_EQ(settings(), (Texts{"Alpha:level=1", "Beta:level=2"}));
    EXPECT_EQ(alpha.level, kLogLevelInfo);
    EXPECT_EQ(beta.level, kLogLevelInfo);
    EXPECT_EQ(LogControl(""), kStatusOK);
    EXPECT_EQ(alpha.level, 1);
    EXPECT_EQ(beta.level, 2);
}

TEST_F(LogControlTest, AMalformedEntryStopsBeforeTheEntriesBehindIt) {
    EXPECT_EQ(LogControl("Alpha:level=1,Beta,Gamma"), kStatusMalformed);
    EXPECT_EQ(settings(), Texts{"Alpha:level=1"});
}

struct Failure {
    std::string output;
    HalvaneStatus status;
    HalvaneStatus number;
};

std::vector<Failure> failures(const std::string& folder) {
    const std::string digits64(64, '1');
    return {
        {"", kStatusEmptyType, -6756},
        {";path=/x", kStatusEmptyType, -6756},
        {"bogus", kStatusUnsupported, -6705},
        {"bogus;path=/x", kStatusUnsupported, -6705},
        {"file ", kStatusUnsupported, -6705},
        {"file;path", kStatusMalformed, -6742},
        {"file;colour=red", kStatusUnknownParameter, -6735},
        {"file;PATH=x", kStatusUnknownParameter, -6735},
        {"file;path=", kStatusBadPath, -6704},
        {std::string("file;path=") + folder, kStatusCannotOpen, -6755},
        {"file;roll=1K#2", kStatusUnsupported, -6705},
        {"file;roll=1X#2", kStatusUnsupported, -6705},
        {"file;backup=x", kStatusUnsupported, -6705},
        {"syslog;level", kStatusMalformed, -6742},
        {"syslog;facility=1", kStatusUnknownParameter, -6735},
        {"callback;func", kStatusMalformed, -6742},
        {"callback;function=0x1", kStatusUnknownParameter, -6735},
        {std::string("callback;func=") + digits64, kStatusWrongLength, -6743},
        {std::string("callback;arg=") + digits64, kStatusWrongLength, -6743},
        {"console;colour=red", kStatusUnknownParameter, -6735},
    };
}

TEST_F(LogControlTest, AnOutputThatCannotBeHadIsAnsweredWithItsStatus) {
    const TemporaryFolder folder;
    for (const Failure& failure : failures(folder.path().string())) {
        EXPECT_EQ(failure.status, failure.number);
        LogControl(nullptr);
        EXPECT_EQ(control(alpha, std::string("output=") + failure.output), failure.status)
            << failure.output;
        EXPECT_EQ(LogControl((std::string("Nobody:output=") + failure.output).c_str()),
                  failure.status)
            << failure.output;
        EXPECT_EQ(outputOf(alpha), "console");
        EXPECT_EQ(outputs(), Texts{"console"});
    }
}

TEST_F(LogControlTest, TheOtherSettingsAreAppliedBesideAnOutputThatFails) {
    EXPECT_EQ(LogControl("Alpha:output=bogus,Alpha:level=7,Beta:output=syslog,Beta:rate=1/5"),
              kStatusUnsupported);
    EXPECT_EQ(alpha.level, 7);
    EXPECT_EQ(outputOf(alpha), "console");
    EXPECT_EQ(outputOf(beta), "syslog");
    EXPECT_EQ(beta.rateMax, 1u);
}

TEST_F(LogControlTest, TheFirstFailureIsAnswered) {
    EXPECT_EQ(LogControl("Alpha:output=bogus,Beta:output="), kStatusUnsupported);
    LogControl(nullptr);
    EXPECT_EQ(LogControl("Beta:output=,Alpha:output=bogus"), kStatusEmptyType);
}

TEST_F(LogControlTest, AFailingSettingIsKeptAndFailsNoLaterString) {
    EXPECT_EQ(LogControl("WiFi:output=bogus"), kStatusUnsupported);
    EXPECT_EQ(settings(), Texts{"WiFi:output=bogus"});
    EXPECT_EQ(LogControl("Alpha:level=7"), kStatusOK);
    EXPECT_EQ(alpha.level, 7);
    // Repeating the mistake returns the same error.
    EXPECT_EQ(LogControl("WiFi:output=bogus"), kStatusUnsupported);
    EXPECT_EQ(LogControl("WiFi:output=console"), kStatusOK);
    EXPECT_EQ(settings(), (Texts{"WiFi:output=console", "Alpha:level=7"}));
}

TEST_F(LogControlTest, ACategoryWhoseSettingFailsKeepsItsOutput) {
    EXPECT_EQ(LogControl("Alpha:output=syslog"), kStatusOK);
    const LogOutput* const before = alpha.output;
    EXPECT_EQ(LogControl("Alpha:output=bogus"), kStatusUnsupported);
    EXPECT_EQ(alpha.output, before);
    EXPECT_EQ(alpha.output->refCount, 1u);
}

// --- The passes ---

TEST_F(LogControlTest, OutputsAreTakenLast) {
    // The output fails, but all other settings of the string take effect.
    EXPECT_EQ(LogControl("Alpha:output=bogus,Alpha:rate=2/3,Alpha:flags=pid,Alpha:level=9"),
              kStatusUnsupported);
    EXPECT_EQ(alpha.rateMax, 2u);
    EXPECT_EQ(alpha.flags, std::uint32_t{kLogHeaderPID});
    EXPECT_EQ(alpha.level, 9);
}

TEST_F(LogControlTest, TheSecondOfTwoOutputsIsTheOneThatStays) {
    const LogRecorder first;
    const LogRecorder second;
    EXPECT_EQ(
        LogControl((std::string("Test:output=") + first.spec() + ",Alpha:output=" + second.spec())
                       .c_str()),
        kStatusOK);
    EXPECT_EQ(outputOf(alpha), second.spec());
    EXPECT_EQ(outputOf(beta), first.spec());
    EXPECT_EQ(alpha.output->refCount, 1u);
    EXPECT_EQ(beta.output->refCount, 2u);
}

// --- Property-list strings ---

TEST_F(LogControlTest, APropertyListStringIsAControlString) {
    const PropertyListValue value(std::string("Alpha:level=13"));
    EXPECT_EQ(LogControlCF(&value), kStatusOK);
    EXPECT_EQ(alpha.level, 13);
    const PropertyListValue malformed(std::string("Alpha:level"));
    EXPECT_EQ(LogControlCF(&malformed), kStatusMalformed);
    const PropertyListValue failing(std::string("Alpha:output="));
    EXPECT_EQ(LogControlCF(&failing), kStatusEmptyType);
}

TEST_F(LogControlTest, AnEmptyPropertyListStringDoesNothing) {
    EXPECT_EQ(LogControl("Alpha:level=13"), kStatusOK);
    alpha.level = 77;
    const PropertyListValue empty{std::string()};
    EXPECT_EQ(LogControlCF(&empty), kStatusOK);
    EXPECT_EQ(alpha.level, 77);
    EXPECT_EQ(settings(), Texts{"Alpha:level=13"});
}

TEST_F(LogControlTest, AnotherValueIsNotConverted) {
    EXPECT_EQ(LogControlCF(nullptr), kStatusConversionFailed);
    EXPECT_EQ(kStatusConversionFailed, -6700);
    for (const PropertyListValue& value : {
             PropertyListValue(), PropertyListValue(true),
             PropertyListValue(std::string("Alpha:level=\xFF")),  // no UTF-8
             PropertyListValue(std::string("Alpha:level=\xC3")),  // half a character
         }) {
        EXPECT_EQ(LogControlCF(&value), kStatusConversionFailed);
    }
    EXPECT_EQ(settings(), Texts{});
    EXPECT_EQ(alpha.level, kLogLevelInfo);
}

TEST_F(LogControlTest, APropertyListStringOfAnyScriptIsTaken) {
    const PropertyListValue value(std::string("Caf\xC3\xA9:level=13"));
    EXPECT_EQ(LogControlCF(&value), kStatusOK);
    EXPECT_EQ(settings(), Texts{"Caf\xC3\xA9:level=13"});
}

// The characters include those that preferences cannot hold.
TEST_F(LogControlTest, APropertyListStringOfAnyCharactersIsTaken) {
    for (const std::string text : {"\x01", "\x7F", "\xEF\xBF\xBE", "\xEF\xBF\xBF", "\xC2\x85"}) {
        LogControl(nullptr);
        const PropertyListValue value(std::string("Alpha:colour=") + text);
        EXPECT_EQ(LogControlCF(&value), kStatusOK);
        EXPECT_EQ(settings(), Texts{std::string("Alpha:colour=") + text});
    }
}

TEST_F(LogControlTest, APropertyListStringEndsWhereACStringDoes) {
    const PropertyListValue value(std::string("Alpha:level=7\0,x", 16));
    EXPECT_EQ(LogControlCF(&value), kStatusOK);
    EXPECT_EQ(settings(), Texts{"Alpha:level=7"});
}

}  // namespace
