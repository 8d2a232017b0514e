#include "halvane/utils/text/command_line_text.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

#include "tests/support/guarded_bytes.h"
#include "tests/support/replaced_heap.h"

namespace {

using halvane::testing::GuardedBytes;
using halvane::testing::heapOf;
using halvane::testing::ScopedHeap;
using Words = std::vector<std::string>;

Words arguments(const std::string& text) {
    GuardedBytes guarded = GuardedBytes::terminated(text);
    int count = -1;
    char** vector = nullptr;
    EXPECT_EQ(ParseCommandLineIntoArgV(guarded.chars(), &count, &vector), kStatusOK);
    Words words(vector, vector + count);
    EXPECT_EQ(vector[count], nullptr);
    FreeCommandLineArgV(vector);
    return words;
}

TEST(CommandLineText, IsSplitAtWhiteSpace) {
    EXPECT_EQ(arguments("halvane decode file"), (Words{"halvane", "decode", "file"}));
    EXPECT_EQ(arguments(" \ta \n\v\f\r b\t"), (Words{"a", "b"}));
    EXPECT_EQ(arguments(""), Words{});
    EXPECT_EQ(arguments(" \n "), Words{});
    EXPECT_EQ(arguments("a"), Words{"a"});
}

TEST(CommandLineText, KnowsQuotesAndEscapes) {
    EXPECT_EQ(arguments("a 'b c' \"d e\" f\\ g"), (Words{"a", "b c", "d e", "f g"}));
    EXPECT_EQ(arguments("--name='My Hub' \"\" ''"), (Words{"--name=My Hub", "", ""}));
    EXPECT_EQ(arguments("\"a\\\"b\" 'c\\d' e\\\\f"), (Words{"a\"b", "c\\d", "e\\f"}));
    EXPECT_EQ(arguments("a\\x20b \\101"), (Words{"a b", "A"}));
    EXPECT_EQ(arguments("'a\tb'"), (Words{"a\tb"}));
    EXPECT_EQ(arguments("a 'b c"), (Words{"a", "b c"}));
    EXPECT_EQ(arguments("a\\"), (Words{"a\\"}));
}

TEST(CommandLineText, ContinuesLines) {
    EXPECT_EQ(arguments("one \\\n  two\\\nthree \\\n"), (Words{"one", "twothree"}));
    EXPECT_EQ(arguments("\\\n"), Words{});
}

TEST(CommandLineText, IsRefusedWhereItIsNull) {
    int count = 99;
    char** vector = nullptr;
    EXPECT_EQ(ParseCommandLineIntoArgV(nullptr, &count, &vector), -6705);
    EXPECT_EQ(count, 99);
    EXPECT_EQ(vector, nullptr);
}

TEST(CommandLineText, EndsAnArgumentAtAnEscapedNul) {
    EXPECT_EQ(arguments("a\\x00b c"), (Words{"a", "c"}));
}

TEST(CommandLineText, HoldsAnyNumberOfArguments) {
    for (const std::size_t count : {1u, 14u, 15u, 16u, 17u, 31u, 32u, 33u, 1000u}) {
        std::string text;
        Words words;
        for (std::size_t i = 0; i < count; ++i) {
            words.push_back(std::to_string(i));
            text += words.back() + " ";
        }
        EXPECT_EQ(arguments(text), words);
    }
}

TEST(CommandLineText, IsReleasedWhateverBecameOfThePointers) {
    int count = 0;
    char** vector = nullptr;
    ASSERT_EQ(ParseCommandLineIntoArgV("a b c", &count, &vector), kStatusOK);
    std::reverse(vector, vector + count);
    vector[2][0] = 'z';
    vector[1] = nullptr;
    FreeCommandLineArgV(vector);
    FreeCommandLineArgV(nullptr);
}

// Memory that ends after `gLeft` allocations.
int gLeft = 0;
std::multiset<void*> gHeld;

void* reallocateScarcely(void* old, std::size_t size) {
    if (gLeft == 0) return nullptr;
    --gLeft;
    if (old != nullptr) gHeld.erase(gHeld.find(old));
    void* const memory = std::realloc(old, size);
    gHeld.insert(memory);
    return memory;
}

void releaseScarcely(void* memory) {
    gHeld.erase(gHeld.find(memory));
    std::free(memory);
}

HalvaneStatus parseScarcely(const std::string& text, int* count, char*** vector) {
    const ScopedHeap heap(heapOf<reallocateScarcely>(releaseScarcely));
    return ParseCommandLineIntoArgV(text.c_str(), count, vector);
}

// The text, 16 pointers and the one to the text, then twice as many.
TEST(CommandLineText, IsReleasedWhenMemoryEnds) {
    const std::string text = "a b c d e f g h i j k l m n o p";
    for (int left = 0; left < 3; ++left) {
        gLeft = left;
        int count = 99;
        char** vector = nullptr;
        EXPECT_EQ(parseScarcely(text, &count, &vector), kStatusNoMemory);
        EXPECT_EQ(count, 99);
        EXPECT_EQ(vector, nullptr);
        EXPECT_TRUE(gHeld.empty()) << left;
    }
    gLeft = 3;
    int count = 0;
    char** vector = nullptr;
    EXPECT_EQ(parseScarcely(text, &count, &vector), kStatusOK);
    EXPECT_EQ(count, 16);
    EXPECT_EQ(gLeft, 0);
    EXPECT_EQ(gHeld.size(), 2u);
    gHeld.clear();
    FreeCommandLineArgV(vector);
}

}  // namespace
