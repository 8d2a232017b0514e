#include "halvane/base/error.h"

#include <gtest/gtest.h>
#include <limits>

using halvane::Error;

namespace {

TEST(Error, EqualsInDomainAndCode) {
    const Error error{"org.example.ErrorDomain", -6705};
    EXPECT_EQ(error, (Error{"org.example.ErrorDomain", -6705}));
    EXPECT_NE(error, (Error{"org.example.ErrorDomain", -6710}));
    EXPECT_NE(error, (Error{"org.example", -6705}));
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
