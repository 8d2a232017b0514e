#include "tools/halvane/output/country_text.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <utility>

#include "halvane/air/country.h"

using namespace halvane;
using namespace halvane::tool;

namespace {

TEST(CountryText, TellsTheEnvironment) {
    const std::pair<int, const char*> rows[] = {
        {' ', "indoor and outdoor"},
        {'O', "outdoor"},
        {'I', "indoor"},
        {'X', "no country"},
        {1, "United States table (E-1)"},
        {2, "Europe table (E-2)"},
        {3, "Japan table (E-3)"},
        {4, "global table (E-4)"},
        {5, "China table (E-5)"},
        {0, "environment 0"},
        {6, "environment 6"},
        {255, "environment 255"},
    };
    for (const auto& [octet, text] : rows) {
        air::Country country;
        country.environmentOctet = static_cast<std::uint8_t>(octet);
        EXPECT_EQ(environmentText(country), text);
    }
}

}  // namespace
