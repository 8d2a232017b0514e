// The tool as its users run it.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <nlohmann/json.hpp>
#include <pugixml.hpp>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/support/golden_file.h"
#include "tests/support/run_program.h"
#include "tests/support/run_tool.h"
#include "tests/support/sanitizers.h"
#include "tests/support/temporary_folder.h"

using halvane::testing::contentsOf;
using halvane::testing::expectGolden;
using halvane::testing::ProgramResult;
using halvane::testing::runProgram;
using halvane::testing::runTool;
using halvane::testing::TemporaryFolder;
using nlohmann::json;

namespace {

const std::string kTool = HALVANE_TOOL;
const std::filesystem::path kSamples = HALVANE_SAMPLES;
const std::filesystem::path kGolden = HALVANE_GOLDEN;
const std::filesystem::path kCaptures = HALVANE_CAPTURES;

std::string sample(const char* name) {
    return (kSamples / name).string();
}

ProgramResult decode(std::vector<std::string> words, std::string_view input = {}) {
    words.insert(words.begin(), "decode");
    return runTool(std::move(words), input);
}

std::vector<json> linesOf(const std::string& text) {
    std::vector<json> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(json::parse(line));
    return lines;
}

// The samples' addresses differ in their last octet.
json recordOf(const json& records, const std::string& lastOctet) {
    for (const json& record : records) {
        if (record["mac"] == "02:1A:00:00:00:" + lastOctet) return record;
    }
    ADD_FAILURE() << "no record of " << lastOctet;
    return json::object();
}

// Expects "halvane: NAME: ..." on standard error.
void expectComplaint(const ProgramResult& result, const std::string& name,
                     const std::string& what) {
    EXPECT_EQ(result.status, 1) << name;
    EXPECT_NE(result.errors.find("halvane: " + name + ": "), std::string::npos) << result.errors;
    EXPECT_NE(result.errors.find(what), std::string::npos) << result.errors;
}

TEST(Decode, PrintsARecordForEachBSSID) {
    const auto result = decode({"--format=json", sample("neighbourhood.pcap")});
    EXPECT_EQ(result.status, 0);
    const json records = json::parse(result.output);
    ASSERT_EQ(records.size(), 8u);
    const json hub = recordOf(records, "01");
    EXPECT_EQ(hub["SSID"], "Maple Street 12");
    EXPECT_EQ(hub["SSIDHex"], "4d61706c6520537472656574203132");
    EXPECT_EQ(hub["channel"], 6);
    EXPECT_EQ(hub["channelWidth"], 40);
    EXPECT_EQ(hub["securityFriendlyName"], "WPA Personal");
    EXPECT_EQ(hub["rsn"]["allowKeyManagementPSK"], true);
    EXPECT_EQ(hub["countryIE"]["countryCode"].get<std::string>().substr(0, 4), "4445");
    EXPECT_FALSE(hub.contains("frame"));
    EXPECT_FALSE(hub.contains("invalidIEs"));
    EXPECT_EQ(recordOf(records, "02")["securityFriendlyName"], "Open");
    EXPECT_EQ(recordOf(records, "03")["securityFriendlyName"], "WPA Enterprise");
    EXPECT_EQ(recordOf(records, "04")["securityFriendlyName"], "WEP");
    EXPECT_EQ(recordOf(records, "07")["securityFriendlyName"], "WPS");
    EXPECT_EQ(result.errors,
              "8 networks: 6 on 2.4 GHz, 2 on 5 GHz\n"
              "1 error, 10 warnings, 16 notes (--findings)\n"
              "12 frames in 1.1 s: 9 beacons, 1 probe response, 2 others\n");
}

TEST(Decode, RevealsAHiddenSSIDByFolding) {
    const auto folded =
        decode({"--format=jsonl", "--ssid=Quiet Room", sample("neighbourhood.pcap")});
    ASSERT_EQ(linesOf(folded.output).size(), 1u);
    EXPECT_EQ(linesOf(folded.output)[0]["mac"], "02:1A:00:00:00:06");

    const auto frames = linesOf(decode({"--format=jsonl", "--per-frame", "--bssid=021a00000006",
                                        sample("neighbourhood.pcap")})
                                    .output);
    ASSERT_EQ(frames.size(), 2u);
    EXPECT_EQ(frames[0]["subtype"], "beacon");
    EXPECT_FALSE(frames[0].contains("SSID"));
    EXPECT_EQ(frames[1]["subtype"], "probe-response");
    EXPECT_EQ(frames[1]["SSID"], "Quiet Room");
    EXPECT_LT(frames[0]["frame"], frames[1]["frame"]);
}

TEST(Decode, PutsFrameAndSubtypeFirst) {
    const auto result = decode({"--format=jsonl", "--per-frame", sample("neighbourhood.pcap")});
    EXPECT_EQ(linesOf(result.output).size(), 10u);
    EXPECT_EQ(result.output.substr(0, 42), R"({"frame":1,"subtype":"beacon","mac":"02:1A)");
}

TEST(Decode, PrintsTheSameRecordsInEveryFormat) {
    const auto path = sample("neighbourhood.pcap");
    const json document = json::parse(decode({"--format=json", path}).output);
    EXPECT_EQ(json(linesOf(decode({"--format=jsonl", path}).output)), document);

    const auto text = decode({"--format=text", path}).output;
    std::size_t position = 0;
    for (const json& record : document) {
        const auto line = "MAC                  : " + record["mac"].get<std::string>() + "\n";
        position = text.find(line, position);
        ASSERT_NE(position, std::string::npos) << line;
    }

    pugi::xml_document plist;
    ASSERT_TRUE(plist.load_string(decode({"--format=plist", path}).output.c_str()));
    const auto array = plist.child("plist").child("array");
    EXPECT_EQ(std::distance(array.begin(), array.end()), 8);
    EXPECT_STREQ(array.first_child().child("key").child_value(), "MAC");
}

TEST(Decode, EscapesAnSSIDThatIsNotText) {
    const auto records = linesOf(decode({"--format=jsonl", sample("elements.pcap")}).output);
    ASSERT_EQ(records.size(), 9u);
    for (const json& record : records) {
        if (!record.contains("SSID")) continue;
        for (const char character : record["SSID"].get<std::string>()) EXPECT_NE(character, '\x1b');
    }
    const auto printed = records[2]["SSID"].get<std::string>();
    EXPECT_NE(printed.find("\\x"), std::string::npos) << printed;
    // The tool accepts the SSID in the form that it prints.
    const auto again =
        linesOf(decode({"--format=jsonl", "--ssid=" + printed, sample("elements.pcap")}).output);
    ASSERT_EQ(again.size(), 1u);
    EXPECT_EQ(again[0]["mac"], records[2]["mac"]);
}

TEST(Decode, ShowsWhatFormsNoElement) {
    const auto records = linesOf(decode({"--format=jsonl", sample("elements.pcap")}).output);
    EXPECT_TRUE(records[5].contains("invalidIEs"));
    EXPECT_EQ(records[6]["invalidIEs"].get<std::string>().size(), 2u);
    EXPECT_FALSE(records[7].contains("supportedRates"));
    EXPECT_FALSE(records[7].contains("maxPHYRate"));
}

TEST(Decode, ShowsTheMakersElements) {
    const auto records = linesOf(decode({"--format=jsonl", sample("elements.pcap")}).output);
    const json& tessic = records[0]["tessicIE"];
    EXPECT_EQ(tessic["isValid"], true);
    EXPECT_EQ(tessic["isSAWCapable"], true);
    EXPECT_NE(tessic["TessicProductName"], "Unknown");
    EXPECT_EQ(records[0]["dwdsIE"]["DWDSRole"], "Master");
    EXPECT_EQ(records[1]["tessicIE"]["isValid"], false);
    EXPECT_EQ(records[1]["dwdsIE"]["isAMPDUFullSupportOverDWDS"], false);
}

TEST(Decode, ShowsSetupAttributesUnderTheirNames) {
    const auto records = linesOf(decode({"--format=jsonl", sample("setup.pcap")}).output);
    bool hasDevices = false;
    for (const json& record : records) {
        const json& tlvs = record["wpsIE"]["tlvs"];
        EXPECT_EQ(tlvs["version"], record["mac"] == "02:1A:00:00:00:03" ? 2.5 : 1.0);
        if (!tlvs.contains("deviceTypes") || tlvs["deviceTypes"].size() != 3) continue;
        hasDevices = true;
        EXPECT_EQ(tlvs["deviceTypes"][0]["companyName"], "Wi-Fi Alliance");
        EXPECT_TRUE(tlvs["deviceTypes"][0].contains("categoryID"));
        EXPECT_FALSE(tlvs.contains("vendorExtensions"));
        EXPECT_TRUE(tlvs.contains("authenticationTypeFlags"));
    }
    EXPECT_TRUE(hasDevices);
}

// The text of a file that this version may not change. HALVANE_UPDATE_GOLDEN=1 only makes it where
// it is missing.
void expectOldGolden(const std::string& text, const std::filesystem::path& path) {
    if (!std::filesystem::exists(path)) return expectGolden(text, path);
    EXPECT_EQ(text, contentsOf(path)) << path;
}

// The output for every sample, with every key and value, is kept in files, so that it stays as
// programs read it. To change it on purpose, write the tool's output there. NAME.jsonl holds what a
// record starts with, and NAME.air.jsonl the sections that follow it.
TEST(Decode, PrintsTheSamplesAsEverBefore) {
    const std::string joint = ",\"air\":";
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(kSamples)) {
        const std::string name = entry.path().filename().string();
        if (!entry.path().extension().string().starts_with(".pcap")) continue;
        ++count;
        const auto output = decode({"--format=jsonl", "--per-frame", sample(name.c_str())}).output;
        std::istringstream lines(output);
        std::string records;
        std::string sections;
        for (std::string line; std::getline(lines, line);) {
            const auto end = line.find(joint);
            ASSERT_NE(end, std::string::npos) << line;
            records += line.substr(0, end) + "}\n";
            sections += "{" + line.substr(end + 1) + "\n";
        }
        EXPECT_FALSE(records.empty()) << name;
        expectOldGolden(records, kGolden / (name + ".jsonl"));
        expectGolden(sections, kGolden / (name + ".air.jsonl"));
    }
    EXPECT_GE(count, 6);
}

