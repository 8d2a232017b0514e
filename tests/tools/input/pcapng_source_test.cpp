// pcapng, through the reader of captures.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/capture/beacon_frame.h"
#include "halvane/capture/fcs.h"

#include "tests/support/capture_bytes.h"
#include "tests/support/peak_memory.h"
#include "tests/support/temporary_folder.h"
#include "tools/halvane/input/capture_reader.h"

using halvane::ByteBuffer;
using halvane::testing::append;
using halvane::testing::appendNumber;
using halvane::testing::beaconFrame;
using halvane::testing::Bytes;
using halvane::testing::Order;
using halvane::testing::PcapngBytes;
using halvane::testing::PeakMemory;
using halvane::testing::TemporaryFolder;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Optional;
using ::testing::StartsWith;
using namespace halvane::capture;
using namespace halvane::tool;

namespace {

constexpr unsigned kBare = PcapngBytes::kBare, kRadiotap = PcapngBytes::kRadiotap,
                   kEthernet = PcapngBytes::kEthernet;
constexpr std::int64_t kSecond = 1'000'000'000;

struct Reading {
    std::vector<std::string> bssids;    // of the beacons
    std::vector<std::string> elements;  // likewise
    std::vector<std::uint64_t> numbers;
    std::vector<std::optional<std::int64_t>> times;
    std::vector<bool> areCut;
    std::string error;
    std::string fault;  // the error without the file's name
    std::string note;
};

Bytes withRadiotap(const Bytes& frame) {
    Bytes packet = {0x00, 0x00, 0x09, 0x00, 0x20, 0x00, 0x00, 0x00, 0xC4};  // -60 dBm
    append(packet, frame);
    return packet;
}

Bytes withFCS(Bytes frame) {
    appendNumber(frame, frameCheckSequence(frame), 4, Order::Little);
    return frame;
}

class PcapngSource : public ::testing::Test {
  protected:
    Reading read(const Bytes& bytes) {
        path_ = folder_.write("file", bytes);
        Reading reading;
        auto reader = CaptureReader::open(path_);
        if (!reader) {
            reading.error = reader.error().text;
            EXPECT_THAT(reading.error, StartsWith(path_ + ": "));
            reading.fault = reading.error.substr(path_.size());
            return reading;
        }
        while (const auto frame = reader->next()) {
            reading.numbers.push_back(frame->number);
            reading.times.push_back(frame->time);
            reading.areCut.push_back(frame->isCut);
            if (!frame->beacon()) continue;
            reading.bssids.push_back(frame->beacon()->bssid.text());
            reading.elements.push_back(ByteBuffer(frame->beacon()->elements).hex());
        }
        if (reader->error()) reading.error = reader->error()->text;
        reading.fault = reading.error.substr(std::min(path_.size(), reading.error.size()));
        reading.note = reader->note().value_or("");
        EXPECT_EQ(reader->summary().frames, reading.numbers.size());
        return reading;
    }
    Reading read(const PcapngBytes& file) { return read(file.bytes()); }

    // Reads one good packet and then the bad block: what the error says of it.
    std::string faultBehindOnePacket(const PcapngBytes& file) {
        const Reading reading = read(file);
        EXPECT_THAT(reading.numbers, ElementsAre(1));
        const std::string start = path_ + ": cannot be read beyond frame 1: ";
        EXPECT_THAT(reading.error, StartsWith(start));
        return reading.error.substr(std::min(start.size(), reading.error.size()));
    }

