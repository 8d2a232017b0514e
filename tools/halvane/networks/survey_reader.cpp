#include "tools/halvane/networks/survey_reader.h"

#include <algorithm>
#include <condition_variable>
#include <exception>
#include <filesystem>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include "halvane/capture/beacon_frame.h"
#include "halvane/capture/frame_record.h"

#include "tools/halvane/survey/cut_elements.h"
#include "tools/halvane/survey/network_statistics.h"
#include "tools/halvane/survey/saturated.h"

namespace halvane::tool {

namespace {

// The frames between two reports of progress.
constexpr std::uint64_t kFramesAtOnce = 1024;

void addTime(std::optional<std::int64_t> time, SurveyedCapture& capture) {
    if (!time) return;
    capture.firstTime = std::min(capture.firstTime.value_or(*time), *time);
    capture.lastTime = std::max(capture.lastTime.value_or(*time), *time);
}

// Reads one file into a survey.
class FileSurvey {
  public:
    FileSurvey(std::size_t file, const SurveyOptions& options, Survey& survey)
        : file_(file), options_(options), survey_(survey) {}

    SurveyedCapture read(const std::string& path) {
        auto reader = CaptureReader::open(path);
        if (!reader) {
            capture_.error = reader.error();
            return std::move(capture_);
        }
        while (!isStopped()) {
            const auto frame = reader->next();
            if (!frame) break;
            take(*frame);
            if (reader->summary().frames % kFramesAtOnce == 0) report(reader->bytesRead());
        }
        capture_.summary = reader->summary();
        if (const auto note = reader->note()) capture_.notes.push_back(*note);
        capture_.error = reader->error();
        return std::move(capture_);
    }

  private:
    bool isStopped() const { return options_.isStopped && options_.isStopped(); }

    void report(std::uint64_t octets) const {
        if (options_.progress) options_.progress(file_, octets);
    }

    void take(const CaptureReader::Frame& frame) {
        addTime(frame.time, capture_);
        const capture::BeaconFrame* const beacon = frame.beacon();
        if (beacon == nullptr) return;
        const bool isCut = isCutFrame(*beacon);
        if (isCut && capture_.cutFrames++ == 0) capture_.firstCut = frame.number;
        const HeardFrame heard = {.subtype = beacon->subtype,
                                  .number = frame.number,
                                  .capture = file_,
                                  .time = frame.time,
                                  .signal = frame.radio.signalDBm,
                                  .isCut = isCut,
                                  .isForHistory = options_.keepsHistory};
        if (survey_.addNumbers(*beacon, frame.radio, heard)) return;
        capture::Sighting sighting = CaptureReader::sightingOf(frame);
        sighting.origin->file = file_;
        survey_.add(sighting, heard);
    }

    const std::size_t file_;
    const SurveyOptions& options_;
    Survey& survey_;
    SurveyedCapture capture_;
};

SurveyOfFiles surveyInOrder(const std::vector<std::string>& files, const SurveyOptions& options) {
    SurveyOfFiles result{Survey(options.most)};
    for (std::size_t i = 0; i < files.size(); ++i) {
        result.captures.push_back(FileSurvey(i, options, result.survey).read(files[i]));
    }
    return result;
}

// Reads files at once, and adds their surveys in the order of the files. Readers do not run far
// ahead, so that few surveys wait.
class ParallelSurvey {
  public:
    ParallelSurvey(const std::vector<std::string>& files, const SurveyOptions& options)
        : files_(files),
          options_(options),
          window_(2 * options.jobs),
          result_{Survey(options.most)},
          read_(files.size()) {}

    SurveyOfFiles run() {
        {
            std::vector<std::jthread> threads;
            const std::size_t count = std::min(options_.jobs, files_.size());
            for (std::size_t i = 0; i < count; ++i) threads.emplace_back([this] { readFiles(); });
            collect();
        }
        if (failure_) std::rethrow_exception(failure_);
        return std::move(result_);
    }

