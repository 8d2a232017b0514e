#include "halvane/utils/text/mime_type.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace {

TEST(MIMEType, HasAnExtension) {
    const std::vector<std::pair<const char*, const char*>> rows = {
        {"audio/mpeg", "mp3"},  {"audio/x-aiff", "aiff"}, {"audio/x-m4a", "m4a"},
        {"audio/x-m4p", "m4p"}, {"audio/x-wav", "wav"},   {"image/bmp", "bmp"},
        {"image/gif", "gif"},   {"image/jp2", "jp2"},     {"image/jpeg", "jpg"},
        {"image/none", ""},     {"image/pict", "pict"},   {"image/png", "png"},
        {"image/tiff", "tiff"}, {"video/mp4", "mp4"},     {"video/quicktime", "mov"},
        {"video/x-m4v", "m4v"}, {"IMAGE/JPEG", "jpg"},    {"Audio/X-m4A", "m4a"},
    };
    for (const auto& [type, extension] : rows) {
        EXPECT_STREQ(MIMETypeToExtension(type), extension) << type;
    }
}

TEST(MIMEType, HasNoneWhereItIsNotKnown) {
    for (const char* type :
         {"", "a", "audio", "audio/", "audio/mpe", "audio/mpegx", "image/jpeg;q=1", " image/png",
          "text/plain", "video/x-m4w", "zzz", "\xFF"}) {
        EXPECT_STREQ(MIMETypeToExtension(type), "") << type;
    }
}

TEST(FileExtension, StandsBehindTheLastDot) {
    const char* const name = "archive.tar.gz";
    EXPECT_EQ(GetFileExtensionFromString(name), name + 12);
    EXPECT_STREQ(GetFileExtensionFromString("a.txt"), "txt");
    EXPECT_STREQ(GetFileExtensionFromString("a."), "");
    EXPECT_STREQ(GetFileExtensionFromString(".profile"), "profile");
    EXPECT_STREQ(GetFileExtensionFromString(""), "");
    const char* const without = "README";
    EXPECT_EQ(GetFileExtensionFromString(without), without + 6);
}

}  // namespace
