#include "tools/halvane/input/capture_files.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/support/capture_bytes.h"
#include "tests/support/temporary_folder.h"

using halvane::testing::Bytes;
using halvane::testing::PcapngBytes;
using halvane::testing::TemporaryFolder;
using halvane::tool::CaptureFiles;
using halvane::tool::findCaptureFiles;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

CaptureFiles find(const std::vector<std::string>& arguments) {
    return findCaptureFiles(arguments);
}

class CaptureFilesTest : public ::testing::Test {
  protected:
    std::string path(const std::string& name) const { return (folder_.path() / name).string(); }
    void addCapture(const std::string& name) { folder_.write(name, PcapngBytes().bytes()); }

    TemporaryFolder folder_;
};

TEST_F(CaptureFilesTest, LeavesFilesAsTheyAre) {
    const CaptureFiles found = find({"-", "b.pcap", "", path("missing")});
    EXPECT_THAT(found.paths, ElementsAre("-", "b.pcap", "", path("missing")));
    EXPECT_THAT(found.notes, IsEmpty());
    EXPECT_THAT(found.faults, IsEmpty());
}

TEST_F(CaptureFilesTest, ReadsAFolderInTheOrderOfItsNames) {
    for (const char* name : {"walk-10", "walk-2", "Walk-3", "walk-02"}) addCapture(name);
    const CaptureFiles found = find({"first", folder_.path().string(), "last"});
    EXPECT_THAT(found.paths, ElementsAre("first", path("walk-2"), path("walk-02"), path("Walk-3"),
                                         path("walk-10"), "last"));
    EXPECT_THAT(found.notes, IsEmpty());
}

TEST_F(CaptureFilesTest, CountsWhatIsNoCapture) {
    addCapture("a");
    folder_.write("empty", Bytes());
    const std::string folder = folder_.path().string();
    EXPECT_THAT(find({folder}).notes,
                ElementsAre(folder + ": 1 file is no capture and is passed over"));
    folder_.write("notes.pcap", Bytes(100, 'n'));
    folder_.write("short", Bytes(3, 'n'));
    const CaptureFiles found = find({folder});
    EXPECT_THAT(found.paths, ElementsAre(path("a")));
    EXPECT_THAT(found.notes, ElementsAre(folder + ": 3 files are no captures and are passed over"));
    EXPECT_THAT(found.faults, IsEmpty());
}

TEST_F(CaptureFilesTest, KnowsEveryPcapMagic) {
    int count = 0;
    for (const Bytes& magic : {Bytes{0xD4, 0xC3, 0xB2, 0xA1}, Bytes{0xA1, 0xB2, 0xC3, 0xD4},
                               Bytes{0x4D, 0x3C, 0xB2, 0xA1}, Bytes{0xA1, 0xB2, 0x3C, 0x4D}}) {
        folder_.write(std::to_string(++count), magic);
    }
    EXPECT_EQ(find({folder_.path().string()}).paths.size(), 4u);
}

TEST_F(CaptureFilesTest, EntersNoFolderAndNoHiddenFile) {
    addCapture(".hidden");
    std::filesystem::create_directory(path("folder"));
    addCapture("folder/inner");
    std::filesystem::create_symlink(path("folder/inner"), path("link"));
    const CaptureFiles found = find({folder_.path().string()});
    EXPECT_THAT(found.paths, ElementsAre(path("link")));
    EXPECT_THAT(found.notes, IsEmpty());
}

TEST_F(CaptureFilesTest, TellsOfAFolderWithoutCaptures) {
    const std::string folder = folder_.path().string();
    EXPECT_THAT(find({folder}).faults, ElementsAre(folder + ": the folder has no captures"));
    folder_.write("notes", Bytes(100, 'n'));
    const CaptureFiles found = find({folder});
    EXPECT_THAT(found.paths, IsEmpty());
    EXPECT_EQ(found.notes.size(), 1u);
    EXPECT_THAT(found.faults, ElementsAre(folder + ": the folder has no captures"));
}

}  // namespace
