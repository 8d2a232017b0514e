#include "tools/halvane/options/ssid_argument.h"

#include <gtest/gtest.h>

using namespace halvane::tool;
using halvane::ByteBuffer;

namespace {

std::string errorOf(const std::string& argument, bool isHex) {
    const auto ssid = ssidOf(argument, isHex);
    const auto* error = std::get_if<UsageError>(&ssid);
    return error != nullptr ? error->message : "";
}

TEST(SSIDArgument, IsItsOctetsOrTheirDigits) {
    EXPECT_EQ(std::get<ByteBuffer>(ssidOf("home", false)), ByteBuffer::fromText("home"));
    EXPECT_EQ(std::get<ByteBuffer>(ssidOf("\xFF", false)), ByteBuffer{0xFF});
    EXPECT_EQ(std::get<ByteBuffer>(ssidOf("00fF", true)), (ByteBuffer{0x00, 0xFF}));
    EXPECT_EQ(std::get<ByteBuffer>(ssidOf("00:ff", true)), (ByteBuffer{0x00, 0xFF}));
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
