#include "tools/halvane/input/input_stream.h"

#include <algorithm>
#include <archive.h>
#include <archive_entry.h>
#include <cstddef>
#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/support/hostile_bytes.h"
#include "tests/support/temporary_folder.h"

using halvane::testing::Bytes;
using halvane::testing::TemporaryFolder;
using halvane::tool::InputStream;
using ::testing::HasSubstr;

namespace {

// By another implementation than the reader's own, where it has one.
Bytes compressed(const char* filter, const Bytes& content) {
    Bytes room(content.size() + (std::size_t{1} << 20));
    std::size_t used = 0;
    struct archive* const writer = archive_write_new();
    EXPECT_EQ(archive_write_set_format_raw(writer), ARCHIVE_OK);
    EXPECT_EQ(archive_write_add_filter_by_name(writer, filter), ARCHIVE_OK) << filter;
    EXPECT_EQ(archive_write_set_bytes_in_last_block(writer, 1), ARCHIVE_OK);
    EXPECT_EQ(archive_write_open_memory(writer, room.data(), room.size(), &used), ARCHIVE_OK);
    struct archive_entry* const entry = archive_entry_new();
    archive_entry_set_filetype(entry, AE_IFREG);
    EXPECT_EQ(archive_write_header(writer, entry), ARCHIVE_OK);
    EXPECT_EQ(archive_write_data(writer, content.data(), content.size()),
              static_cast<la_ssize_t>(content.size()));
    archive_entry_free(entry);
    EXPECT_EQ(archive_write_close(writer), ARCHIVE_OK);
    archive_write_free(writer);
    room.resize(used);
    return room;
}

constexpr const char* kFilters[] = {"gzip", "bzip2", "xz", "zstd", "lz4"};

// Octets that do not compress away, yet are known.
Bytes content(std::size_t size) {
    Bytes bytes(size);
    std::uint32_t state = 1;
    for (std::uint8_t& octet : bytes) {
        state = state * 1664525 + 1013904223;
        octet = static_cast<std::uint8_t>(state >> 28);
    }
    return bytes;
}

struct Reading {
    Bytes bytes;
    std::string error;
};

class InputStreamTest : public ::testing::Test {
  protected:
    Reading readAll(const Bytes& file, std::size_t step = 4096) {
        Reading reading;
        auto stream = InputStream::open(folder_.write("file", file));
        if (!stream) {
            reading.error = stream.error();
            return reading;
        }
        for (;;) {
            const auto octets = stream->peek(1);
            if (octets.empty()) break;
            const auto part = octets.first(std::min(octets.size(), step));
            reading.bytes.insert(reading.bytes.end(), part.begin(), part.end());
            stream->consume(part.size());
        }
        EXPECT_EQ(stream->position(), reading.bytes.size());
        reading.error = stream->error().value_or("");
        return reading;
    }

    TemporaryFolder folder_;
};

TEST_F(InputStreamTest, ReadsPlainFiles) {
    const Bytes bytes = content(1000000);
    const Reading reading = readAll(bytes);
    EXPECT_TRUE(reading.bytes == bytes);
    EXPECT_EQ(reading.error, "");
}

TEST_F(InputStreamTest, DecompressesWithoutBeingTold) {
    const Bytes bytes = content(1000000);
    for (const char* filter : kFilters) {
        const Reading reading = readAll(compressed(filter, bytes));
        EXPECT_TRUE(reading.bytes == bytes) << filter;
        EXPECT_EQ(reading.error, "") << filter;
    }
}

TEST_F(InputStreamTest, DecompressesOneInAnother) {
    const Bytes bytes = content(100000);
    EXPECT_TRUE(readAll(compressed("gzip", compressed("xz", bytes))).bytes == bytes);
    EXPECT_TRUE(readAll(compressed("zstd", compressed("gzip", bytes))).bytes == bytes);
}

TEST_F(InputStreamTest, ReadsSeveralMembers) {
    const Bytes bytes = content(1000);
    for (const char* filter : kFilters) {
        Bytes file = compressed(filter, bytes);
        const Bytes member = file;
        file.insert(file.end(), member.begin(), member.end());
        const Reading reading = readAll(file);
        EXPECT_EQ(reading.bytes.size(), 2 * bytes.size()) << filter;
        EXPECT_EQ(reading.error, "") << filter;
    }
}

TEST_F(InputStreamTest, LeavesWhatFollowsTheLastMember) {
    for (const Bytes& tail : {Bytes(512, 0), Bytes(3, 'x')}) {
        Bytes file = compressed("gzip", content(1000));
        file.insert(file.end(), tail.begin(), tail.end());
        const Reading reading = readAll(file);
        EXPECT_EQ(reading.bytes.size(), 1000u);
        EXPECT_EQ(reading.error, "");
    }
}

TEST_F(InputStreamTest, DeliversEverythingBeforeACut) {
    const Bytes bytes = content(100000);
    for (const char* filter : {"gzip", "xz"}) {
        const Bytes file = compressed(filter, bytes);
        for (const std::size_t size : {file.size() / 2, file.size() - 1}) {
            const Reading reading =
                readAll(Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size)));
            EXPECT_EQ(reading.error, "the compressed data is damaged: it ends before its end");
            EXPECT_GT(reading.bytes.size(), bytes.size() * size / file.size() * 9 / 10) << filter;
            EXPECT_TRUE(std::equal(reading.bytes.begin(), reading.bytes.end(), bytes.begin()));
        }
    }
}

