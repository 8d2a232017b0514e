#include "halvane/base/byte_cursor.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

#include "tests/support/hostile_bytes.h"

using halvane::ByteBuffer;
using halvane::ByteCursor;
using halvane::testing::Bytes;
using halvane::testing::exactHeapCopy;

namespace {

const Bytes kSample = {0x81, 0x02, 0x83, 0x04, 0x85, 0x06, 0x87, 0x08, 0x89};

struct Read {
    const char* name;
    std::size_t width;
    std::optional<std::uint64_t> (*read)(ByteCursor&);
    std::uint64_t atStart;   // of kSample
    std::uint64_t atOffset;  // of kSample from its second byte on
};

template <auto kMember>
std::optional<std::uint64_t> readBy(ByteCursor& cursor) {
    const auto value = (cursor.*kMember)();
    if (!value) return std::nullopt;
    return *value;
}

const std::vector<Read> kReads = {
    {"u8", 1, readBy<&ByteCursor::u8>, 0x81, 0x02},
    {"u16le", 2, readBy<&ByteCursor::u16le>, 0x0281, 0x8302},
    {"u16be", 2, readBy<&ByteCursor::u16be>, 0x8102, 0x0283},
    {"u32le", 4, readBy<&ByteCursor::u32le>, 0x04830281, 0x85048302},
    {"u32be", 4, readBy<&ByteCursor::u32be>, 0x81028304, 0x02830485},
    {"u64le", 8, readBy<&ByteCursor::u64le>, 0x0887068504830281, 0x8908870685048302},
    {"u64be", 8, readBy<&ByteCursor::u64be>, 0x8102830485068708, 0x0283048506870889},
};

TEST(ByteCursor, ReadsEachWidthInEachOrder) {
    for (const Read& row : kReads) {
        ByteCursor cursor{std::span<const std::uint8_t>(kSample)};
        EXPECT_EQ(row.read(cursor), row.atStart) << row.name;
        EXPECT_EQ(cursor.position(), row.width);
        EXPECT_EQ(cursor.remaining(), kSample.size() - row.width);

        ByteCursor second{std::span<const std::uint8_t>(kSample)};
        ASSERT_TRUE(second.skip(1));
        EXPECT_EQ(row.read(second), row.atOffset) << row.name;
    }
}

TEST(ByteCursor, AReadThatDoesNotFitConsumesNothing) {
    for (const Read& row : kReads) {
        for (std::size_t size = 0; size <= kSample.size(); ++size) {
            const ByteBuffer buffer = exactHeapCopy(std::span(kSample).first(size));
            for (std::size_t start = 0; start <= size; ++start) {
                ByteCursor cursor(buffer);
                ASSERT_TRUE(cursor.skip(start));
                const bool fits = row.width <= size - start;
                EXPECT_EQ(row.read(cursor).has_value(), fits) << row.name << size << start;
                EXPECT_EQ(cursor.position(), start + (fits ? row.width : 0));
            }
        }
    }
}

// Every way to read one byte. Each returns whether it read the byte.
const std::vector<bool (*)(ByteCursor&)> kOneByteReads = {
    [](ByteCursor& cursor) { return cursor.u8().has_value(); },
    [](ByteCursor& cursor) { return cursor.peek().has_value(); },
    [](ByteCursor& cursor) { return cursor.skip(1); },
    [](ByteCursor& cursor) { return cursor.take(1).has_value(); },
    [](ByteCursor& cursor) { return cursor.takeBuffer(1).has_value(); },
    [](ByteCursor& cursor) { return cursor.skip(0); },
    [](ByteCursor& cursor) { return cursor.take(0).has_value(); },
    [](ByteCursor& cursor) { return cursor.takeBuffer(0).has_value(); },
};

// Every way to read more than three bytes. Each returns whether it read them.
const std::vector<bool (*)(ByteCursor&)> kFailingReads = {
    [](ByteCursor& cursor) { return cursor.u32le().has_value(); },
    [](ByteCursor& cursor) { return cursor.u64be().has_value(); },
    [](ByteCursor& cursor) { return cursor.skip(4); },
    [](ByteCursor& cursor) { return cursor.take(SIZE_MAX).has_value(); },
    [](ByteCursor& cursor) { return cursor.takeBuffer(4).has_value(); },
};

TEST(ByteCursor, StaysFailedOnceAReadDidNotFit) {
    const ByteBuffer buffer = exactHeapCopy(std::span(kSample).first(4));
    for (std::size_t failing = 0; failing < kFailingReads.size(); ++failing) {
        for (std::size_t later = 0; later < kOneByteReads.size(); ++later) {
            ByteCursor cursor(buffer);
            ASSERT_TRUE(cursor.skip(1));
            ByteCursor sound = cursor;
            EXPECT_TRUE(kOneByteReads[later](sound)) << later;
            EXPECT_FALSE(kFailingReads[failing](cursor)) << failing;
            EXPECT_FALSE(kOneByteReads[later](cursor)) << failing << ' ' << later;
        }
    }
}

TEST(ByteCursor, TellsAndHandsOutWhatAFailedReadLeft) {
    const ByteBuffer buffer = exactHeapCopy(std::span(kSample).first(4));
    for (const auto fail : kFailingReads) {
        ByteCursor cursor(buffer);
        ASSERT_TRUE(cursor.skip(1));
        ASSERT_FALSE(fail(cursor));
        EXPECT_EQ(cursor.position(), 1u);
        EXPECT_EQ(cursor.remaining(), 3u);
        EXPECT_FALSE(cursor.atEnd());
        ByteCursor other = cursor;
        EXPECT_EQ(other.restBuffer().hex(), "028304");
        EXPECT_TRUE(std::ranges::equal(cursor.rest(), Bytes{0x02, 0x83, 0x04}));
        EXPECT_TRUE(cursor.atEnd());
        EXPECT_FALSE(cursor.skip(0));
    }
}

TEST(ByteCursor, FailsNoCopyOfItself) {
    ByteCursor cursor{std::span<const std::uint8_t>(kSample)};
    ByteCursor ahead = cursor;
    EXPECT_FALSE(ahead.skip(SIZE_MAX));
    EXPECT_EQ(cursor.u8(), 0x81);
    EXPECT_EQ(ahead.u8(), std::nullopt);
}

TEST(ByteCursor, PeeksWithoutConsuming) {
    ByteCursor cursor{std::span<const std::uint8_t>(kSample)};
    EXPECT_EQ(cursor.peek(), 0x81);
    EXPECT_EQ(cursor.peek(8), 0x89);
    EXPECT_EQ(cursor.peek(9), std::nullopt);
    EXPECT_EQ(cursor.peek(SIZE_MAX), std::nullopt);
    ASSERT_TRUE(cursor.skip(8));
    EXPECT_EQ(cursor.peek(), 0x89);
    EXPECT_EQ(cursor.peek(1), std::nullopt);
    EXPECT_EQ(cursor.position(), 8u);
    ASSERT_TRUE(cursor.skip(1));
    EXPECT_EQ(cursor.peek(), std::nullopt);
}

TEST(ByteCursor, SkipsOnlyWhatIsThere) {
    for (const std::size_t count : {std::size_t{10}, std::size_t{SIZE_MAX}}) {
        ByteCursor tooShort{std::span<const std::uint8_t>(kSample)};
        EXPECT_FALSE(tooShort.skip(count));
        EXPECT_EQ(tooShort.position(), 0u);
    }
    ByteCursor cursor{std::span<const std::uint8_t>(kSample)};
    EXPECT_TRUE(cursor.skip(0));
    EXPECT_TRUE(cursor.skip(9));
    EXPECT_TRUE(cursor.atEnd());
    EXPECT_TRUE(cursor.skip(0));
    EXPECT_FALSE(cursor.skip(1));
}

TEST(ByteCursor, TakesBorrowedParts) {
    const ByteBuffer buffer = exactHeapCopy(kSample);
    ByteCursor cursor(buffer);
    const auto part = cursor.take(4);
    ASSERT_TRUE(part.has_value());
    EXPECT_EQ(part->data(), buffer.bytes().data());
    EXPECT_EQ(part->size(), 4u);
    for (const std::size_t count : {std::size_t{6}, std::size_t{SIZE_MAX}}) {
        ByteCursor ahead = cursor;
        EXPECT_FALSE(ahead.take(count).has_value());
        EXPECT_EQ(ahead.position(), 4u);
    }
    EXPECT_TRUE(cursor.take(5).has_value());
    EXPECT_TRUE(cursor.take(0).has_value());
    EXPECT_TRUE(cursor.atEnd());
}

TEST(ByteCursor, TakesOwnedPartsThatShareTheBuffersMemory) {
    const ByteBuffer buffer(Bytes(64, 0xA5));
    ByteCursor cursor(buffer);
    ASSERT_TRUE(cursor.skip(2));
    const auto part = cursor.takeBuffer(32);
    ASSERT_TRUE(part.has_value());
    EXPECT_EQ(part->bytes().data(), buffer.bytes().data() + 2);
    EXPECT_EQ(cursor.takeBuffer(31), std::nullopt);
    EXPECT_EQ(cursor.position(), 34u);
    const ByteBuffer rest = cursor.restBuffer();
    EXPECT_EQ(rest.bytes().data(), buffer.bytes().data() + 34);
    EXPECT_EQ(rest.size(), 30u);
    EXPECT_TRUE(cursor.atEnd());
}

TEST(ByteCursor, TakesCopiesOfBytesThatNobodyShares) {
    Bytes bytes(64, 0xA5);
    ByteCursor cursor{std::span<const std::uint8_t>(bytes)};
    const auto part = cursor.takeBuffer(32);
    std::ranges::fill(bytes, std::uint8_t{0});
    EXPECT_EQ(part, ByteBuffer(Bytes(32, 0xA5)));
}

TEST(ByteCursor, HandsOutTheRestOnce) {
    ByteCursor cursor{std::span<const std::uint8_t>(kSample)};
    ASSERT_TRUE(cursor.skip(7));
    EXPECT_TRUE(std::ranges::equal(cursor.rest(), Bytes{0x08, 0x89}));
    EXPECT_TRUE(cursor.atEnd());
    EXPECT_TRUE(cursor.rest().empty());
    EXPECT_TRUE(cursor.restBuffer().empty());
}

TEST(ByteCursor, StandsAtTheEndOfNothing) {
    const ByteBuffer empty;
    ByteCursor cursor(empty);
    EXPECT_TRUE(cursor.atEnd());
    EXPECT_EQ(cursor.remaining(), 0u);
    EXPECT_EQ(cursor.u8(), std::nullopt);
    EXPECT_TRUE(cursor.rest().empty());
}

}  // namespace
