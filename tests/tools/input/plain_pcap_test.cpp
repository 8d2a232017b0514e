#include "tools/halvane/input/plain_pcap.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <pcap/pcap.h>
#include <span>
#include <string>
#include <sys/types.h>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"

#include "tests/support/hostile_bytes.h"
#include "tests/support/temporary_folder.h"
#include "tools/halvane/input/input_stream.h"
#include "tools/halvane/input/libpcap.h"
#include "tools/halvane/input/packet_source.h"

using halvane::ByteBuffer;
using halvane::testing::Bytes;
using halvane::testing::TemporaryFolder;
using namespace halvane::tool;

namespace {

constexpr std::uint32_t kMicroseconds = 0xA1B2C3D4, kNanoseconds = 0xA1B23C4D;
constexpr std::size_t kRecord = kPcapFileHeaderSize;  // where the first one begins

struct Form {
    std::uint32_t magic;
    bool isBigEndian;
};
constexpr std::array<Form, 4> kForms = {
    {{kMicroseconds, false}, {kMicroseconds, true}, {kNanoseconds, false}, {kNanoseconds, true}}};

class PcapWriter {
  public:
    explicit PcapWriter(const Form& form) : isBigEndian_(form.isBigEndian) {
        number(form.magic, 4);
        number(2, 2), number(4, 2);
        number(0, 8);
        number(64, 4);  // snapshot length
        number(105, 4);
    }

    void add(std::uint32_t seconds, std::uint32_t fraction, std::size_t size, std::size_t notKept) {
        number(seconds, 4), number(fraction, 4);
        number(size, 4), number(size + notKept, 4);
        for (std::size_t i = 0; i < size; ++i) bytes_.push_back(static_cast<std::uint8_t>(i + 1));
    }

    const Bytes& bytes() const { return bytes_; }

  private:
    void number(std::uint64_t value, std::size_t size) {
        for (std::size_t i = 0; i < size; ++i) {
            const std::size_t shift = 8 * (isBigEndian_ ? size - 1 - i : i);
            bytes_.push_back(static_cast<std::uint8_t>(value >> shift));
        }
    }

    bool isBigEndian_;
    Bytes bytes_;
};

Bytes fileOf(const Form& form) {
    PcapWriter file(form);
    file.add(1700000000, 999999, 10, 0);
    file.add(0xFFFFFFFF, 0, 0, 3);
    file.add(1, 2, 64, 0);
    return file.bytes();
}

std::string textOf(std::int64_t time, std::size_t originalLength,
                   std::span<const std::uint8_t> bytes) {
    return std::to_string(time) + ' ' + std::to_string(originalLength) + ' ' +
           ByteBuffer(bytes).hex() + '\n';
}

// What libpcap alone makes of the file; absent if it refuses the file.
std::optional<std::string> tellingOfLibpcap(const std::string& path) {
    std::array<char, PCAP_ERRBUF_SIZE> reason{};
    std::FILE* const file = std::fopen(path.c_str(), "rb");
    pcap_t* const capture = libpcap().pcap_fopen_offline_with_tstamp_precision(
        file, PCAP_TSTAMP_PRECISION_NANO, reason.data());
    if (capture == nullptr) {
        std::fclose(file);
        return std::nullopt;
    }
    std::string text;
    pcap_pkthdr* header = nullptr;
    const u_char* bytes = nullptr;
    int outcome = 0;
    while ((outcome = libpcap().pcap_next_ex(capture, &header, &bytes)) == 1) {
        const auto seconds = static_cast<std::uint32_t>(header->ts.tv_sec);
        text += textOf(std::int64_t{seconds} * 1'000'000'000 + header->ts.tv_usec, header->len,
                       {bytes, header->caplen});
    }
    text += outcome == PCAP_ERROR ? "fault" : "end";
    libpcap().pcap_close(capture);
    return text;
}

// The same of the source that skips libpcap where it can.
std::optional<std::string> tellingOfSource(const std::string& path) {
    auto stream = InputStream::open(path);
    if (!stream) return std::nullopt;
    auto source = openPcap(std::make_unique<InputStream>(std::move(*stream)));
    if (!source) return std::nullopt;
    std::string text;
    for (;;) {
        const auto packet = (*source)->next();
        if (!packet) return text + "fault";
        if (!*packet) return text + "end";
        text += textOf((*packet)->time.value_or(-1), (*packet)->originalLength, (*packet)->bytes);
    }
}

class PlainPcapTest : public ::testing::Test {
  protected:
    void expectTheSame(const Bytes& bytes, const std::string& what) {
        const std::string path = folder_.write("file.pcap", bytes);
        EXPECT_EQ(tellingOfSource(path), tellingOfLibpcap(path)) << what;
    }
    InputStream streamOf(const Bytes& bytes) {
        return *InputStream::open(folder_.write("file.pcap", bytes));
    }