TEST(Decode, HeadsTheTextOfAFrameWithWhereItComesFrom) {
    const auto text = decode({"--per-frame", sample("neighbourhood.pcap")}).output;
    EXPECT_EQ(text.substr(0, 50), "Frame                : 1 (beacon)\nMAC             ");
    EXPECT_NE(text.find(" (probe-response)\nMAC  "), std::string::npos);
}

#if !HALVANE_IS_SANITIZED
// A sanitizer holds freed memory back, so this cannot be measured under one.
TEST(Decode, NeedsNoMoreMemoryForALongerFile) {
    const TemporaryFolder folder;
    const auto whole = contentsOf(sample("neighbourhood.pcap"));
    constexpr std::size_t kFileHeader = 24;
    const auto repeated = [&](const char* name, int times) {
        const auto path = (folder.path() / name).string();
        std::ofstream file(path, std::ios::binary);
        file << whole.substr(0, kFileHeader);
        for (int i = 0; i < times; ++i) file << whole.substr(kFileHeader);
        return path;
    };
    const auto peakOf = [](const std::string& path) {
        const auto result = runProgram({"/bin/sh", "-c", "exec \"$0\" \"$@\" >/dev/null", kTool,
                                        "decode", "--per-frame", "--format=jsonl", path});
        EXPECT_EQ(result.status, 0) << result.errors;
        return result.peakMemory;
    };
    const auto shortFile = peakOf(repeated("short.pcap", 10));
    const auto longFile = peakOf(repeated("long.pcap", 5000));  // 9 MB
    EXPECT_LT(longFile, shortFile + 2048);
}
#endif

