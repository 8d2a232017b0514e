// The page about the networks of capture files.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

#include "tools/halvane/commands/command.h"
#include "tools/halvane/commands/survey_progress.h"
#include "tools/halvane/input/capture_files.h"
#include "tools/halvane/input/maker_list.h"
#include "tools/halvane/networks/network_summary.h"
#include "tools/halvane/networks/survey_reader.h"
#include "tools/halvane/options/report_options.h"
#include "tools/halvane/output/message.h"
#include "tools/halvane/output/rounded.h"
#include "tools/halvane/output/shown_text.h"
#include "tools/halvane/output/standard_output.h"
#include "tools/halvane/output/whole_file.h"
#include "tools/halvane/report/report_data.h"
#include "tools/halvane/report/report_page.h"
#include "tools/halvane/survey/network.h"

namespace halvane::tool {

namespace {

// "859 kB".
std::string sizeText(std::size_t octets) {
    constexpr double kThousand = 1000;
    const double thousands = std::ceil(static_cast<double>(octets) / kThousand);
    if (thousands < kThousand) return std::to_string(rounded(thousands)) + " kB";
    const long tenths = rounded(static_cast<double>(octets) / (kThousand * kThousand) * 10);
    return std::to_string(tenths / 10) + '.' + std::to_string(tenths % 10) + " MB";
}

void complainOf(const SurveyOfFiles& survey) {
    for (const SurveyedCapture& capture : survey.captures) {
        for (const std::string& note : capture.notes) complain(note);
        if (capture.error) complain(capture.error->text, capture.error->hint);
    }
}

// Returns whether the page reached its place.
bool putPage(const ReportCommandOptions& options, const std::string& page) {
    if (!options.output) {
        put(page);
        return true;
    }
    const auto fault = writeWholeFile(*options.output, page, options.ifThere);
    if (fault) complain(*fault);
    return !fault;
}

void summarize(const ReportCommandOptions& options, std::size_t networks, std::size_t octets) {
    if (options.isQuiet || !options.output) return;
    std::fprintf(stderr, "%s: %zu %s, %s\n", shownText(*options.output, {}).octets().c_str(),
                 networks, networks == 1 ? "network" : "networks", sizeText(octets).c_str());
}

int makeReport(const ReportCommandOptions& options, const CaptureFiles& found) {
    const SurveyOfFiles survey = surveyWithProgress(
        found.paths, {.most = options.mostNetworks, .jobs = options.jobs, .keepsHistory = true},
        options.isQuiet);
    complainOf(survey);
    std::vector<Network> networks = survey.survey.networks();
    const std::size_t all = networks.size();
    const auto rest = std::stable_partition(
        networks.begin(), networks.end(),
        [&](const Network& network) { return options.filter.passes(network); });
    if (rest == networks.begin() && all > 0) {
        for (const std::string& line : emptyFilterLines(options.filter, networks)) {
            std::fprintf(stderr, "%s\n", line.c_str());
        }
    }
    networks.erase(rest, networks.end());
    const std::size_t count = networks.size();
    ReportOptions pageOptions = options.page;
    pageOptions.makers = &MakerList::ofSystem();
    const ReportData data = reportData({.networks = std::move(networks),
                                        .files = found.paths,
                                        .captures = survey.captures,
                                        .all = all,
                                        .letGo = survey.survey.letGoCount()},
                                       pageOptions);
    const std::string page = reportPage(data);
    if (!putPage(options, page)) return kExitFailed;
    summarize(options, count, page.size());
    return survey.isWhole() && found.faults.empty() ? kExitDone : kExitFailed;
}

}  // namespace

int reportCommand() {
    const auto options = takeReportOptions();
    if (!options) return refuse("report", options.error());
    if (!options->output && ::isatty(STDOUT_FILENO) != 0) {
        return refuse("report",
                      "a page is nothing for a terminal: name a file with -o FILE, or "
                      "redirect standard output");
    }
    if (options->output) {
        if (const auto hindrance = hindranceOf(*options->output, options->ifThere)) {
            const bool forceHelps = !hindranceOf(*options->output, IfThere::Replace);
            complain(*hindrance + (forceHelps ? " (--force overwrites it)" : ""));
            return kExitFailed;
        }
    }
    const CaptureFiles found = findCaptureFiles(options->files);
    for (const std::string& note : found.notes) complain(note);
    for (const std::string& fault : found.faults) complain(fault);
    if (found.paths.empty()) return kExitFailed;
    return makeReport(*options, found);
}

}  // namespace halvane::tool