TEST_F(InputStreamTest, SurvivesEveryCut) {
    const Bytes bytes = content(300);
    for (const char* filter : kFilters) {
        const Bytes file = compressed(filter, bytes);
        for (std::size_t size = 6; size < file.size(); ++size) {
            const Reading reading =
                readAll(Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size)));
            EXPECT_NE(reading.error, "") << filter << " " << size;
            EXPECT_LE(reading.bytes.size(), bytes.size());
        }
    }
}

TEST_F(InputStreamTest, TellsDamage) {
    const Bytes bytes = content(100000);
    for (const char* filter : {"gzip", "xz", "bzip2"}) {
        Bytes file = compressed(filter, bytes);
        file[file.size() / 2] ^= 0xFF;
        file[file.size() / 2 + 1] ^= 0xFF;
        EXPECT_THAT(readAll(file).error, HasSubstr("the compressed data is damaged: ")) << filter;
    }
    Bytes file = compressed("gzip", bytes);
    file[file.size() - 8] ^= 0x01;  // the check sequence
    EXPECT_THAT(readAll(file).error, HasSubstr("the compressed data is damaged: "));
}

TEST_F(InputStreamTest, CallsAFrameOfZstdThatNeedsMuchMemoryNotDamaged) {
    // Magic, a descriptor without a size, a window of 2^28 octets, and an empty last block
    // (RFC 8878, 3.1.1).
    const Bytes frame = {0x28, 0xB5, 0x2F, 0xFD, 0x00, (28 - 10) << 3, 0x01, 0x00, 0x00};
    EXPECT_EQ(readAll(frame).error, "needs more than 128 MiB of memory to decompress");
}

TEST_F(InputStreamTest, TellsThatNothingIsThere) {
    EXPECT_EQ(readAll({}).error, "the file is empty");
    for (const char* filter : {"gzip", "bzip2", "xz", "zstd"}) {  // lz4 of nothing is not written
        EXPECT_EQ(readAll(compressed(filter, {})).error, "the file is empty") << filter;
    }
    EXPECT_EQ(InputStream::open(folder_.path().string()).error(), "Is a directory");
    EXPECT_EQ(InputStream::open((folder_.path() / "missing").string()).error(),
              "No such file or directory");
}

TEST_F(InputStreamTest, PeeksAndSkipsAcrossItsWindow) {
    const Bytes bytes = content(3000000);
    auto stream = InputStream::open(folder_.write("file", bytes));
    ASSERT_TRUE(stream);
    EXPECT_EQ(stream->skip(1000001), 1000001u);
    const auto octets = stream->peek(1000000);
    ASSERT_GE(octets.size(), 1000000u);
    EXPECT_TRUE(std::equal(octets.begin(), octets.begin() + 1000000, bytes.begin() + 1000001));
    EXPECT_EQ(stream->position(), 1000001u);
    EXPECT_EQ(stream->fileOffset(), 1000001u);
    EXPECT_EQ(stream->skip(UINT64_MAX), 1999999u);
    EXPECT_EQ(stream->skip(1), 0u);
    EXPECT_EQ(stream->fileSize(), bytes.size());
}

// A small file may expand to anything. Only as much as the window is kept of it.
TEST_F(InputStreamTest, StreamsWhatExpands) {
    const Bytes file = compressed("gzip", Bytes(std::size_t{64} << 20, 0));
    ASSERT_LT(file.size(), std::size_t{1} << 20);
    auto stream = InputStream::open(folder_.write("file", file));
    ASSERT_TRUE(stream);
    std::uint64_t total = 0;
    for (auto octets = stream->peek(1); !octets.empty(); octets = stream->peek(1)) {
        ASSERT_LE(octets.size(), std::size_t{1} << 20);
        total += octets.size();
        stream->consume(octets.size());
    }
    EXPECT_EQ(total, std::uint64_t{64} << 20);
    EXPECT_EQ(stream->fileOffset(), file.size());
}

}  // namespace
