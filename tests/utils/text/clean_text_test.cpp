#include "halvane/utils/text/clean_text.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/guarded_bytes.h"

namespace {

using halvane::testing::GuardedBytes;

using Cleanse = char* (*)(const char*, std::size_t, char*, std::size_t);

std::string cleansed(Cleanse cleanse, std::string_view text, std::size_t size) {
    GuardedBytes guarded(text);
    GuardedBytes buffer(size, 0xAA);
    EXPECT_EQ(cleanse(guarded.chars(), guarded.size(), buffer.chars(), size), buffer.chars());
    return buffer.chars();
}

TEST(CleanText, TellsPrintableAscii) {
    EXPECT_TRUE(IsASCII7PrintableString("abc ~", SIZE_MAX));
    EXPECT_TRUE(IsASCII7PrintableString("", SIZE_MAX));
    EXPECT_TRUE(IsASCII7PrintableString("ab\n", 2));
    EXPECT_FALSE(IsASCII7PrintableString("ab\n", 3));
    EXPECT_FALSE(IsASCII7PrintableString("a\0b", 3));
    EXPECT_FALSE(IsASCII7PrintableString("\xC3\xA9", SIZE_MAX));
    for (int code = 0; code < 256; ++code) {
        const char byte = static_cast<char>(code);
        EXPECT_EQ(IsASCII7PrintableString(&byte, 1), code >= 0x20 && code <= 0x7E) << code;
    }
    GuardedBytes guarded(std::string_view("abc"));
    EXPECT_TRUE(IsASCII7PrintableString(guarded.chars(), 3));
}

TEST(CleanText, TrimsBothEnds) {
    for (const Cleanse cleanse : {CleanseDiskString, CleanseHFSVolumeName}) {
        EXPECT_EQ(cleansed(cleanse, "  WD My Disk  ", 40), "WD My Disk");
        EXPECT_EQ(cleansed(cleanse, std::string_view("\0\x01 Disk\t\n\x7F \0", 12), 40), "Disk");
        EXPECT_EQ(cleansed(cleanse, "Disk", 40), "Disk");
        EXPECT_EQ(cleansed(cleanse, "", 40), "");
        EXPECT_EQ(cleansed(cleanse, " \t \x01", 40), "");
        EXPECT_EQ(cleansed(cleanse, "a  b", 40), "a  b");
    }
}

TEST(CleanText, ShowsUnprintableCharactersWithinAsCarets) {
    for (const Cleanse cleanse : {CleanseDiskString, CleanseHFSVolumeName}) {
        EXPECT_EQ(cleansed(cleanse,
                           std::string_view("a\tb\0c\x7F"
                                            "d",
                                            7),
                           40),
                  "a^b^c^d");
    }
    EXPECT_EQ(cleansed(CleanseDiskString, "a\xC3\xA9z", 40), "a^^z");
    EXPECT_EQ(cleansed(CleanseHFSVolumeName, "a\xC3\xA9z", 40), "a\xC3\xA9z");
}

TEST(CleanText, TrimsUtf8FromDiskStringsOnly) {
    EXPECT_EQ(cleansed(CleanseDiskString, "\xC3\xA9 Caf\xC3\xA9 ", 40), "Caf");
    EXPECT_EQ(cleansed(CleanseHFSVolumeName, "\xC3\xA9 Caf\xC3\xA9 ", 40), "\xC3\xA9 Caf\xC3\xA9");
}

TEST(CleanText, IsCutToTheBuffer) {
    EXPECT_EQ(cleansed(CleanseDiskString, " Disk ", 3), "Di");
    EXPECT_EQ(cleansed(CleanseDiskString, " Disk ", 5), "Disk");
    EXPECT_EQ(cleansed(CleanseDiskString, " Disk ", 1), "");
    EXPECT_EQ(cleansed(CleanseHFSVolumeName, "Caf\xC3\xA9", 6), "Caf\xC3\xA9");
    EXPECT_EQ(cleansed(CleanseHFSVolumeName, "Caf\xC3\xA9", 5), "Caf");
    EXPECT_EQ(cleansed(CleanseHFSVolumeName, "Caf\xC3\xA9", 1), "");
    for (const Cleanse cleanse : {CleanseDiskString, CleanseHFSVolumeName}) {
        GuardedBytes nothing(0);
        EXPECT_EQ(cleanse("Disk", 4, nothing.chars(), 0), nothing.chars());
    }
}

TEST(CleanText, WorksInPlaceAndOnTerminatedText) {
    for (const Cleanse cleanse : {CleanseDiskString, CleanseHFSVolumeName}) {
        char text[] = "  a\tb ";
        EXPECT_EQ(cleanse(text, SIZE_MAX, text, sizeof(text)), text);
        EXPECT_STREQ(text, "a^b");
    }
}

}  // namespace