  private:
    struct Read {
        Survey survey;
        SurveyedCapture capture;
    };

    // The next file to read; absent if there is none left.
    std::optional<std::size_t> takeFile() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] {
            return failure_ || next_ == files_.size() || next_ < collected_ + window_;
        });
        if (failure_ || next_ == files_.size()) return std::nullopt;
        return next_++;
    }

    void readFiles() {
        try {
            while (const auto file = takeFile()) {
                Survey survey(options_.most);
                SurveyedCapture capture = FileSurvey(*file, options_, survey).read(files_[*file]);
                const std::scoped_lock lock(mutex_);
                read_[*file].emplace(Read{std::move(survey), std::move(capture)});
                changed_.notify_all();
            }
        } catch (...) {
            fail();
        }
    }

    void fail() {
        const std::scoped_lock lock(mutex_);
        failure_ = std::current_exception();
        changed_.notify_all();
    }

    // Absent after a failure.
    std::optional<Read> waitFor(std::size_t file) {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [&] { return failure_ || read_[file]; });
        if (failure_) return std::nullopt;
        collected_ = file + 1;
        changed_.notify_all();
        return std::exchange(read_[file], std::nullopt);
    }

    void collect() {
        try {
            for (std::size_t i = 0; i < files_.size(); ++i) {
                auto read = waitFor(i);
                if (!read) return;
                result_.survey.add(std::move(read->survey));
                result_.captures.push_back(std::move(read->capture));
            }
        } catch (...) {
            fail();
        }
    }

    const std::vector<std::string>& files_;
    const SurveyOptions& options_;
    const std::size_t window_;  // files
    SurveyOfFiles result_;

    std::mutex mutex_;  // guards all below
    std::condition_variable changed_;
    std::vector<std::optional<Read>> read_;
    std::size_t next_ = 0;       // file to read
    std::size_t collected_ = 0;  // files
    std::exception_ptr failure_;
};

// Whether the file gives its octets once, as standard input and pipes do.
bool isReadOnce(const std::string& path) {
    std::error_code ignored;
    const auto status = std::filesystem::status(path, ignored);
    return path == "-" || (exists(status) && !is_regular_file(status));
}

}  // namespace

bool SurveyOfFiles::isWhole() const {
    return std::ranges::none_of(
        captures, [](const SurveyedCapture& capture) { return capture.error.has_value(); });
}

CaptureSummary SurveyOfFiles::summary() const {
    CaptureSummary summary;
    for (const SurveyedCapture& capture : captures) summary.add(capture.summary);
    return summary;
}

std::uint64_t SurveyOfFiles::cutFrames() const {
    std::uint64_t count = 0;
    for (const SurveyedCapture& capture : captures) count += capture.cutFrames;
    return count;
}

std::optional<std::int64_t> SurveyOfFiles::duration() const {
    std::optional<std::int64_t> duration;
    for (const SurveyedCapture& capture : captures) {
        if (!capture.firstTime) continue;
        const auto own = saturatedDifference(*capture.lastTime, *capture.firstTime);
        duration = saturatedSum(duration.value_or(0), own);
    }
    return duration;
}

std::vector<std::optional<std::int64_t>> SurveyOfFiles::ends() const {
    std::vector<std::optional<std::int64_t>> ends;
    ends.reserve(captures.size());
    for (const SurveyedCapture& capture : captures) ends.push_back(capture.lastTime);
    return ends;
}

SurveyOfFiles surveyFiles(const std::vector<std::string>& files, const SurveyOptions& options) {
    const bool canBeReadAgain = std::ranges::none_of(files, isReadOnce);
    if (options.jobs <= 1 || files.size() <= 1 || !canBeReadAgain) {
        return surveyInOrder(files, options);
    }
    SurveyOfFiles result = ParallelSurvey(files, options).run();
    // Which networks have to go depends on the order of the frames of all files.
    return result.survey.letGoCount() == 0 ? std::move(result) : surveyInOrder(files, options);
}

}  // namespace halvane::tool
