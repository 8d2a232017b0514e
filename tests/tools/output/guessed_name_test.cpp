#include "tools/halvane/output/guessed_name.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>

#include "halvane/base/utf8_internal.h"

using halvane::tool::nameInGB18030;

namespace {

TEST(GuessedName, IsReadAsGB18030) {
    if (!nameInGB18030("\xB2\xE2")) GTEST_SKIP() << "the system does not know GB18030";
    EXPECT_EQ(nameInGB18030("\xB2\xE2\xCA\xD4"), "\u6D4B\u8BD5");
    EXPECT_EQ(nameInGB18030("AP 1 \xB2\xE2 5G"), "AP 1 \u6D4B 5G");
}

TEST(GuessedName, IsAbsentForUTF8) {
    EXPECT_EQ(nameInGB18030("plain"), std::nullopt);
    EXPECT_EQ(nameInGB18030(""), std::nullopt);
    EXPECT_EQ(nameInGB18030("\u6D4B\u8BD5"), std::nullopt);
}

// "\xE9\x74" is a rare character of GB18030, but most likely a French word in ISO 8859-1.
TEST(GuessedName, IsAbsentWhereItIsUnlikely) {
    for (const char* const name : {"\xE9t\xE9", "Caf\xE9", "\xB2", "\xB2\xE2\xCA", "\x80\x80",
                                   "\xFF\xFF", "\xB2\xE2\x1B[m", "\xB2\xE2\n"}) {
        EXPECT_EQ(nameInGB18030(name), std::nullopt) << name;
    }
}

TEST(GuessedName, IsOneCharacterForTwoOctetsOrNone) {
    for (int first = 0x80; first < 0x100; ++first) {
        for (int second = 0; second < 0x100; ++second) {
            const std::string name = {static_cast<char>(first), static_cast<char>(second)};
            const std::string text = nameInGB18030(name).value_or("");
            if (text.empty()) continue;
            const auto character = halvane::firstUtf8Character(text);
            ASSERT_TRUE(character);
            EXPECT_EQ(character->size, text.size()) << first << ' ' << second;
        }
    }
}

}  // namespace
