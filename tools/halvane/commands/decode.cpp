#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unistd.h>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/escaped_text.h"
#include "halvane/base/mac_address.h"
#include "halvane/capture/beacon_frame.h"
#include "halvane/capture/frame_record.h"
#include "halvane/ie/mac.h"

#include "tools/halvane/commands/command.h"
#include "tools/halvane/commands/list_output.h"
#include "tools/halvane/commands/survey_progress.h"
#include "tools/halvane/input/capture_files.h"
#include "tools/halvane/input/capture_reader.h"
#include "tools/halvane/input/hex_input.h"
#include "tools/halvane/input/maker_list.h"
#include "tools/halvane/networks/network_columns.h"
#include "tools/halvane/networks/network_order.h"
#include "tools/halvane/networks/network_summary.h"
#include "tools/halvane/networks/survey_reader.h"
#include "tools/halvane/options/argument.h"
#include "tools/halvane/options/decode_options.h"
#include "tools/halvane/options/list_options.h"
#include "tools/halvane/output/frame_origin.h"
#include "tools/halvane/output/message.h"
#include "tools/halvane/output/progress_bar.h"
#include "tools/halvane/output/record_writer.h"
#include "tools/halvane/survey/cut_elements.h"
#include "tools/halvane/survey/network.h"
#include "tools/halvane/survey/network_statistics.h"

namespace halvane::tool {

namespace {

// The reader is gone, or the disk is full. main() reports it, and more output is useless.
bool isOutputLost() {
    return std::ferror(stdout) != 0;
}

std::string cutText(std::uint64_t count, std::uint64_t first) {
    const std::string frame = std::to_string(first);
    if (count == 1) return "frame " + frame + " is cut";
    return std::to_string(count) + " frames are cut, the first is frame " + frame;
}

// One file needs no name.
std::vector<std::string> namesOf(const std::vector<std::string>& files) {
    std::vector<std::string> names;
    if (files.size() < 2) return names;
    for (const std::string& path : files) names.push_back(inputName(path));
    return names;
}

std::unique_ptr<RecordWriter> writerFor(const DecodeOptions& options,
                                        const std::vector<std::string>& files) {
    if (!options.isExplained) return RecordWriter::create(options.format, stdout, listedMaker);
    return RecordWriter::createExplaining(
        stdout, listTextStyle(options.list),
        [](const MacAddress& address) { return MakerList::ofSystem().cell(address); },
        namesOf(files));
}

void summarize(const DecodeOptions& options, const std::vector<std::string>& lines) {
    if (!options.list.isQuiet) printSummary(lines, options.list);
}

// --- Hexadecimal text ---

int decodeHex(const DecodeOptions& options) {
    const std::string& path = options.files.front();
    const auto writer = writerFor(options, options.files);
    const auto elements = readHexFile(path);
    if (!elements) {
        complain(elements.error());
        writer->finish();
        return kExitFailed;
    }
    const auto& bssid = options.list.bssid;
    auto record = HalvaneMAC::initWithMAC(bssid ? bssid->buffer() : ByteBuffer());
    record.setCapabilityField(options.capabilities.value_or(0));
    record.setInformationElements(*elements);
    const bool isCut = endsInsideAnElement(elements->bytes());
    if (isCut) complain(inputName(path) + ": cut in an element");
    writer->write({record}, std::nullopt);
    writer->finish();
    return isCut ? kExitFailed : kExitDone;
}

// --- Single frames ---

class FramePrinter {
  public:
    FramePrinter(const DecodeOptions& options, const std::vector<std::string>& files)
        : options_(options), files_(files), writer_(writerFor(options, files)) {}

    int run() {
        bool isWhole = true;
        for (std::size_t file = 0; file < files_.size() && !isOutputLost(); ++file) {
            isWhole = printCapture(file) && isWhole;
        }
        writer_->finish();
        if (summary_.frames > 0) {
            summarize(options_, {framesLine(summary_, cutFrames_, std::nullopt)});
        }
        return isWhole ? kExitDone : kExitFailed;
    }

  private:
    // Returns false if the file, or a frame in it, could not be read to its end.
    bool printCapture(std::size_t file) {
        const std::string& path = files_[file];
        auto reader = CaptureReader::open(path);
        if (!reader) {
            complain(reader.error().text, reader.error().hint);
            return false;
        }
        std::uint64_t cut = 0;
        std::uint64_t firstCut = 0;
        const ProgressOf work = {.name = escapedText(inputName(path)), .total = reader->fileSize()};
        std::optional<ProgressBar> progress;
        if (!options_.list.isQuiet) progress.emplace(STDERR_FILENO, ResultsAre::Streamed);
        while (const auto frame = isOutputLost() ? std::nullopt : reader->next()) {
            if (progress && progress->isShown()) progress->update(work, reader->bytesRead());
            const capture::BeaconFrame* const beacon = frame->beacon();
            if (beacon == nullptr || !options_.list.filter.mayPass(beacon->bssid)) continue;
            const bool isCut = isCutFrame(*beacon);
            if (isCut && cut++ == 0) firstCut = frame->number;
            print(*frame, *beacon, file);
        }
        progress.reset();
        summary_.add(reader->summary());
        cutFrames_ += cut;
        if (const auto note = reader->note()) complain(*note);
        if (cut > 0) complain(inputName(path) + ": " + cutText(cut, firstCut));
        if (reader->error()) complain(reader->error()->text, reader->error()->hint);
        return !reader->error() && cut == 0;
    }

