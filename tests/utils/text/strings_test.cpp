#include "halvane/utils/strings.h"

#include <cstdlib>
#include <gtest/gtest.h>

extern "C" int firstFailingLineOfStringsFromC(void);

namespace {

TEST(StringsFromC, EveryFunctionWorks) {
    EXPECT_EQ(firstFailingLineOfStringsFromC(), 0);
}

// The C library's functions come with the header, and are the C library's.
TEST(Strings, BringTheFunctionsOfTheCLibrary) {
    const char text[] = "abca";
    EXPECT_EQ(strnlen(text, 2), 2u);
    EXPECT_EQ(memrchr(text, 'a', 4), text + 3);
    char* const copy = strndup(text, 2);
    EXPECT_STREQ(copy, "ab");
    free(copy);
}

}  // namespace
