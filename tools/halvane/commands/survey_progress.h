// Shows how far several threads have come with reading files, on standard error.
#ifndef TOOLS_HALVANE_COMMANDS_SURVEY_PROGRESS_H
#define TOOLS_HALVANE_COMMANDS_SURVEY_PROGRESS_H

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

#include "tools/halvane/networks/survey_reader.h"
#include "tools/halvane/output/progress_bar.h"

namespace halvane::tool {

class SurveyProgress {
  public:
    // Results are printed once all files are read. Only regular files have a size.
    explicit SurveyProgress(const std::vector<std::string>& files);

    bool isShown() const { return bar_.isShown(); }

    // The octets of a file that were read. Any thread may call it.
    void update(std::size_t file, std::uint64_t octets);

  private:
    std::vector<ProgressOf> files_;
    std::mutex mutex_;  // guards bar_
    ProgressBar bar_;
};

// As surveyFiles(), with a bar unless `isQuiet`. `options` have no progress of their own.
SurveyOfFiles surveyWithProgress(const std::vector<std::string>& files, SurveyOptions options,
                                 bool isQuiet);

}  // namespace halvane::tool

#endif
