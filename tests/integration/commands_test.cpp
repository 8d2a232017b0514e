// The tool's command line, and its small commands, as their users run them.
#include <algorithm>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>
#include <nlohmann/json.hpp>
#include <pugixml.hpp>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/golden_file.h"
#include "tests/support/run_program.h"
#include "tests/support/run_tool.h"

using halvane::testing::expectGolden;
using halvane::testing::expectMessage;
using halvane::testing::runProgram;
using halvane::testing::runTool;
using nlohmann::json;

namespace {

using Words = std::vector<std::string>;

constexpr const char* kCommands[] = {
    "decode",  "report",     "scan",         "watch",   "elements",   "channels",
    "skus",    "countries",  "country",      "pin",     "psk",        "config",
    "devices", "interfaces", "channel-list", "configs", "clients",    "add",
    "remove",  "enable",     "disable",      "role",    "start",      "stop",
    "kick",    "logging",    "monitor",      "schema",  "completion", "help"};

// Expects status 2, no standard output, and a message.
void expectUsage(const Words& words, const std::string& message) {
    expectMessage(runTool(words), 2, message);
}

TEST(Usage, IsRefusedWithStatusTwoAndOneMessage) {
    expectUsage({"bogus"},
                "error: unknown command 'bogus'. See 'halvane help' for a list of commands.\n");
    expectUsage({"--bogus"}, "error: unknown option 'bogus'.\n");
    expectUsage({"help", "bogus"}, "error: unknown command 'bogus'.\n");
    expectUsage(
        {"decode"},
        "halvane: decode: no file to decode ('-' is standard input)\n"
        "  live: 'halvane scan' lists the networks around, 'halvane watch wlan1' follows\n");
    expectUsage({"decode", "--bogus", "x"}, "error: unknown option 'bogus'.\n");
    expectUsage({"decode", "x", "--bogus"}, "error: unknown option 'bogus'.\n");
    expectUsage({"decode", "--format=x", "x"},
                "halvane: decode: --format: 'x' is not table, text, json, jsonl, csv or plist\n");
    EXPECT_EQ(runTool({}).status, 2);
    EXPECT_EQ(runTool({}).errors, runTool({"--help"}).output);
    EXPECT_EQ(runTool({}).output, "");
}

TEST(Usage, PrintsHelpThatIsAskedForAsOutput) {
    const auto summary = runTool({"--help"});
    EXPECT_EQ(summary.status, 0);
    EXPECT_EQ(summary.errors, "");
    EXPECT_EQ(summary.output.substr(0, 16), "\nUsage: halvane ");
    EXPECT_EQ(runTool({"help"}).output, summary.output);
    EXPECT_EQ(runTool({"-h"}).output, summary.output);
    for (const char* command : kCommands) {
        const auto help = runTool({command, "--help"});
        EXPECT_EQ(help.status, 0);
        EXPECT_EQ(help.errors, "");
        EXPECT_EQ(help.output.find("\nNAME\n    halvane " + std::string(command) + " -- "), 0u);
        EXPECT_EQ(runTool({"help", command}).output, help.output);
        EXPECT_NE(summary.output.find("\n    " + std::string(command) + " "), std::string::npos);
    }
}

TEST(Usage, WarnsOfNothingBesideARequestForHelp) {
    const std::string logging = runTool({"logging", "--help"}).output;
    for (const Words& words : {Words{"logging", "set", "--help"},
                               {"logging", "set", "WiFi=a", "--help"},
                               {"logging", "--help", "set"}}) {
        const auto help = runTool(words);
        EXPECT_EQ(help.status, 0);
        EXPECT_EQ(help.errors, "");
        EXPECT_EQ(help.output, logging);
    }
}

TEST(Usage, SuggestsWhatMayBeMeant) {
    expectUsage({"decod", "walk.pcap"},
                "error: unknown command 'decod'. See 'halvane help' for a list of commands.\n"
                "Did you mean 'decode'?\n");
    expectUsage({"decode", "--bsid=84:D8:1B:25:98:6A", "walk.pcap"},
                "error: unknown option 'bsid=84:D8:1B:25:98:6A'.\n"
                "Did you mean '--bssid'?\n");
    expectUsage({"help", "decoed"}, "error: unknown command 'decoed'.\nDid you mean 'decode'?\n");
    expectUsage({"channels", "--band=2"},
                "halvane: channels: --band: '2' is not 2.4, 3.6, 4.9, 5, 5.9, 6, 60, s1g or all\n"
                "  did you mean --band=2.4?\n");
    expectUsage({"decode", "--band=2", "walk.pcap"},
                "halvane: decode: --band: '2' is not 2.4, 5 or 6\n"
                "  did you mean --band=2.4?\n");
    expectUsage({"config", "--security=WPA,WAP2"},
                "halvane: config: --security: 'WAP2' is not one of Open, WEP, WPA, WPA2, WPS\n"
                "  did you mean WPA2?\n");
    expectUsage({"config", "--export=hostap"},
                "halvane: config: --export: 'hostap' is not hostapd, iwd or networkmanager\n"
                "  did you mean --export=hostapd?\n");
    expectUsage({"channels", "--format=jsno"},
                "halvane: channels: --format: 'jsno' is not text, json, jsonl or plist\n"
                "  did you mean --format=json?\n");
    expectUsage({"schema", "decod"},
                "halvane: schema: no JSON of 'decod' ('halvane schema' lists what has)\n"
                "  did you mean decode?\n");
    expectUsage({"watch"},
                "halvane: watch: no interface to watch\n"
                "  name one in monitor mode: 'halvane watch wlan1'; 'halvane scan' needs none\n");
    expectUsage({"decode", "--min-signal=70", "x"},
                "halvane: decode: --min-signal: '70' is not a signal of dBm (-70)\n"
                "  did you mean --min-signal=-70?\n");
    expectMessage(runTool({"country", "germny"}), 1,
                  "halvane: country: no country 'germny' ('halvane countries' lists them)\n"
                  "  did you mean Germany?\n");
    expectMessage(runTool({"country", "united kindom"}), 1,
                  "halvane: country: no country 'united kindom' ('halvane countries' lists them)\n"
                  "  did you mean 'United Kingdom'?\n");
    expectMessage(runTool({"countries", "--sku", "estsi"}), 1,
                  "halvane: countries: no SKU 'estsi'; there are APAC, Japan, Korea, ROW, ETSI, "
                  "FCC, Unused\n  did you mean --sku=ETSI?\n");
    expectUsage({"logging", "shw"},
                "halvane: logging: 'shw' is not 'show' or 'set'\n  did you mean show?\n");
}

TEST(Usage, RefusesAnOptionThatIsGivenTwice) {
    expectUsage({"decode", "--format=json", "--format=text", "x"},
                "halvane: decode: --format is given twice\n");
    expectUsage({"channels", "--band=5", "--band=6"}, "halvane: channels: --band is given twice\n");
    expectUsage({"add", "wlan0", "--ssid=a", "--ssid=b"}, "halvane: add: --ssid is given twice\n");
    expectUsage({"psk", "--ssid-hex", "--ssid-hex", "61"},
                "halvane: psk: --ssid-hex is given twice\n");
    EXPECT_EQ(runTool({"channels", "--format=json", "--no-format", "36"}).output,
              runTool({"channels", "36"}).output);
}

// Its words, with a standard output that nobody reads any more.
std::vector<std::string> unread(const std::string& words, const std::string& before) {
    return {"/bin/bash", "-c", before + "\"$0\" " + words + " | :; exit ${PIPESTATUS[0]}",
            HALVANE_TOOL};
}

TEST(Usage, EndsQuietlyWhenNobodyReadsItsOutput) {
    if (!std::filesystem::exists("/bin/bash")) GTEST_SKIP() << "no bash";
    for (const char* words : {"countries --format=json", "help", "channels --band=all"}) {
        for (const char* before : {"", "trap '' PIPE; "}) {
            const auto result = runProgram(unread(words, before));
            // The reader may still be there.
            EXPECT_TRUE(result.status == 141 || result.status == 0) << words << result.status;
            EXPECT_EQ(result.errors, "") << words;
        }
    }
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

TEST(Usage, FitsEightyColumns) {
    constexpr std::size_t kColumns = 80;
    for (const std::string& line : linesOf(runTool({"--help"}).output)) {
        EXPECT_LE(line.size(), kColumns) << line;
    }
    for (const char* const command : kCommands) {
        for (const std::string& line : linesOf(runTool({"help", command}).output)) {
            EXPECT_LE(line.size(), kColumns) << command << ": " << line;
        }
    }
}

// The options that take a number, and what the help says it counts.
struct NumberOption {
    const char* name;
    const char* unit;  // in the row of the option
};
constexpr NumberOption kNumberOptions[] = {
    {"--min-signal DBM", "dBm"},
    {"--duration SECONDS", "(s)"},
    {"--eapol-interval N", "in ms"},
    {"--gtk-rotation N", "in s "},
    {"--channel-width N", "MHz"},
    {"--frequency MHZ", "MHz"},
    {"--width WIDTH", "MHz"},
    {"[NUMBER|FREQUENCY...]", "MHz"},
    {"--width N", "columns"},
    {"--limit N", "rows"},
    {"--count N", "frames"},
    {"--jobs N", "files"},
    {"--max-networks N", "beyond N"},
    {"--eapol-retries N", "count"},
    {"--preferred-order N", "position"},
    // Numbers that name something.
    {"--channel N", "channel|this number"},
    {"--class N", "operating class"},
    {"--capabilities FIELD", "capability field"},
    {"--width-ambiguous 1|2", "cells"},
};

// The rows of options of a help, each with the lines that belong to it.
std::vector<std::string> optionRows(const std::string& help) {
    std::vector<std::string> rows;
    const std::regex start("    (-|\\[|<).*");
    const std::regex more("        [^ ].*");
    for (const std::string& line : linesOf(help)) {
        if (std::regex_match(line, start)) {
            rows.push_back(line);
        } else if (!rows.empty() && std::regex_match(line, more)) {
            rows.back() += '\n' + line;
        }
    }
    return rows;
}

bool isRowOf(const std::string& row, const std::string& name) {
    const std::size_t at = row.find(name);
    if (at == std::string::npos) return false;
    const bool endsThere = row.size() == at + name.size() || row[at + name.size()] == ' ';
    return endsThere && row.find_first_not_of(' ') == at;
}

TEST(Usage, TellsTheUnitOfEveryNumber) {
    std::set<std::string> seen;
    const std::regex number(" *(--[a-z-]+ |\\[)(N|DBM|SECONDS|MHZ|WIDTH|FIELD|1\\|2|NUMBER)\\b.*");
    for (const char* const command : kCommands) {
        for (const std::string& row : optionRows(runTool({"help", command}).output)) {
            const auto* const known = std::ranges::find_if(
                kNumberOptions,
                [&](const NumberOption& option) { return isRowOf(row, option.name); });
            const std::string first = row.substr(0, row.find('\n'));
            if (known == std::end(kNumberOptions)) {
                EXPECT_FALSE(std::regex_match(first, number)) << command << ": " << row;
                continue;
            }
            seen.insert(known->name);
            // Behind the name, which may hold the unit itself.
            const std::string text = row.substr(row.find(known->name) + std::strlen(known->name));
            std::istringstream units(known->unit);
            bool isTold = false;
            for (std::string unit; std::getline(units, unit, '|');) {
                isTold = isTold || text.find(unit) != std::string::npos;
            }
            EXPECT_TRUE(isTold) << command << ": " << row;
        }
    }
    EXPECT_EQ(seen.size(), std::size(kNumberOptions));
}

TEST(Usage, IsHeldAsFiles) {
    const std::filesystem::path golden = HALVANE_GOLDEN;
    expectGolden(runTool({"--help"}).output, golden / "help.txt");
    for (const std::string command : kCommands) {
        expectGolden(runTool({"help", command}).output, golden / ("help_" + command + ".txt"));
    }
}

TEST(Usage, TellsWhatHelpAndPINTake) {
    const std::string help = runTool({"help", "help"}).output;
    EXPECT_NE(help.find("\nSYNOPSIS\n    halvane help [options] [COMMAND]\n"), std::string::npos)
        << help;
    const std::string pin = runTool({"help", "pin"}).output;
    const std::string description = pin.substr(pin.find("\nDESCRIPTION\n"));
    EXPECT_LT(description.find("check N"), description.find("\nOPTIONS\n")) << pin;
}

TEST(Usage, PrintsTheVersion) {
    const auto result = runTool({"--version"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    const std::string start = "halvane version " HALVANE_VERSION " (";
    EXPECT_EQ(result.output.substr(0, start.size()), start);
    EXPECT_EQ(result.output.substr(result.output.size() - 2), ")\n");
}

TEST(Usage, TellsAboutOutputThatIsLost) {
    for (const char* words : {"--version", "pin", "channels", "skus", "countries", "config"}) {
        const auto result =
            runProgram({"/bin/sh", "-c", "exec \"$0\" \"$1\" >/dev/full", HALVANE_TOOL, words});
        EXPECT_EQ(result.status, 1) << words;
        EXPECT_EQ(result.errors.find("halvane: standard output: "), 0u) << result.errors;
    }
}

TEST(PIN, IsFreshAndRight) {
    std::set<std::string> pins;
    for (int i = 0; i < 5; ++i) {
        const auto result = runTool({"pin"});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.errors, "");
        ASSERT_TRUE(std::regex_match(result.output, std::regex("[0-9]{8}\n"))) << result.output;
        const std::string pin = result.output.substr(0, 8);
        pins.insert(pin);
        EXPECT_EQ(runTool({"pin", "check", pin}).status, 0) << pin;
    }
    EXPECT_GT(pins.size(), 1u);
}

TEST(PIN, IsCheckedByItsLastDigit) {
    for (const char* pin : {"12345670", "00100007", "00000000", "99999995"}) {
        const auto result = runTool({"pin", "check", pin});
        EXPECT_EQ(result.status, 0) << pin;
        EXPECT_EQ(result.output + result.errors, "");
    }
    expectMessage(runTool({"pin", "check", "12345671"}), 1,
                  "halvane: pin: 12345671: the check digit would be 0\n");
    // Read as an octal number it would be 32774, whose check digit is 3.
    EXPECT_EQ(runTool({"pin", "check", "00100006"}).errors,
              "halvane: pin: 00100006: the check digit would be 7\n");
}

TEST(PIN, HasEightDigits) {
    for (const char* pin : {"1234567", "123456700", "", "1234567x", "+1234567", " 1234567",
                            "0x123456", "1234 567", "1234-5670"}) {
        expectUsage({"pin", "check", pin},
                    "halvane: pin: '" + std::string(pin) + "' is not a PIN of 8 digits\n");
    }
    expectUsage({"pin", "check", "--", "-1234567"},
                "halvane: pin: '-1234567' is not a PIN of 8 digits\n");
    expectUsage({"pin", "check", "-1234567"}, "error: unknown option '1'.\n");
    expectUsage({"pin", "check"}, "halvane: pin: 'check' takes one PIN\n");
    expectUsage({"pin", "check", "12345670", "12345670"}, "halvane: pin: 'check' takes one PIN\n");
    expectUsage({"pin", "12345670"}, "halvane: pin: '12345670' is not 'check'\n");
}

TEST(Channels, AreATable) {
    const auto result = runTool({"channels"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(std::count(result.output.begin(), result.output.end(), '\n'), 43);
    const std::string start =
        "Channel  Frequency  Extension\n"
        "      1   2412 MHz          -\n";
    EXPECT_EQ(result.output.substr(0, start.size()), start);
    EXPECT_NE(result.output.find("\n     36   5180 MHz         40\n"), std::string::npos);
    expectGolden(result.output, std::filesystem::path(HALVANE_GOLDEN) / "channels.txt");
}

TEST(Channels, AreFoundByNumberAndByFrequency) {
    const json expected = json::parse(R"([
        {"channelNumber": 36, "channelFrequency": 5180, "extensionChannel": 40},
        {"channelNumber": 14, "channelFrequency": 2484},
        {"channelNumber": 165, "channelFrequency": 5825}])");
    const auto document = runTool({"channels", "--format=json", "5180", "14", "0165"});
    EXPECT_EQ(document.status, 0);
    EXPECT_EQ(json::parse(document.output), expected);
    const auto lines = runTool({"channels", "36", "2484", "5825", "--format", "jsonl"});
    EXPECT_EQ(lines.output,
              "{\"channelNumber\":36,\"channelFrequency\":5180,\"extensionChannel\":40}\n"
              "{\"channelNumber\":14,\"channelFrequency\":2484}\n"
              "{\"channelNumber\":165,\"channelFrequency\":5825}\n");
    EXPECT_EQ(json::parse(runTool({"channels", "--format=json"}).output).size(), 42u);
}

TEST(Channels, AreAPropertyList) {
    const auto result = runTool({"channels", "--format=plist", "36", "14"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    pugi::xml_document document;
    ASSERT_TRUE(document.load_string(result.output.c_str())) << result.output;
    std::string entries;
    for (const auto dictionary : document.child("plist").child("array").children("dict")) {
        for (const auto node : dictionary.children()) {
            entries += std::string(node.name()) + " " + node.text().get() + "\n";
        }
    }
    EXPECT_EQ(entries,
              "key channelNumber\ninteger 36\nkey channelFrequency\ninteger 5180\n"
              "key extensionChannel\ninteger 40\n"
              "key channelNumber\ninteger 14\nkey channelFrequency\ninteger 2484\n");
}

TEST(Channels, AreToldToBeUnknown) {
    const auto result = runTool({"channels", "15", "6", "2400", "0", "255", "256", "99999"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output,
              "Channel  Frequency  Extension\n"
              "      6   2437 MHz          -\n");
    EXPECT_EQ(result.errors,
              "halvane: channels: no channel 15\n"
              "halvane: channels: no channel at 2400 MHz\n"
              "halvane: channels: no channel 0\n"
              "halvane: channels: no channel 255\n"
              "halvane: channels: no channel at 256 MHz\n"
              "halvane: channels: no channel at 99999 MHz\n");
    EXPECT_EQ(runTool({"channels", "15"}).output, "");
    EXPECT_EQ(runTool({"channels", "15", "--format=json"}).output, "[]\n");
}

TEST(Channels, AreNumbers) {
    for (const char* argument : {"x", "", "6x", "0x24", "5.18", "100000", "99999999999999999999"}) {
        expectUsage({"channels", "6", argument},
                    "halvane: channels: '" + std::string(argument) +
                        "' is no channel number and no frequency in MHz\n");
    }
}

TEST(Channels, AreRefusedInAnotherFormatWithOneMessage) {
    const std::string message =
        "halvane: channels: --format: 'xml' is not text, json, jsonl or plist\n";
    expectUsage({"channels", "--format=xml"}, message);
    expectUsage({"channels", "--format=xml", "6", "x"}, message);
}

TEST(Channels, OfAllBandsAreHeldAsFiles) {
    const std::filesystem::path golden = HALVANE_GOLDEN;
    const auto channels = runTool({"channels", "--band=all", "--width=all"});
    EXPECT_EQ(channels.status, 0);
    EXPECT_EQ(channels.errors, "");
    expectGolden(channels.output, golden / "channels_all.txt");
    const auto classes = runTool({"channels", "--class=all"});
    EXPECT_EQ(classes.status, 0);
    EXPECT_EQ(classes.errors, "");
    expectGolden(classes.output, golden / "channels_classes.txt");
}

TEST(Channels, OfABandAreToldToBeUnknown) {
    const auto some = runTool({"channels", "--band=5", "--format=jsonl", "36", "5955", "15", "50"});
    EXPECT_EQ(some.status, 1);
    EXPECT_EQ(std::count(some.output.begin(), some.output.end(), '\n'), 2);
    EXPECT_EQ(some.errors,
              "halvane: channels: no channel at 5955 MHz in the 5 GHz band\n"
              "halvane: channels: no channel 15 in the 5 GHz band\n");
    expectMessage(runTool({"channels", "--channel=255"}), 1, "halvane: channels: no channel 255\n");
    expectMessage(runTool({"channels", "--width=80+80", "--channel=2"}), 1,
                  "halvane: channels: no channel 2 of 80+80 MHz\n");
    expectMessage(runTool({"channels", "--psc", "--channel=1"}), 1,
                  "halvane: channels: no preferred scanning channel 1\n");
    expectMessage(runTool({"channels", "--class=99"}), 1,
                  "halvane: channels: no operating class 99\n");
    for (const std::string band : {"S1G", "5.9"}) {
        const std::string name = band == "S1G" ? band : band + " GHz";
        expectMessage(
            runTool({"channels", "--band", band}), 1,
            "halvane: channels: the channels of " + name + " differ from country to country\n");
    }
    EXPECT_EQ(runTool({"channels", "--channel=255", "--format=json"}).output, "[]\n");
}

TEST(Channels, OptionsThatContradictAreRefused) {
    expectUsage({"channels", "--channel=1", "--frequency=5955"},
                "halvane: channels: --channel and --frequency do not go together\n");
    expectUsage({"channels", "--band=2.4", "--width=80"},
                "halvane: channels: the 2.4 GHz band has no channels of 80 MHz\n");
}

TEST(SKUs, AreATable) {
    const auto result = runTool({"skus"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.output,
              "Short name  Countries  Name\n"
              "APAC               10  Asia-Pacific\n"
              "Japan               1  Japan\n"
              "Korea               1  Korea\n"
              "ROW                10  Rest of World\n"
              "ETSI               36  Worldwide ETSI\n"
              "FCC                14  Worldwide FCC\n"
              "Unused            167  Unused\n");
}

TEST(SKUs, AreWholeForPrograms) {
    const auto document = json::parse(runTool({"skus", "--format=json"}).output);
    ASSERT_EQ(document.size(), 7u);
    EXPECT_EQ(document[4]["friendlyName"], "Worldwide ETSI");
    EXPECT_EQ(document[4]["shortName"], "ETSI");
    EXPECT_EQ(document[4]["countries"].size(), 36u);
    EXPECT_EQ(document[6]["countries"][166]["isoName"], "ZW");
    EXPECT_EQ(document[6]["countries"][166]["channels"].size(), 42u);
    const auto lines = runTool({"skus", "--format=jsonl"}).output;
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 7);
    EXPECT_EQ(json::parse(lines.substr(0, lines.find('\n'))), document[0]);
}

// The elements that a query of XPath finds in a property list.
std::size_t countIn(const std::string& propertyList, const char* query) {
    pugi::xml_document document;
    EXPECT_TRUE(document.load_string(propertyList.c_str())) << propertyList;
    return document.select_nodes(query).size();
}

TEST(SKUs, AreSkeletonsInAPropertyList) {
    const auto list = runTool({"skus", "--format=plist"}).output;
    EXPECT_EQ(countIn(list, "/plist/array/dict[key='ShortName']"), 7u);
    EXPECT_EQ(countIn(list, "/plist/array/dict/array/dict[key='ISOName']"), 239u);
    EXPECT_EQ(countIn(list, "/plist/array/dict/array/dict/array/dict[key='ChannelNumber']"),
              10038u);
}

TEST(SKUs, TakeNoArgument) {
    expectUsage({"skus", "ETSI"}, "halvane: skus: takes no argument ('ETSI')\n");
    expectUsage({"skus", "--format=xml", "ETSI"},
                "halvane: skus: --format: 'xml' is not text, json, jsonl or plist\n");
}

TEST(Countries, AreHeldAsAFile) {
    const auto result = runTool({"countries"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    expectGolden(result.output, std::filesystem::path(HALVANE_GOLDEN) / "countries.txt");
}

TEST(Countries, AreThoseOfASKUByEitherName) {
    const std::string expected =
        "ISO  Number  SKU     Name\n"
        "KR      410  Korea   Korea, Republic Of\n";
    EXPECT_EQ(runTool({"countries", "--sku=Korea"}).output, expected);
    EXPECT_EQ(runTool({"countries", "--sku", "kOREA"}).output, expected);
    const auto byShortName = runTool({"countries", "--sku", "etsi"});
    EXPECT_EQ(byShortName.status, 0);
    EXPECT_EQ(std::count(byShortName.output.begin(), byShortName.output.end(), '\n'), 37);
    EXPECT_EQ(runTool({"countries", "--sku", "worldwide etsi"}).output, byShortName.output);
    EXPECT_EQ(runTool({"countries", "--sku=x", "--no-sku"}).output, runTool({"countries"}).output);
}

TEST(Countries, AreWholeForPrograms) {
    const auto document = json::parse(runTool({"countries", "--format=json"}).output);
    ASSERT_EQ(document.size(), 239u);
    EXPECT_EQ(document[0]["friendlyName"], "Australia");
    const auto line = runTool({"countries", "--format=jsonl", "--sku=japan"}).output;
    EXPECT_EQ(line, runTool({"country", "--format=jsonl", "japan"}).output);
    const auto list = runTool({"countries", "--format=plist", "--sku=FCC"}).output;
    EXPECT_EQ(countIn(list, "/plist/array/dict[key='ISOCode']"), 14u);
    EXPECT_EQ(countIn(list, "/plist/array/dict/array/dict"), 14u * 42);
}

TEST(Countries, OfAnUnknownSKUAreToldWhichThereAre) {
    for (const char* name : {"Nowhere", ""}) {
        for (const char* format : {"text", "json", "plist"}) {
            expectMessage(runTool({"countries", "--sku", name, "--format", format}), 1,
                          "halvane: countries: no SKU '" + std::string(name) +
                              "'; there are APAC, Japan, Korea, ROW, ETSI, FCC, Unused\n");
        }
    }
    expectUsage({"countries", "ETSI"}, "halvane: countries: takes no argument ('ETSI')\n");
    expectUsage({"countries", "--sku=x", "--format=xml"},
                "halvane: countries: --format: 'xml' is not text, json, jsonl or plist\n");
}

// The first printed line of a country.
std::string countryLine(const std::string& name) {
    const auto result = runTool({"country", name});
    EXPECT_EQ(result.status, 0) << name;
    EXPECT_EQ(result.errors, "");
    return result.output.substr(0, result.output.find('\n'));
}

TEST(Country, IsFoundByNameISONameAndNumber) {
    for (const char* name : {"United Kingdom", "UNITED KINGDOM", "gb", "GB", "826", "0826"}) {
        EXPECT_EQ(countryLine(name),
                  "Friendly Name <United Kingdom>, ISO Code <GB>, ISO Number <826>");
    }
    for (const char* name : {"norway", "578", "0"}) {
        EXPECT_EQ(countryLine(name), "Friendly Name <Norway>, ISO Code <578>, ISO Number <0>");
    }
    EXPECT_EQ(countryLine("036"), "Friendly Name <Australia>, ISO Code <AU>, ISO Number <36>");
    EXPECT_EQ(countryLine("xo"), "Friendly Name <Unknown>, ISO Code <XO>, ISO Number <-1>");
}

TEST(Country, IsFoundByANumberBelowZeroBehindTheOptions) {
    for (const char* number : {"-1", "-001"}) {
        const auto result = runTool({"country", "--format=json", "--", number});
        EXPECT_EQ(result.status, 0) << number;
        EXPECT_EQ(result.errors, "");
        const auto object = json::parse(result.output, nullptr, false);
        EXPECT_EQ(object["friendlyName"], "Unknown");
        EXPECT_EQ(object["isoCode"], -1);
    }
    EXPECT_EQ(runTool({"country", "-1"}).status, 2) << "it reads as an option";
}

TEST(Country, IsPrintedWithItsChannels) {
    const std::string text = runTool({"country", "jp"}).output;
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 44);
    const std::string start =
        "Friendly Name <Japan>, ISO Code <JP>, ISO Number <392>\n"
        "Channel  Frequency  Flags\n"
        "      1   2412 MHz  -\n";
    EXPECT_EQ(text.substr(0, start.size()), start);
    for (const char* line : {"\n     14   2484 MHz  disabled\n", "\n     36   5180 MHz  40 MHz\n",
                             "\n     64   5320 MHz  radar prone, 40 MHz\n",
                             "\n    140   5700 MHz  radar prone\n", "\n    165   5825 MHz  -\n"}) {
        EXPECT_NE(text.find(line), std::string::npos) << line;
    }
}

TEST(Country, IsOneRecordForPrograms) {
    const auto text = runTool({"country", "gb", "--format=json"}).output;
    const auto object = json::parse(text);
    EXPECT_EQ(object["friendlyName"], "United Kingdom");
    EXPECT_EQ(object["isoCode"], 826);
    EXPECT_EQ(object["channels"][22], json::parse(R"({
        "channelNumber": 52, "channelFrequency": 5260, "isRadarProne": true, "isDisabled": false,
        "supports40MHz": true, "supports80MHz": false})"));
    const auto line = runTool({"country", "gb", "--format=jsonl"}).output;
    EXPECT_EQ(std::count(line.begin(), line.end(), '\n'), 1);
    EXPECT_EQ(json::parse(line), object);
    const auto list = runTool({"country", "gb", "--format=plist"}).output;
    EXPECT_EQ(countIn(list, "/plist/dict[key='FriendlyName']/array/dict"), 42u);
}

TEST(Country, IsToldToBeUnknown) {
    for (const char* name :
         {"Atlantis", "no", "", "United", "-2", "--1", "+1", "-", "1", "9223372036854775808",
          "-9223372036854775809", "99999999999999999999"}) {
        expectMessage(runTool({"country", "--format=json", "--", name}), 1,
                      "halvane: country: no country '" + std::string(name) +
                          "' ('halvane countries' lists them)\n");
    }
    EXPECT_EQ(runTool({"country", "a\x1B[2J"}).errors,
              "halvane: country: no country 'a\\x1B[2J' ('halvane countries' lists them)\n");
}

TEST(Country, IsOne) {
    expectUsage({"country"}, "halvane: country: no country to print\n");
    expectUsage({"country", "United", "Kingdom"},
                "halvane: country: takes one country; quote a name of several words\n");
    expectUsage({"country", "--format=xml"},
                "halvane: country: --format: 'xml' is not text, json, jsonl or plist\n");
}

}  // namespace
