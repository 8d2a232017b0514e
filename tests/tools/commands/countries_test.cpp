// What the countries command stores between runs, and what it does not store.
#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/tool_command_line.h"
#include "tools/halvane/commands/command.h"

using namespace halvane::tool;

namespace {

std::string outputOf(std::vector<std::string> words) {
    return halvane::testing::outputOf(gCountriesOptions, countriesCommand, std::move(words));
}

TEST(CountriesCommand, ForgetsTheSKUOnceTaken) {
    EXPECT_EQ(outputOf({"--sku=japan"}),
              "ISO  Number  SKU     Name\n"
              "JP      392  Japan   Japan\n");
    const std::string all = outputOf({});
    EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 240);
}

}  // namespace
