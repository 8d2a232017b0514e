#include "tools/halvane/decode_options.h"

#include <gtest/gtest.h>
#include <initializer_list>

using namespace halvane::tool;
using halvane::ByteBuffer;

namespace {

std::variant<DecodeOptions, HelpAsked, UsageError> parse(std::initializer_list<const char*> words) {
    std::vector<std::string> owned = {"decode"};
    owned.insert(owned.end(), words.begin(), words.end());
    std::vector<char*> arguments;
    for (std::string& word : owned) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    return parseDecodeOptions(static_cast<int>(owned.size()), arguments.data());
}

DecodeOptions optionsOf(std::initializer_list<const char*> words) {
    const auto parsed = parse(words);
    if (const auto* error = std::get_if<UsageError>(&parsed)) ADD_FAILURE() << error->message;
    const auto* options = std::get_if<DecodeOptions>(&parsed);
    return options != nullptr ? *options : DecodeOptions();
}

std::string errorOf(std::initializer_list<const char*> words) {
    const auto parsed = parse(words);
    const auto* error = std::get_if<UsageError>(&parsed);
    return error != nullptr ? error->message : "";
}

TEST(DecodeOptions, DefaultToTextOfFoldedRecords) {
    const auto options = optionsOf({"a.pcap"});
    EXPECT_EQ(options.files, std::vector<std::string>{"a.pcap"});
    EXPECT_EQ(options.format, Format::Text);
    EXPECT_FALSE(options.isPerFrame || options.isHex || options.bssid || options.ssid);
    EXPECT_FALSE(options.capabilities);
}

TEST(DecodeOptions, NameEveryFormat) {
    EXPECT_EQ(optionsOf({"--format=text", "a"}).format, Format::Text);
    EXPECT_EQ(optionsOf({"--format=json", "a"}).format, Format::JSON);
    EXPECT_EQ(optionsOf({"--format", "jsonl", "a"}).format, Format::JSONLines);
    EXPECT_EQ(optionsOf({"--format=plist", "a"}).format, Format::PropertyList);
}

TEST(DecodeOptions, MayStandAfterTheFiles) {
    const auto options = optionsOf({"a", "--per-frame", "b", "--ssid=x", "--", "--c", "-"});
    EXPECT_EQ(options.files, (std::vector<std::string>{"a", "b", "--c", "-"}));
    EXPECT_TRUE(options.isPerFrame);
    EXPECT_EQ(options.ssid, "x");
}

TEST(DecodeOptions, ReadAnAddressInEitherCase) {
    const ByteBuffer address = {0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E};
    EXPECT_EQ(optionsOf({"--bssid=02:1A:2b:3C:4d:5E", "a"}).bssid, address);
    EXPECT_EQ(optionsOf({"--bssid=021a2b3c4d5e", "a"}).bssid, address);
}

TEST(DecodeOptions, ReadACapabilityField) {
    EXPECT_EQ(optionsOf({"--hex", "--capabilities=0x0411", "a"}).capabilities, 0x0411);
    EXPECT_EQ(optionsOf({"--hex", "--capabilities=65535", "a"}).capabilities, 65535);
    EXPECT_TRUE(optionsOf({"--hex", "a"}).isHex);
}

TEST(DecodeOptions, AskForHelp) {
    EXPECT_TRUE(std::holds_alternative<HelpAsked>(parse({"--help"})));
    EXPECT_TRUE(std::holds_alternative<HelpAsked>(parse({"-h", "--format=bogus"})));
}

TEST(DecodeOptions, AreRefusedWithWhatIsWrong) {
    EXPECT_EQ(errorOf({}), "no file to decode ('-' is standard input)");
    EXPECT_EQ(errorOf({"--format=xml", "a"}), "--format: 'xml' is not text, json, jsonl or plist");
    EXPECT_EQ(errorOf({"--bssid=02:1a", "a"}),
              "--bssid: '02:1a' is not an address of six octets (02:1a:2b:3c:4d:5e)");
    EXPECT_EQ(errorOf({"--hex", "--capabilities=0x10000", "a"}),
              "--capabilities: '0x10000' is not a 16-bit number (0x0411)");
    for (const char* value : {"--capabilities=", "--capabilities=-1", "--capabilities=0x",
                              "--capabilities=12a", "--bssid=", "--bssid=02:1a:2b:3c:4d:5e:6f"}) {
        EXPECT_NE(errorOf({"--hex", value, "a"}), "") << value;
    }
    EXPECT_EQ(errorOf({"--bogus", "a"}), "unknown option '--bogus'");
    EXPECT_EQ(errorOf({"-xy", "a"}), "unknown option '-x'");
    EXPECT_EQ(errorOf({"a", "-y"}), "unknown option '-y'");
    EXPECT_EQ(errorOf({"--per-frame=3", "a"}), "--per-frame takes no value");
    EXPECT_EQ(errorOf({"-", "-"}), "'-' can be read once only");
    EXPECT_EQ(errorOf({"--capabilities=1", "a"}), "--capabilities is for --hex");
    EXPECT_EQ(errorOf({"a", "--ssid"}), "--ssid needs a value");
    EXPECT_EQ(errorOf({"--hex", "a", "b"}), "--hex takes one file");
    EXPECT_EQ(errorOf({"--hex", "--per-frame", "a"}), "--hex and --per-frame do not go together");
}

}  // namespace
