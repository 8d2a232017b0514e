// The daemon's unit of systemd, as systemd itself reads it.
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iostream>
#include <string>
#include <unistd.h>

#include "tests/support/run_program.h"
#include "tests/support/temporary_folder.h"

using halvane::testing::contentsOf;
using halvane::testing::ProgramResult;
using halvane::testing::runProgram;
using halvane::testing::TemporaryFolder;

namespace {

constexpr const char kJudge[] = "/usr/bin/systemd-analyze";

class HostingUnit : public ::testing::Test {
  protected:
    void SetUp() override {
        if (::access(kJudge, X_OK) != 0) {
            GTEST_SKIP() << "systemd-analyze is not installed (package systemd)";
        }
        // The folder of the program is known when the unit is installed, and systemd looks whether
        // there is such a program.
        std::string text = contentsOf(HALVANE_DATA "/halvaned.service.in");
        const std::string key = "\nExecStart=";
        const auto begin = text.find(key);
        ASSERT_NE(begin, std::string::npos);
        const auto program = begin + key.size();
        text.replace(program, text.find(' ', program) - program, HALVANE_DAEMON);
        write(text);
    }

    void write(const std::string& text) const { std::ofstream(path()) << text; }
    std::string path() const { return folder_.path() / "halvaned.service"; }

    ProgramResult verify() const { return runProgram({kJudge, "verify", "--man=no", path()}); }

  private:
    TemporaryFolder folder_;
};

TEST_F(HostingUnit, HasNoFault) {
    const auto result = verify();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    // The judge sees faults.
    write(contentsOf(path()) + "[Service]\nNonsense=yes\n");
    EXPECT_NE(verify().errors, "");
}

// systemd's measure is from 0 to 10, and what it asks for is in tenths.
TEST_F(HostingUnit, IsConfined) {
    const auto result =
        runProgram({kJudge, "security", "--offline=yes", "--no-pager", "--threshold=30", path()});
    EXPECT_EQ(result.status, 0) << result.output;
    std::cout << result.output.substr(result.output.rfind("Overall exposure level")) << '\n';
}

}  // namespace
