#include "tools/halvane/report/in_short.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/tools/report/report_for_tests.h"

using namespace halvane;
using namespace halvane::tool;
using halvane::testing::derived;
using halvane::testing::ownNamed;
using halvane::testing::ParsedPart;
using halvane::testing::ReportMaker;
using halvane::testing::textOf;
using halvane::testing::written;

namespace {

std::vector<std::string> sentencesOf(const ReportData& data) {
    const ParsedPart part(written(writeInShort, data));
    EXPECT_TRUE(part.isWellFormed());
    std::vector<std::string> sentences;
    for (const auto& item : part.all("//li")) sentences.push_back(textOf(item));
    return sentences;
}

TEST(InShort, SaysNothingWithoutARule) {
    ReportMaker maker;
    maker.add({.name = "x", .signal = -40});
    EXPECT_TRUE(sentencesOf(maker.data()).empty());
    EXPECT_TRUE(sentencesOf(ReportMaker().data()).empty());
}

TEST(InShort, TellsOfTheOwnNetwork) {
    ReportMaker maker;
    maker.add({.name = "mine", .lastOctet = 0x10, .band = air::Band::Ghz5, .channel = 36});
    maker.add({.name = "mine", .lastOctet = 0x20, .channel = 1});
    maker.add({.name = "other", .lastOctet = 0x30});
    const auto sentences = sentencesOf(maker.data(ownNamed("mine")));
    ASSERT_EQ(sentences.size(), 1u);
    EXPECT_EQ(sentences[0],
              "Your network: 1 name on 2 addresses of 2 radios, on 2.4 GHz and 5 GHz; "
              "WPA2-Personal.");
    EXPECT_EQ(sentencesOf(maker.data(ownNamed("absent"))).at(0), "Your network was not heard.");
}

TEST(InShort, TellsOfCrowdedChannels) {
    ReportMaker maker;
    for (std::uint8_t i = 1; i <= 4; ++i) {
        maker.add({.name = i == 4 ? "other" : "mine",
                   .lastOctet = static_cast<std::uint8_t>(i << 4),
                   .band = air::Band::Ghz5,
                   .channel = 40});
    }
    EXPECT_EQ(sentencesOf(maker.data(ownNamed("mine"))).at(1),
              "3 of your radios share the 80 MHz of channels 36 to 48 (4 radios in all), while "
              "channels 52 to 64 hold 0.");
}

TEST(InShort, TellsOfAnOwnRadioThatOthersCrowd) {
    ReportMaker maker;
    for (std::uint8_t i = 1; i <= 4; ++i) {
        maker.add({.name = i == 1 ? "mine" : "other",
                   .lastOctet = static_cast<std::uint8_t>(i << 4),
                   .band = air::Band::Ghz2,
                   .channel = i});
    }
    EXPECT_EQ(sentencesOf(maker.data(ownNamed("mine"))).at(1),
              "1 of your radios shares channels 1 to 3 (3 radios in all), while channels 9 to 13 "
              "hold 0.");
    for (const std::string& sentence : sentencesOf(maker.data(ownNamed("absent")))) {
        EXPECT_EQ(sentence.find("while channels"), std::string::npos) << sentence;
    }
}

TEST(InShort, TellsOfLoadChannelsAndSecurity) {
    ReportMaker maker;
    using air::Security;
    maker.add({.name = "busy", .lastOctet = 0x10, .channel = 3}).profile.load =
        derived<air::BssLoadProfile>({.utilization = 204});
    maker.add({.name = "calm", .lastOctet = 0x20, .security = Security::Open}).profile.load =
        derived<air::BssLoadProfile>({.utilization = 101});
    maker.add({.name = "new", .lastOctet = 0x30, .security = Security::Wpa2Wpa3Personal});
    EXPECT_EQ(sentencesOf(maker.data()),
              (std::vector<std::string>{
                  "The highest load: busy finds its channel busy 80\u00A0% of the time.",
                  "On 2.4 GHz, 1 of 3 networks uses a channel other than 1, 6 or 11, and 0 take "
                  "40 MHz.",
                  "1 network has no encryption, or one that is broken.",
                  "1 network uses WPA3, 1 of them beside WPA2."}));
}

TEST(InShort, TellsOfRadarAndDamage) {
    ReportMaker maker;
    maker.add({.name = "x", .lastOctet = 1, .band = air::Band::Ghz5, .channel = 52}, 5260, 20);
    SurveyedCapture capture;
    capture.summary.frames = 100;
    capture.cutFrames = 2;
    maker.captures = {capture};
    maker.files = {"a.pcap"};
    EXPECT_EQ(sentencesOf(maker.data()),
              (std::vector<std::string>{
                  "1 radio uses channels that have to be left when radar appears.",
                  "2 of 100 frames are damaged: the capturing radio heard badly."}));
}

TEST(InShort, TellsOfNamesWithDifferingSecurity) {
    ReportMaker maker;
    maker.add({.name = "mine", .lastOctet = 0x10});
    maker.add({.name = "mine", .lastOctet = 0x20, .security = air::Security::WpaWpa2Personal});
    EXPECT_EQ(sentencesOf(maker.data(ownNamed("mine"))).back(),
              "Your name mine is offered with 2 kinds of security: WPA/WPA2-Personal and "
              "WPA2-Personal.");
}

}  // namespace
