#include "halvane/base/crc32.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <vector>

using halvane::crc32;

namespace {

// The check value of this CRC, which its catalogues give: the sum of "123456789".
TEST(Crc32, HasItsCheckValue) {
    const std::vector<std::uint8_t> octets = {'1', '2', '3', '4', '5', '6', '7', '8', '9'};
    EXPECT_EQ(crc32(octets), 0xCBF43926u);
    EXPECT_EQ(crc32({}), 0u);
}

}  // namespace
