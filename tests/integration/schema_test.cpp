// The JSON of every command, and the schemas that describe it, with another validator as the judge.
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/support/bus_caller.h"
#include "tests/support/run_program.h"
#include "tests/support/run_tool.h"
#include "tests/support/running_program.h"
#include "tests/support/scoped_environment.h"
#include "tests/support/sim_process.h"
#include "tests/support/temporary_folder.h"

using halvane::testing::BusCaller;
using halvane::testing::expectMessage;
using halvane::testing::ProgramResult;
using halvane::testing::RunningProgram;
using halvane::testing::runProgram;
using halvane::testing::runTool;
using halvane::testing::ScopedEnvironment;
using halvane::testing::SimProcess;
using halvane::testing::TemporaryFolder;
using halvane::testing::toolWords;
using nlohmann::json;

namespace {

using Words = std::vector<std::string>;

const std::filesystem::path kSamples = HALVANE_SAMPLES;
constexpr const char* kValidator = HALVANE_VALIDATE_JSON;
constexpr int kNoValidator = 3;

std::string sample(const char* name) {
    return (kSamples / name).string();
}

Words listedCommands() {
    Words commands;
    std::istringstream list(runTool({"schema"}).output);
    for (std::string line; std::getline(list, line);) commands.push_back(line);
    return commands;
}

// Schemas and documents as files.
class Schemas : public ::testing::Test {
  protected:
    void SetUp() override {
        if (validated("skus", {}).status == kNoValidator) {
            GTEST_SKIP() << "no validator of JSON schemas (Debian: python3-jsonschema)";
        }
    }

    std::string write(const std::string& name, const std::string& text) {
        const auto path = (folder_.path() / name).string();
        std::ofstream(path, std::ios::binary) << text;
        return path;
    }

    ProgramResult validated(const std::string& command, const std::string& document,
                            bool isLines = false) {
        Words words = {kValidator};
        if (isLines) words.emplace_back("--lines");
        words.push_back(write(command + ".schema.json", runTool({"schema", command}).output));
        if (!document.empty()) words.push_back(write("document", document));
        return runProgram(words);
    }

    void expectValid(const std::string& command, const std::string& document,
                     bool isLines = false) {
        EXPECT_NE(document, "") << command;
        const auto result = validated(command, document, isLines);
        EXPECT_EQ(result.status, 0) << command << ": " << result.output << result.errors;
    }

    // Of one command, for one process of the validator.
    struct Documents {
        Words json{};
        Words lines{};
    };

    // Keeps what the command prints in both formats.
    void keepOutput(const Words& words, Documents& kept, std::string_view input = {}) {
        for (const bool isLines : {false, true}) {
            Words all = words;
            all.emplace_back(isLines ? "--format=jsonl" : "--format=json");
            const std::string output = runTool(all, input).output;
            EXPECT_NE(output, "") << words[0];
            Words& paths = isLines ? kept.lines : kept.json;
            // The validator names a document by its file.
            const auto last = std::filesystem::path(words.back()).filename().string();
            paths.push_back(write(std::to_string(written_++) + '-' + last, output));
        }
    }

    void expectValid(const std::string& command, const Documents& kept) {
        for (const bool isLines : {false, true}) {
            Words words = {kValidator};
            if (isLines) words.emplace_back("--lines");
            words.push_back(write(command + ".schema.json", runTool({"schema", command}).output));
            const Words& paths = isLines ? kept.lines : kept.json;
            words.insert(words.end(), paths.begin(), paths.end());
            const auto result = runProgram(words);
            EXPECT_EQ(result.status, 0) << command << ": " << result.output << result.errors;
        }
    }

    // Runs the command in both formats.
    void expectValidOutput(const Words& words, std::string_view input = {}) {
        for (const bool isLines : {false, true}) {
            Words all = words;
            all.emplace_back(isLines ? "--format=jsonl" : "--format=json");
            expectValid(words[0], runTool(all, input).output, isLines);
        }
    }

    void expectRefused(const std::string& command, const json& document) {
        const auto result = validated(command, document.dump());
        EXPECT_EQ(result.status, 1) << command << ": " << result.errors;
    }

