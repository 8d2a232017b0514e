#include "tools/halvane/options/decode_options.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/mac_address.h"

#include "tests/support/tool_command_line.h"

using namespace halvane::tool;
using halvane::MacAddress;
using halvane::testing::ToolOptions;

namespace {

using Words = std::vector<std::string>;

DecodeOptions optionsOf(Words words) {
    return ToolOptions<DecodeOptions>(decodeOptions(), takeDecodeOptions, std::move(words))
        .options();
}

std::string errorOf(Words words) {
    return ToolOptions<DecodeOptions>(decodeOptions(), takeDecodeOptions, std::move(words)).error();
}

TEST(DecodeOptions, DefaultToATableOfNetworks) {
    const auto options = optionsOf({"a.pcap"});
    EXPECT_EQ(options.files, std::vector<std::string>{"a.pcap"});
    EXPECT_EQ(options.format, Format::Table);
    EXPECT_FALSE(options.isPerFrame || options.isHex || options.isExplained);
    EXPECT_TRUE(options.list.filter.isEmpty());
    EXPECT_FALSE(options.capabilities);
    EXPECT_GE(options.jobs, 1u);
}

TEST(DecodeOptions, ShowWhatIsNoListAsText) {
    EXPECT_EQ(optionsOf({"--per-frame", "a"}).format, Format::Text);
    EXPECT_EQ(optionsOf({"--hex", "a"}).format, Format::Text);
    EXPECT_EQ(optionsOf({"--explain", "a"}).format, Format::Text);
}

TEST(DecodeOptions, NameEveryFormat) {
    EXPECT_EQ(optionsOf({"--format=table", "a"}).format, Format::Table);
    EXPECT_EQ(optionsOf({"--format=csv", "a"}).format, Format::CSV);
    EXPECT_EQ(optionsOf({"--format=text", "a"}).format, Format::Text);
    EXPECT_EQ(optionsOf({"--format=json", "a"}).format, Format::JSON);
    EXPECT_EQ(optionsOf({"--format", "jsonl", "a"}).format, Format::JSONLines);
    EXPECT_EQ(optionsOf({"--format=plist", "a"}).format, Format::PropertyList);
}

TEST(DecodeOptions, MayStandAfterTheFiles) {
    const auto options = optionsOf({"a", "--per-frame", "b", "--ssid=x", "--", "--c", "-"});
    EXPECT_EQ(options.files, (std::vector<std::string>{"a", "b", "--c", "-"}));
    EXPECT_TRUE(options.isPerFrame);
    EXPECT_FALSE(options.list.filter.isEmpty());
}

TEST(DecodeOptions, ReadAnAddressInEitherCase) {
    const MacAddress address({0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E});
    EXPECT_EQ(optionsOf({"--bssid=02:1A:2b:3C:4d:5E", "a"}).list.bssid, address);
    EXPECT_EQ(optionsOf({"--bssid=021a2b3c4d5e", "a"}).list.bssid, address);
}

TEST(DecodeOptions, ReadACapabilityField) {
    EXPECT_EQ(optionsOf({"--hex", "--capabilities=0x0411", "a"}).capabilities, 0x0411);
    EXPECT_EQ(optionsOf({"--hex", "--capabilities=65535", "a"}).capabilities, 65535);
    EXPECT_TRUE(optionsOf({"--hex", "a"}).isHex);
}

TEST(DecodeOptions, AreForgottenOnceTaken) {
    optionsOf({"--hex", "--capabilities=1", "--ssid=x", "--bssid=021a2b3c4d5e", "a"});
    const auto options = optionsOf({"b"});
    EXPECT_FALSE(options.isPerFrame || options.isHex || options.list.bssid);
    EXPECT_TRUE(options.list.filter.isEmpty());
    EXPECT_FALSE(options.capabilities);
}

TEST(DecodeOptions, MayBeTakenBack) {
    const auto options = optionsOf({"--per-frame", "--no-per-frame", "--ssid=x", "--no-ssid",
                                    "--format=json", "--no-format", "a"});
    EXPECT_FALSE(options.isPerFrame);
    EXPECT_TRUE(options.list.filter.isEmpty());
    EXPECT_EQ(options.format, Format::Table);
}

TEST(DecodeOptions, AreRefusedWithWhatIsWrong) {
    EXPECT_EQ(errorOf({}), "no file to decode ('-' is standard input)");
    EXPECT_EQ(errorOf({"--format=xml", "a"}),
              "--format: 'xml' is not table, text, json, jsonl, csv or plist");
    EXPECT_EQ(errorOf({"--bssid=02:1a", "a"}),
              "--bssid: '02:1a' is not an address of six octets (02:1a:2b:3c:4d:5e), with or "
              "without a mask (/24)");
    EXPECT_EQ(errorOf({"--hex", "--capabilities=0x10000", "a"}),
              "--capabilities: '0x10000' is not a 16-bit number (0x0411)");
    for (const char* value : {"--capabilities=", "--capabilities=-1", "--capabilities=0x",
                              "--capabilities=12a", "--bssid=", "--bssid=02:1a:2b:3c:4d:5e:6f"}) {
        EXPECT_NE(errorOf({"--hex", value, "a"}), "") << value;
    }
    EXPECT_EQ(errorOf({"--bogus", "a"}), "error: unknown option 'bogus'.\n");
    EXPECT_EQ(errorOf({"-xy", "a"}), "error: unknown option 'x'.\n");
    EXPECT_EQ(errorOf({"a", "-y"}), "error: unknown option 'y'.\n");
    EXPECT_EQ(errorOf({"--per-frame=3", "a"}), "error: option 'per-frame' doesn't take a value.\n");
    EXPECT_EQ(errorOf({"-", "-"}), "'-' can be read once only");
    EXPECT_EQ(errorOf({"--capabilities=1", "a"}), "--capabilities is for --hex");
    EXPECT_EQ(errorOf({"a", "--ssid"}), "error: option 'ssid' requires a value.\n");
    EXPECT_EQ(errorOf({"--hex", "a", "b"}), "--hex takes one file");
    EXPECT_EQ(errorOf({"--hex", "--per-frame", "a"}), "--hex and --per-frame do not go together");
    EXPECT_EQ(errorOf({"--jobs=0", "a"}), "--jobs: '0' is not a number from 1 to 1024");
    EXPECT_EQ(errorOf({"--per-frame", "--format=csv", "a"}),
              "--per-frame goes with --format=text, json, jsonl or plist");
    EXPECT_EQ(errorOf({"--hex", "--format=table", "a"}),
              "--hex goes with --format=text, json, jsonl or plist");
}

TEST(DecodeOptions, ShowTheTableOrAreRefused) {
    const std::pair<const char*, const char*> options[] = {
        {"--group=ssid", "--group"}, {"--columns=ssid", "--columns"}, {"--limit=3", "--limit"},
        {"--sort=ssid", "--sort"},   {"--reverse", "--reverse"},
    };
    for (const auto& [typed, name] : options) {
        const std::string beside = std::string(" and ") + name + " do not go together";
        EXPECT_EQ(errorOf({"--per-frame", typed, "a"}), "--per-frame" + beside);
        EXPECT_EQ(errorOf({"--hex", typed, "a"}), "--hex" + beside);
        EXPECT_EQ(errorOf({"--findings", typed, "a"}), "--findings" + beside);
        EXPECT_EQ(errorOf({"--findings", "--format=table", typed, "a"}), "") << "a filter";
    }
    for (const char* typed : {"--group=ssid", "--columns=ssid", "--limit=3"}) {
        EXPECT_NE(errorOf({"--explain", typed, "a"}), "") << typed;
        for (const char* format : {"text", "json", "jsonl", "plist"}) {
            EXPECT_NE(errorOf({std::string("--format=") + format, typed, "a"}), "") << typed;
        }
    }
    EXPECT_EQ(errorOf({"--format=csv", "--limit=3", "a"}),
              "--limit goes with --format=table alone");
    EXPECT_EQ(errorOf({"--format=json", "--columns=ssid", "a"}),
              "--columns goes with --format=table or csv");
    EXPECT_EQ(errorOf({"--format=csv", "--columns=ssid", "--sort=ssid", "a"}), "");
}

TEST(DecodeOptions, OrderAndFilterWhatIsExplained) {
    const auto options = optionsOf({"--explain", "--sort=ssid", "--reverse", "--findings", "a"});
    EXPECT_TRUE(options.list.isSorted && options.list.order.isReversed);
    EXPECT_FALSE(options.isFindingsList);
    EXPECT_FALSE(options.list.filter.isEmpty());
}

}  // namespace
