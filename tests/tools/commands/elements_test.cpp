// The elements command, from its argument to its status.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <unistd.h>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"

#include "tests/support/captured_stream.h"
#include "tests/support/scoped_environment.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/tool_command_line.h"
#include "tools/halvane/commands/command.h"
#include "tools/halvane/input/capture_reader.h"

using halvane::testing::CapturedStream;
using halvane::testing::ScopedEnvironment;
using halvane::testing::TemporaryFolder;
using halvane::testing::ToolCommandLine;
using namespace halvane::tool;

namespace {

struct Ran {
    int status = -1;
    std::string output;
    std::string errors;
};

Ran run(std::vector<std::string> words) {
    const ScopedEnvironment columns("COLUMNS", std::nullopt);
    ToolCommandLine line(std::move(words));
    const CapturedStream output(stdout);
    const CapturedStream errors(stderr);
    if (!line.parse(gElementsOptions)) return {};
    const int status = elementsCommand();
    return {status, output.text(), errors.text()};
}

// Gives the process this text as its standard input until the object goes out of scope.
class TypedInput {
  public:
    explicit TypedInput(std::string_view text) : file_(std::tmpfile()), saved_(::dup(0)) {
        std::fwrite(text.data(), 1, text.size(), file_);
        std::rewind(file_);
        ::dup2(::fileno(file_), 0);
        restart();
    }
    TypedInput(const TypedInput&) = delete;
    TypedInput& operator=(const TypedInput&) = delete;
    ~TypedInput() {
        ::dup2(saved_, 0);
        ::close(saved_);
        std::fclose(file_);
        restart();
    }

  private:
    static void restart() {
        std::clearerr(stdin);
        std::fflush(stdin);
    }

