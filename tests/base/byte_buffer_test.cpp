#include "halvane/base/byte_buffer.h"

#include <algorithm>
#include <array>
#include <compare>
#include <functional>
#include <gtest/gtest.h>
#include <numeric>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

using halvane::ByteBuffer;

namespace {

std::vector<std::uint8_t> counting(std::size_t size) {
    std::vector<std::uint8_t> bytes(size);
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{1});
    return bytes;
}

// Sizes on both sides of the inline capacity, and the least and greatest size of an element.
constexpr std::array<std::size_t, 8> kSizes = {0, 1, 6, 15, 16, 17, 32, 255};

bool holds(const ByteBuffer& buffer, const std::vector<std::uint8_t>& bytes) {
    return std::ranges::equal(buffer.bytes(), bytes);
}

TEST(ByteBuffer, IsAPrivateCopyOfItsBytes) {
    for (const std::size_t size : kSizes) {
        auto bytes = counting(size);
        const ByteBuffer buffer(bytes);
        const auto before = bytes;
        std::ranges::fill(bytes, std::uint8_t{0xEE});
        EXPECT_EQ(buffer.size(), size);
        EXPECT_EQ(buffer.empty(), size == 0);
        EXPECT_TRUE(holds(buffer, before)) << size;
    }
}

TEST(ByteBuffer, CopiesShareMemoryBeyondTheInlineCapacity) {
    for (const std::size_t size : kSizes) {
        const ByteBuffer original(counting(size));
        const ByteBuffer copy = original;
        const bool isShared = copy.bytes().data() == original.bytes().data();
        EXPECT_EQ(isShared, size > ByteBuffer::kInlineCapacity) << size;
        EXPECT_EQ(copy, original);
    }
}

TEST(ByteBuffer, KeepsSharedBytesAliveInTheLastCopy) {
    ByteBuffer slice;
    {
        const ByteBuffer original(counting(64));
        slice = original.slice(20, 30);
    }
    auto expected = counting(64);
    expected = {expected.begin() + 20, expected.begin() + 50};
    EXPECT_TRUE(holds(slice, expected));
}

TEST(ByteBuffer, SlicesAreCutToWhatThereIs) {
    struct Row {
        std::size_t offset;
        std::size_t length;
        std::size_t from;
        std::size_t size;
    };
    for (const Row& row : std::vector<Row>{{0, SIZE_MAX, 0, 64},
                                           {0, 0, 0, 0},
                                           {1, 63, 1, 63},
                                           {1, 64, 1, 63},
                                           {63, 1, 63, 1},
                                           {64, 1, 0, 0},
                                           {65, 1, 0, 0},
                                           {SIZE_MAX, SIZE_MAX, 0, 0},
                                           {40, SIZE_MAX, 40, 24}}) {
        const ByteBuffer buffer(counting(64));
        const ByteBuffer slice = buffer.slice(row.offset, row.length);
        const auto all = buffer.bytes();
        EXPECT_TRUE(std::ranges::equal(slice.bytes(), all.subspan(row.from, row.size)))
            << row.offset << " " << row.length;
    }
    EXPECT_TRUE(ByteBuffer().slice(0).empty());
    EXPECT_EQ((ByteBuffer{1, 2, 3}.slice(1)), (ByteBuffer{2, 3}));
}

TEST(ByteBuffer, LargeSlicesShareTheMemoryOfTheWhole) {
    const ByteBuffer buffer(counting(64));
    const ByteBuffer large = buffer.slice(3, ByteBuffer::kInlineCapacity + 1);
    EXPECT_EQ(large.bytes().data(), buffer.bytes().data() + 3);
    const ByteBuffer nested = large.slice(0);
    EXPECT_EQ(nested.bytes().data(), buffer.bytes().data() + 3);
    const ByteBuffer small = buffer.slice(3, ByteBuffer::kInlineCapacity);
    EXPECT_NE(small.bytes().data(), buffer.bytes().data() + 3);
}