TEST(Decode, CountsEveryFrame) {
    EXPECT_EQ(decode({sample("damaged.pcap")}).errors,
              "1 network: 1 on 2.4 GHz\n"
              "3 notes (--findings)\n"
              "12 frames in 1.1 s: 3 beacons, 1 probe response, 5 others, 3 damaged; 1 is cut\n");
}

TEST(Decode, ReadsStandardInput) {
    const auto path = sample("neighbourhood.pcap");
    const auto piped = decode({"--format=json", "-"}, contentsOf(path));
    EXPECT_EQ(piped.status, 0);
    EXPECT_EQ(piped.output, decode({"--format=json", path}).output);
}

TEST(Decode, FoldsOverSeveralFiles) {
    const auto once = decode({"--format=json", sample("neighbourhood.pcap")});
    const auto twice =
        decode({"--format=json", sample("neighbourhood.pcap"), sample("neighbourhood.pcap")});
    json records = json::parse(twice.output);
    const json onceRecords = json::parse(once.output);
    ASSERT_EQ(records.size(), onceRecords.size());
    for (std::size_t i = 0; i < records.size(); ++i) {
        EXPECT_EQ(records[i]["frames"], 2 * onceRecords[i]["frames"].get<int>());
        EXPECT_EQ(records[i]["signal"]["count"], 2 * onceRecords[i]["signal"]["count"].get<int>());
        for (const char* const counted : {"frames", "beacons", "probeResponses", "signal"}) {
            records[i][counted] = onceRecords[i][counted];
        }
    }
    EXPECT_EQ(records, onceRecords);
    EXPECT_NE(twice.errors.find("24 frames in 2.3 s: "), std::string::npos) << twice.errors;
}

