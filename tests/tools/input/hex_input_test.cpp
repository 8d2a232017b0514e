#include "tools/halvane/input/hex_input.h"

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

#include "tests/support/temporary_folder.h"

using halvane::ByteBuffer;
using halvane::testing::TemporaryFolder;
using halvane::tool::readHexFile;

namespace {

class HexInput : public ::testing::Test {
  protected:
    std::optional<ByteBuffer> read(const std::string& text) {
        const auto path = folder_.path() / "elements.hex";
        std::ofstream(path, std::ios::binary) << text;
        error_.clear();
        return readHexFile(path.string(), error_);
    }

    TemporaryFolder folder_;
    std::string error_;
};

TEST_F(HexInput, MayBeSpacedAsOneLikes) {
    EXPECT_EQ(read("0004 68:6F\n6d65\r\n"), (ByteBuffer{0, 4, 'h', 'o', 'm', 'e'}));
    EXPECT_EQ(error_, "");
}

TEST_F(HexInput, NamesTheFileThatIsNoHexadecimalText) {
    for (const char* text : {"0", "0 0", "0x00", "gg", "00 1", "00/11"}) {
        EXPECT_FALSE(read(text)) << text;
        EXPECT_NE(error_.find("elements.hex: not hexadecimal text"), std::string::npos) << error_;
    }
}

TEST_F(HexInput, RefusesAnEmptyFile) {
    for (const char* text : {"", " \n"}) {
        EXPECT_FALSE(read(text)) << text;
        EXPECT_NE(error_.find("elements.hex: empty"), std::string::npos) << error_;
    }
}

TEST_F(HexInput, IsBounded) {
    EXPECT_EQ(read(std::string(1 << 20, '0'))->size(), std::size_t{1} << 19);
    EXPECT_FALSE(read(std::string((1 << 20) + 4096, '0')));
    EXPECT_NE(error_.find("too long"), std::string::npos);
}

TEST_F(HexInput, NamesWhatCannotBeRead) {
    const auto missing = (folder_.path() / "missing").string();
    EXPECT_FALSE(readHexFile(missing, error_));
    EXPECT_EQ(error_, missing + ": No such file or directory");
    EXPECT_FALSE(readHexFile(folder_.path().string(), error_));
    EXPECT_EQ(error_, folder_.path().string() + ": Is a directory");
}

}  // namespace