TEST(ByteBuffer, SharesMemoryThatIsOwnedAlready) {
    std::shared_ptr<std::uint8_t[]> owner(new std::uint8_t[4]{1, 2, 3, 4});
    const ByteBuffer buffer = ByteBuffer::sharing(owner, 3);
    EXPECT_EQ(buffer.bytes().data(), owner.get());
    EXPECT_EQ(buffer, (ByteBuffer{1, 2, 3}));
    EXPECT_EQ(owner.use_count(), 2);
    EXPECT_TRUE(ByteBuffer::sharing(nullptr, 5).empty());
}

TEST(ByteBuffer, IsEmptyWhenMovedFrom) {
    for (const std::size_t size : kSizes) {
        ByteBuffer source(counting(size));
        ByteBuffer constructed(std::move(source));
        EXPECT_TRUE(holds(constructed, counting(size)));
        EXPECT_TRUE(source.empty());  // NOLINT(bugprone-use-after-move): the test is about it
        EXPECT_TRUE(source.bytes().empty());

        ByteBuffer assigned(counting(20));
        assigned = std::move(constructed);
        EXPECT_TRUE(holds(assigned, counting(size)));
        EXPECT_TRUE(constructed.empty());  // NOLINT(bugprone-use-after-move): the test is about it
    }
}

TEST(ByteBuffer, SurvivesAssignmentToItself) {
    for (const std::size_t size : kSizes) {
        ByteBuffer buffer(counting(size));
        ByteBuffer& same = buffer;
        buffer = same;
        EXPECT_TRUE(holds(buffer, counting(size)));
        buffer = std::move(same);
        EXPECT_TRUE(holds(buffer, counting(size)));
    }
}

TEST(ByteBuffer, IsAssignedBetweenInlineAndShared) {
    for (const std::size_t from : kSizes) {
        for (const std::size_t to : kSizes) {
            ByteBuffer buffer(counting(to));
            buffer = ByteBuffer(counting(from));
            EXPECT_TRUE(holds(buffer, counting(from)));
            const ByteBuffer other(counting(to));
            buffer = other;
            EXPECT_TRUE(holds(buffer, counting(to)));
        }
    }
}

TEST(ByteBuffer, ComparesLengthAndBytes) {
    EXPECT_EQ(ByteBuffer(), ByteBuffer{});
    EXPECT_EQ((ByteBuffer{1, 2}), (ByteBuffer{1, 2}));
    EXPECT_NE((ByteBuffer{1, 2}), (ByteBuffer{1, 3}));
    EXPECT_NE((ByteBuffer{1, 2}), (ByteBuffer{1, 2, 0}));
    EXPECT_NE(ByteBuffer(), (ByteBuffer{0}));
    auto bytes = counting(64);
    const ByteBuffer original(bytes);
    bytes.back() ^= 1;
    EXPECT_NE(original, ByteBuffer(bytes));
    EXPECT_EQ(original.slice(10, 4), ByteBuffer(std::span(bytes).subspan(10, 4)));
}

TEST(ByteBuffer, TakesTextWithoutATerminator) {
    EXPECT_EQ(ByteBuffer::fromText("caf\xC3\xA9"), (ByteBuffer{0x63, 0x61, 0x66, 0xC3, 0xA9}));
    EXPECT_EQ(ByteBuffer::fromText(std::string_view("a\0b", 3)), (ByteBuffer{0x61, 0, 0x62}));
    EXPECT_TRUE(ByteBuffer::fromText("").empty());
}