TEST(DecodeHex, DecodesOneElementBuffer) {
    const auto result =
        decode({"--hex", "--format=json", "--bssid=02:1a:2b:3c:4d:5e", "--capabilities=0x11", "-"},
               "0004 686f6d65\n01 01 82\n09");
    expectComplaint(result, "standard input", "cut in an element");
    json records = json::parse(result.output);
    EXPECT_EQ(records.at(0).at("air").at("security"), "WEP");
    EXPECT_EQ(records.at(0).at("elements").size(), 3U);
    EXPECT_EQ(records.at(0).at("findings").at(0).at("id"), "wep");
    for (const char* const added : {"air", "elements", "findings"}) records.at(0).erase(added);
    EXPECT_EQ(records, (json::array({{{"mac", "02:1A:2B:3C:4D:5E"},
                                      {"SSID", "home"},
                                      {"SSIDHex", "686f6d65"},
                                      {"channelWidth", 20},
                                      {"capabilities", 17},
                                      {"supportedRates", {1}},
                                      {"maxPHYRate", 1},
                                      {"securityFriendlyName", "WEP"},
                                      {"invalidIEs", "09"}}})));
    EXPECT_EQ(decode({"--hex", "-"}, "0004686f6d65").status, 0);
}

TEST(DecodeHex, RefusesWhatIsNoHexadecimalText) {
    const auto result = decode({"--hex", "--format=json", "-"}, "zz");
    expectComplaint(result, "standard input", "not hexadecimal text");
    EXPECT_EQ(result.output, "[]\n");
}

TEST(DecodeFailure, NamesTheFileAndWhatIsWrong) {
    const TemporaryFolder folder;
    const auto write = [&folder](const char* name, const std::string& text) {
        const auto path = (folder.path() / name).string();
        std::ofstream(path, std::ios::binary) << text;
        return path;
    };
    const auto missing = (folder.path() / "missing").string();
    expectComplaint(decode({missing}), missing, "No such file");
    expectComplaint(decode({folder.path().string()}), folder.path().string(), "no captures");
    const auto empty = write("empty", "");
    expectComplaint(decode({empty}), empty, "empty");
    const auto text = write("text", "This is no capture at all, only a line of text.\n");
    expectComplaint(decode({text}), text, "not a readable capture");
    // A pcap file header of link type 1.
    std::string ethernet("\xD4\xC3\xB2\xA1\x02\x00\x04\x00", 8);
    ethernet += std::string(8, '\0') + std::string("\xFF\xFF\x00\x00\x01\x00\x00\x00", 8);
    const auto wired = write("wired.pcap", ethernet);
    const auto foreign = decode({wired});
    EXPECT_EQ(foreign.status, 1);
    EXPECT_EQ(foreign.errors,
              "halvane: " + wired + ": holds Ethernet frames, no 802.11 (link type 1)\n" +
                  "  capture in monitor mode: sudo iw dev wlan1 set type monitor\n");
    EXPECT_EQ(decode({"--per-frame", wired}).errors, foreign.errors);
    EXPECT_EQ(decode({missing}).errors.find("no networks"), std::string::npos);
}

