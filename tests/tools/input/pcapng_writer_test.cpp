#include "tools/halvane/input/pcapng_writer.h"

#include <algorithm>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

#include "halvane/capture/link_type.h"

#include "tests/support/capture_bytes.h"
#include "tests/support/child_process.h"
#include "tests/support/file_size_limit.h"
#include "tests/support/run_program.h"
#include "tests/support/temporary_folder.h"
#include "tools/halvane/input/input_stream.h"
#include "tools/halvane/input/packet_source.h"

using halvane::capture::LinkType;
using halvane::testing::append;
using halvane::testing::beaconFrame;
using halvane::testing::Bytes;
using halvane::testing::contentsOf;
using halvane::testing::isTrueInChild;
using halvane::testing::limitFileSize;
using halvane::testing::Order;
using halvane::testing::PcapngBytes;
using halvane::testing::runProgram;
using halvane::testing::TemporaryFolder;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using namespace halvane::tool;

namespace {

constexpr std::int64_t kTime = 1'700'000'000'123'456'789;

struct Read {
    Bytes bytes;
    std::uint32_t interface = 0;
    LinkType linkType = LinkType::IEEE80211;
    std::size_t originalLength = 0;
    std::optional<std::int64_t> time;

    bool operator==(const Read&) const = default;
};

struct Reading {
    std::vector<Read> packets;
    std::string fault;
};

Reading readBack(const std::string& path) {
    Reading reading;
    auto stream = InputStream::open(path);
    if (!stream) return {{}, stream.error()};
    auto source = openPcapng(std::make_unique<InputStream>(std::move(*stream)));
    if (!source) return {{}, source.error().text};
    for (;;) {
        const NextPacket packet = (*source)->next();
        if (!packet) reading.fault = packet.error().text;
        if (!packet || !*packet) return reading;
        reading.packets.push_back({{(*packet)->bytes.begin(), (*packet)->bytes.end()},
                                   (*packet)->interface,
                                   (*packet)->linkType,
                                   (*packet)->originalLength,
                                   (*packet)->time});
    }
}

Bytes withRadiotap(const Bytes& frame) {
    Bytes packet = {0x00, 0x00, 0x09, 0x00, 0x20, 0x00, 0x00, 0x00, 0xC4};  // -60 dBm
    append(packet, frame);
    return packet;
}

Packet packetOf(const Bytes& bytes, std::uint32_t interface = 0,
                std::optional<std::int64_t> time = kTime) {
    return {.linkType = LinkType::Radiotap,
            .bytes = bytes,
            .originalLength = bytes.size(),
            .time = time,
            .interface = interface};
}

const std::vector<WrittenInterface> kOne = {{"wlan1mon", LinkType::Radiotap, 262144}};
const std::vector<WrittenInterface> kTwo = {{"wlan1mon", LinkType::Radiotap, 262144},
                                            {"wlan2", LinkType::IEEE80211, 100}};

class PcapngWriterFile : public ::testing::Test {
  protected:
    PcapngWriter create(const std::vector<WrittenInterface>& interfaces = kOne) {
        auto writer = PcapngWriter::create(path_, interfaces, "halvane 1.2.3");
        EXPECT_TRUE(writer) << writer.error();
        return std::move(*writer);
    }

    Bytes octets() const {
        const std::string text = contentsOf(path_);
        return {text.begin(), text.end()};
    }