  private:
    const TemporaryFolder folder_;
    int written_ = 0;
};

TEST_F(Schemas, AreSchemas) {
    const Words commands = listedCommands();
    EXPECT_EQ(commands.size(), 15u);
    for (const std::string& command : commands) {
        const auto result = validated(command, "");
        EXPECT_EQ(result.status, 0) << command << ": " << result.errors;
    }
}

TEST_F(Schemas, DescribeWhatDecodePrintsOfEverySample) {
    Documents kept;
    for (const auto& entry : std::filesystem::directory_iterator(kSamples)) {
        if (!entry.path().extension().string().starts_with(".pcap")) continue;
        keepOutput({"decode", entry.path().string()}, kept);
        keepOutput({"decode", "--per-frame", entry.path().string()}, kept);
    }
    EXPECT_GE(kept.json.size(), 12u);
    keepOutput({"decode", "--hex", "-"}, kept, "0004 686f6d65 010182 09");
    keepOutput({"decode", "--hex", "--bssid=02:1a:2b:3c:4d:5e", "-"}, kept, "00");
    const auto none =
        runTool({"decode", "--format=json", "--ssid=nobody", sample("neighbourhood.pcap")});
    kept.json.push_back(write("none", none.output));
    expectValid("decode", kept);
}

TEST_F(Schemas, DescribeMakers) {
    const TemporaryFolder folder;
    std::ofstream(folder.path() / "oui.txt")
        << "00-00-5E   (hex)\t\tExample Registry\n00005E     (base 16)\t\tExample Registry\n";
    const ScopedEnvironment makers("HALVANE_IEEE_DATA", folder.path().string());
    const Words words = {"decode", "--hex", "--bssid=00:00:5e:00:53:01", "-"};
    expectValidOutput(words, "0004686f6d65");
    Words lines = words;
    lines.emplace_back("--format=jsonl");
    EXPECT_EQ(json::parse(runTool(lines, "0004686f6d65").output).at("maker"), "Example Registry");
}

std::string twoDigits(std::size_t octet) {
    char digits[3];
    std::snprintf(digits, sizeof(digits), "%02x", static_cast<unsigned>(octet & 0xFF));
    return digits;
}

// The octets of an element that `decode` lists, as hexadecimal digits.
std::string octetsOf(const json& element) {
    const auto body = element.at("bytes").get<std::string>();
    if (!element.contains("id")) return body;
    const bool isExtended = element.contains("extension");
    return twoDigits(element.at("id").get<std::size_t>()) +
           twoDigits(body.size() / 2 + (isExtended ? 1 : 0)) +
           (isExtended ? twoDigits(element.at("extension").get<std::size_t>()) : "") + body;
}

TEST_F(Schemas, DescribeWhatElementsPrintsOfTheSamples) {
    for (const char* const name : {"today.pcap", "multi-link.pcap", "shared-beacon.pcap"}) {
        std::string whole;
        const auto records = json::parse(runTool({"decode", "--format=json", sample(name)}).output);
        for (const json& record : records) {
            for (const json& element : record.at("elements")) whole += octetsOf(element);
        }
        expectValidOutput({"elements", "-"}, whole);
    }
    expectValidOutput({"elements", "0004686f6d65 3003 0100"});
    expectValidOutput({"elements", "0004686f"});
}

TEST_F(Schemas, DescribeWhatTheOtherCommandsPrint) {
    for (const Words& words : {Words{"channels"},
                               {"channels", "--band=all", "--width=all"},
                               {"channels", "--class=all"},
                               {"channels", "--class=131"},
                               {"channels", "--psc"},
                               {"skus"},
                               {"countries"},
                               {"country", "jp"},
                               {"config"}}) {
        expectValidOutput(words);
    }
    expectValidOutput({"config", "--ssid=home", "--security=WPA2", "--unicast=CCMP",
                       "--key-management=PSK", "--passphrase", "--key", "--channel=11"},
                      "correct horse\n");
}

TEST_F(Schemas, DescribeWhatTheDaemonsCommandsPrint) {
    const TemporaryFolder folder;
    const ScopedEnvironment temporary("TMPDIR", folder.path().string());
    SimProcess sim;
    const ScopedEnvironment address("DBUS_SYSTEM_BUS_ADDRESS", sim.address());
    BusCaller bus(sim.address());
    RunningProgram monitor(toolWords({"monitor", "--format=jsonl"}));
    monitor.errorLine();  // it has asked for notifications
    bus.control("start wlan0");
    std::string events = monitor.outputLine();
    events += monitor.outputLine();
    expectValid("monitor", events, true);
    EXPECT_EQ(monitor.stop(SIGTERM), 0);
    for (const Words& words :
         {Words{"devices"}, {"interfaces"}, {"channel-list", "wlan0"}, {"configs"}, {"clients"}}) {
        expectValidOutput(words);
    }
}

TEST_F(Schemas, RefuseOtherDocuments) {
    const json records =
        json::parse(runTool({"decode", "--format=json", sample("setup.pcap")}).output);
    ASSERT_EQ(validated("decode", records.dump()).status, 0);
    const auto changed = [&](const auto& change) {
        json document = records;
        change(document[0]);
        return document;
    };
    expectRefused("decode", changed([](json& record) { record["other"] = 1; }));
    expectRefused("decode", changed([](json& record) { record.erase("frames"); }));
    expectRefused("decode", changed([](json& record) { record["channel"] = "3"; }));
    expectRefused("decode", changed([](json& record) { record["SSIDHex"] = "4C"; }));
    expectRefused("decode", changed([](json& record) { record["mac"] = "021A00000001"; }));
    expectRefused("decode", changed([](json& record) { record["air"]["other"] = 1; }));
    expectRefused("decode",
                  changed([](json& record) { record["wpsIE"]["tlvs"]["version"] = "1"; }));
    expectRefused("decode", json::object());
    expectRefused("country", json::array());
}

TEST(Schema, OfACommandWithoutJSONIsRefused) {
    expectMessage(runTool({"schema", "pin"}), 2,
                  "halvane: schema: no JSON of 'pin' ('halvane schema' lists what has)\n");
    expectMessage(runTool({"schema", "decode", "pin"}), 2, "halvane: schema: takes one command\n");
}

}  // namespace