TEST(DecodeSummary, LeavesOutWhatIsZero) {
    const TemporaryFolder folder;
    const auto path = (folder.path() / "none.pcap").string();
    std::ofstream(path, std::ios::binary)
        << contentsOf(sample("neighbourhood.pcap")).substr(0, 24);  // the header alone
    const auto result = decode({path});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "no networks\n");
    EXPECT_EQ(decode({"--per-frame", path}).errors, "");
}

TEST(DecodeFailure, PrintsEverythingBeforeTheDamage) {
    const TemporaryFolder folder;
    const auto whole = contentsOf(sample("neighbourhood.pcap"));
    const auto all = decode({"--format=jsonl", "--per-frame", sample("neighbourhood.pcap")}).output;
    const auto path = (folder.path() / "cut.pcap").string();
    std::ofstream(path, std::ios::binary) << whole.substr(0, whole.size() - 5);
    const auto result = decode({"--format=jsonl", "--per-frame", path});
    expectComplaint(result, path, "ends in the middle of frame 12; 11 frames were read\n");
    EXPECT_FALSE(result.output.empty());
    EXPECT_EQ(all.substr(0, result.output.size()), result.output);
    EXPECT_NE(result.errors.find("\n11 frames: "), std::string::npos) << result.errors;

    // The tool still decodes the other files.
    const auto both = decode({"--format=json", path, sample("security.pcap")});
    EXPECT_EQ(both.status, 1);
    EXPECT_EQ(json::parse(both.output).size(), 9u);  // eight, and one that only the second has
}

TEST(DecodeFailure, TellsWhichFramesAreCutInAnElement) {
    const auto path = sample("elements.pcap");
    const auto result = decode({"--format=jsonl", path});
    expectComplaint(result, path, "2 frames are cut, the first is frame 6");
    EXPECT_EQ(linesOf(result.output).size(), 9u);
    EXPECT_EQ(decode({path}).status, 0) << "a table marks them";
    expectComplaint(decode({"--format=text", "--bssid=02-1a-00-00-00-07", path}), path,
                    "frame 7 is cut");
    EXPECT_EQ(decode({"--format=text", "--bssid=02-1a-00-00-00-01", path}).status, 0);
}

// --- Cut frames ---

// The capture as it is with a snapshot length of `most` octets. It has octets of little-endian
// order.
std::string cutCapture(const std::string& path, std::size_t most) {
    constexpr std::size_t kFileHeader = 24;
    constexpr std::size_t kHeader = 16;
    constexpr std::size_t kCaptured = 8;  // the place of the captured length
    const std::string whole = contentsOf(path);
    std::string cut = whole.substr(0, kFileHeader);
    for (std::size_t at = kFileHeader; at + kHeader <= whole.size();) {
        const auto octet = [&](std::size_t i) {
            return static_cast<std::size_t>(static_cast<unsigned char>(whole[at + kCaptured + i]));
        };
        const std::size_t length = octet(0) | octet(1) << 8;
        const std::size_t kept = std::min(length, most);
        std::string header = whole.substr(at, kHeader);
        header[kCaptured] = static_cast<char>(kept & 0xFF);
        header[kCaptured + 1] = static_cast<char>(kept >> 8);
        cut += header + whole.substr(at + kHeader, kept);
        at += kHeader + length;
    }
    return cut;
}

std::string bySecurity(const ProgramResult& result) {
    std::string text;
    for (const auto& record : json::parse(result.output)) {
        text += record.at("air").at("security").get<std::string>() + '\n';
    }
    return text;
}

TEST(DecodeCut, TakesNoWeaknessFromAShortCapture) {
    const TemporaryFolder folder;
    const std::string path = (folder.path() / "cut.pcap").string();
    for (const std::size_t most : {60u, 80u, 100u, 128u}) {
        std::ofstream(path, std::ios::binary) << cutCapture(sample("security.pcap"), most);
        const std::string findings = decode({"--findings", path}).output;
        EXPECT_EQ(findings.find("wep"), std::string::npos) << most << findings;
        EXPECT_EQ(findings.find("wpa-only"), std::string::npos) << most << findings;
    }
}