    std::FILE* file_;
    int saved_;
};

std::string fileOf(const TemporaryFolder& folder, std::string_view text) {
    return folder.write("dump", std::vector<std::uint8_t>(text.begin(), text.end()));
}

const std::string kTable =
    "OCTET ID      LEN\n"
    "    0 0         3 SSID: abc\n"
    "    5 3         1 DS Parameter Set: channel 6\n"
    "2 elements, 8 octets: whole\n";

TEST(ElementsCommand, NamesTheElementsOfItsArgument) {
    const Ran ran = run({"0003616263 030106"});
    EXPECT_EQ(ran.status, kExitDone);
    EXPECT_EQ(ran.output, kTable);
    EXPECT_EQ(ran.errors, "");
}

struct Dump {
    std::string_view text;
    std::string_view told;  // on standard error
};

// The same eight octets as programs print them.
const Dump kDumps[] = {
    {"00:03:61:62:63:03:01:06\n", ""},
    {"\"\\x00\\x03\\x61\\x62\\x63\\x03\\x01\\x06\"\n", ""},
    {"\t0x0000:  0003 6162 6303 0106\n", "tcpdump -x"},
    {"00000000: 0003 6162 6303 0106                      ..abc...\n", "xxd"},
    {"00000000  00 03 61 62 63 03 01 06                           |..abc...|\n00000008\n",
     "hexdump"},
    {"0000   00 03 61 62 63 03 01 06                           ..abc...\n", "hexdump"},
    {"0000000 00 03 61 62 63 03 01 06\n0000010\n", "od"},
    {"\tUnknown IE (0): 61 62 63\n\tUnknown IE (3): 06\n", "iw -u"},
};

TEST(ElementsCommand, ReadsEachFormOfDumpFromAFile) {
    const TemporaryFolder folder;
    for (const Dump& dump : kDumps) {
        SCOPED_TRACE(dump.text);
        const Ran ran = run({fileOf(folder, dump.text)});
        EXPECT_EQ(ran.status, kExitDone);
        EXPECT_EQ(ran.output, kTable);
        const int lines = dump.told == "iw -u" ? 2 : 1;  // one for each element
        EXPECT_EQ(ran.errors,
                  dump.told.empty()
                      ? ""
                      : "halvane: elements: read as '" + std::string(dump.told) +
                            (lines == 2 ? "': 2 lines, 8 octets\n" : "': 1 line, 8 octets\n"));
    }
}

TEST(ElementsCommand, ReadsStandardInput) {
    for (const Dump& dump : kDumps) {
        const TypedInput input(dump.text);
        EXPECT_EQ(run({"-"}).output, kTable) << dump.text;
    }
}

TEST(ElementsCommand, ShowsOctetsIfAsked) {
    EXPECT_EQ(run({"--bytes", "030106"}).output,
              "OCTET ID      LEN\n"
              "    0 3         1 DS Parameter Set: channel 6\n"
              "                  06\n"
              "1 element, 3 octets: whole\n");
    EXPECT_EQ(run({"030106"}).output.find("  06\n"), std::string::npos);  // forgotten
}

TEST(ElementsCommand, ShowsEveryFieldIfAsked) {
    EXPECT_EQ(run({"--fields", "030106"}).output,
              "OCTET ID      LEN\n"
              "    0 3         1 DS Parameter Set (9.4.2.4): Current Channel 6\n"
              "1 element, 3 octets: whole\n");
}

// The header of a beacon, its fixed fields, and one element.
TEST(ElementsCommand, FindsTheElementsOfAFrame) {
    const std::string header = "80000000 FFFFFFFFFFFF 020000000001 020000000001 0000";
    const std::string fixed = "0000000000000000 6400 1104";
    const Ran ran = run({"--frame", header + fixed + "030106"});
    EXPECT_EQ(ran.status, kExitDone);
    EXPECT_NE(ran.output.find("    0 3         1 DS Parameter Set"), std::string::npos);
    const Ran data = run({"--frame", "08" + header.substr(2) + fixed + "030106"});
    EXPECT_EQ(data.status, kExitFailed);
    EXPECT_EQ(data.output, "");
    EXPECT_EQ(data.errors, "halvane: elements: no beacon and no probe response\n");
}

TEST(ElementsCommand, PointsAtDamage) {
    const Ran ran = run({"030106 3014 0100"});
    EXPECT_EQ(ran.status, kExitFailed);
    EXPECT_EQ(ran.output,
              "OCTET ID      LEN\n"
              "    0 3         1 DS Parameter Set: channel 6\n"
              "x   3 48       20 RSN: 20 octets are told, 2 are left\n"
              "                  30 14 01 00\n"
              "                     ^^ octet 4: length\n"
              "1 element, 3 octets; then 4 octets of damage at octet 3\n");
    EXPECT_EQ(ran.errors,
              "halvane: elements: octet 4: the element ends 18 octets behind the end\n");
    EXPECT_NE(run({"030106 30"}).output.find("then 1 octet of damage at octet 3\n"),
              std::string::npos);
}

// BSS Load has five octets.
TEST(ElementsCommand, CountsDamagedElements) {
    const Ran ran = run({"030106 0B03 0100 80"});
    EXPECT_EQ(ran.status, kExitFailed);
    EXPECT_TRUE(ran.output.ends_with("2 elements, 8 octets: 1 damaged, the first at octet 8\n"))
        << ran.output;
    EXPECT_EQ(ran.errors,
              "halvane: elements: octet 8: the element BSS Load ends inside the field that begins "
              "there\n");
    const Ran several = run({"0B03 0100 80 0B03 0100 80 30"});
    EXPECT_EQ(several.status, kExitFailed);
    EXPECT_TRUE(
        several.output.ends_with("2 elements, 10 octets: 2 damaged, the first at octet 5; "
                                 "then 1 octet of damage at octet 10\n"))
        << several.output;
    EXPECT_EQ(several.errors,
              "halvane: elements: octet 5: the element BSS Load ends inside the field that begins "
              "there; 1 more damaged\n"
              "halvane: elements: one octet is left, which makes no element\n");
    for (const char* const format : {"--format=json", "--format=jsonl"}) {
        const Ran json = run({format, "030106 0B03 0100 80"});
        EXPECT_EQ(json.status, kExitFailed);
        EXPECT_EQ(json.errors, ran.errors);
    }
}

// The profile in Multiple BSSID has a BSS Load of three octets.
TEST(ElementsCommand, CountsDamageInProfiles) {
    for (const char* const format : {"--format=text", "--format=json"}) {
        const Ran ran = run({format, "4708 02 0005 0B03 0100 80"});
        EXPECT_EQ(ran.status, kExitFailed);
        EXPECT_EQ(ran.errors,
                  "halvane: elements: octet 10: the element BSS Load ends inside the field that "
                  "begins there\n");
    }
}

constexpr std::string_view kScan =
    "BSS 02:00:00:00:00:01(on wlan0) -- associated\n"
    "\tfreq: 2437\n"
    "\tBSS Load:\n"
    "\tUnknown IE (3): 06\n"
    "BSS 02:00:00:00:00:02(on wlan0)\n"
    "\tfreq: 2437\n"
    "BSS 02:00:00:00:00:03(on wlan0)\n"
    "\tUnknown IE (0): 61\n"
    "\tUnknown IE (11): 01 00 80\n";

TEST(ElementsCommand, KeepsTheNetworksOfAScanApart) {
    const TemporaryFolder folder;
    const std::string file = fileOf(folder, kScan);
    const Ran ran = run({file});
    EXPECT_EQ(ran.status, kExitFailed);
    EXPECT_EQ(ran.output,
              "BSS 02:00:00:00:00:01\n"
              "OCTET ID      LEN\n"
              "    0 3         1 DS Parameter Set: channel 6\n"
              "1 element, 3 octets: whole\n"
              "\n"
              "BSS 02:00:00:00:00:03\n"
              "OCTET ID      LEN\n"
              "    0 0         1 SSID: a\n"
              "    3 11        3 BSS Load: Station Count 1; Channel Utilization 128 /255\n"
              "x   8             the element ends inside the field that begins here\n"
              "                  0B 03 01 00 80\n"
              "                                 ^^ octet 8\n"
              "2 elements, 8 octets: 1 damaged, the first at octet 8\n");
    EXPECT_EQ(ran.errors,
              "halvane: elements: read as 'iw -u': 3 lines, 11 octets\n"
              "halvane: elements: BSS 02:00:00:00:00:03: octet 8: the element BSS Load ends inside "
              "the field that begins there\n");
    const auto all = nlohmann::json::parse(run({"--format=json", file}).output);
    ASSERT_EQ(all.size(), 3u);
    EXPECT_EQ(all[0]["bssid"], "02:00:00:00:00:01");
    EXPECT_EQ(all[1]["bssid"], "02:00:00:00:00:03");
    EXPECT_EQ(all[1]["offset"], 0);
}

TEST(ElementsCommand, PrintsJSON) {
    const Ran document = run({"--format=json", "030106 0201FF"});
    EXPECT_EQ(document.status, kExitDone);
    const auto all = nlohmann::json::parse(document.output);
    ASSERT_EQ(all.size(), 2u);
    EXPECT_EQ(all[0]["fields"][0]["value"], 6);
    EXPECT_EQ(all[1]["bytes"], "ff");
    const Ran lines = run({"--format=jsonl", "030106 0201FF"});
    EXPECT_EQ(lines.output.find('\n'), lines.output.find("{\"id\":2") - 1);
}

TEST(ElementsCommand, PrintsDamageInJSON) {
    const Ran document = run({"--format=json", "030106 301401"});
    EXPECT_EQ(document.status, kExitFailed);
    const auto all = nlohmann::json::parse(document.output);
    ASSERT_EQ(all.size(), 2u);
    EXPECT_EQ(all[1].dump(), R"({"bytes":"301401","offset":3})");
    EXPECT_TRUE(run({"--format=jsonl", "030106 301401"})
                    .output.ends_with("\n{\"offset\":3,\"bytes\":\"301401\"}\n"));
}

TEST(ElementsCommand, SaysWhatItCannotRead) {
    const TemporaryFolder folder;
    EXPECT_EQ(run({"030"}).errors,
              "halvane: elements: '030' is neither a file nor hexadecimal text (line 1: '030' has "
              "an odd number of digits)\n");
    EXPECT_EQ(run({"no such file"}).status, kExitFailed);
    const std::string odd = fileOf(folder, "03 01\n6\n");
    EXPECT_EQ(run({odd}).errors,
              "halvane: elements: " + odd + ": line 2: '6' has an odd number of digits\n");
    EXPECT_EQ(run({odd}).status, kExitFailed);
    const std::string empty = fileOf(folder, " \n");
    EXPECT_EQ(run({empty}).errors, "halvane: elements: " + empty + ": empty\n");
    EXPECT_EQ(run({""}).errors, "halvane: elements: the text is empty\n");
    const TypedInput input("");
    const Ran nothing = run({"-"});
    EXPECT_EQ(nothing.status, kExitFailed);
    EXPECT_EQ(nothing.output, "");
    EXPECT_EQ(nothing.errors, "halvane: elements: standard input: empty\n");
}

TEST(ElementsCommand, RefusesOtherArguments) {
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{}, {"030106", "030106"}, {"--format=plist", "030106"}}) {
        const Ran ran = run(words);
        EXPECT_EQ(ran.status, kExitUsage);
        EXPECT_EQ(ran.output, "");
    }
}

