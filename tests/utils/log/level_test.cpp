#include <array>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <string>

#include "halvane/utils/log.h"

namespace {

std::string nameOf(std::uint32_t level) {
    std::array<char, kLogLevelStringSize> buffer;
    buffer.fill('#');
    const char* const name = __LogCategory_LevelToString(level, buffer.data());
    EXPECT_EQ(name, buffer.data());
    EXPECT_NE(std::memchr(name, '\0', buffer.size()), nullptr);
    return name;
}

struct Row {
    std::int32_t level;
    const char* text;
};

constexpr std::array<Row, 17> kNamedLevels = {{
    {0, "all"},
    {1, "min"},
    {10, "chatty"},
    {20, "verbose"},
    {30, "trace"},
    {40, "info"},
    {50, "notice"},
    {60, "warning"},
    {70, "assert"},
    {80, "require"},
    {90, "error"},
    {100, "critical"},
    {110, "alert"},
    {120, "emergency"},
    {130, "tragic"},
    {254, "max"},
    {255, "off"},
}};

TEST(LogLevel, EveryNameStandsForItsNumberAndBack) {
    for (const Row& row : kNamedLevels) {
        EXPECT_EQ(nameOf(static_cast<std::uint32_t>(row.level)), row.text);
        EXPECT_EQ(__LogCategory_StringToLevel(row.text), row.level) << row.text;
    }
}

TEST(LogLevel, BetweenNamesTheNearestIsNamedWithTheDistance) {
    constexpr std::array<Row, 38> kRows = {{
        {2, "min+1"},      {3, "min+2"},         {5, "min+4"},         {6, "chatty-4"},
        {9, "chatty-1"},   {11, "chatty+1"},     {14, "chatty+4"},     {16, "verbose-4"},
        {19, "verbose-1"}, {21, "verbose+1"},    {29, "trace-1"},      {31, "trace+1"},
        {39, "info-1"},    {44, "info+4"},       {46, "notice-4"},     {51, "notice+1"},
        {59, "warning-1"}, {61, "warning+1"},    {69, "assert-1"},     {71, "assert+1"},
        {79, "require-1"}, {84, "require+4"},    {86, "error-4"},      {89, "error-1"},
        {92, "error+2"},   {99, "critical-1"},   {101, "critical+1"},  {109, "alert-1"},
        {114, "alert+4"},  {116, "emergency-4"}, {121, "emergency+1"}, {129, "tragic-1"},
        {131, "tragic+1"}, {191, "tragic+61"},   {193, "max-61"},      {251, "max-3"},
        {253, "max-1"},    {200, "max-54"},
    }};
    for (const Row& row : kRows) {
        EXPECT_EQ(nameOf(static_cast<std::uint32_t>(row.level)), row.text);
    }
}

TEST(LogLevel, HalfwayTheLowerOfTwoIsNamed) {
    constexpr std::array<Row, 13> kRows = {{
        {15, "chatty+5"},
        {25, "verbose+5"},
        {35, "trace+5"},
        {45, "info+5"},
        {55, "notice+5"},
        {65, "warning+5"},
        {75, "assert+5"},
        {85, "require+5"},
        {95, "error+5"},
        {105, "critical+5"},
        {115, "alert+5"},
        {125, "emergency+5"},
        {192, "tragic+62"},
    }};
    for (const Row& row : kRows) {
        EXPECT_EQ(nameOf(static_cast<std::uint32_t>(row.level)), row.text);
    }
}

// Finds the nearest row by walking away from the level in steps of one.
std::string searchedName(int level) {
    for (int distance = 0;; ++distance) {
        for (const Row& row : kNamedLevels) {
            const bool isBelow = row.level + distance == level;
            const bool isAbove = row.level - distance == level;
            if (!isBelow && !isAbove) continue;
            if (distance == 0) return row.text;
            return std::string(row.text) + (isBelow ? '+' : '-') + std::to_string(distance);
        }
    }
}

TEST(LogLevel, EveryByteHasANameThatReadsBack) {
    for (int level = 0; level <= 255; ++level) {
        const std::string name = nameOf(static_cast<std::uint32_t>(level));
        EXPECT_EQ(name, searchedName(level));
        EXPECT_EQ(__LogCategory_StringToLevel(name.c_str()), level) << name;
    }
}

TEST(LogLevel, OnlyTheLowestByteIsNamed) {
    EXPECT_EQ(nameOf(256), "all");
    EXPECT_EQ(nameOf(0x15C), "error+2");
    EXPECT_EQ(nameOf(90u | kLogFlagConsole | kLogFlagRaw | kLogFlagFunction), "error");
    EXPECT_EQ(nameOf(0xFFFFFFFF), "off");
}

TEST(LogLevel, TheFirstNameThatBeginsWithTheLettersIsMeant) {
    constexpr std::array<Row, 24> kRows = {{
        {0, "a"},     {0, "al"},    {70, "as"},    {110, "ale"}, {1, "m"},    {1, "mi"},
        {254, "ma"},  {10, "c"},    {100, "cr"},   {20, "v"},    {30, "t"},   {30, "tr"},
        {30, "tra"},  {30, "trac"}, {130, "trag"}, {40, "i"},    {50, "n"},   {60, "w"},
        {60, "warn"}, {80, "r"},    {90, "e"},     {90, "err"},  {120, "em"}, {255, "o"},
    }};
    for (const Row& row : kRows)
        EXPECT_EQ(__LogCategory_StringToLevel(row.text), row.level) << row.text;
}

TEST(LogLevel, AnOffsetMovesTheName) {
    constexpr std::array<Row, 14> kRows = {{
        {65, "warning+5"},
        {89, "error-1"},
        {60, "warning+"},  // no digits: nothing to add
        {60, "warning-"},
        {60, "warning+0"},
        {60, "warning-0"},
        {65, "w+5"},
        {91, "error+001"},
        {0, "min-1"},
        {0, "warning-60"},
        {256, "off+1"},
        {1090, "error+1000"},
        {2147483647, "all+2147483647"},
        {2147483647, "min+2147483646"},
    }};
    for (const Row& row : kRows)
        EXPECT_EQ(__LogCategory_StringToLevel(row.text), row.level) << row.text;
}

TEST(LogLevel, TextWithoutLettersIsADecimalNumber) {
    constexpr std::array<Row, 9> kRows = {{
        {0, ""},
        {0, "0"},
        {1, "1"},
        {9, "9"},
        {10, "010"},
        {255, "255"},
        {256, "256"},
        {99999, "99999"},
        {2147483647, "2147483647"},
    }};
    for (const Row& row : kRows)
        EXPECT_EQ(__LogCategory_StringToLevel(row.text), row.level) << row.text;
}

TEST(LogLevel, AnythingElseIsInvalid) {
    for (const char* text : {
             "warn5",                 // letters and digits without a sign
             "warnings",              // longer than any name
             "x",                     // no name begins so
             "error 1",               // a blank
             "error+ 1",              //
             "error+1x",              // something behind the digits
             "error+1+1",             //
             "error+-1",              //
             "error*2",               //
             "Error",                 // names are in lower case
             "WARNING",               //
             "min-2",                 // below 0
             "all-1",                 //
             "5x",                    // something behind a number
             "5+1",                   //
             " 5",                    //
             "5 ",                    //
             "-1",                    //
             "+1",                    //
             "0x10",                  //
             "?",                     //
             ";",                     //
             "2147483648",            // above the largest
             "4294967295",            //
             "4294967296",            // beyond 32 bits
             "99999999999999999999",  // beyond 64 bits
             "min+2147483647",        //
             "min+99999999999",       //
             "min-99999999999",       //
         }) {
        EXPECT_EQ(__LogCategory_StringToLevel(text), -1) << text;
    }
}

}  // namespace
