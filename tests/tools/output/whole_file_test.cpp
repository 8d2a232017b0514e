#include "tools/halvane/output/whole_file.h"

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <system_error>

#include "tests/support/run_program.h"
#include "tests/support/temporary_folder.h"

using namespace halvane::tool;
using halvane::testing::contentsOf;
using halvane::testing::TemporaryFolder;

namespace {

class WholeFile : public ::testing::Test {
  protected:
    std::string path(const char* name) const { return (folder_.path() / name).string(); }
    void make(const char* name, const std::string& text) const {
        std::ofstream(path(name)) << text;
    }
    std::size_t count() const {
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator(folder_.path()),
                          std::filesystem::directory_iterator()));
    }

  private:
    TemporaryFolder folder_;
};

TEST_F(WholeFile, HasItsTextAndTheUsualMode) {
    const mode_t mask = ::umask(027);
    EXPECT_EQ(writeWholeFile(path("page"), "text", IfThere::Keep), std::nullopt);
    ::umask(mask);
    EXPECT_EQ(contentsOf(path("page")), "text");
    struct stat status {};
    ASSERT_EQ(::stat(path("page").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777u, 0640u);
    EXPECT_EQ(count(), 1u);
}

TEST_F(WholeFile, KeepsWhatIsThere) {
    make("page", "old");
    const auto fault = writeWholeFile(path("page"), "new", IfThere::Keep);
    ASSERT_TRUE(fault);
    EXPECT_EQ(*fault, path("page") + ": " + std::generic_category().message(EEXIST));
    EXPECT_EQ(hindranceOf(path("page"), IfThere::Keep), fault);
    EXPECT_EQ(contentsOf(path("page")), "old");
    EXPECT_EQ(count(), 1u);
}

TEST_F(WholeFile, ReplacesWhatIsThereIfAskedTo) {
    make("page", "old and long");
    EXPECT_EQ(hindranceOf(path("page"), IfThere::Replace), std::nullopt);
    EXPECT_EQ(writeWholeFile(path("page"), "new", IfThere::Replace), std::nullopt);
    EXPECT_EQ(contentsOf(path("page")), "new");
    EXPECT_EQ(count(), 1u);
}

TEST_F(WholeFile, IsWrittenWhereALinkPoints) {
    make("target", "old");
    std::filesystem::create_symlink("target", path("link"));
    EXPECT_EQ(writeWholeFile(path("link"), "new", IfThere::Replace), std::nullopt);
    EXPECT_EQ(contentsOf(path("target")), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(path("link")));
}

TEST_F(WholeFile, LeavesDevicesWhatTheyAre) {
    EXPECT_EQ(writeWholeFile("/dev/null", "text", IfThere::Keep), std::nullopt);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
    const auto fault = writeWholeFile("/dev/full", "text", IfThere::Replace);
    ASSERT_TRUE(fault);
    EXPECT_EQ(*fault, "/dev/full: " + std::generic_category().message(ENOSPC));
}

TEST_F(WholeFile, TellsWhatWentWrong) {
    EXPECT_EQ(writeWholeFile(path("none/page"), "text", IfThere::Keep),
              path("none/page") + ": " + std::generic_category().message(ENOENT));
    EXPECT_EQ(writeWholeFile(path("."), "text", IfThere::Replace),
              path(".") + ": " + std::generic_category().message(EISDIR));
    EXPECT_EQ(count(), 0u);
}

}  // namespace
