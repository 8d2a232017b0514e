// What the channels command keeps, and not, from one run to the next.
#include <gtest/gtest.h>
#include <string>

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
    EXPECT_EQ(CLIParse(gChannelsOptions, kCLIReorder), 0);
    EXPECT_EQ(channelsCommand(), kExitDone);
    CLIFree();
    return output.text();
}

TEST(ChannelsCommand, ForgetsTheFormatOnceTaken) {
    EXPECT_EQ(outputOf({"--format=jsonl", "14"}),
              "{\"channelNumber\":14,\"channelFrequency\":2484}\n");
    EXPECT_EQ(outputOf({"14"}),
              "Channel  Frequency  Extension\n"
              "     14   2484 MHz          -\n");
}

}  // namespace