    TemporaryFolder folder_;
};

TEST_F(PlainPcapTest, TakesRecordsWhereTheyAre) {
    for (const Form& form : kForms) {
        InputStream stream = streamOf(fileOf(form));
        const auto file = PlainPcap::of(stream);
        ASSERT_TRUE(file);
        EXPECT_EQ(stream.position(), 0u);
        stream.consume(kPcapFileHeaderSize);
        const auto first = file->next(stream);
        ASSERT_TRUE(first);
        const std::int64_t unit = form.magic == kMicroseconds ? 1000 : 1;
        EXPECT_EQ(first->time, 1'700'000'000'000'000'000 + 999'999 * unit);
        EXPECT_EQ(first->originalLength, 10u);
        EXPECT_EQ(ByteBuffer(first->bytes).hex(), "0102030405060708090a");
        const auto second = file->next(stream);
        ASSERT_TRUE(second);
        EXPECT_EQ(second->originalLength, 3u);
        EXPECT_TRUE(second->bytes.empty());
        EXPECT_TRUE(file->next(stream));
        EXPECT_FALSE(file->next(stream));
    }
}

TEST_F(PlainPcapTest, LeavesOtherRecordsUnread) {
    struct Row {
        const char* what;
        std::vector<std::pair<std::size_t, std::uint8_t>> changes;  // of octets of its header
    };
    const Bytes file = fileOf({kMicroseconds, false});
    for (const Row& row : {Row{"a second's fraction of more than a second", {{6, 0x10}}},
                           Row{"longer than the snapshot length", {{8, 65}, {12, 65}}},
                           Row{"longer than it was", {{8, 11}}}}) {
        Bytes changed = file;
        for (const auto& [offset, value] : row.changes) changed.at(kRecord + offset) = value;
        InputStream stream = streamOf(changed);
        const auto plain = PlainPcap::of(stream);
        ASSERT_TRUE(plain);
        stream.consume(kPcapFileHeaderSize);
        EXPECT_FALSE(plain->next(stream)) << row.what;
        EXPECT_EQ(stream.position(), kPcapFileHeaderSize) << row.what;
    }
}

TEST_F(PlainPcapTest, LeavesACutRecordUnread) {
    Bytes file = fileOf({kMicroseconds, false});
    file.resize(kRecord + kPcapRecordHeaderSize + 9);  // of 10 octets
    InputStream stream = streamOf(file);
    const auto plain = PlainPcap::of(stream);
    ASSERT_TRUE(plain);
    stream.consume(kPcapFileHeaderSize);
    EXPECT_FALSE(plain->next(stream));
    EXPECT_EQ(stream.position(), kPcapFileHeaderSize);
}

TEST_F(PlainPcapTest, KnowsNoRecordsOfOtherVersions) {
    for (const std::size_t offset : {0u, 4u, 6u}) {
        Bytes changed = fileOf({kMicroseconds, false});
        changed.at(offset) ^= 1;
        InputStream stream = streamOf(changed);
        EXPECT_FALSE(PlainPcap::of(stream)) << offset;
    }
}

// Both headers of the file's first record, with every bit turned.
TEST_F(PlainPcapTest, ReadsEveryChangedFileAsLibpcapDoes) {
    constexpr std::size_t kLinkType = 20;  // a number of four octets, which other tests change
    for (const Form& form : kForms) {
        const Bytes file = fileOf(form);
        for (std::size_t i = 0; i < 8 * (kRecord + kPcapRecordHeaderSize); ++i) {
            if (i / 8 >= kLinkType && i / 8 < kLinkType + 4) continue;
            Bytes changed = file;
            changed.at(i / 8) ^= static_cast<std::uint8_t>(1 << i % 8);
            expectTheSame(changed, "bit " + std::to_string(i));
        }
    }
}

TEST_F(PlainPcapTest, ReadsEveryCutFileAsLibpcapDoes) {
    for (const Form& form : kForms) {
        const Bytes file = fileOf(form);
        for (std::size_t size = 1; size <= file.size(); ++size) {
            expectTheSame(Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size)),
                          std::to_string(size) + " octets");
        }
    }
}

// After a record that is libpcap's, it reads the plain ones too.
TEST_F(PlainPcapTest, GoesOnWithLibpcap) {
    for (const Form& form : kForms) {
        PcapWriter file(form);
        for (int i = 0; i < 3; ++i) {
            file.add(1, 1, 20, 0);
            file.add(1, 1, 70, 0);  // beyond the snapshot length: libpcap cuts it
        }
        const std::string path = folder_.write("file.pcap", file.bytes());
        const auto text = tellingOfSource(path);
        EXPECT_EQ(text, tellingOfLibpcap(path));
        EXPECT_NE(text.value_or("").find("end"), std::string::npos);
    }
}

}  // namespace