TEST(DecodeCut, PrefersWholeFramesInAnyOrder) {
    const TemporaryFolder folder;
    const std::string cut = (folder.path() / "cut.pcap").string();
    std::ofstream(cut, std::ios::binary) << cutCapture(sample("security.pcap"), 80);
    const std::string whole = sample("security.pcap");
    const std::string expected = bySecurity(decode({"--format=json", whole}));
    for (const char* jobs : {"--jobs=1", "--jobs=2"}) {
        EXPECT_EQ(bySecurity(decode({"--format=json", jobs, cut, whole})), expected) << jobs;
        EXPECT_EQ(bySecurity(decode({"--format=json", jobs, whole, cut})), expected) << jobs;
    }
}

TEST(DecodeNames, CountsNetworksWithoutANameAsHidden) {
    const auto path = sample("elements.pcap");
    const auto all = decode({"--columns=ssid,bssid,width,generation", path});
    EXPECT_NE(all.output.find("(no name)"), std::string::npos) << all.output;
    EXPECT_NE(all.errors.find("1 hidden"), std::string::npos) << all.errors;
    const auto hidden = decode({"--hidden", path});
    EXPECT_NE(hidden.output.find("(no name)"), std::string::npos) << hidden.errors;
}

// An element of 255 octets that goes on in a fragment is whole, and so is one of 254.
TEST(DecodeHex, TakesLongElementsForWhole) {
    const std::string full = "ffff" + std::string(2 * 255, '0') + "f20101";
    EXPECT_EQ(decode({"--hex", "--format=jsonl", "-"}, "0000" + full).status, 0);
    const std::string long254 = "ddfe" + std::string(2 * 254, '0');
    EXPECT_EQ(decode({"--hex", "--format=jsonl", "-"}, long254).status, 0);
    EXPECT_EQ(decode({"--hex", "--format=jsonl", "-"}, full + "0102").status, 1);
}

TEST(DecodeFailure, TellsAboutOutputThatIsLost) {
    const auto result = runProgram({"/bin/sh", "-c", "exec \"$0\" decode \"$1\" >/dev/full", kTool,
                                    sample("neighbourhood.pcap")});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.errors.find("standard output"), std::string::npos) << result.errors;
}

TEST(DecodeFailure, EscapesWhatCouldCommandATerminal) {
    const auto result = decode({"no\x1b[2Jsuch"});
    EXPECT_EQ(result.errors.substr(0, 42), "halvane: no\\x1B[2Jsuch: No such file or di");
    EXPECT_EQ(decode({""}).errors.substr(0, 23), "halvane: '': No such fi");
}

// Real captures, kept outside of the tree.
TEST(Captures, DecodeWithoutAComplaint) {
    if (!std::filesystem::exists(kCaptures)) GTEST_SKIP() << "no captures beside this tree";
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(kCaptures)) {
        const auto suffix = entry.path().extension();
        if (suffix != ".pcap" && suffix != ".pcapng" && suffix != ".cap") continue;
        ++count;
        const auto path = entry.path().string();
        const auto frames = decode({"--format=jsonl", "--per-frame", path});
        // One of them holds a beacon with bytes after its last element.
        const bool isCut = frames.errors.find(" cut") != std::string::npos;
        EXPECT_EQ(isCut, entry.path().filename() == "aircrack-ng-wpa.cap") << frames.errors;
        EXPECT_EQ(frames.status, isCut ? 1 : 0) << path << frames.errors;
        EXPECT_FALSE(linesOf(frames.output).empty()) << path;
        for (const char* format : {"text", "json", "plist"}) {
            const auto folded = decode({"--format=" + std::string(format), path});
            EXPECT_EQ(folded.status, frames.status) << path << folded.errors;
            EXPECT_FALSE(folded.output.empty()) << path;
        }
    }
    EXPECT_GT(count, 0u);
}

}  // namespace
