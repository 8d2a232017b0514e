#include "tools/halvane/options/ssid_argument.h"

#include <gtest/gtest.h>
#include <string>

#include "halvane/base/byte_buffer.h"

using namespace halvane::tool;
using halvane::ByteBuffer;

namespace {

std::string errorOf(const std::string& argument, bool isHex) {
    const auto ssid = ssidOf(argument, isHex);
    return ssid ? "" : ssid.error().message;
}

TEST(SSIDArgument, IsItsOctetsOrTheirDigits) {
    EXPECT_EQ(ssidOf("home", false)->buffer(), ByteBuffer::fromText("home"));
    EXPECT_EQ(ssidOf("\xFF", false)->buffer(), ByteBuffer{0xFF});
    EXPECT_EQ(ssidOf("00fF", true)->buffer(), (ByteBuffer{0x00, 0xFF}));
    EXPECT_EQ(ssidOf("00:ff", true)->buffer(), (ByteBuffer{0x00, 0xFF}));
}

TEST(SSIDArgument, Has1To32Octets) {
    EXPECT_EQ(errorOf(std::string(32, 's'), false), "");
    EXPECT_EQ(errorOf(std::string(64, 'f'), true), "");
    EXPECT_EQ(errorOf("", false), "an SSID has 1 to 32 octets, not 0");
    EXPECT_EQ(errorOf("", true), "an SSID has 1 to 32 octets, not 0");
    EXPECT_EQ(errorOf(std::string(33, 's'), false), "an SSID has 1 to 32 octets, not 33");
    EXPECT_EQ(errorOf(std::string(66, 'f'), true), "an SSID has 1 to 32 octets, not 33");
}

TEST(SSIDArgument, IsStrictAboutDigits) {
    for (const char* argument : {"0", "0g", "0x41", "home"}) {
        EXPECT_EQ(errorOf(argument, true), "the SSID is not hexadecimal text");
    }
}

}  // namespace
