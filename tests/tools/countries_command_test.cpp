// What the countries command keeps, and not, from one run to the next.
#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/support/captured_stream.h"
#include "tools/halvane/command.h"

using namespace halvane::tool;
using halvane::testing::CapturedStream;

namespace {

std::string outputOf(std::vector<std::string> words) {
    words.insert(words.begin(), "halvane");
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    CLIInit(static_cast<int>(arguments.size()), arguments.data());
    const CapturedStream output(stdout);
    EXPECT_EQ(CLIParse(gCountriesOptions, kCLIReorder), 0);
    EXPECT_EQ(countriesCommand(), kExitDone);
    CLIFree();
    return output.text();
}

TEST(CountriesCommand, ForgetsTheSKUOnceTaken) {
    EXPECT_EQ(outputOf({"--sku=japan"}),
              "ISO  Number  SKU     Name\n"
              "JP      392  Japan   Japan\n");
    const std::string all = outputOf({});
    EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 240);
}

}  // namespace
