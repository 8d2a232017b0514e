#include "halvane/base/data_order.h"

#include <gtest/gtest.h>
#include <vector>

using halvane::ByteBuffer;
using halvane::NSData_Halvane::compare;

namespace {

ByteBuffer longBuffer(std::uint8_t last) {
    std::vector<std::uint8_t> bytes(100, 7);
    bytes.back() = last;
    return ByteBuffer(bytes);
}

TEST(DataOrder, ComparesTheCommonBytesAsUnsigned) {
    EXPECT_EQ(compare(ByteBuffer{1, 2}, ByteBuffer{1, 3}), -1);
    EXPECT_EQ(compare(ByteBuffer{1, 3}, ByteBuffer{1, 2}), 1);
    EXPECT_EQ(compare(ByteBuffer{1, 2}, ByteBuffer{1, 2}), 0);
    EXPECT_EQ(compare(ByteBuffer{0x7F}, ByteBuffer{0x80}), -1);
    EXPECT_EQ(compare(ByteBuffer{0xFF}, ByteBuffer{0x00}), 1);
    EXPECT_EQ(compare(longBuffer(0), longBuffer(255)), -1);
    EXPECT_EQ(compare(longBuffer(9), longBuffer(9)), 0);
}

TEST(DataOrder, LengthNeverBreaksATie) {
    EXPECT_EQ(compare(ByteBuffer{1, 2}, ByteBuffer{1, 2, 3}), 0);
    EXPECT_EQ(compare(ByteBuffer{1, 2, 3}, ByteBuffer{1, 2}), 0);
    EXPECT_EQ(compare(ByteBuffer{2}, ByteBuffer{1, 2, 3}), 1);
    EXPECT_EQ(compare(ByteBuffer(), ByteBuffer{1}), 0);
    EXPECT_EQ(compare(ByteBuffer{1}, ByteBuffer()), 0);
    EXPECT_EQ(compare(ByteBuffer(), ByteBuffer()), 0);
}

TEST(DataOrder, ABufferComesAfterNone) {
    EXPECT_EQ(compare(ByteBuffer{1, 2}, std::nullopt), 1);
    EXPECT_EQ(compare(ByteBuffer(), std::nullopt), 1);
    EXPECT_EQ(compare(ByteBuffer{1, 2}, std::optional(ByteBuffer{1, 3})), -1);
}

TEST(DataOrder, TakesBytesInBraces) {
    EXPECT_EQ(compare(ByteBuffer{1, 2}, {}), 0) << "the empty buffer, not none";
    EXPECT_EQ(compare(ByteBuffer(), {}), 0);
    EXPECT_EQ(compare(ByteBuffer{1, 2}, {1, 3}), -1);
    EXPECT_EQ(compare(ByteBuffer{2}, {1}), 1);
}

}  // namespace
