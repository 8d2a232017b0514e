#include "tools/halvane/input/capture_reader.h"

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string_view>
#include <unistd.h>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/capture/beacon_frame.h"
#include "halvane/capture/fcs.h"

#include "tests/support/hostile_bytes.h"
#include "tests/support/temporary_folder.h"

using halvane::ByteBuffer;
using halvane::testing::Bytes;
using halvane::testing::TemporaryFolder;
using ::testing::EndsWith;
using ::testing::StartsWith;
using namespace halvane::capture;
using namespace halvane::tool;

namespace {

void append(Bytes& bytes, const Bytes& more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

// Whether a capture file is written by a little- or a big-endian host.
enum class Order { Little, Big };

void appendNumber(Bytes& bytes, std::uint64_t value, std::size_t size, Order order) {
    for (std::size_t i = 0; i < size; ++i) {
        const std::size_t shift = 8 * (order == Order::Little ? i : size - 1 - i);
        bytes.push_back(static_cast<std::uint8_t>(value >> shift));
    }
}

struct Packet {
    Bytes bytes;
    std::size_t notKept = 0;  // bytes after those that the capture cut off
};

Bytes pcapFile(unsigned linkType, Order order, const std::vector<Packet>& packets) {
    Bytes file;
    const auto number = [&](std::uint64_t value, std::size_t size) {
        appendNumber(file, value, size, order);
    };
    number(0xA1B2C3D4, 4);  // magic: microseconds
    number(2, 2), number(4, 2);
    number(0, 4), number(0, 4);
    number(65535, 4);  // snapshot length
    number(linkType, 4);
    for (const Packet& packet : packets) {
        number(1700000000, 4), number(0, 4);  // time stamp
        number(packet.bytes.size(), 4);
        number(packet.bytes.size() + packet.notKept, 4);
        append(file, packet.bytes);
    }
    return file;
}

void appendBlock(Bytes& file, std::uint32_t type, const Bytes& body, Order order) {
    const std::size_t padding = (4 - body.size() % 4) % 4;
    const std::size_t size = 12 + body.size() + padding;
    appendNumber(file, type, 4, order);
    appendNumber(file, size, 4, order);
    append(file, body);
    file.insert(file.end(), padding, 0);
    appendNumber(file, size, 4, order);
}

Bytes pcapngFile(unsigned linkType, Order order, const std::vector<Packet>& packets) {
    Bytes file, section, interface;
    appendNumber(section, 0x1A2B3C4D, 4, order);  // byte order magic
    appendNumber(section, 1, 2, order);           // version 1.0
    appendNumber(section, 0, 2, order);
    appendNumber(section, UINT64_MAX, 8, order);  // section length not stated
    appendBlock(file, 0x0A0D0D0A, section, order);
    appendNumber(interface, linkType, 2, order);
    appendNumber(interface, 0, 2, order);
    appendNumber(interface, 65535, 4, order);  // snapshot length
    appendBlock(file, 1, interface, order);
    for (const Packet& packet : packets) {
        Bytes body;
        for (const std::uint32_t field : {0u, 0u, 0u}) appendNumber(body, field, 4, order);
        appendNumber(body, packet.bytes.size(), 4, order);
        appendNumber(body, packet.bytes.size() + packet.notKept, 4, order);
        append(body, packet.bytes);
        appendBlock(file, 6, body, order);  // enhanced packet
    }
    return file;
}

constexpr unsigned kBare = 105, kRadiotap = 127;

// A beacon of 02:00:00:00:00:<last>, with an SSID of one letter.
Bytes beacon(std::uint8_t last = 1) {
    Bytes frame = {0x80, 0x00, 0x00, 0x00, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x02,
                   0x00, 0x00, 0x00, 0x00, last, 0x02, 0x00, 0x00, 0x00, 0x00, last};
    append(frame, {0x10, 0x00});              // sequence 1, fragment 0
    append(frame, {0, 0, 0, 0, 0, 0, 0, 0});  // timestamp
    append(frame, {0x64, 0x00, 0x01, 0x00});  // 100 TU, ESS
    append(frame, {0x00, 0x01, 0x61});        // SSID "a"
    return frame;
}

Bytes changed(Bytes bytes, std::size_t offset, std::uint8_t value) {
    bytes.at(offset) = value;
    return bytes;
}

Bytes withRadiotap(std::uint8_t flags, const Bytes& frame) {
    Bytes packet = {0x00, 0x00, 0x0A, 0x00, 0x22, 0x00, 0x00, 0x00, flags, 0xC4};  // -60 dBm
    append(packet, frame);
    return packet;
}

struct Reading {
    std::vector<CaptureReader::Frame> frames;
    std::vector<std::string> elements;  // of each beacon, in hexadecimal
    CaptureSummary summary;
    std::string error;
};

Reading readAll(const std::string& path) {
    Reading reading;
    auto reader = CaptureReader::open(path);
    if (!reader) {
        reading.error = reader.error().text;
        return reading;
    }
    while (auto frame = reader->next()) {
        if (frame->beacon()) {
            reading.elements.push_back(ByteBuffer(frame->beacon()->elements).hex());
        }
        reading.frames.push_back(*frame);
    }
    reading.summary = reader->summary();
    if (reader->error()) reading.error = reader->error()->text;
    EXPECT_FALSE(reader->next());  // the end stays the end
    return reading;
}

class CaptureReaderTest : public ::testing::Test {
  protected:
    Reading readBytes(const Bytes& bytes) { return readAll(folder_.write("file.pcap", bytes)); }

    TemporaryFolder folder_;
};

TEST_F(CaptureReaderTest, ReadsBothFormatsInBothByteOrders) {
    const std::vector<Packet> packets = {{beacon(1)}, {changed(beacon(2), 0, 0x50)}, {beacon(3)}};
    for (const Order order : {Order::Little, Order::Big}) {
        for (const Bytes& file :
             {pcapFile(kBare, order, packets), pcapngFile(kBare, order, packets)}) {
            const Reading reading = readBytes(file);
            EXPECT_EQ(reading.error, "");
            ASSERT_EQ(reading.frames.size(), 3u);
            EXPECT_EQ(reading.frames[2].number, 3u);
            EXPECT_EQ(reading.frames[2].beacon()->bssid.text(), "02:00:00:00:00:03");
            EXPECT_FALSE(reading.frames[2].isCut);
            EXPECT_THAT(reading.elements, ::testing::Each("000161"));
            EXPECT_EQ(reading.summary.text(),
                      "frames read: 3, beacons: 2, probe responses: 1, skipped: 0");
        }
    }
}

TEST_F(CaptureReaderTest, CountsWhatItSkipsByReason) {
    const Bytes broken = {0x01, 0x00, 0x08, 0x00, 0x00, 0x00, 0x00, 0x00};
    const Reading reading =
        readBytes(pcapFile(kRadiotap, Order::Little,
                           {{withRadiotap(0x00, changed(beacon(), 0, 0x08))},  // data
                            {withRadiotap(0x00, changed(beacon(), 0, 0xB4))},  // request to send
                            {withRadiotap(0x00, changed(beacon(), 22, 0x11))},
                            {withRadiotap(0x00, changed(beacon(), 1, 0x40))},
                            {withRadiotap(0x00, {0x80, 0x00, 0x00})},
                            {withRadiotap(0x50, beacon())},
                            {broken},
                            {withRadiotap(0x00, beacon())}}));
    ASSERT_EQ(reading.frames.size(), 8u);
    EXPECT_EQ(reading.frames[7].number, 8u);
    EXPECT_EQ(reading.frames[7].radio.signalDBm, -60);
    EXPECT_EQ(reading.summary.text(),
              "frames read: 8, beacons: 1, probe responses: 0, skipped: 7 (other frames: 2, "
              "fragments: 1, encrypted: 1, short: 1, damaged: 1, malformed radio headers: 1)");
}

TEST_F(CaptureReaderTest, CutsTheFrameCheckSequenceOff) {
    Bytes frame = beacon();
    append(frame, {0xDE, 0xAD, 0xBE, 0xEF});
    const Reading reading = readBytes(pcapFile(
        kRadiotap, Order::Little, {{withRadiotap(0x10, frame)}, {withRadiotap(0x00, frame)}}));
    ASSERT_EQ(reading.elements.size(), 2u);
    EXPECT_EQ(reading.elements[0], "000161");
    EXPECT_EQ(reading.elements[1], "000161deadbeef");  // no flag: they may be elements
}

TEST_F(CaptureReaderTest, CutsOnlyWhatASnapshotKeptOfTheFrameCheckSequence) {
    for (std::size_t notKept = 0; notKept <= 7; ++notKept) {
        Bytes frame = beacon();
        append(frame, {0xDE, 0xAD, 0xBE, 0xEF});
        const std::size_t withoutFCS = 3 - (notKept > 4 ? notKept - 4 : 0);
        frame.resize(frame.size() - notKept);
        const Reading reading =
            readBytes(pcapFile(kRadiotap, Order::Little, {{withRadiotap(0x10, frame), notKept}}));
        ASSERT_EQ(reading.elements.size(), 1u);
        EXPECT_EQ(reading.elements[0], std::string("000161").substr(0, 2 * withoutFCS));
        EXPECT_EQ(reading.frames[0].isCut, notKept > 0);
    }
}

// The upper four bits of the link-type word count the octets in pairs; some write octets.
constexpr unsigned kTellsFCS = 0x04000000, kFCSWords = 2u << 28, kFCSOctets = 4u << 28;

Bytes withFCS(Bytes frame) {
    appendNumber(frame, frameCheckSequence(frame), 4, Order::Little);
    return frame;
}

TEST_F(CaptureReaderTest, CutsTheFrameCheckSequenceThatTheLinkTypeTells) {
    const std::vector<Packet> packets = {{withFCS(beacon())}};
    const std::string withSequence = "000161" + ByteBuffer(withFCS(beacon())).hex().substr(78);
    for (const Order order : {Order::Little, Order::Big}) {
        for (const auto& [word, elements] : {
                 std::pair{kBare | kTellsFCS | kFCSWords, std::string("000161")},
                 std::pair{kBare | kTellsFCS | kFCSOctets, std::string("000161")},
                 std::pair{kBare | kTellsFCS, withSequence},  // none
                 std::pair{kBare | kFCSWords, withSequence},  // not told
                 std::pair{kBare, withSequence},
             }) {
            const Reading reading = readBytes(pcapFile(word, order, packets));
            EXPECT_EQ(reading.error, "");
            EXPECT_THAT(reading.elements, ::testing::ElementsAre(elements)) << std::hex << word;
        }
    }
}

TEST_F(CaptureReaderTest, HandsOutTheFrameCheckSequenceThatTheLinkTypeTells) {
    for (std::size_t notKept = 0; notKept <= 7; ++notKept) {
        Bytes frame = withFCS(beacon());
        const Bytes whole = frame;
        frame.resize(frame.size() - notKept);
        const std::size_t withoutFCS = 3 - (notKept > 4 ? notKept - 4 : 0);
        const std::string path = folder_.write(
            "file.pcap",
            pcapFile(kBare | kTellsFCS | kFCSWords, Order::Little, {{frame, notKept}}));
        auto reader = CaptureReader::open(path);
        ASSERT_TRUE(reader);
        const auto read = reader->next();
        ASSERT_TRUE(read && read->beacon());
        EXPECT_TRUE(read->radio.hasFCS);
        EXPECT_EQ(read->isCut, notKept > 0);
        EXPECT_EQ(read->radio.frame.size(), frame.size());
        EXPECT_EQ(read->beacon()->elements.size(), withoutFCS);
    }
}

// A radiotap header can tell of a frame check sequence, and this one does not.
TEST_F(CaptureReaderTest, BelievesARadioHeaderUnlessTheFrameShowsOtherwise) {
    const unsigned word = kRadiotap | kTellsFCS | kFCSWords;
    const Reading reading = readBytes(pcapFile(word, Order::Little,
                                               {{withRadiotap(0x00, beacon())},
                                                {withRadiotap(0x00, withFCS(beacon()))},
                                                {withRadiotap(0x10, withFCS(beacon()))},
                                                {{0x01, 0x00, 0x08, 0x00}}}));
    EXPECT_THAT(reading.elements, ::testing::ElementsAre("000161", "000161", "000161"));
    ASSERT_EQ(reading.frames.size(), 4u);
    EXPECT_EQ(reading.frames[3].content.error(), SkipReason::MalformedHeader);
    EXPECT_FALSE(reading.frames[3].radio.hasFCS);
}

TEST_F(CaptureReaderTest, TellsTheTimeOfEachFrame) {
    Bytes file = pcapFile(kBare, Order::Big, {{beacon(1)}});
    EXPECT_EQ(readBytes(file).frames.at(0).time, 1700000000'000000000);
    file[31] = 7;  // the fraction's last octet
    EXPECT_EQ(readBytes(file).frames.at(0).time, 1700000000'000007000);
    file[2] = 0x3C, file[3] = 0x4D;  // the magic of nanoseconds
    EXPECT_EQ(readBytes(file).frames.at(0).time, 1700000000'000000007);
    for (const std::size_t i : {24u, 25u, 26u, 27u}) file[i] = 0xFF;
    EXPECT_EQ(readBytes(file).frames.at(0).time, 4294967295'000000007);  // in the year 2106
}

TEST_F(CaptureReaderTest, CallsAFrameThatIsShorterThanItsCheckSequenceShort) {
    for (std::size_t size = 0; size < 6; ++size) {
        const Reading reading = readBytes(
            pcapFile(kRadiotap, Order::Little, {{withRadiotap(0x10, Bytes(size, 0x80))}}));
        ASSERT_EQ(reading.frames.size(), 1u);
        EXPECT_EQ(reading.frames[0].content.error(), SkipReason::Short) << size;
    }
}

TEST_F(CaptureReaderTest, DeliversEverythingBeforeACut) {
    const std::vector<Packet> packets = {{beacon(1)}, {beacon(2)}};
    const std::size_t record = 16 + beacon().size();
    const Bytes whole = pcapFile(kBare, Order::Little, packets);
    for (std::size_t size = 24; size < whole.size(); ++size) {
        const Reading reading =
            readBytes(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
        const std::size_t kept = (size - 24) / record;
        EXPECT_EQ(reading.frames.size(), kept) << size;
        if ((size - 24) % record == 0) {
            EXPECT_EQ(reading.error, "");
        } else {
            const std::string read = kept == 0 ? "no frame was read" : "1 frame was read";
            EXPECT_THAT(reading.error, EndsWith("/file.pcap: ends in the middle of frame " +
                                                std::to_string(kept + 1) + "; " + read));
        }
    }
}

TEST_F(CaptureReaderTest, SurvivesEveryCutOfAPcapngFile) {
    const Bytes whole = pcapngFile(kBare, Order::Big, {{beacon(1)}, {beacon(2)}});
    const std::size_t lastBlock = (whole.size() - (28 + 20)) / 2;
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const Reading reading =
            readBytes(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
        const bool isWholeBlocks = size == whole.size() - lastBlock || size == 28 + 20;
        EXPECT_EQ(reading.error.empty(), isWholeBlocks) << size << reading.error;
        EXPECT_EQ(reading.frames.size(), size < 28 + 20 + lastBlock ? 0u : 1u) << size;
    }
}

TEST_F(CaptureReaderTest, NamesTheFileAndWhatIsWrongWithIt) {
    const auto errorOf = [](const std::string& path) {
        const auto reader = CaptureReader::open(path);
        EXPECT_FALSE(reader) << path;
        return reader ? "" : reader.error().text;
    };
    const std::string missing = (folder_.path() / "missing.pcap").string();
    EXPECT_EQ(errorOf(missing), missing + ": No such file or directory");
    EXPECT_EQ(errorOf(folder_.path().string()), folder_.path().string() + ": Is a directory");
    const std::string empty = folder_.write("empty.pcap", {});
    EXPECT_EQ(errorOf(empty), empty + ": the file is empty");
    const std::string text = folder_.write("notes.txt", Bytes(100, 'n'));
    EXPECT_THAT(errorOf(text), StartsWith(text + ": not a readable capture: "));
    const std::string brief = folder_.write("brief.pcap", Bytes{0xD4, 0xC3, 0xB2, 0xA1, 0x02});
    EXPECT_THAT(errorOf(brief), StartsWith(brief + ": not a readable capture: truncated"));
    const std::string ethernet =
        folder_.write("ethernet.pcap", pcapFile(1, Order::Little, {{Bytes(60, 0)}}));
    EXPECT_EQ(errorOf(ethernet), ethernet + ": holds Ethernet frames, no 802.11 (link type 1)");
    EXPECT_EQ(CaptureReader::open(ethernet).error().hint,
              "capture in monitor mode: sudo iw dev wlan1 set type monitor");
    const std::string unnamed =
        folder_.write("unnamed.pcap", pcapFile(146, Order::Little, {{Bytes(60, 0)}}));
    EXPECT_THAT(errorOf(unnamed), EndsWith(": holds frames of link type 146, no 802.11"));
    EXPECT_EQ(CaptureReader::open(missing).error().hint, "");
}

TEST_F(CaptureReaderTest, NamesAFileThatMayNotBeRead) {
    const std::string path = folder_.write("secret.pcap", pcapFile(kBare, Order::Little, {}));
    std::filesystem::permissions(path, std::filesystem::perms::none);
    if (::access(path.c_str(), R_OK) == 0) GTEST_SKIP() << "this user may read everything";
    const auto reader = CaptureReader::open(path);
    ASSERT_FALSE(reader);
    EXPECT_EQ(reader.error().text, path + ": Permission denied");
}

TEST_F(CaptureReaderTest, ReadsACaptureWithoutFramesToItsEnd) {
    const Reading reading = readBytes(pcapFile(kRadiotap, Order::Big, {}));
    EXPECT_EQ(reading.error, "");
    EXPECT_EQ(reading.summary.text(), "frames read: 0, beacons: 0, probe responses: 0, skipped: 0");
}

TEST_F(CaptureReaderTest, TellsHowFarItIs) {
    const Bytes bytes = pcapFile(kBare, Order::Little, {{beacon(1)}, {beacon(2)}});
    auto reader = CaptureReader::open(folder_.write("file.pcap", bytes));
    ASSERT_TRUE(reader);
    EXPECT_EQ(reader->fileSize(), bytes.size());
    std::uint64_t previous = 0;
    while (reader->next()) {
        EXPECT_GT(reader->bytesRead(), previous);
        previous = reader->bytesRead();
    }
    EXPECT_EQ(previous, bytes.size());
}

TEST_F(CaptureReaderTest, AddsSummariesUp) {
    CaptureSummary sum;
    CaptureSummary part;
    part.frames = 4;
    part.beacons = 2;
    part.probeResponses = 1;
    part.skipped[1] = 1;
    sum.add(part);
    sum.add(part);
    EXPECT_EQ(sum.text(),
              "frames read: 8, beacons: 4, probe responses: 2, skipped: 2 (fragments: 2)");
}

// Only a child process can replace standard input.
TEST_F(CaptureReaderTest, ReadsStandardInput) {
    const std::string path = folder_.write("in.pcap", pcapFile(kBare, Order::Little, {{beacon()}}));
    const auto readInput = [&](const std::string& file) {
        if (!std::freopen(file.c_str(), "rb", stdin)) std::_Exit(2);
        auto reader = CaptureReader::open("-");
        const std::string error = reader ? "" : reader.error().text;
        std::uint64_t frames = 0;
        while (reader && reader->next()) ++frames;
        std::fprintf(stderr, "frames %d, error '%s'", static_cast<int>(frames), error.c_str());
        std::_Exit(0);
    };
    EXPECT_EXIT(readInput(path), ::testing::ExitedWithCode(0), "frames 1, error ''");
    EXPECT_EXIT(readInput(folder_.write("empty", {})), ::testing::ExitedWithCode(0),
                "frames 0, error 'standard input: the file is empty'");
}

// An independent reader has counted these over real captures.
TEST(CaptureReader, CountsTheFramesOfRealCaptures) {
    struct Row {
        const char* name;
        std::uint64_t frames, beacons, probeResponses;
    };
    const std::filesystem::path folder = HALVANE_CAPTURES;
    if (!std::filesystem::exists(folder)) GTEST_SKIP() << folder << " is not there";
    for (const Row& row : {
             Row{"sample-captures-wpa-Induction.pcap", 1093, 398, 26},
             Row{"WPA3-Attacks-IDS-group_unsupp.pcapng", 95, 62, 5},
             Row{"airodump-80211-sample3.pcap", 1934, 130, 20},
             Row{"wifite2-handshake_not_exists.cap", 1112, 23, 7},
             Row{"packetnet-80211_per_packet_information.pcap", 4, 1, 0},
             Row{"aircrack-ng-wpa.cap", 13, 1, 0},
             Row{"aircrack-ng-Chinese-SSID-Name.pcap", 1, 1, 0},
             Row{"trac-attachments-x.pcap", 2, 2, 0},
         }) {
        const Reading reading = readAll((folder / row.name).string());
        EXPECT_EQ(reading.error, "") << row.name;
        EXPECT_EQ(reading.summary.frames, row.frames) << row.name;
        EXPECT_EQ(reading.summary.beacons, row.beacons) << row.name;
        EXPECT_EQ(reading.summary.probeResponses, row.probeResponses) << row.name;
    }
}

// Another implementation of the check has counted these over real captures. The second capture
// holds damaged frames whose radio headers do not say so.
TEST(CaptureReader, HandsOutFramesWithTheirCheckSequences) {
    struct Row {
        const char* name;
        int intact, others;
    };
    const std::filesystem::path folder = HALVANE_CAPTURES;
    if (!std::filesystem::exists(folder)) GTEST_SKIP() << folder << " is not there";
    for (const Row& row : {
             Row{"airodump-80211-sample3.pcap", 1934, 0},
             Row{"sample-captures-wpa-Induction.pcap", 1080, 13},
         }) {
        auto reader = CaptureReader::open((folder / row.name).string());
        ASSERT_TRUE(reader) << row.name;
        int intact = 0, others = 0;
        while (const auto frame = reader->next()) {
            EXPECT_TRUE(frame->radio.hasFCS) << row.name;
            ++(endsInItsFCS(frame->radio.frame) ? intact : others);
        }
        EXPECT_EQ(intact, row.intact) << row.name;
        EXPECT_EQ(others, row.others) << row.name;
    }
}

}  // namespace