// The elements of a frame of a capture, as hexadecimal text.
std::string elementsIn(const std::filesystem::path& path, std::uint64_t number) {
    auto reader = CaptureReader::open(path.string());
    if (!reader) return {};
    while (const auto frame = reader->next()) {
        if (frame->number == number && frame->beacon()) {
            return halvane::ByteBuffer(frame->beacon()->elements).hex();
        }
    }
    return {};
}

TEST(ElementsCommand, IsTheScreenOfAWholeBuffer) {
    const std::filesystem::path capture = HALVANE_MODERN "/issue_threads_127.pcap";
    if (!std::filesystem::exists(capture)) GTEST_SKIP() << capture << " is missing";
    const Ran ran = run({elementsIn(capture, 2)});
    EXPECT_EQ(ran.status, kExitDone);
    EXPECT_EQ(ran.output, R"(OCTET ID      LEN
    0 0         7 SSID: Test 6G
    9 1         8 Supported Rates: 6* 9 12* 18 24* 36 48 54 Mbit/s; * basic
   19 5         4 TIM: DTIM count 0, period 2; no traffic
   25 7         6 Country: RU, global table (E-4); operating class 134
   33 48       28 RSN: version 1
                    group    CCMP-128
                    pairwise GCMP-256, CCMP-128, GCMP-128
                    AKM      SAE (00-0F-AC:8)
                    00CC     PMF required and capable; 16 PTKSA replay counters
   63 59        2 Supported Operating Classes: 134 (in use)
   67 127      10 Extended Capabilities: 2 Extended Channel Switching, 25 SSID
                    List, 48 UTF-8 SSID, 62 Operating Mode Notification, 78 TWT
                    Responder Support
   79 195       2 Transmit Power Envelope: regulatory client EIRP PSD, default
                    category: -1 dBm/MHz
   83 195       2 Transmit Power Envelope: regulatory client EIRP PSD,
                    subordinate category: 5 dBm/MHz
   87 244       1 RSNX: SAE Hash-to-element
   90 255/35   35 HE Capabilities: 3 streams, MCS 0 to 11, up to 160 MHz
  128 255/36   11 HE Operation: 6 GHz, primary 57, width 160 MHz, CCFS0 55,
                    CCFS1 47, lowest rate 6 Mbit/s; colour 44, switched off
  142 255/59    2 HE 6 GHz Band Capabilities: 36BA
  147 255/108  20 EHT Capabilities: 3 streams, MCS 0 to 13, up to 320 MHz
  170 255/106   5 EHT Operation: no operation information
  178 221      24 Vendor 00-50-F2:2, WMM: Parameter
16 elements, 204 octets: whole
)");
}

