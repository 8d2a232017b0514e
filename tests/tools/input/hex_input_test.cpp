#include "tools/halvane/input/hex_input.h"

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/result.h"

#include "tests/support/temporary_folder.h"

using halvane::ByteBuffer;
using halvane::Result;
using halvane::testing::TemporaryFolder;
using halvane::tool::readHexFile;
using ::testing::HasSubstr;

namespace {

class HexInput : public ::testing::Test {
  protected:
    Result<ByteBuffer, std::string> read(const std::string& text) {
        const auto path = folder_.path() / "elements.hex";
        std::ofstream(path, std::ios::binary) << text;
        return readHexFile(path.string());
    }

    // The reason why there are no octets; empty if there are any.
    static std::string errorOf(const Result<ByteBuffer, std::string>& octets) {
        return octets ? "" : octets.error();
    }

    TemporaryFolder folder_;
};

TEST_F(HexInput, MayBeSpacedAsOneLikes) {
    const auto octets = read("0004 68:6F\n6d65\r\n");
    ASSERT_TRUE(octets);
    EXPECT_EQ(*octets, (ByteBuffer{0, 4, 'h', 'o', 'm', 'e'}));
}

TEST_F(HexInput, NamesTheFileThatIsNoHexadecimalText) {
    for (const char* text : {"0", "0 0", "0x00", "gg", "00 1", "00/11"}) {
        EXPECT_THAT(errorOf(read(text)), HasSubstr("elements.hex: not hexadecimal text")) << text;
    }
}

TEST_F(HexInput, RefusesAnEmptyFile) {
    for (const char* text : {"", " \n"}) {
        EXPECT_THAT(errorOf(read(text)), HasSubstr("elements.hex: empty")) << text;
    }
}

TEST_F(HexInput, IsBounded) {
    EXPECT_EQ(read(std::string(1 << 20, '0'))->size(), std::size_t{1} << 19);
    EXPECT_THAT(errorOf(read(std::string((1 << 20) + 4096, '0'))), HasSubstr("too long"));
}

TEST_F(HexInput, NamesWhatCannotBeRead) {
    const auto missing = (folder_.path() / "missing").string();
    EXPECT_EQ(errorOf(readHexFile(missing)), missing + ": No such file or directory");
    const std::string folder = folder_.path().string();
    EXPECT_EQ(errorOf(readHexFile(folder)), folder + ": Is a directory");
}

}  // namespace
