#include "tools/halvane/options/security_check.h"

#include <gtest/gtest.h>
#include <string>

using namespace halvane;
using namespace halvane::tool;

namespace {

ConfigOptions optionsOf(const char* security, const char* keys, bool hasPassphrase) {
    ConfigOptions options;
    options.needsPassphrase = hasPassphrase;
    EXPECT_TRUE(options.configuration.setSecurityWithOptionString_error(security));
    EXPECT_TRUE(options.configuration.setKeyManagementWithOptionString_error(keys));
    return options;
}

TEST(UnprotectedBy, NamesAPassphraseThatNothingUses) {
    for (const char* security : {"Open", ""}) {
        const auto problem = unprotectedBy(optionsOf(security, "", true));
        ASSERT_TRUE(problem) << security;
        EXPECT_EQ(problem->message,
                  "--passphrase without a word of --security makes an open network");
        EXPECT_NE(problem->hint.find("--force"), std::string::npos);
    }
    for (const char* security : {"WEP", "WPA", "WPA2", "WPA,WPA2", "WPS"}) {
        EXPECT_FALSE(unprotectedBy(optionsOf(security, "PSK", true))) << security;
    }
}

TEST(UnprotectedBy, NamesAPreSharedKeyWithoutAPassphrase) {
    for (const char* security : {"WPA", "WPA2", "WPA,WPA2"}) {
        for (const char* keys : {"PSK", "", "PSK,802.1X"}) {
            const auto problem = unprotectedBy(optionsOf(security, keys, false));
            ASSERT_TRUE(problem) << security << keys;
            EXPECT_EQ(problem->message,
                      "a network of WPA or WPA2 with a pre-shared key needs --passphrase");
        }
    }
    EXPECT_FALSE(unprotectedBy(optionsOf("WPA2", "802.1X", false)));
    EXPECT_FALSE(unprotectedBy(optionsOf("WPA2,WPS", "PSK", false)));
    EXPECT_FALSE(unprotectedBy(optionsOf("Open", "", false)));
    EXPECT_FALSE(unprotectedBy(optionsOf("WEP", "", false)));
}

}  // namespace
