// `halvane report`, as users run it. What the page holds is tested where it is made, and in a
// browser by report_in_browser.
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <sys/wait.h>
#include <utility>
#include <vector>

#include "tests/support/run_program.h"
#include "tests/support/run_tool.h"
#include "tests/support/scoped_environment.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/terminal_program.h"

using halvane::testing::contentsOf;
using halvane::testing::expectMessage;
using halvane::testing::ProgramResult;
using halvane::testing::runTool;
using halvane::testing::ScopedEnvironment;
using halvane::testing::TemporaryFolder;
using halvane::testing::TerminalProgram;
using halvane::testing::toolWords;

namespace {

std::string sample(const char* name) {
    return (std::filesystem::path(HALVANE_SAMPLES) / name).string();
}

ProgramResult report(std::vector<std::string> words) {
    words.insert(words.begin(), "report");
    return runTool(std::move(words));
}

class Report : public ::testing::Test {
  protected:
    std::string path(const char* name) const { return (folder_.path() / name).string(); }
    std::size_t fileCount() const {
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator(folder_.path()), {}));
    }

  private:
    const ScopedEnvironment makers_{"HALVANE_IEEE_DATA", "/nowhere"};
    TemporaryFolder folder_;
};

TEST_F(Report, WritesThePageAndSaysSo) {
    const auto result = report({sample("neighbourhood.pcap"), "-o", path("survey.html")});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "");
    const std::string page = contentsOf(path("survey.html"));
    EXPECT_TRUE(page.starts_with("<!DOCTYPE html>\n"));
    EXPECT_TRUE(page.ends_with("</html>\n"));
    const std::size_t size = (page.size() + 999) / 1000;
    EXPECT_EQ(result.errors,
              path("survey.html") + ": 8 networks, " + std::to_string(size) + " kB\n");
    EXPECT_EQ(fileCount(), 1u);
}

TEST_F(Report, IsTheSameOnStandardOutputAndWithAnyNumberOfJobs) {
    const std::vector<std::string> files = {sample("neighbourhood.pcap"), sample("today.pcap"),
                                            sample("damaged.pcap")};
    const auto run = [&](std::vector<std::string> words) {
        words.insert(words.end(), files.begin(), files.end());
        return report(std::move(words)).output;
    };
    const std::string page = run({"--jobs=1"});
    EXPECT_TRUE(page.ends_with("</html>\n"));
    EXPECT_EQ(run({"--jobs=4"}), page);
    EXPECT_EQ(run({"-o", "-"}), page);
}

TEST_F(Report, OverwritesOnlyIfAskedTo) {
    std::ofstream(path("survey.html")) << "mine";
    const auto kept = report({sample("today.pcap"), "-o", path("survey.html")});
    expectMessage(kept, 1,
                  "halvane: " + path("survey.html") + ": File exists (--force overwrites it)\n");
    EXPECT_EQ(contentsOf(path("survey.html")), "mine");
    EXPECT_EQ(report({sample("today.pcap"), "-o", path("survey.html"), "--force"}).status, 0);
    EXPECT_TRUE(contentsOf(path("survey.html")).starts_with("<!DOCTYPE html>"));
    EXPECT_EQ(fileCount(), 1u);
}

TEST_F(Report, TellsWhatItCannotWrite) {
    const auto none = report({sample("today.pcap"), "-o", path("none/survey.html")});
    expectMessage(none, 1,
                  "halvane: " + path("none/survey.html") + ": No such file or directory\n");
    const auto full = report({sample("today.pcap"), "-o", "/dev/full"});
    expectMessage(full, 1, "halvane: /dev/full: No space left on device\n");
}

TEST_F(Report, IsNothingForATerminal) {
    HALVANE_SKIP_WITHOUT_TERMINALS();
    TerminalProgram tool(toolWords({"report", sample("today.pcap")}));
    tool.waitFor("name a file with -o FILE");
    EXPECT_EQ(WEXITSTATUS(tool.wait()), 2);
    EXPECT_EQ(tool.screen().find("<!DOCTYPE"), std::string::npos);
}

TEST_F(Report, TellsACaptureThatIsCut) {
    const std::string whole = contentsOf(sample("neighbourhood.pcap"));
    std::ofstream(path("cut.pcap"), std::ios::binary) << whole.substr(0, whole.size() - 5);
    const auto result = report({path("cut.pcap"), "-o", path("survey.html")});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.errors.find("cut.pcap"), std::string::npos);
    EXPECT_NE(contentsOf(path("survey.html")).find("not read to its end"), std::string::npos);
}

TEST_F(Report, MakesAnEmptyPageOfAFilterThatLetsNothingThrough) {
    const auto result = report({sample("today.pcap"), "--ssid=nobody", "-o", path("survey.html")});
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.errors.find("passes the filter\n"), std::string::npos) << result.errors;
    EXPECT_NE(contentsOf(path("survey.html")).find("0 networks in 1 capture"), std::string::npos);
}

TEST_F(Report, RefusesBadUsage) {
    EXPECT_EQ(report({}).status, 2);
    EXPECT_EQ(report({sample("today.pcap"), "--details=some"}).status, 2);
}

}  // namespace
