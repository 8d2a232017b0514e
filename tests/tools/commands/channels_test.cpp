// What the channels command stores between runs, and what it does not store.
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/tool_command_line.h"
#include "tools/halvane/commands/command.h"

using namespace halvane::tool;

namespace {

std::string outputOf(std::vector<std::string> words) {
    return halvane::testing::outputOf(gChannelsOptions, channelsCommand, std::move(words));
}

TEST(ChannelsCommand, ForgetsTheFormatOnceTaken) {
    EXPECT_EQ(outputOf({"--format=jsonl", "14"}),
              "{\"channelNumber\":14,\"channelFrequency\":2484}\n");
    EXPECT_EQ(outputOf({"14"}),
              "Channel  Frequency  Extension\n"
              "     14   2484 MHz          -\n");
}

}  // namespace