    TemporaryFolder folder_;
    std::string path_;
};

PcapngBytes onePacket() {
    return PcapngBytes().addInterface(kBare).addPacket(0, beaconFrame(1));  // ends at octet 120
}

TEST_F(PcapngSource, ReadsEveryKindOfPacketBlock) {
    for (const Order order : {Order::Little, Order::Big}) {
        const Reading reading = read(PcapngBytes(order)
                                         .addInterface(kBare)
                                         .addPacket(0, beaconFrame(1), 5)
                                         .addObsoletePacket(0, beaconFrame(2), 6)
                                         .addSimplePacket(beaconFrame(3), beaconFrame(3).size()));
        EXPECT_EQ(reading.error, "");
        EXPECT_THAT(reading.bssids,
                    ElementsAre("02:00:00:00:00:01", "02:00:00:00:00:02", "02:00:00:00:00:03"));
        EXPECT_THAT(reading.elements, ::testing::Each("000161"));
        EXPECT_THAT(reading.times, ElementsAre(Optional(5000), Optional(6000), std::nullopt));
    }
}

TEST_F(PcapngSource, ReadsEachPacketByItsInterface) {
    PcapngBytes file;
    file.addInterface(kRadiotap, {}, 100).addInterface(kBare, {}, 65535);
    file.addPacket(1, beaconFrame(1)).addPacket(0, withRadiotap(beaconFrame(2)));
    file.addInterface(kRadiotap, {}, 0).addPacket(2, withRadiotap(beaconFrame(3)));
    const Reading reading = read(file);
    EXPECT_EQ(reading.error, "");
    EXPECT_THAT(reading.bssids,
                ElementsAre("02:00:00:00:00:01", "02:00:00:00:00:02", "02:00:00:00:00:03"));
    EXPECT_EQ(reading.note, "");
}

TEST_F(PcapngSource, ReadsSectionsOfEitherByteOrder) {
    PcapngBytes file(Order::Big);
    file.addInterface(kBare).addPacket(0, beaconFrame(1));
    file.addSection(Order::Little, 1, file.option(1, Bytes(5, 'c')));
    file.addInterface(kRadiotap).addPacket(0, withRadiotap(beaconFrame(2)));
    file.addSection(Order::Big).addInterface(kBare).addPacket(0, beaconFrame(3));
    const Reading reading = read(file);
    EXPECT_EQ(reading.error, "");
    EXPECT_THAT(reading.bssids,
                ElementsAre("02:00:00:00:00:01", "02:00:00:00:00:02", "02:00:00:00:00:03"));
}

TEST_F(PcapngSource, ForgetsTheInterfacesOfTheSectionBefore) {
    PcapngBytes file = onePacket();
    file.addSection(Order::Little).addPacket(0, beaconFrame(2));
    EXPECT_EQ(faultBehindOnePacket(file),
              "block 5 at octet 148: it is of interface 0, and 0 are described");
}

TEST_F(PcapngSource, PassesOverBlocksWithoutPackets) {
    PcapngBytes file;
    for (const std::uint32_t type : {4u, 5u, 7u, 0xAu, 0xBADu, 0x40000BADu, 0x80000001u}) {
        file.addBlock(type, Bytes(type % 7, 0xFF));
    }
    file.addInterface(kBare).addBlock(4, Bytes(1 << 20, 0xFF)).addPacket(0, beaconFrame());
    file.addBlock(5, Bytes(12, 0));
    const Reading reading = read(file);
    EXPECT_EQ(reading.error, "");
    EXPECT_THAT(reading.numbers, ElementsAre(1));
}

TEST_F(PcapngSource, TellsTimesInNanoseconds) {
    PcapngBytes file;
    file.addInterface(kBare);                                      // microseconds
    file.addInterface(kBare, file.option(9, {9}));                 // nanoseconds
    file.addInterface(kBare, file.option(9, {0x80 | 10}));         // 1/1024 s
    Bytes options = file.option(1, Bytes(3, 'c'));                 // a comment
    append(options, file.option(9, {3}));                          // milliseconds
    append(options, file.option(14, file.number(1700000000, 8)));  // from then on
    append(options, file.option(0, {}));
    file.addInterface(kBare, options);
    file.addInterface(kBare, file.option(14, file.number(static_cast<std::uint64_t>(-2), 8)));
    for (std::uint32_t i = 0; i < 5; ++i) file.addPacket(i, beaconFrame(), 1536);
    file.addPacket(1, beaconFrame(), UINT64_MAX);
    const Reading reading = read(file);
    EXPECT_EQ(reading.error, "");
    EXPECT_THAT(reading.times,
                ElementsAre(Optional(1536000), Optional(1536), Optional(kSecond * 3 / 2),
                            Optional(kSecond * 1700000001 + 536000000),
                            Optional(-2 * kSecond + 1536000), std::nullopt));
}

TEST_F(PcapngSource, ReadsWhatSnapshotsKept) {
    const Bytes frame = beaconFrame();
    const Bytes start(frame.begin(), frame.end() - 2);
    PcapngBytes file;
    file.addInterface(kBare, {}, static_cast<std::uint32_t>(start.size()));
    file.addPacket(0, start, 0, {}, 2).addSimplePacket(start, frame.size());
    const Reading reading = read(file);
    EXPECT_EQ(reading.error, "");
    EXPECT_THAT(reading.areCut, ElementsAre(true, true));
    EXPECT_THAT(reading.elements, ElementsAre("00", "00"));
}

TEST_F(PcapngSource, CutsTheFrameCheckSequenceThatTheFileTells) {
    PcapngBytes file;
    file.addInterface(kBare, file.option(13, {4})).addInterface(kBare, file.option(13, {32}));
    file.addInterface(kBare, file.option(13, {0})).addInterface(kBare);
    for (std::uint32_t i = 0; i < 4; ++i) file.addPacket(i, withFCS(beaconFrame()));
    // The packet's own word: four octets, and none.
    file.addPacket(3, withFCS(beaconFrame()), 0, file.option(2, file.number(4 << 5, 4)));
    file.addPacket(0, beaconFrame(), 0, file.option(2, file.number(1 << 5, 4)));
    const Reading reading = read(file);
    EXPECT_EQ(reading.error, "");
    ASSERT_EQ(reading.elements.size(), 6u);
    EXPECT_EQ(reading.elements[0], "000161");
    EXPECT_EQ(reading.elements[1], "000161");
    EXPECT_EQ(reading.elements[2].size(), 14u);
    EXPECT_EQ(reading.elements[3].size(), 14u);
    EXPECT_EQ(reading.elements[4], "000161");
    EXPECT_EQ(reading.elements[5], "000161");
}

TEST_F(PcapngSource, CountsWhatIsNoWiFiAndGoesOn) {
    PcapngBytes file;
    file.addInterface(kEthernet).addInterface(kBare);
    file.addPacket(0, Bytes(60, 0)).addPacket(1, beaconFrame(1)).addPacket(0, Bytes(60, 0));
    file.addPacket(1, beaconFrame(2));
    const Reading reading = read(file);
    EXPECT_EQ(reading.error, "");
    EXPECT_THAT(reading.numbers, ElementsAre(2, 4));
    EXPECT_EQ(reading.note, path_ +
                                ": 1 interface is not 802.11, but of link type EN10MB (Ethernet): "
                                "its 2 frames are passed over");
    file.addInterface(113).addPacket(2, Bytes(60, 0));
    EXPECT_THAT(read(file).note,
                EndsWith(": 2 interfaces are not 802.11, but of link type EN10MB (Ethernet) and "
                         "others: their 3 frames are passed over"));
}

TEST_F(PcapngSource, RefusesAFileOfOtherFramesAlone) {
    const std::string text = ": holds Ethernet frames, no 802.11 (link type 1)";
    PcapngBytes file;
    file.addInterface(kEthernet);
    EXPECT_EQ(read(file).fault, text);
    file.addPacket(0, Bytes(60, 0)).addInterface(113);
    EXPECT_EQ(read(file).fault, text);
    file.addPacket(1, Bytes(60, 0));
    EXPECT_EQ(read(file).fault, text);
    file.addInterface(kBare);  // one that is 802.11 after all
    EXPECT_EQ(read(file).error, "");
    EXPECT_THAT(read(file).note, HasSubstr("2 interfaces"));
}

TEST_F(PcapngSource, RefusesWhatDescribesNothing) {
    EXPECT_EQ(read(PcapngBytes()).fault, ": not a readable capture: it describes no interface");
    EXPECT_EQ(read(Bytes{0x0A, 0x0D, 0x0D, 0x0A, 28, 0, 0, 0, 1, 2, 3, 4, 0, 0, 0, 0}).fault,
              ": not a readable capture: block 1 at octet 0: its byte-order magic is neither "
              "of the two");
    EXPECT_EQ(read(Bytes{0x0A, 0x0D, 0x0D, 0x0A, 28, 0}).fault,
              ": not a readable capture: block 1 at octet 0: the file is truncated: 6 octets "
              "are no block");
    EXPECT_EQ(read(PcapngBytes().addSection(Order::Little, 2)).fault,
              ": not a readable capture: block 2 at octet 28: its version is 2.0, not 1.0");
}

TEST_F(PcapngSource, NamesTheBlockOfAFault) {
    const std::string at = "block 4 at octet 120: ";
    EXPECT_EQ(faultBehindOnePacket(onePacket().addBlock(5, Bytes(4, 0), 20)),
              at + "its lengths at both ends differ: 16 and 20");
    EXPECT_EQ(faultBehindOnePacket(onePacket().addBlock(6, Bytes(20, 0), 20)),
              at + "its lengths at both ends differ: 32 and 20");
    EXPECT_EQ(faultBehindOnePacket(onePacket().addBlock(6, Bytes(16, 0))),
              at + "it ends before its packet");
    EXPECT_EQ(faultBehindOnePacket(onePacket().addPacket(1, beaconFrame())),
              at + "it is of interface 1, and 1 are described");
    EXPECT_EQ(faultBehindOnePacket(onePacket().addBlock(1, Bytes(4, 0))),
              at + "it ends before its snapshot length");
    EXPECT_EQ(faultBehindOnePacket(onePacket().addInterface(kBare, {9, 0, 5, 0})),
              at + "it ends inside an option");
    EXPECT_EQ(faultBehindOnePacket(onePacket().addPacket(0, {}, 0, {9, 0, 0, 0, 9, 0, 1, 0})),
              at + "it ends inside an option");
    EXPECT_EQ(faultBehindOnePacket(onePacket().addSimplePacket(Bytes(8, 0), 9)),
              at + "its packet of 9 octets does not fit into it");
    EXPECT_EQ(faultBehindOnePacket(onePacket().addPacket(0, Bytes(262145, 0))),
              at + "its packet of 262145 octets is above 262144");
}

// Of a block of its own, only what begins as a packet is a frame.
TEST_F(PcapngSource, TellsThatAFrameIsCut) {
    const std::size_t first = onePacket().bytes().size();
    const Bytes whole = onePacket().addPacket(0, beaconFrame(2)).addBlock(5, Bytes(4, 0)).bytes();
    const std::size_t second = whole.size() - 16;
    for (std::size_t size = first + 1; size < whole.size(); ++size) {
        if (size == second) continue;
        const Bytes part(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        const bool isFrame = size >= first + 4 && size < second;
        EXPECT_THAT(read(part).fault,
                    isFrame ? StartsWith(": ends in the middle of frame 2; 1 frame was read")
                            : StartsWith(": cannot be read beyond frame "))
            << size;
    }
    Bytes none = PcapngBytes().addInterface(kBare).bytes();
    for (const std::uint32_t number : {6u, 64u, 0u}) {
        appendNumber(none, number, 4, Order::Little);
    }
    EXPECT_EQ(read(none).fault, ": ends in the middle of frame 1; no frame was read");
}

TEST_F(PcapngSource, NamesALengthThatNoBlockHas) {
    for (const std::uint32_t length : {0u, 8u, 11u, 13u, 0xFFFFFFFFu}) {
        Bytes bytes = onePacket().bytes();
        for (const std::uint32_t number : {5u, length, 0u, 0u}) {
            appendNumber(bytes, number, 4, Order::Little);
        }
        EXPECT_THAT(read(bytes).error,
                    EndsWith("block 4 at octet 120: its length of " + std::to_string(length) +
                             " octets is not 12 or more in steps of 4"));
    }
}

// A block that tells a giant length costs neither memory nor time.
TEST_F(PcapngSource, KeepsMemoryBounded) {
    for (const std::uint32_t type : {4u, 6u}) {
        Bytes bytes = onePacket().bytes();
        for (const std::uint32_t number : {type, 0xFFFFFFFCu, 0u, 0u}) {
            appendNumber(bytes, number, 4, Order::Little);
        }
        const PeakMemory memory;
        const std::string error = read(bytes).error;
        EXPECT_LT(memory.bytes(), std::size_t{2} << 20);
        EXPECT_THAT(error, type == 4
                               ? EndsWith("block 4 at octet 120: the file is truncated: the block "
                                          "has 16 of its 4294967292 octets")
                               : EndsWith("block 4 at octet 120: its length of 4294967292 octets "
                                          "is above 16777216"));
    }
}

TEST_F(PcapngSource, ReadsTheLargestPacket) {
    Bytes frame = beaconFrame();
    frame.resize(262144);
    EXPECT_EQ(read(onePacket().addPacket(0, frame).addPacket(0, beaconFrame())).error, "");
}

// Whatever one octet becomes, the reading ends, and frames keep their order.
TEST_F(PcapngSource, SurvivesEveryChangedOctet) {
    PcapngBytes file;
    file.addInterface(kBare, file.option(9, {9})).addPacket(0, beaconFrame(1));
    file.addObsoletePacket(0, beaconFrame(2)).addSimplePacket(beaconFrame(3), 39);
    file.addBlock(4, Bytes(8, 0));
    for (std::size_t i = 0; i < file.bytes().size(); ++i) {
        for (const int value : {0x00, 0x01, 0x7F, 0x80, 0xFF}) {
            Bytes bytes = file.bytes();
            bytes[i] = static_cast<std::uint8_t>(value);
            EXPECT_LE(read(bytes).numbers.size(), 3u);
        }
    }
}

}  // namespace