    void print(const CaptureReader::Frame& frame, const capture::BeaconFrame& beacon,
               std::size_t file) {
        capture::Sighting sighting = CaptureReader::sightingOf(frame);
        sighting.origin->file = file;
        const FrameOrigin origin{frame.number, beacon.subtype, frame.time};
        if (!passes(sighting, frame, beacon)) return;
        writer_->write(sighting, origin);
    }

    bool passes(const capture::Sighting& sighting, const CaptureReader::Frame& frame,
                const capture::BeaconFrame& beacon) const {
        if (options_.list.filter.isEmpty()) return true;
        const NetworkStatistics heard(
            {.subtype = beacon.subtype, .number = frame.number, .signal = frame.radio.signalDBm});
        return options_.list.filter.passes(networkOf(beacon.bssid, sighting, &heard));
    }

    const DecodeOptions& options_;
    const std::vector<std::string>& files_;
    std::unique_ptr<RecordWriter> writer_;
    CaptureSummary summary_;
    std::uint64_t cutFrames_ = 0;
};

// --- Networks ---

// Tells what happened while the files were read.
void complainOf(const SurveyOfFiles& survey) {
    for (const SurveyedCapture& capture : survey.captures) {
        for (const std::string& note : capture.notes) complain(note);
        if (capture.error) complain(capture.error->text, capture.error->hint);
    }
}

// Tells which frames are cut, of all captures. Returns whether there are any.
bool complainOfCutFrames(const SurveyOfFiles& survey, const std::vector<std::string>& files) {
    bool areThere = false;
    for (std::size_t i = 0; i < survey.captures.size(); ++i) {
        const SurveyedCapture& capture = survey.captures[i];
        if (capture.cutFrames == 0) continue;
        complain(inputName(files[i]) + ": " + cutText(capture.cutFrames, capture.firstCut));
        areThere = true;
    }
    return areThere;
}

// The same of these networks.
bool complainOfCutFrames(std::span<const Network> networks, const std::vector<std::string>& files) {
    bool areThere = false;
    for (const Network& network : networks) {
        const NetworkStatistics& heard = *network.statistics;
        if (heard.cutFrames == 0 || network.heard == nullptr) continue;
        complain(inputName(files[heard.firstCutCapture]) + ": " +
                 cutText(heard.cutFrames, heard.firstCutFrame));
        areThere = true;
    }
    return areThere;
}

// Where no file could be read the message about it says all.
bool isAnythingRead(const SurveyOfFiles& survey) {
    return std::ranges::any_of(survey.captures, [](const SurveyedCapture& capture) {
        return !capture.error || capture.summary.frames > 0;
    });
}

std::vector<std::string> summaryOf(const SurveyOfFiles& survey, const ListOptions& options,
                                   std::span<const Network> all, std::span<const Network> shown) {
    if (!isAnythingRead(survey)) return {};
    auto lines = summaryOfNetworks(survey.survey, options, all, shown);
    if (options.filter.isEmpty() && survey.summary().frames > 0) {
        lines.push_back(framesLine(survey.summary(), survey.cutFrames(), survey.duration()));
    }
    return lines;
}

int decodeNetworks(const DecodeOptions& options, const std::vector<std::string>& files) {
    const SurveyOfFiles survey = surveyWithProgress(
        files, {.most = options.list.mostNetworks, .jobs = options.jobs}, options.list.isQuiet);
    auto all = survey.survey.networks();
    const auto ends = survey.ends();
    const CellSurroundings surroundings = cellSurroundings(options.list, ends);
    const auto networks = listed(all, options.list, options.format, surroundings);

    if (options.isFindingsList) {
        printFindings(networks, options.list);
    } else if (isList(options.format)) {
        printList(networks, options.list, options.format, surroundings);
    } else {
        printRecords(networks, *writerFor(options, files));
    }
    // The summary is the line above the prompt.
    std::fflush(stdout);
    complainOf(survey);
    bool isWhole = survey.isWhole();
    // A table marks such networks.
    if (!isList(options.format)) {
        const bool isCut = options.list.filter.isEmpty() ? complainOfCutFrames(survey, files)
                                                         : complainOfCutFrames(networks, files);
        isWhole = isWhole && !isCut;
    }
    summarize(options, summaryOf(survey, options.list, all, networks));
    return isWhole ? kExitDone : kExitFailed;
}

int decodeCaptures(const DecodeOptions& options) {
    const CaptureFiles found = findCaptureFiles(options.files);
    for (const std::string& note : found.notes) complain(note);
    for (const std::string& fault : found.faults) complain(fault);
    const int status = options.isPerFrame ? FramePrinter(options, found.paths).run()
                                          : decodeNetworks(options, found.paths);
    return found.faults.empty() ? status : kExitFailed;
}

}  // namespace

int decodeCommand() {
    const auto options = takeDecodeOptions();
    if (!options) return refuse("decode", options.error());
    if (options->list.isColumnsHelp) {
        printColumnsHelp(ListKind::Captures);
        return kExitDone;
    }
    return options->isHex ? decodeHex(*options) : decodeCaptures(*options);
}

}  // namespace halvane::tool
