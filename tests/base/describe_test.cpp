#include "halvane/base/describe.h"

#include <gtest/gtest.h>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"

using halvane::ByteBuffer;
using halvane::describe;
using halvane::Number;

namespace {

TEST(Describe, PrintsAnAbsentValueAsNull) {
    EXPECT_EQ(describe(std::optional<Number>()), "(null)");
    EXPECT_EQ(describe(std::optional<std::string>()), "(null)");
    EXPECT_EQ(describe(std::optional<ByteBuffer>()), "(null)");
}

TEST(Describe, PrintsAPresentValueAsItself) {
    EXPECT_EQ(describe(std::optional<Number>(6.5)), "6.5");
    EXPECT_EQ(describe(std::optional<std::string>("WPA Personal")), "WPA Personal");
    EXPECT_EQ(describe(ByteBuffer{0x00, 0x11, 0x22, 0x33, 0x44, 0x55}), "<00112233 4455>");
}

}  // namespace
