// A line to a log file, beside spdlog and beside a bare write(2) of the same bytes: each line
// written at once, and lines collected in a buffer. Also a line that does not go out because of its
// level.
#include <benchmark/benchmark.h>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <memory>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/spdlog.h>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

#include "halvane/base/status.h"
#include "halvane/utils/log.h"

namespace {

HALVANE_LOG_CATEGORY(Bench, kLogLevelInfo, kLogHeaderTime | kLogHeaderCategory | kLogHeaderLevel,
                     nullptr);

constexpr int kFrames = 42;
constexpr int kChannel = 6;
constexpr char kNeighbour[] = "neighbour-12";
constexpr std::string_view kMessage = "42 frames from neighbour-12 on channel 6\n";

// A file in the folder for temporary files. It is removed with the object.
class TemporaryFile {
  public:
    TemporaryFile() {
        const char* const folder = std::getenv("TMPDIR");
        path_ = std::string(folder != nullptr ? folder : "/tmp") + "/halvane-bench-XXXXXX";
        const int file = ::mkstemp(path_.data());
        if (file < 0) std::abort();
        ::close(file);
    }
    ~TemporaryFile() { ::unlink(path_.c_str()); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::string& path() const { return path_; }

    std::string firstLine() const {
        std::string line;
        std::ifstream file(path_);
        if (!std::getline(file, line)) std::abort();
        return line + "\n";
    }

  private:
    std::string path_;
};

void expectMessage(const std::string& line) {
    if (!line.ends_with(kMessage)) std::abort();
}

void logLine() {
    HALVANE_LOG(&gLogCategory_Bench, kLogLevelInfo, "%d frames from %s on channel %d\n", kFrames,
                kNeighbour, kChannel);
}

void writeLine(const TemporaryFile& file, const std::string& parameters = "") {
    const std::string control = "^Bench$:output=file;path=" + file.path() + parameters;
    LogIsEnabled(&gLogCategory_Bench, kLogLevelInfo);
    if (LogControl(control.c_str()) != kStatusOK) std::abort();
    logLine();
}

void lineHalvane(benchmark::State& state) {
    const TemporaryFile file;
    writeLine(file);
    expectMessage(file.firstLine());
    for (auto _ : state) logLine();
    LogUtils_Finalize();
}

void bufferedHalvane(benchmark::State& state) {
    const TemporaryFile file;
    writeLine(file, ";buffer=64K");
    if (LogReopen() != kStatusOK) std::abort();
    expectMessage(file.firstLine());
    for (auto _ : state) logLine();
    LogUtils_Finalize();
}

void spdlogLines(benchmark::State& state, bool flushesEach) {
    const TemporaryFile file;
    spdlog::logger logger("Bench",
                          std::make_shared<spdlog::sinks::basic_file_sink_mt>(file.path()));
    logger.set_pattern("%Y-%m-%d %I:%M:%S.%f %p [%n@%l] %v");
    if (flushesEach) logger.flush_on(spdlog::level::info);
    const auto log = [&] {
        logger.info("{} frames from {} on channel {}", kFrames, kNeighbour, kChannel);
    };
    log();
    logger.flush();
    expectMessage(file.firstLine());
    for (auto _ : state) log();
}

void lineSpdlog(benchmark::State& state) {
    spdlogLines(state, true);
}

// The stream buffers 4 KiB.
void bufferedSpdlog(benchmark::State& state) {
    spdlogLines(state, false);
}

void lineWrite(benchmark::State& state) {
    const TemporaryFile sample;
    writeLine(sample);
    const std::string line = sample.firstLine();
    LogUtils_Finalize();
    const TemporaryFile file;
    const int output = ::open(file.path().c_str(), O_WRONLY | O_APPEND | O_CLOEXEC);
    for (auto _ : state) {
        if (::write(output, line.data(), line.size()) < 0) std::abort();
    }
    ::close(output);
}

void disabledLine(benchmark::State& state) {
    LogIsEnabled(&gLogCategory_Bench, kLogLevelInfo);
    for (auto _ : state) {
        HALVANE_LOG(&gLogCategory_Bench, kLogLevelTrace, "%d frames from %s on channel %d\n",
                    kFrames, kNeighbour, kChannel);
        benchmark::ClobberMemory();
    }
    LogUtils_Finalize();
}

// A control string with a new pattern at each call.
void controlPatterns(benchmark::State& state) {
    LogIsEnabled(&gLogCategory_Bench, kLogLevelInfo);
    for (auto _ : state) {
        for (std::int64_t i = 0; i < state.range(0); ++i) {
            const std::string control = "pattern" + std::to_string(i) + ":level=error";
            if (LogControl(control.c_str()) != kStatusOK) std::abort();
        }
        LogControl(nullptr);
    }
    state.SetComplexityN(state.range(0));
    LogUtils_Finalize();
}

// A line to standard output, which is a pipe without a reader.
void lineToBrokenPipe(benchmark::State& state) {
    int ends[2];
    if (::pipe(ends) != 0) std::abort();
    std::fflush(stdout);
    const int kept = ::dup(STDOUT_FILENO);
    ::dup2(ends[1], STDOUT_FILENO);
    for (const int end : ends) ::close(end);
    LogIsEnabled(&gLogCategory_Bench, kLogLevelInfo);
    if (LogControl("^Bench$:output=file;stdout") != kStatusOK) std::abort();
    for (auto _ : state) logLine();
    LogUtils_Finalize();
    ::dup2(kept, STDOUT_FILENO);
    ::close(kept);
}

BENCHMARK(lineHalvane);
BENCHMARK(lineSpdlog);
BENCHMARK(lineWrite);
BENCHMARK(bufferedHalvane);
BENCHMARK(bufferedSpdlog);
BENCHMARK(disabledLine);
BENCHMARK(lineToBrokenPipe);
BENCHMARK(controlPatterns)->RangeMultiplier(4)->Range(256, 16384)->Complexity();

}  // namespace

BENCHMARK_MAIN();
