#include "halvane/model/config_parser.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "halvane/base/status.h"
#include "halvane/model/config_parser_internal.h"
#include "halvane/model/daemon_service.h"

#include "tests/support/guarded_bytes.h"

using namespace halvane;
using namespace halvane::ConfigParser;
using halvane::testing::GuardedBytes;

namespace {

using Words = std::vector<std::string>;
using Bytes = ByteBuffer;

// The value of an out-parameter before a call.
const Error kEarlier = {"earlier", 1};

constexpr std::string_view kAuthentication[] = {"Open", "SharedKey", "LEAP"};

// Returns the words, or the error code as a word if there are none.
Words wordsOf(std::string_view text) {
    std::optional<Error> error = kEarlier;
    const auto words = convertParamStringToArray_error(text, kAuthentication, &error);
    EXPECT_EQ(error.has_value(), !words);
    EXPECT_EQ(error.value_or(daemonError(0)).domain, kDaemonErrorDomain);
    return words ? *words : Words{std::to_string(error->code)};
}

TEST(ConfigParserWords, AreAnsweredAsTheListSpellsThem) {
    EXPECT_EQ(wordsOf("OPEN,sharedkey"), (Words{"Open", "SharedKey"}));
    EXPECT_EQ(wordsOf("leap"), Words{"LEAP"});
    EXPECT_EQ(wordsOf("LEAP,Open,leap"), (Words{"LEAP", "Open", "LEAP"})) << "order and repetition";
}

TEST(ConfigParserWords, MatchAsAWhole) {
    EXPECT_EQ(wordsOf("open,Shared"), Words{"-6705"});
    EXPECT_EQ(wordsOf("Opened"), Words{"-6705"});
    EXPECT_EQ(wordsOf("Open\xC3\xA9"), Words{"-6705"});
    EXPECT_EQ(wordsOf("\xFF"), Words{"-6705"});
    EXPECT_EQ(wordsOf(std::string_view("Open\0", 5)), Words{"-6705"});
    EXPECT_EQ(wordsOf(std::string_view("Open\0,LEAP", 10)), Words{"-6705"});
}

TEST(ConfigParserWords, KeepTheirBlanks) {
    EXPECT_EQ(wordsOf("Open, LEAP"), Words{"-6705"});
    EXPECT_EQ(wordsOf(" Open"), Words{"-6705"});
    EXPECT_EQ(wordsOf("Open "), Words{"-6705"});
}

TEST(ConfigParserWords, MayEndInOneComma) {
    EXPECT_EQ(wordsOf("Open,LEAP,"), (Words{"Open", "LEAP"}));
    EXPECT_EQ(wordsOf("Open,,LEAP"), Words{"-6705"});
    EXPECT_EQ(wordsOf("Open,,"), Words{"-6705"});
    EXPECT_EQ(wordsOf(","), Words{"-6705"});
    EXPECT_EQ(wordsOf(",Open"), Words{"-6705"});
}

TEST(ConfigParserWords, AreNoneInAnEmptyText) {
    EXPECT_EQ(wordsOf(""), Words{});
    EXPECT_EQ(wordsOf(std::string_view()), Words{});
}

TEST(ConfigParserWords, TakeTheFirstOfEqualOnes) {
    constexpr std::string_view kTwice[] = {"wpa2", "WPA2"};
    EXPECT_EQ(convertParamStringToArray_error("WPA2", kTwice), Words{"wpa2"});
    EXPECT_FALSE(convertParamStringToArray_error("x", {}));
    EXPECT_EQ(convertParamStringToArray_error("", {}), Words{});
}

TEST(ConfigParserWords, NeedNoPlaceForAnError) {
    EXPECT_EQ(convertParamStringToArray_error("open", kAuthentication), Words{"Open"});
    EXPECT_FALSE(convertParamStringToArray_error("closed", kAuthentication));
}

TEST(ConfigParserWords, AreNotReadPastTheText) {
    const GuardedBytes text(std::string_view("Open,LEAP"));
    EXPECT_EQ(wordsOf(text.text()), (Words{"Open", "LEAP"}));
}

// Converts a text with and without an out-parameter, and expects the same value. Success leaves the
// out-parameter unchanged.
template <auto convert>
void expectValue(std::string_view text,
                 const typename decltype(convert({}, nullptr))::value_type& value) {
    const GuardedBytes exact(text);
    std::optional<Error> error = kEarlier;
    EXPECT_EQ(convert(exact.text(), &error), value) << text;
    EXPECT_EQ(error, kEarlier) << text;
    EXPECT_EQ(convert(exact.text(), nullptr), value) << text;
}
template <auto convert>
void expectError(std::string_view text, HalvaneStatus code) {
    const GuardedBytes exact(text);
    std::optional<Error> error = kEarlier;
    EXPECT_FALSE(convert(exact.text(), &error)) << text;
    EXPECT_EQ(error, daemonError(code)) << text;
    EXPECT_FALSE(convert(exact.text(), nullptr)) << text;
}

TEST(ConfigParserHex, ReadsPairsOfEitherCase) {
    expectValue<convertToDataFromHex>("41424344", Bytes{0x41, 0x42, 0x43, 0x44});
    expectValue<convertToDataFromHex>("aBCdeF09", Bytes{0xAB, 0xCD, 0xEF, 0x09});
    expectValue<convertToDataFromHex>(std::string(2000, 'f'),
                                      ByteBuffer::fromText(std::string(1000, '\xFF')));
}

TEST(ConfigParserHex, SkipsSpaceAndAPrefixBefore) {
    expectValue<convertToDataFromHex>(" \t\r\n\v\f0x41", Bytes{0x41});
    expectValue<convertToDataFromHex>("0X41", Bytes{0x41});
    expectError<convertToDataFromHex>("0x 41", kStatusDigitsAfterGap);
    expectError<convertToDataFromHex>("0x0x41", kStatusMalformed);
}

TEST(ConfigParserHex, IgnoresWhatFollows) {
    expectValue<convertToDataFromHex>("4142zz", Bytes{0x41, 0x42});
    expectValue<convertToDataFromHex>("41 ", Bytes{0x41});
    expectValue<convertToDataFromHex>("41 \t\n", Bytes{0x41});
    expectValue<convertToDataFromHex>("41 zz 42", Bytes{0x41});
    expectValue<convertToDataFromHex>("41:42", Bytes{0x41});
    expectValue<convertToDataFromHex>("41-42", Bytes{0x41});
    expectValue<convertToDataFromHex>("41_42", Bytes{0x41});
    expectValue<convertToDataFromHex>(
        "41\xC3\xA9"
        "42",
        Bytes{0x41});
    expectValue<convertToDataFromHex>("41\xFF", Bytes{0x41});
}

TEST(ConfigParserHex, DropsALastOddDigit) {
    expectValue<convertToDataFromHex>("414", Bytes{0x41});
    expectValue<convertToDataFromHex>("4", Bytes{});
    expectValue<convertToDataFromHex>("414zz", Bytes{0x41});
    expectValue<convertToDataFromHex>("414 ", Bytes{0x41});
    expectError<convertToDataFromHex>("4zz", kStatusMalformed);
}

TEST(ConfigParserHex, RefusesDigitsBehindAGap) {
    EXPECT_EQ(kStatusDigitsAfterGap, -6717);
    expectError<convertToDataFromHex>("41 42", -6717);
    expectError<convertToDataFromHex>("41\n42", -6717);
    expectError<convertToDataFromHex>("4 1", -6717);
    expectError<convertToDataFromHex>("414 2", -6717);
}

TEST(ConfigParserHex, RefusesATextWithoutAPair) {
    expectError<convertToDataFromHex>("zz", -6742);
    expectError<convertToDataFromHex>(" -41", -6742);
    expectError<convertToDataFromHex>("0xzz", -6742);
    expectError<convertToDataFromHex>("\xC3\xA9", -6742);
}

TEST(ConfigParserHex, IsAnEmptyBufferOfNothing) {
    expectValue<convertToDataFromHex>("", Bytes{});
    expectValue<convertToDataFromHex>("  ", Bytes{});
    expectValue<convertToDataFromHex>("0x", Bytes{});
    EXPECT_EQ(convertToDataFromHex(std::string_view()), Bytes{});
}

TEST(ConfigParserHex, EndsAtANul) {
    expectValue<convertToDataFromHex>(std::string_view("41\0"
                                                       "42",
                                                       5),
                                      Bytes{0x41});
    expectValue<convertToDataFromHex>(std::string_view("41 \0"
                                                       "42",
                                                       6),
                                      Bytes{0x41});
    expectValue<convertToDataFromHex>(std::string_view("\0"
                                                       "41",
                                                       3),
                                      Bytes{});
}

TEST(ConfigParserHex, WithTooLittleRoomGivesWhatFitsOrAnError) {
    std::optional<Error> error;
    EXPECT_FALSE(dataFromHexWithin("4142", 1, &error));
    EXPECT_EQ(error, daemonError(-6705));
    EXPECT_EQ(dataFromHexWithin("4142", 1, nullptr), Bytes{0x41});
    EXPECT_FALSE(dataFromHexWithin("41 42", 1, &error));
    EXPECT_EQ(error, daemonError(-6751));
    EXPECT_FALSE(dataFromHexWithin("41 42", 2, &error));
    EXPECT_EQ(error, daemonError(-6717));
}

TEST(ConfigParserHex, TellsThatThereIsNoMemory) {
    std::optional<Error> error;
    EXPECT_FALSE(dataFromHexWithin("41", SIZE_MAX / 2, &error));
    EXPECT_EQ(error, daemonError(-6728));
}

TEST(ConfigParserInteger, StandsAtTheStart) {
    expectValue<convertToInteger>("42", 42);
    expectValue<convertToInteger>("-42", -42);
    expectValue<convertToInteger>("+42", 42);
    expectValue<convertToInteger>(" \t\n\r\v\f-7", -7);
    expectValue<convertToInteger>("007", 7);
    expectValue<convertToInteger>("12abc", 12);
    expectValue<convertToInteger>("3.99", 3);
    expectValue<convertToInteger>("5 6", 5);
    expectValue<convertToInteger>("0x10", 0);
    expectValue<convertToInteger>("-0", 0);
    expectValue<convertToInteger>(std::string_view("1\0"
                                                   "2",
                                                   3),
                                  1);
}

TEST(ConfigParserInteger, HasSixtyFourBits) {
    expectValue<convertToInteger>("9223372036854775807", INT64_MAX);
    expectValue<convertToInteger>("+9223372036854775807x", INT64_MAX);
    expectValue<convertToInteger>("-9223372036854775808", INT64_MIN);
    expectError<convertToInteger>("9223372036854775808", -6705);
    expectError<convertToInteger>("-9223372036854775809", -6705);
    expectError<convertToInteger>(std::string(400, '9'), -6705);
}

TEST(ConfigParserInteger, RefusesATextWithoutOne) {
    for (const char* text : {"", " ", "abc", "-", "+", "--1", "+-1", "-+1", "- 1", ".5", "x1",
                             "\xC2\xA0"
                             "1"}) {
        expectError<convertToInteger>(text, -6705);
    }
    EXPECT_FALSE(convertToInteger(std::string_view()));
}

TEST(ConfigParserBool, IsYesOrNo) {
    expectValue<convertToBool>("yes", true);
    expectValue<convertToBool>("YES", true);
    expectValue<convertToBool>("yEs", true);
    expectValue<convertToBool>("no", false);
    expectValue<convertToBool>("No", false);
}

TEST(ConfigParserBool, RefusesAnyOtherText) {
    for (const char* text :
         {"", "y", "n", "ye", "yess", "yes ", " yes", "no\n", "true", "1", "0"}) {
        expectError<convertToBool>(text, -6705);
    }
    expectError<convertToBool>(std::string_view("yes\0", 4), -6705);
    EXPECT_FALSE(convertToBool(std::string_view()));
}

// Unlike the other conversions, this one clears the error.
void expectBSSID(std::string_view text, const Bytes& address) {
    const GuardedBytes exact(text);
    std::optional<Error> error = kEarlier;
    EXPECT_EQ(convertToBSSID(exact.text(), &error), address) << text;
    EXPECT_EQ(error, std::nullopt) << text;
    EXPECT_EQ(convertToBSSID(exact.text()), address) << text;
}

TEST(ConfigParserBSSID, HasSixBytes) {
    const Bytes address = {0x00, 0x11, 0x22, 0x33, 0x44, 0x55};
    expectBSSID("00:11:22:33:44:55", address);
    expectBSSID("0-11-2-33-4-55", {0x00, 0x11, 0x02, 0x33, 0x04, 0x55});
    expectBSSID("001122334455", address);
    expectBSSID(" -:00 11-22::33:44:55", address);
    expectBSSID("aA:Bb:cC:Dd:eE:fF", {0xAA, 0xBB, 0xCC, 0xDD, 0xEE, 0xFF});
    expectBSSID("0x1y2z3;4.5", {0, 1, 2, 3, 4, 5});
}

TEST(ConfigParserBSSID, IgnoresWhatFollows) {
    const Bytes address = {0x00, 0x11, 0x22, 0x33, 0x44, 0x55};
    expectBSSID("00:11:22:33:44:55:66", address);
    expectBSSID("00:11:22:33:44:55zz", address);
    expectBSSID("00:11:22:33:44:55\xE2\x82\xAC", address);
}

TEST(ConfigParserBSSID, RefusesTooFewBytes) {
    expectError<convertToBSSID>("00:11:22:33:44", -6742);
    expectError<convertToBSSID>("00:11:22:33:44:", -6742);
    expectError<convertToBSSID>("0011223344", -6742);
    expectError<convertToBSSID>("", -6742);
    EXPECT_FALSE(convertToBSSID(std::string_view()));
}

TEST(ConfigParserBSSID, RefusesAnotherCharacterWhereAByteBegins) {
    expectError<convertToBSSID>("x00:11:22:33:44:55", -6742);
    expectError<convertToBSSID>("00:11:22:g3:44:55", -6742);
    expectError<convertToBSSID>(
        "0\xC3\xA9"
        "1:2:3:4:5",
        -6742);
    expectError<convertToBSSID>(std::string_view("\0"
                                                 "00:11:22:33:44:55",
                                                 18),
                                -6742);
}

TEST(ConfigParserBSSID, RefusesATextThatIsNotUTF8) {
    expectError<convertToBSSID>("00:11:22:33:44:55\xFF", -6705);
    expectError<convertToBSSID>("\xED\xA0\x80", -6705);
}

}  // namespace