TEST(ByteBuffer, ReadsPairsOfHexDigits) {
    struct Row {
        const char* text;
        std::optional<ByteBuffer> bytes;
    };
    const std::vector<Row> rows = {
        {"", ByteBuffer{}},
        {"0a7e55", ByteBuffer{0x0A, 0x7E, 0x55}},
        {"0A7E55", ByteBuffer{0x0A, 0x7E, 0x55}},
        {"00:11:aF:Ff", ByteBuffer{0x00, 0x11, 0xAF, 0xFF}},
        {" 00\t11\r\n22 ", ByteBuffer{0x00, 0x11, 0x22}},
        {"::", ByteBuffer{}},
        {"0", std::nullopt},
        {"001", std::nullopt},
        {"0 0", std::nullopt},  // between the digits of a pair
        {"0x00", std::nullopt},
        {"0g", std::nullopt},
        {"g0", std::nullopt},
        {"00-11", ByteBuffer{0x00, 0x11}},
        {"0-0", std::nullopt},
        {"00/11", std::nullopt},  // the character before '0'
        {"@0", std::nullopt},     // the character before 'A'
        {"`0", std::nullopt},     // the character before 'a'
    };
    for (const Row& row : rows) EXPECT_EQ(ByteBuffer::fromHex(row.text), row.bytes) << row.text;
    EXPECT_EQ(ByteBuffer::fromHex(std::string_view("00\0", 3)), std::nullopt);
}

TEST(ByteBuffer, PrintsItsBytes) {
    EXPECT_EQ((ByteBuffer{0x0A, 0x7E, 0xF5}.hex()), "0a7ef5");
    EXPECT_EQ(ByteBuffer().hex(), "");
    EXPECT_EQ(ByteBuffer().description(), "<>");
    EXPECT_EQ((ByteBuffer{0, 1, 2, 3}.description()), "<00010203>");
    EXPECT_EQ((ByteBuffer{0, 1, 2, 3, 4}.description()), "<00010203 04>");
    EXPECT_EQ((ByteBuffer{0, 1, 2, 3, 4, 5, 6, 7, 8}.description()), "<00010203 04050607 08>");
}

TEST(ByteBuffer, ReadsBackItsOwnHexForm) {
    for (const std::size_t size : kSizes) {
        const ByteBuffer buffer(counting(size));
        EXPECT_EQ(ByteBuffer::fromHex(buffer.hex()), buffer);
    }
}

TEST(ByteBuffer, IsGoneOverByteByByte) {
    for (const std::size_t size : kSizes) {
        const ByteBuffer buffer(counting(size));
        EXPECT_EQ(std::vector<std::uint8_t>(buffer.begin(), buffer.end()), counting(size));
    }
}

TEST(ByteBuffer, IsTakenForText) {
    const ByteBuffer buffer = ByteBuffer::fromText(std::string_view("a\0\xFF", 3));
    EXPECT_EQ(buffer.text(), std::string_view("a\0\xFF", 3));
    const ByteBuffer empty;
    EXPECT_EQ(empty.text(), "");
}

TEST(ByteBuffer, HasTheOrderOfItsBytesThenOfItsLength) {
    const std::vector<ByteBuffer> ordered = {{},           {0x00},       {0x00, 0x00}, {0x01},
                                             {0x01, 0x00}, {0x7F, 0xFF}, {0x80},       {0xFF}};
    for (std::size_t i = 0; i < ordered.size(); ++i) {
        for (std::size_t j = 0; j < ordered.size(); ++j) {
            EXPECT_EQ(ordered[i] <=> ordered[j], i <=> j) << i << ' ' << j;
        }
    }
}

TEST(ByteBuffer, HasTheSameHashAsItsEqualsWhereverTheyLie) {
    for (const std::size_t size : kSizes) {
        auto longer = counting(size);
        longer.insert(longer.begin(), 40, 0);
        const ByteBuffer slice = ByteBuffer(longer).slice(40);
        EXPECT_EQ(std::hash<ByteBuffer>()(slice),
                  std::hash<ByteBuffer>()(ByteBuffer(counting(size))));
    }
    EXPECT_NE(std::hash<ByteBuffer>()({1}), std::hash<ByteBuffer>()({2}));
}

}  // namespace
