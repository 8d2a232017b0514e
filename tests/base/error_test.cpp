#include "halvane/base/error.h"

#include <gtest/gtest.h>
#include <limits>
#include <set>
#include <sstream>
#include <string>
#include <string_view>

using halvane::Error;
using halvane::ErrorDomain;

namespace {

TEST(Error, EqualsInDomainAndCode) {
    const Error error{"org.example.ErrorDomain", -6705};
    EXPECT_EQ(error, (Error{"org.example.ErrorDomain", -6705}));
    EXPECT_NE(error, (Error{"org.example.ErrorDomain", -6710}));
    EXPECT_NE(error, (Error{"org.example", -6705}));
}

// Programs use the text of a domain in these ways.
TEST(ErrorDomain, StandsForItsText) {
    const Error constant{ErrorDomain::constant("org.example"), 5};
    const Error own{std::string("org.example"), 5};
    for (const Error& error : {constant, own}) {
        const std::string text = error.domain;
        EXPECT_EQ(text, "org.example");
        EXPECT_EQ("<" + error.domain + ">", "<org.example>");
        EXPECT_EQ(error.domain + std::string(".x") + error.domain, "org.example.xorg.example");
        EXPECT_EQ(error.domain + error.domain, "org.exampleorg.example");
        EXPECT_EQ(std::string_view("a ") + error.domain, "a org.example");
        EXPECT_LT(error.domain, ErrorDomain("org.f"));
        EXPECT_LT("org", error.domain);
        EXPECT_EQ(error.domain, text);
        EXPECT_EQ("org.example", error.domain);
        EXPECT_EQ((std::ostringstream() << error.domain).str(), text);
        EXPECT_EQ((std::set<std::string>{error.domain}.count(error.domain)), 1u);
    }
}

TEST(Error, HoldsAnySignedCode) {
    EXPECT_EQ(Error().code, 0);
    EXPECT_EQ(Error().domain, "");
    for (const auto code :
         {std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()}) {
        EXPECT_EQ((Error{"", code}).code, code);
    }
}

}  // namespace
