#include "tools/halvane/networks/filter_suggestion.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "tests/tools/networks/networks_for_tests.h"

using namespace halvane::testing;
using namespace halvane::tool;

namespace {

class FilterSuggestion : public ::testing::Test {
  protected:
    std::string suggested(const char* option, std::vector<std::string> values) {
        return filterSuggestion({.option = option, .values = std::move(values)}, networks_);
    }

    NetworkMaker maker_;
    std::vector<Network> networks_ = {maker_.make({"KITRI_BoB", 1}), maker_.make({"KITRI_BoB", 2}),
                                      maker_.make({"a\x1B[2Jname", 3}), maker_.make({"", 0xFF})};
};

TEST_F(FilterSuggestion, NamesTheNearestNameAndHowOftenItIsThere) {
    EXPECT_EQ(suggested("--ssid", {"kitri_bob"}), "did you mean 'KITRI_BoB' (2)?");
    EXPECT_EQ(suggested("--ssid", {"KITRI_BB*"}), "did you mean 'KITRI_BoB' (2)?");
    EXPECT_EQ(suggested("--ssid", {"nobody", "kitri"}), "did you mean 'KITRI_BoB' (2)?");
}

TEST_F(FilterSuggestion, ShowsNamesSafely) {
    EXPECT_EQ(suggested("--ssid", {"a\x1B[2Jnam"}), "did you mean 'a\\x1B[2Jname' (1)?");
}

TEST_F(FilterSuggestion, NamesTheNearestAddress) {
    EXPECT_EQ(suggested("--bssid", {"02-00-00-00-00-fe"}), "did you mean 02:00:00:00:00:FF?");
    EXPECT_EQ(suggested("--bssid", {"02:00:00:00:00:04"}), "") << "three are as near";
}

TEST_F(FilterSuggestion, IsEmptyWhereNothingIsNear) {
    EXPECT_EQ(suggested("--ssid", {"hotel lobby"}), "");
    EXPECT_EQ(suggested("--ssid", {"hidden"}), "");
    EXPECT_EQ(suggested("--ssid", {"*"}), "");
    EXPECT_EQ(suggested("--bssid", {"84:D8:1B:25:98:6A"}), "");
    EXPECT_EQ(suggested("--band", {"kitri_bob"}), "");
    networks_.clear();
    EXPECT_EQ(suggested("--ssid", {"kitri_bob"}), "");
}

}  // namespace