    TemporaryFolder folder_;
    std::string path_ = (folder_.path() / "written.pcapng").string();
};

TEST_F(PcapngWriterFile, HasTheStatedBlocks) {
    const Bytes packet = withRadiotap(beaconFrame(1));
    {
        PcapngWriter writer = create();
        EXPECT_EQ(writer.add(packetOf(packet)), std::nullopt);
        EXPECT_EQ(writer.addCounts(0, kTime, 7, 2), std::nullopt);
    }
    // The same, by the bytes of other tests.
    PcapngBytes expected(Order::Little);
    const auto text = [](const std::string& value) { return Bytes(value.begin(), value.end()); };
    Bytes section = expected.number(0x1A2B3C4D, 4);
    append(section, expected.number(1, 2));
    append(section, expected.number(0, 2));
    append(section, expected.number(UINT64_MAX, 8));
    append(section, expected.option(4, text("halvane 1.2.3")));
    append(section, expected.number(0, 4));
    Bytes options = expected.option(2, text("wlan1mon"));
    append(options, expected.option(9, {9}));
    append(options, expected.number(0, 4));
    Bytes counts = expected.number(0, 4);
    append(counts, expected.number(kTime >> 32, 4));
    append(counts, expected.number(kTime & 0xFFFFFFFF, 4));
    append(counts, expected.option(4, expected.number(7, 8)));
    append(counts, expected.option(5, expected.number(2, 8)));
    append(counts, expected.number(0, 4));
    const std::size_t firstSection = expected.bytes().size();
    expected.addBlock(0x0A0D0D0A, section)
        .addInterface(PcapngBytes::kRadiotap, options, 262144)
        .addPacket(0, packet, kTime)
        .addBlock(5, counts);
    const Bytes all = expected.bytes();
    EXPECT_EQ(octets(), Bytes(all.begin() + static_cast<std::ptrdiff_t>(firstSection), all.end()));
}

TEST_F(PcapngWriterFile, ReadsBack) {
    Packet cut = packetOf(withRadiotap(beaconFrame(2)), 0, kTime + 1);
    const Bytes bare = beaconFrame(3), radiotap = withRadiotap(beaconFrame(2));
    cut.bytes = radiotap;
    cut.originalLength = 1500;
    Packet other = packetOf(bare, 1, std::nullopt);
    other.linkType = LinkType::IEEE80211;
    {
        PcapngWriter writer = create(kTwo);
        EXPECT_EQ(writer.add(cut), std::nullopt);
        EXPECT_EQ(writer.add(other), std::nullopt);
    }
    const Reading reading = readBack(path_);
    EXPECT_EQ(reading.fault, "");
    EXPECT_THAT(reading.packets, ElementsAre(Read{radiotap, 0, LinkType::Radiotap, 1500, kTime + 1},
                                             Read{bare, 1, LinkType::IEEE80211, bare.size(), 0}));
}

TEST_F(PcapngWriterFile, IsACaptureBeforeTheFirstPacket) {
    const PcapngWriter writer = create();
    const Reading reading = readBack(path_);
    EXPECT_EQ(reading.fault, "");
    EXPECT_THAT(reading.packets, IsEmpty());
}

TEST_F(PcapngWriterFile, ShowsPacketsOnceTheyAreFlushed) {
    PcapngWriter writer = create();
    const Bytes packet = withRadiotap(beaconFrame());
    EXPECT_EQ(writer.add(packetOf(packet)), std::nullopt);
    EXPECT_THAT(readBack(path_).packets, IsEmpty());
    EXPECT_EQ(writer.flush(), std::nullopt);
    EXPECT_EQ(readBack(path_).packets.size(), 1U);
}

TEST_F(PcapngWriterFile, WritesWholeBlocksBeforeMemoryGrows) {
    PcapngWriter writer = create();
    const Bytes packet(1000, 0);
    std::size_t most = 0;
    for (int i = 0; i < 500; ++i) {
        EXPECT_EQ(writer.add(packetOf(packet)), std::nullopt);
        const Reading reading = readBack(path_);
        EXPECT_EQ(reading.fault, "");
        most =
            std::max<std::size_t>(most, static_cast<std::size_t>(i) + 1 - reading.packets.size());
    }
    EXPECT_LE(most, 66U);  // of 64 KiB
    EXPECT_GE(most, 60U);
}

TEST_F(PcapngWriterFile, IsReadableToTheLastWholeBlockWhereverItEnds) {
    std::vector<std::size_t> ends;
    {
        PcapngWriter writer = create();
        ends.push_back(octets().size());
        for (std::uint8_t last = 1; last <= 3; ++last) {
            const Bytes packet = withRadiotap(beaconFrame(last));
            EXPECT_EQ(writer.add(packetOf(packet)), std::nullopt);
            EXPECT_EQ(writer.flush(), std::nullopt);
            ends.push_back(octets().size());
        }
    }
    const Bytes whole = octets();
    for (std::size_t size = ends.front(); size <= whole.size(); ++size) {
        const auto path = folder_.write("part", std::span(whole).first(size));
        std::size_t packets = 0;
        while (packets + 1 < ends.size() && ends[packets + 1] <= size) ++packets;
        const Reading reading = readBack(path);
        EXPECT_EQ(reading.packets.size(), packets) << size;
        EXPECT_EQ(reading.fault.empty(), ends[packets] == size) << reading.fault;
    }
}

TEST_F(PcapngWriterFile, TakesAwayTheBlockThatAFullDiskCutsOff) {
    const std::string path = path_;
    EXPECT_TRUE(isTrueInChild([&path] {
        auto writer = PcapngWriter::create(path, kOne, "halvane 1.2.3");
        if (!writer || !limitFileSize(1000)) return false;
        ::signal(SIGXFSZ, SIG_IGN);  // EFBIG, as ENOSPC
        const Bytes packet = withRadiotap(beaconFrame());
        for (int i = 0; i < 100; ++i) {
            if (writer->add(packetOf(packet))) return false;
        }
        const auto fault = writer->flush();
        return fault == path + ": File too large" && writer->flush() == fault &&
               writer->add(packetOf(packet)) == fault;
    }));
    const Reading reading = readBack(path_);
    EXPECT_EQ(reading.fault, "");
    // All blocks that fit are kept, and nothing else.
    const std::size_t blockSize = 32 + (withRadiotap(beaconFrame()).size() + 3) / 4 * 4;
    EXPECT_GT(octets().size() + blockSize, 1000U);
    EXPECT_GT(reading.packets.size(), 5U);
}

TEST_F(PcapngWriterFile, TellsWhyItCannotBeCreated) {
    const auto missing = (folder_.path() / "missing" / "file").string();
    const auto writer = PcapngWriter::create(missing, kOne, "halvane");
    ASSERT_FALSE(writer);
    EXPECT_EQ(writer.error(), missing + ": No such file or directory");
}

TEST_F(PcapngWriterFile, CanBeStandardOutput) {
    const std::string path = path_;
    EXPECT_TRUE(isTrueInChild([&path] {
        const int file = ::open(path.c_str(), O_WRONLY | O_CREAT, 0600);
        if (::dup2(file, STDOUT_FILENO) < 0) return false;
        {
            auto writer = PcapngWriter::create("-", kOne, "halvane");
            const Bytes packet = withRadiotap(beaconFrame());
            if (!writer || writer->add(packetOf(packet))) return false;
        }
        return ::fcntl(STDOUT_FILENO, F_GETFD) >= 0;
    }));
    EXPECT_EQ(readBack(path_).packets.size(), 1U);
}

TEST_F(PcapngWriterFile, IsReadByTshark) {
    const Bytes radiotap = withRadiotap(beaconFrame(1)), bare = beaconFrame(2);
    {
        PcapngWriter writer = create(kTwo);
        EXPECT_EQ(writer.add(packetOf(radiotap)), std::nullopt);
        EXPECT_EQ(writer.addCounts(0, kTime, 7, 2), std::nullopt);
        Packet other = packetOf(bare, 1, kTime + 1);
        EXPECT_EQ(writer.add(other), std::nullopt);
    }
    const auto result = runProgram({"/usr/bin/env",
                                    "tshark",
                                    "-n",
                                    "-r",
                                    path_,
                                    "-T",
                                    "fields",
                                    "-E",
                                    "separator=/s",
                                    "-e",
                                    "frame.time_epoch",
                                    "-e",
                                    "frame.interface_name",
                                    "-e",
                                    "frame.len",
                                    "-e",
                                    "wlan.bssid",
                                    "-e",
                                    "radiotap.dbm_antsignal",
                                    "-e",
                                    "wlan.fixed.beacon"});
    if (result.status == 127) GTEST_SKIP() << "tshark is not installed";
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.output, "1700000000.123456789 wlan1mon " + std::to_string(radiotap.size()) +
                                 " 02:00:00:00:00:01 -60 100\n"
                                 "1700000000.123456790 wlan2 " +
                                 std::to_string(bare.size()) + " 02:00:00:00:00:02  100\n");
}

}  // namespace
