#include "halvane/utils/text/split.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <optional>
#include <ostream>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/utils/text/quoted_text.h"

#include "tests/support/guarded_bytes.h"

namespace {

using halvane::testing::GuardedBytes;
using Words = std::vector<std::string>;

// Returns the pieces into which `read` (text, end, length, next) cuts a text.
template <typename Read>
Words pieces(std::string_view text, Read read) {
    GuardedBytes guarded(text);
    const char* const end = guarded.chars() + guarded.size();
    const char* next = nullptr;
    std::size_t length = 0;
    Words words;
    for (const char* at = guarded.chars(); read(at, end, &length, &next); at = next) {
        words.emplace_back(at, length);
    }
    return words;
}

Words lines(std::string_view text) {
    return pieces(text, ParseLine);
}

Words separated(std::string_view text, const char* separators) {
    return pieces(text,
                  [=](const char* at, const char* end, std::size_t* length, const char** next) {
                      return TextSep(at, end, separators, length, next);
                  });
}

TEST(TextSplit, ReadsLinesOfEachKind) {
    EXPECT_EQ(lines(""), Words{});
    EXPECT_EQ(lines("one"), Words{"one"});
    EXPECT_EQ(lines("one\n"), Words{"one"});
    EXPECT_EQ(lines("one\ntwo\r\nthree\rfour"), (Words{"one", "two", "three", "four"}));
    EXPECT_EQ(lines("\n\n"), (Words{"", ""}));
    EXPECT_EQ(lines("\r\n\r\n"), (Words{"", ""}));
    EXPECT_EQ(lines("a\n\rb"), (Words{"a", "", "b"}));
    EXPECT_EQ(lines("a\r"), Words{"a"});
    EXPECT_EQ(lines(" a \n b "), (Words{" a ", " b "}));
    EXPECT_EQ(lines(std::string_view("a\0b\nc", 5)), (Words{std::string("a\0b", 3), "c"}));
}

TEST(TextSplit, ReadsPiecesBetweenSeparators) {
    EXPECT_EQ(separated("", ","), Words{});
    EXPECT_EQ(separated("one", ","), Words{"one"});
    EXPECT_EQ(separated("one,two", ","), (Words{"one", "two"}));
    EXPECT_EQ(separated("one,two,", ","), (Words{"one", "two"}));
    EXPECT_EQ(separated("one,,two", ","), (Words{"one", "", "two"}));
    EXPECT_EQ(separated(",", ","), Words{""});
    EXPECT_EQ(separated(" one , two ", ","), (Words{" one ", " two "}));
    EXPECT_EQ(separated("a,b;c d", ";, "), (Words{"a", "b", "c", "d"}));
    EXPECT_EQ(separated("a,b", ""), Words{"a,b"});
    EXPECT_EQ(separated("a\xFF"
                        "b\xFE",
                        "\xFF"),
              (Words{"a", "b\xFE"}));
    EXPECT_EQ(separated(std::string_view("a\0b,c", 5), ","), (Words{std::string("a\0b", 3), "c"}));
}

TEST(TextSplit, WritesNothingAtTheEnd) {
    const char* next = nullptr;
    std::size_t length = 99;
    EXPECT_FALSE(ParseLine("", "", &length, &next));
    EXPECT_FALSE(TextSep("", "", ",", &length, &next));
    const char* name = nullptr;
    EXPECT_FALSE(ParseCommaSeparatedNameValuePair("", "", &name, &length, &name, &length, &next));
    EXPECT_EQ(length, 99u);
    EXPECT_EQ(next, nullptr);
    EXPECT_EQ(name, nullptr);
}

TEST(TextSplit, TakesNullForResultsNotWanted) {
    const std::string text = "a=b,c";
    const char* const end = text.data() + text.size();
    EXPECT_TRUE(ParseLine(text.data(), end, nullptr, nullptr));
    EXPECT_TRUE(TextSep(text.data(), end, ",", nullptr, nullptr));
    EXPECT_TRUE(ParseCommaSeparatedNameValuePair(text.data(), end, nullptr, nullptr, nullptr,
                                                 nullptr, nullptr));
}

struct Pair {
    std::string name;
    std::optional<std::string> value;

