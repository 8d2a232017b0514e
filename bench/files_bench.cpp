// Whole capture files, read from memory: each frame as a line of JSON, and all frames folded by
// network, of one file and of two at once.
#include <benchmark/benchmark.h>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "bench/beacon.h"
#include "bench/capture_input.h"
#include "bench/foreign_bytes.h"
#include "bench/tshark.h"
#include "tools/halvane/input/capture_reader.h"
#include "tools/halvane/networks/survey_reader.h"
#include "tools/halvane/output/format.h"
#include "tools/halvane/output/frame_origin.h"
#include "tools/halvane/output/record_writer.h"

namespace {

using namespace halvane::tool;
using bench::Bytes;
using bench::PcapFile;
using bench::TemporaryFile;

constexpr std::size_t kFrames = 100'000;
constexpr std::size_t kNetworks = 50;
constexpr std::size_t kAddress = 10;  // of the sender in the frame, and then the BSSID
constexpr std::size_t kCount = 27;    // of TIM, in the elements
constexpr std::size_t kName = 2;      // likewise

void require(bool holds) {
    if (!holds) std::abort();
}

// What changes from one beacon of a network to its next.
enum class Changes { Count, Name };

// https://www.radiotap.org: flags, rate, channel, signal and noise.
Bytes radiotapHeader(std::size_t number) {
    const auto signal = static_cast<std::uint8_t>(-50 - static_cast<int>(number % 30));
    return {0, 0, 16, 0, 0x6E, 0, 0, 0, 0, 2, 0x85, 0x09, 0xA0, 0, signal, 0xA1};
}

// The beacon of bench/beacon.h, number by number from each network in turn.
Bytes packet(std::size_t number, Changes changes) {
    Bytes packet = radiotapHeader(number);
    const std::size_t frame = packet.size();
    const std::size_t elements = frame + bench::kFixedSize;
    packet.insert(packet.end(), std::begin(bench::kBeacon), std::end(bench::kBeacon));
    for (const std::size_t address : {frame + kAddress, frame + kAddress + 6}) {
        packet[address + 5] = static_cast<std::uint8_t>(number % kNetworks);
    }
    packet[elements + kCount + 2] = static_cast<std::uint8_t>(number % 3);
    if (changes == Changes::Name) {
        std::size_t rest = number;
        for (std::size_t i = 0; i < 6; ++i, rest /= 10) {
            packet[elements + kName + i] = static_cast<std::uint8_t>('0' + rest % 10);
        }
    }
    return packet;
}

TemporaryFile captureOf(Changes changes) {
    PcapFile file(PcapFile::kRadiotap);
    for (std::size_t i = 0; i < kFrames; ++i) file.add(packet(i, changes));
    return TemporaryFile(file.bytes());
}

const TemporaryFile& capture() {
    static const TemporaryFile file = captureOf(Changes::Count);
    return file;
}

void setRates(benchmark::State& state, std::size_t files) {
    const auto frames = state.iterations() * static_cast<std::int64_t>(files * kFrames);
    const auto size = static_cast<std::int64_t>(packet(0, Changes::Count).size());
    state.SetItemsProcessed(frames);
    state.SetBytesProcessed(frames * size);
}

// --- Lines of JSON ---

std::size_t printLines(const std::string& path, std::FILE* stream) {
    const auto writer = RecordWriter::create(Format::JSONLines, stream);
    auto reader = CaptureReader::open(path);
    require(reader.has_value());
    std::size_t frames = 0;
    for (; const auto frame = reader->next(); ++frames) {
        writer->write(CaptureReader::sightingOf(*frame),
                      FrameOrigin{frame->number, frame->beacon()->subtype, frame->time});
    }
    writer->finish();
    return frames;
}

void lines(benchmark::State& state, const TemporaryFile& file) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(std::fopen("/dev/null", "w"),
                                                                 std::fclose);
    for (auto _ : state) require(printLines(file.path(), stream.get()) == kFrames);
    setRates(state, 1);
}

void linesOfNetworks(benchmark::State& state) {
    lines(state, capture());
}

void linesOfOtherNames(benchmark::State& state) {
    static const TemporaryFile file = captureOf(Changes::Name);
    lines(state, file);
}

void linesOfTshark(benchmark::State& state) {
    for (auto _ : state) {
        const double before = bench::secondsOfChildren();
        if (!bench::printByTshark(capture().path())) return state.SkipWithError("tshark failed");
        state.SetIterationTime(bench::secondsOfChildren() - before);
    }
    setRates(state, 1);
}

// --- Networks ---

void fold(benchmark::State& state, std::size_t files, std::size_t jobs) {
    const std::vector<std::string> paths(files, capture().path());
    for (auto _ : state) {
        const SurveyOfFiles survey = surveyFiles(paths, {.jobs = jobs});
        require(survey.survey.size() == kNetworks && survey.summary().frames == files * kFrames);
    }
    setRates(state, files);
}

void foldFile(benchmark::State& state) {
    fold(state, 1, 1);
}

void foldFilesInTurn(benchmark::State& state) {
    fold(state, 8, 1);
}

void foldFilesAtOnce(benchmark::State& state) {
    fold(state, 8, 2);
}

BENCHMARK(linesOfNetworks)->Unit(benchmark::kMillisecond);
BENCHMARK(linesOfOtherNames)->Unit(benchmark::kMillisecond);
BENCHMARK(linesOfTshark)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(1);
BENCHMARK(foldFile)->Unit(benchmark::kMillisecond);
BENCHMARK(foldFilesInTurn)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(foldFilesAtOnce)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
