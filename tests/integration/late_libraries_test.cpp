// Libraries that the tool loads when a command needs them.
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/run_program.h"
#include "tests/support/run_tool.h"
#include "tests/support/scoped_environment.h"
#include "tests/support/temporary_folder.h"

using halvane::testing::expectMessage;
using halvane::testing::ProgramResult;
using halvane::testing::runTool;
using halvane::testing::ScopedEnvironment;
using halvane::testing::TemporaryFolder;

namespace {

constexpr const char* kLibraries[] = {"libarchive.so.13", "liblzma.so.5",    "libnl-genl-3.so.200",
                                      "libpcap.so.0.8",   "libsystemd.so.0", "libz.so.1"};

// The loader finds files there that are no libraries, so none of these can be loaded.
class WithoutLibraries : public ::testing::Test {
  protected:
    WithoutLibraries() {
        for (const char* library : kLibraries) std::ofstream(folder_.path() / library);
    }

    std::string path(const std::string& name) const { return (folder_.path() / name).string(); }

    std::string problemOf(const std::string& library) const {
        return path(library) + ": file too short";
    }

    // A capture whose octets begin like those of a compressed file.
    std::string compressed(std::vector<std::uint8_t> magic) const {
        magic.resize(64);
        return folder_.write("capture", magic);
    }

    ProgramResult run(std::vector<std::string> words) const {
        const ScopedEnvironment folder("LD_LIBRARY_PATH", folder_.path().string());
        return runTool(std::move(words));
    }

  private:
    TemporaryFolder folder_;
};

TEST_F(WithoutLibraries, TellsItsVersionAndWhatItKnows) {
    for (const std::vector<std::string>& words :
         std::vector<std::vector<std::string>>{{"--version"},
                                               {"--help"},
                                               {"channels"},
                                               {"decode", HALVANE_SAMPLES "/country.pcapng"}}) {
        const auto result = run(words), usual = runTool(words);
        EXPECT_EQ(result.status, 0) << words[0];
        EXPECT_EQ(result.output, usual.output) << words[0];
        EXPECT_EQ(result.errors, usual.errors) << words[0];
    }
}

TEST_F(WithoutLibraries, TellsWhichOneACaptureNeeds) {
    EXPECT_EQ(run({"decode", HALVANE_SAMPLES "/security.pcap"}).errors,
              "halvane: " HALVANE_SAMPLES "/security.pcap: " + problemOf("libpcap.so.0.8") + "\n");
    EXPECT_EQ(run({"decode", HALVANE_SAMPLES "/security.pcap"}).status, 1);
}

TEST_F(WithoutLibraries, TellsWhichOneACompressedFileNeeds) {
    const struct {
        std::vector<std::uint8_t> magic;
        const char* library;
    } rows[] = {
        {{0x1F, 0x8B, 8}, "libz.so.1"},
        {{0xFD, '7', 'z', 'X', 'Z', 0}, "liblzma.so.5"},
        {{'B', 'Z', 'h', '9'}, "libarchive.so.13"},
        {{0x28, 0xB5, 0x2F, 0xFD}, "libarchive.so.13"},
        {{0x04, 0x22, 0x4D, 0x18}, "libarchive.so.13"},
    };
    for (const auto& row : rows) {
        const std::string file = compressed(row.magic);
        expectMessage(
            run({"decode", file}), 1,
            "halvane: " + file + ": cannot be decompressed: " + problemOf(row.library) + "\n");
    }
}

TEST_F(WithoutLibraries, TellsThatTheDaemonNeedsTheBus) {
    expectMessage(run({"interfaces"}), 1,
                  "halvane: interfaces: the bus cannot be used: " + problemOf("libsystemd.so.0") +
                      "\n  install libsystemd\n");
}

}  // namespace
