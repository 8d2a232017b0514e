#include "tools/halvane/networks/survey_reader.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

#include "tests/support/temporary_folder.h"

using namespace halvane::tool;
using halvane::testing::TemporaryFolder;

namespace {

std::vector<std::string> sampleFiles() {
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(HALVANE_SAMPLES)) {
        if (entry.path().extension() == ".pcap") files.push_back(entry.path().string());
    }
    return files;
}

std::string tellingOf(const SurveyOfFiles& survey) {
    std::string text;
    for (const Network& network : survey.survey.networks()) {
        text += network.bssid.text() + ' ' + std::string(nameOf(network)) + ' ' +
                std::to_string(network.statistics->frames()) + ' ' +
                std::to_string(network.statistics->signal.median().value_or(0)) + ' ' +
                std::to_string(network.statistics->lastCapture) + '\n';
    }
    for (const SurveyedCapture& capture : survey.captures) {
        text += capture.summary.text() + ' ' + (capture.error ? capture.error->text : "") + '\n';
    }
    return text;
}

TEST(SurveyReader, ReadsTheSameWithAnyNumberOfJobs) {
    auto files = sampleFiles();
    ASSERT_GT(files.size(), 2u);
    files.insert(files.begin() + 1, "/nowhere/missing.pcap");
    files.push_back(files.front());
    const std::string one = tellingOf(surveyFiles(files, {.jobs = 1}));
    EXPECT_NE(one.find("missing.pcap"), std::string::npos);
    for (const std::size_t jobs : {2u, 3u, 16u}) {
        EXPECT_EQ(tellingOf(surveyFiles(files, {.jobs = jobs})), one) << jobs;
    }
}

TEST(SurveyReader, LetsTheSameNetworksGoWithAnyNumberOfJobs) {
    const auto files = sampleFiles();
    const auto one = surveyFiles(files, {.most = 3, .jobs = 1});
    const auto two = surveyFiles(files, {.most = 3, .jobs = 2});
    EXPECT_EQ(one.survey.size(), 3u);
    EXPECT_GT(one.survey.letGoCount(), 0u);
    EXPECT_EQ(two.survey.letGoCount(), one.survey.letGoCount());
    EXPECT_EQ(tellingOf(two), tellingOf(one));
}

// A pipe that holds the octets of the file, and is at its end behind them.
class FilledPipe {
  public:
    explicit FilledPipe(const std::string& path) {
        std::ostringstream octets;
        octets << std::ifstream(path, std::ios::binary).rdbuf();
        const std::string text = octets.str();
        std::array<int, 2> ends{};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
        end_ = ends[0];
        const bool isWhole =
            ::write(ends[1], text.data(), text.size()) == static_cast<ssize_t>(text.size());
        ::close(ends[1]);
        if (!isWhole) throw std::runtime_error("the pipe is too small");
    }
    FilledPipe(const FilledPipe&) = delete;
    FilledPipe& operator=(const FilledPipe&) = delete;
    ~FilledPipe() { ::close(end_); }

    std::string path() const { return "/proc/self/fd/" + std::to_string(end_); }

  private:
    int end_ = -1;
};

TEST(SurveyReader, ReadsPipesOnceWhereNetworksHaveToGo) {
    const std::string today = HALVANE_SAMPLES "/today.pcap";
    const std::string security = HALVANE_SAMPLES "/security.pcap";
    const FilledPipe first(today);
    const FilledPipe second(security);
    const auto files = surveyFiles({today, security}, {.most = 3, .jobs = 2});
    const auto pipes = surveyFiles({first.path(), second.path()}, {.most = 3, .jobs = 2});
    EXPECT_GT(files.survey.letGoCount(), 0u);
    EXPECT_EQ(tellingOf(pipes), tellingOf(files));
}

TEST(SurveyReader, KeepsTheFaultOfEachFile) {
    const TemporaryFolder folder;
    const auto path = (folder.path() / "empty.pcap").string();
    std::ofstream(path).close();
    const auto survey = surveyFiles({path}, {});
    ASSERT_EQ(survey.captures.size(), 1u);
    EXPECT_FALSE(survey.isWhole());
    EXPECT_NE(survey.captures[0].error->text.find("empty.pcap"), std::string::npos);
    EXPECT_FALSE(survey.duration());
}

TEST(SurveyReader, StopsWhereItIsTold) {
    std::atomic<int> asked = 0;
    const auto survey =
        surveyFiles(sampleFiles(), {.jobs = 1, .isStopped = [&] { return ++asked > 0; }});
    EXPECT_EQ(survey.summary().frames, 0u);
    EXPECT_GT(asked, 0);
}

}  // namespace