    bool operator==(const Pair&) const = default;
    friend std::ostream& operator<<(std::ostream& out, const Pair& pair) {
        return out << pair.name << " = " << pair.value.value_or("(none)");
    }
};

std::vector<Pair> pairs(std::string_view text) {
    GuardedBytes guarded(text);
    const char* at = guarded.chars();
    const char* const end = at + guarded.size();
    const char* name = nullptr;
    const char* value = nullptr;
    std::size_t nameLength = 99;
    std::size_t valueLength = 99;
    std::vector<Pair> found;
    while (
        ParseCommaSeparatedNameValuePair(at, end, &name, &nameLength, &value, &valueLength, &at)) {
        found.push_back({{name, nameLength}, std::nullopt});
        if (value != nullptr) {
            found.back().value = std::string(value, valueLength);
        } else {
            EXPECT_EQ(valueLength, 0u);
        }
    }
    return found;
}

TEST(TextSplit, ReadsNamesAndValues) {
    using Pairs = std::vector<Pair>;
    EXPECT_EQ(pairs(""), Pairs{});
    EXPECT_EQ(pairs(" \t\n"), Pairs{});
    EXPECT_EQ(pairs("a=1"), (Pairs{{"a", "1"}}));
    EXPECT_EQ(pairs("a=1,flag,b="), (Pairs{{"a", "1"}, {"flag", {}}, {"b", ""}}));
    EXPECT_EQ(pairs("a=1=2"), (Pairs{{"a", "1=2"}}));
    EXPECT_EQ(pairs("=1"), (Pairs{{"", "1"}}));
    EXPECT_EQ(pairs("a=1, b=2 , c"), (Pairs{{"a", "1"}, {"b", "2 "}, {"c", {}}}));
    EXPECT_EQ(pairs("a,,b"), (Pairs{{"a", {}}, {"", {}}, {"b", {}}}));
    EXPECT_EQ(pairs("a,"), (Pairs{{"a", {}}}));
    EXPECT_EQ(pairs("a, "), (Pairs{{"a", {}}}));
    EXPECT_EQ(pairs("a=b\\,c,d"), (Pairs{{"a", "b\\,c"}, {"d", {}}}));
    EXPECT_EQ(pairs("a\\=b=c"), (Pairs{{"a\\=b", "c"}}));
    EXPECT_EQ(pairs("a=b\\\\,c"), (Pairs{{"a", "b\\\\"}, {"c", {}}}));
    EXPECT_EQ(pairs("a=b\\"), (Pairs{{"a", "b\\"}}));
    EXPECT_EQ(pairs("a\\"), (Pairs{{"a\\", {}}}));
    EXPECT_EQ(pairs("\\,=x"), (Pairs{{"\\,", "x"}}));
}

TEST(TextSplit, LeavesBackslashesToParseEscapedString) {
    const auto item = pairs("a=b\\,c").at(0);
    char text[8];
    std::size_t copied = 0;
    ASSERT_TRUE(ParseEscapedString(item.value->data(), item.value->data() + item.value->size(),
                                   '\0', text, sizeof(text), &copied, nullptr, nullptr));
    EXPECT_EQ(std::string(text, copied), "b,c");
}

Words split(std::string_view text, const char* separators) {
    GuardedBytes guarded(text);
    StringList* list = nullptr;
    EXPECT_EQ(SplitText(guarded.chars(), guarded.size(), separators, &list), kStatusOK);
    Words words;
    for (const StringList* node = list; node != nullptr; node = node->next) {
        words.emplace_back(node->text);
    }
    StringListFree(list);
    return words;
}

TEST(TextSplit, ListsThePiecesOfAText) {
    EXPECT_EQ(split("one,two;three", ",;"), (Words{"one", "two", "three"}));
    EXPECT_EQ(split("one,,two,", ","), (Words{"one", "", "two"}));
    EXPECT_EQ(split("", ","), Words{});
    EXPECT_EQ(split("a b", ""), Words{"a b"});
    EXPECT_EQ(split(std::string_view("a\0b,c", 5), ","), (Words{"a", "c"}));
    StringList* list = nullptr;
    EXPECT_EQ(SplitText("a,b", SIZE_MAX, ",", &list), kStatusOK);
    EXPECT_STREQ(list->next->text, "b");
    EXPECT_EQ(list->next->next, nullptr);
    StringListFree(list);
}

TEST(TextSplit, OfManyPiecesNeedsNoRecursion) {
    EXPECT_EQ(split(std::string(500'000, ','), ",").size(), 500'000u);
}

// Joined with commas, the pieces equal the text, except for a comma at the end.
TEST(TextSplit, LosesNothing) {
    std::mt19937 random(9);
    for (int i = 0; i < 5000; ++i) {
        std::string text(random() % 12, ' ');
        for (char& byte : text) byte = "a,"[random() % 2];
        std::string joined;
        for (const auto& piece : separated(text, ",")) joined += piece + ",";
        if (!text.ends_with(',') && !joined.empty()) joined.pop_back();
        ASSERT_EQ(joined, text);
        ASSERT_EQ(split(text, ","), separated(text, ","));
    }
}

// The function looks at each byte once. If it searched for the carriage return of each line, it
// would read the rest each time.
TEST(TextSplit, ReadsAMillionShortLines) {
    std::string text;
    for (int i = 0; i < 1'000'000; ++i) text += "a\n";
    EXPECT_EQ(lines(text).size(), 1'000'000u);
}

}  // namespace
