#include "tools/halvane/report/source_hash.h"

#include <gtest/gtest.h>

#include "tools/halvane/report/report_assets.h"

using namespace halvane::tool;

namespace {

// FIPS 180-4, the example of one block: SHA-256 of "abc".
TEST(SourceHash, IsThatOfTheStandard) {
    EXPECT_EQ(sourceHash("abc"), "sha256-ungWv48Bz+pBQUDeXa4iI7ADYaOWF3qctBD/YfIAFa0=");
    EXPECT_EQ(sourceHash(""), "sha256-47DEQpj8HBSa+/TImW+5JCeuQeRkm5NMpJWZG3hSuFU=");
}

TEST(ReportAssets, EndNoElementAndLoadNothing) {
    for (const auto asset : {reportStyle(), reportScript()}) {
        EXPECT_GT(asset.size(), 4000u);
        for (const char* const bad : {"</", "<!--", "url(", "@import", "http:", "https:", "eval(",
                                      "innerHTML", "document.write"}) {
            EXPECT_EQ(asset.find(bad), asset.npos) << bad;
        }
    }
}

}  // namespace
