#include "tools/halvane/commands/survey_progress.h"

#include <filesystem>
#include <optional>
#include <system_error>
#include <unistd.h>

#include "tools/halvane/output/shown_text.h"

namespace halvane::tool {

SurveyProgress::SurveyProgress(const std::vector<std::string>& files) : bar_(STDERR_FILENO) {
    if (!bar_.isShown()) return;
    for (const std::string& path : files) {
        const std::filesystem::path file(path);
        ProgressOf& what = files_.emplace_back();
        what.name = shownText(file.filename().string(), {.isASCII = true}).octets();
        what.number = files_.size();
        what.count = files.size();
        std::error_code error;
        if (std::filesystem::is_regular_file(file, error)) {
            const auto size = std::filesystem::file_size(file, error);
            if (!error) what.total = size;
        }
    }
}

void SurveyProgress::update(std::size_t file, std::uint64_t octets) {
    const std::scoped_lock lock(mutex_);
    bar_.update(files_[file], octets);
}

SurveyOfFiles surveyWithProgress(const std::vector<std::string>& files, SurveyOptions options,
                                 bool isQuiet) {
    std::optional<SurveyProgress> progress;
    if (!isQuiet) {
        progress.emplace(files);
        if (progress->isShown()) {
            options.progress = [&](std::size_t file, std::uint64_t octets) {
                progress->update(file, octets);
            };
        }
    }
    return surveyFiles(files, options);
}

}  // namespace halvane::tool
