// The captures of samples/: they equal the output of the generator, and decode as their README
// says.
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <optional>
#include <string>
#include <sys/wait.h>
#include <vector>

#include "halvane/base/byte_cursor.h"
#include "halvane/base/escaped_text.h"
#include "halvane/capture/beacon_frame.h"

#include "tests/support/temporary_folder.h"
#include "tools/halvane/input/capture_reader.h"

using namespace halvane::capture;
using namespace halvane::tool;
namespace fs = std::filesystem;

namespace {

using Contents = std::map<std::string, std::string>;  // by file name

Contents capturesIn(const fs::path& folder) {
    Contents contents;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (!entry.path().extension().string().starts_with(".pcap")) continue;
        std::ifstream file(entry.path(), std::ios::binary);
        contents[entry.path().filename().string()].assign(std::istreambuf_iterator<char>(file), {});
    }
    return contents;
}

int runGenerator(const std::string& arguments) {
    const int status = std::system(("'" HALVANE_MAKE_SAMPLES "' " + arguments).c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(Samples, AreWhatTheGeneratorWrites) {
    const halvane::testing::TemporaryFolder folder;
    ASSERT_EQ(runGenerator("'" + folder.path().string() + "'"), 0);
    const Contents written = capturesIn(folder.path());
    EXPECT_EQ(written.size(), 10u);
    EXPECT_TRUE(written == capturesIn(HALVANE_SAMPLES)) << "run make_samples samples/";
}

TEST(Samples, TheGeneratorTellsWhatItCannotDo) {
    const halvane::testing::TemporaryFolder folder;
    const std::string quiet = " 2>'" + (folder.path() / "messages").string() + "'";
    EXPECT_EQ(runGenerator("'" + (folder.path() / "missing").string() + "'" + quiet), 1);
    EXPECT_EQ(runGenerator(quiet), 2);
}

// A beacon or probe response as one line.
std::string lineOf(const CapturedFrame& frame) {
    const auto text = [](const std::optional<int>& value) {
        return value ? std::to_string(*value) : "-";
    };
    halvane::ByteCursor elements(frame.beacon()->elements);
    std::string line = frame.beacon()->bssid.text().substr(15) + " ";
    line += frame.beacon()->subtype == BeaconSubtype::Beacon ? "beacon " : "response ";
    line += text(frame.radio.frequencyMHz) + " MHz " + text(frame.radio.channel) + " " +
            text(frame.radio.signalDBm) + " dBm " + text(frame.radio.noiseDBm);
    if (elements.atEnd()) return line + " ''";
    elements.skip(1);
    const auto name = elements.take(elements.u8().value_or(0));
    if (name) line += " '" + halvane::escapedText(*name) + "'";
    return line;
}

struct Reading {
    std::vector<std::string> lines;
    std::string summary;
};

Reading readSample(const std::string& name) {
    Reading reading;
    auto reader = CaptureReader::open((fs::path(HALVANE_SAMPLES) / name).string());
    EXPECT_TRUE(reader) << name;
    if (!reader) return reading;
    while (const auto frame = reader->next()) {
        if (frame->beacon()) reading.lines.push_back(lineOf(*frame));
    }
    EXPECT_EQ(reader->error(), std::nullopt);
    reading.summary = reader->summary().text();
    return reading;
}

TEST(Samples, HoldANeighbourhood) {
    const Reading reading = readSample("neighbourhood.pcap");
    EXPECT_THAT(reading.lines,
                ::testing::ElementsAre("04 beacon 2412 MHz - -70 dBm -94 'grandpas-printer'",
                                       "05 beacon 2412 MHz - -70 dBm -94 'Attic Studio'",
                                       "07 beacon 2422 MHz - -77 dBm -95 'Lantern'",
                                       "01 beacon 2437 MHz - -48 dBm -95 'Maple Street 12'",
                                       "06 beacon 2452 MHz - -66 dBm -95 "
                                       "'\\x00\\x00\\x00\\x00\\x00\\x00\\x00\\x00\\x00\\x00'",
                                       "02 beacon 2462 MHz - -63 dBm -93 'Corner Bakery'",
                                       "03 beacon 5180 MHz - -57 dBm -97 'Harbour Office'",
                                       "08 beacon 5220 MHz - -83 dBm -98 'Bergh\xC3\xBCtte'",
                                       "01 beacon 2437 MHz - -51 dBm -95 'Maple Street 12'",
                                       "06 response 2452 MHz - -66 dBm -95 'Quiet Room'"));
    EXPECT_EQ(reading.summary,
              "frames read: 12, beacons: 9, probe responses: 1, skipped: 2 (other frames: 2)");
}

TEST(Samples, HoldFramesWithoutRadioHeaders) {
    const Reading reading = readSample("elements.pcap");
    EXPECT_THAT(reading.lines,
                ::testing::ElementsAre(
                    "01 beacon - MHz - - dBm - 'Vendor elements'",
                    "02 beacon - MHz - - dBm - 'Short vendor elements'",
                    "03 beacon - MHz - - dBm - 'Caf\\xE9 am Markt'",
                    "04 beacon - MHz - - dBm - '\\x1B[2J\\\\free \\xE2\\x80\\xAEretupmoc'",
                    "05 beacon - MHz - - dBm - 'The longest name fits 32 octets!'",
                    "06 beacon - MHz - - dBm - 'Truncated'",
                    "07 beacon - MHz - - dBm - 'Stray byte'",  //
                    "08 beacon - MHz - - dBm - ''", "09 beacon - MHz - - dBm - 'Nine rates'"));
}

TEST(Samples, HoldPrismHeadersOfBothOrdersAndAVS) {
    const Reading reading = readSample("security.pcap");
    ASSERT_EQ(reading.lines.size(), 9u);
    EXPECT_EQ(reading.lines[0], "01 beacon - MHz 6 -64 dBm -92 'Open'");
    EXPECT_EQ(reading.lines[1], "02 beacon - MHz 6 -64 dBm -92 'WEP'");
    EXPECT_EQ(reading.lines[2], "03 beacon - MHz 6 -64 dBm -92 'WPA'");
}

TEST(Samples, HoldAVSHeaders) {
    const Reading reading = readSample("setup.pcap");
    EXPECT_THAT(reading.lines,
                ::testing::Each(::testing::HasSubstr("MHz 3 -77 dBm -95 'Lantern'")));
    EXPECT_EQ(reading.summary, "frames read: 4, beacons: 3, probe responses: 1, skipped: 0");
}

TEST(Samples, HoldPPIHeadersInPcapng) {
    EXPECT_THAT(readSample("country.pcapng").lines,
                ::testing::ElementsAre("01 beacon 2462 MHz - -59 dBm -96 'Country'",
                                       "02 response 5745 MHz - -72 dBm -99 'Operating classes'",
                                       "03 beacon 2462 MHz - -59 dBm -96 'Code alone'"));
}

TEST(Samples, HoldEveryReasonToSkipAFrame) {
    const Reading reading = readSample("damaged.pcap");
    EXPECT_THAT(reading.lines,
                ::testing::ElementsAre("01 beacon 2437 MHz - -71 dBm -90 'Old Mill'",
                                       "01 beacon 2437 MHz - -71 dBm -90 'Old Mill'",
                                       "01 response 2437 MHz - -71 dBm - 'Old Mill'",
                                       "01 beacon 2437 MHz - -71 dBm -90 'Old Mill'"));
    EXPECT_EQ(reading.summary,
              "frames read: 12, beacons: 3, probe responses: 1, skipped: 8 (other frames: 2, "
              "fragments: 2, encrypted: 1, short: 1, damaged: 1, malformed radio headers: 1)");
}

}  // namespace