// A beacon of 802.11g that the capture cut.
TEST(ElementsCommand, IsTheScreenOfADamagedBuffer) {
    const Ran ran =
        run({"000474657374010482848B96030107050402030000"
             "2A01072F01073208"
             "0C1218243048606CDD0700039301030000DD060010180100"
             "00DD160050F20101000050F20201000050F20201000050F202"
             "36890D86"});
    EXPECT_EQ(ran.status, kExitFailed);
    EXPECT_EQ(ran.output, R"(OCTET ID      LEN
    0 0         4 SSID: test
    6 1         4 Supported Rates: 1* 2* 5.5* 11* Mbit/s; * basic
   12 3         1 DS Parameter Set: channel 7
   15 5         4 TIM: DTIM count 2, period 3; no traffic
   21 42        1 ERP: 07, non-ERP present, protection, long preamble
   24 47        1 ERP (draft, as 42): 07
   27 50        8 Extended Supported Rates: 6 9 12 18 24 36 48 54 Mbit/s
   37 221       7 Vendor 00-03-93:1: 030000
   46 221       6 Vendor 00-10-18:1, Broadcom: 0000
   54 221      22 Vendor 00-50-F2:1, WPA: version 1
                    group    TKIP
                    pairwise TKIP
                    AKM      PSK
x  78 54      137 Mobility Domain: 137 octets are told, 2 are left
                  36 89 0D 86
                     ^^ octet 79: length
10 elements, 78 octets; then 4 octets of damage at octet 78
)");
    EXPECT_EQ(ran.errors,
              "halvane: elements: octet 79: the element ends 135 octets behind the end\n");
}

}  // namespace
