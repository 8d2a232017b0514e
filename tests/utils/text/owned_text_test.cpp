#include "halvane/utils/text/owned_text.h"

#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>

namespace {

// The address sanitizer detects memory that is not freed, or freed twice.
TEST(OwnedText, ListsAreFreedWithAllTheyHold) {
    StringList* strings = nullptr;
    NameValueList* values = nullptr;
    for (int i = 0; i < 100'000; ++i) {
        auto* const string = static_cast<StringList*>(std::malloc(sizeof(StringList)));
        *string = {strings, i % 3 == 0 ? nullptr : strdup("text")};
        strings = string;
        auto* const value = static_cast<NameValueList*>(std::malloc(sizeof(NameValueList)));
        *value = {values, strdup("name"), i % 3 == 0 ? nullptr : strdup("value")};
        values = value;
    }
    StringListFree(strings);
    NameValueListFree(values);
    StringListFree(nullptr);
    NameValueListFree(nullptr);
}

TEST(OwnedText, IsReplacedByADifferentText) {
    char* text = nullptr;
    EXPECT_EQ(ReplaceDifferentString(&text, "one"), 1);
    EXPECT_STREQ(text, "one");
    char* const before = text;
    EXPECT_EQ(ReplaceDifferentString(&text, "one"), 0);
    EXPECT_EQ(text, before);
    EXPECT_EQ(ReplaceDifferentString(&text, text), 0);
    EXPECT_EQ(text, before);
    EXPECT_EQ(ReplaceDifferentString(&text, "two"), 1);
    EXPECT_STREQ(text, "two");
    EXPECT_EQ(ReplaceDifferentString(&text, ""), 1);
    EXPECT_STREQ(text, "");
    EXPECT_EQ(ReplaceDifferentString(&text, nullptr), 1);
    EXPECT_EQ(text, nullptr);
    EXPECT_EQ(ReplaceDifferentString(&text, nullptr), 0);
    EXPECT_EQ(text, nullptr);
}

TEST(OwnedText, IsReplacedByAPartOfItself) {
    char* text = strdup("name.txt");
    EXPECT_EQ(ReplaceDifferentString(&text, text + 4), 1);
    EXPECT_STREQ(text, ".txt");
    std::free(text);
}

}  // namespace
