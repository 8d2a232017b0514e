// Surveys capture files, several at once on several cores.
//
// A free function; any thread may call it, but it counts as the only user of its files.
#ifndef TOOLS_HALVANE_NETWORKS_SURVEY_READER_H
#define TOOLS_HALVANE_NETWORKS_SURVEY_READER_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tools/halvane/input/capture_reader.h"
#include "tools/halvane/input/packet_source.h"
#include "tools/halvane/survey/survey.h"

namespace halvane::tool {

// What happened while a file was read.
struct SurveyedCapture {
    CaptureSummary summary{};
    std::optional<std::int64_t>
        firstTime{};  // nanoseconds since 1970-01-01 00:00 UTC, of any frame
    std::optional<std::int64_t> lastTime{};
    std::uint64_t cutFrames = 0;          // the end of their elements is missing
    std::uint64_t firstCut = 0;           // number of the first of them
    std::vector<std::string> notes{};     // what was passed over; one line each
    std::optional<ReadingFault> error{};  // why the file was not read to its end
};

struct SurveyOptions {
    std::size_t most = Survey::kDefaultMost;  // networks
    std::size_t jobs = 1;                     // files at once
    bool keepsHistory = false;                // of the signal of each network
    // Called by the reading threads with the octets that were read since its last call, of a file.
    std::function<void(std::size_t file, std::uint64_t octets)> progress{};
    // Called by the reading threads: whether the rest need not be read.
    std::function<bool()> isStopped{};
};

struct SurveyOfFiles {
    Survey survey;
    std::vector<SurveyedCapture> captures{};  // in the order of the files

    bool isWhole() const;
    CaptureSummary summary() const;
    std::uint64_t cutFrames() const;
    // Of all captures together; absent if none tells times. Nanoseconds.
    std::optional<std::int64_t> duration() const;
    // As NetworkStatistics::lastTime.
    std::vector<std::optional<std::int64_t>> ends() const;
};

// Reads all files in their order. The result does not depend on the number of jobs. A file "-" is
// standard input. Each file is opened once if it cannot be read again, such as a pipe.
SurveyOfFiles surveyFiles(const std::vector<std::string>& files, const SurveyOptions& options);

}  // namespace halvane::tool

#endif
