#include <algorithm>
#include <array>
#include <chrono>
#include <climits>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <poll.h>
#include <span>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

#include "halvane/air/channel.h"
#include "halvane/base/mac_address.h"
#include "halvane/base/result.h"
#include "halvane/capture/beacon_frame.h"
#include "halvane/capture/captured_frame.h"
#include "halvane/capture/frame_record.h"

#include "tools/halvane/commands/command.h"
#include "tools/halvane/commands/list_output.h"
#include "tools/halvane/commands/signal_queue.h"
#include "tools/halvane/input/capture_reader.h"
#include "tools/halvane/input/examined_frame.h"
#include "tools/halvane/input/live_fault.h"
#include "tools/halvane/input/live_messages.h"
#include "tools/halvane/input/live_source.h"
#include "tools/halvane/input/nl80211_interfaces.h"
#include "tools/halvane/input/packet_source.h"
#include "tools/halvane/input/pcapng_writer.h"
#include "tools/halvane/networks/network_columns.h"
#include "tools/halvane/networks/network_filter.h"
#include "tools/halvane/networks/network_summary.h"
#include "tools/halvane/networks/watch_list.h"
#include "tools/halvane/networks/watch_screen.h"
#include "tools/halvane/options/list_options.h"
#include "tools/halvane/options/watch_options.h"
#include "tools/halvane/output/format.h"
#include "tools/halvane/output/json_writer.h"
#include "tools/halvane/output/message.h"
#include "tools/halvane/output/record_json.h"
#include "tools/halvane/output/record_writer.h"
#include "tools/halvane/output/screen.h"
#include "tools/halvane/output/shown_text.h"
#include "tools/halvane/output/standard_output.h"
#include "tools/halvane/output/surroundings.h"
#include "tools/halvane/output/theme.h"
#include "tools/halvane/survey/cut_elements.h"
#include "tools/halvane/survey/network.h"
#include "tools/halvane/survey/saturated.h"
#include "tools/halvane/survey/survey.h"

namespace halvane::tool {

namespace {

using Clock = LiveSource::Clock;

constexpr std::chrono::milliseconds kBetweenDraws{500};
constexpr std::chrono::seconds kMessageTime{5};

std::string programPath() {
    std::array<char, PATH_MAX> path{};
    const ssize_t size = ::readlink("/proc/self/exe", path.data(), path.size());
    return size > 0 ? std::string(path.data(), static_cast<std::size_t>(size)) : "halvane";
}

void complainOf(const LiveFault& fault) {
    const auto interfaces = wirelessInterfaces();
    complain("watch: " + headline(fault, interfaces),
             hintOf(advice(fault, interfaces, programPath())));
}

std::string joinedNames(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) {
        if (!text.empty()) text += ", ";
        text += shownText(name, {.isASCII = true}).octets();
    }
    return text;
}

// What was heard, from the first frame to the last.
class Heard {
  public:
    explicit Heard(std::size_t most) : list_(most) {}

    // Returns the address of the network, if the packet is a frame of one.
    std::optional<MacAddress> add(const Packet& packet, WatchList::Time now) {
        const capture::CapturedFrame frame = examinedFrame(packet);
        summary_.add(frame);
        note(packet.time);
        if (frame.radio.frequencyMHz) {
            if (const auto channel = air::channelOf(*frame.radio.frequencyMHz)) {
                channel_ = channel->number;
            }
        }
        const capture::BeaconFrame* const beacon = frame.beacon();
        if (beacon == nullptr) return std::nullopt;
        capture::Sighting sighting = capture::sightingOf(*beacon, frame.radio);
        sighting.origin->frame = packet.number;
        sighting.origin->linkType = packet.linkType;
        const bool isCut = endsInsideAnElement(beacon->elements);
        if (isCut) ++cutFrames_;
        list_.add(sighting,
                  {.subtype = beacon->subtype,
                   .number = packet.number,
                   .time = packet.time,
                   .signal = frame.radio.signalDBm,
                   .isCut = isCut},
                  now);
        return beacon->bssid;
    }

    WatchList& list() { return list_; }
    const Survey& survey() const { return list_.survey(); }
    std::uint64_t frames() const { return summary_.frames; }
    std::optional<int> channel() const { return channel_; }
    const std::optional<std::int64_t>& lastTime() const { return lastTime_; }

    std::string framesText() const {
        std::optional<std::int64_t> duration;
        if (firstTime_) duration = saturatedDifference(*lastTime_, *firstTime_);
        return framesLine(summary_, cutFrames_, duration);
    }

  private:
    void note(const std::optional<std::int64_t>& time) {
        if (!time) return;
        firstTime_ = std::min(firstTime_.value_or(*time), *time);
        lastTime_ = std::max(lastTime_.value_or(*time), *time);
    }

    WatchList list_;
    CaptureSummary summary_;
    std::uint64_t cutFrames_ = 0;
    std::optional<int> channel_;
    std::optional<std::int64_t> firstTime_;
    std::optional<std::int64_t> lastTime_;
};

// Prints the record of a network as it is first heard, and once its elements or its capabilities
// are others.
class RecordStream {
  public:
    void note(const Survey& survey, const MacAddress& address, const NetworkFilter& filter) {
        const auto networks = survey.networksOf(address);
        if (networks.empty()) return;
        const Network& network = networks.front();
        if (!filter.passes(network)) return;
        const capture::Sighting sighting = network.heard->sighting();
        const std::size_t mark = markOf(sighting);
        if (printed_.size() > 2 * survey.most()) {
            std::erase_if(printed_, [&](const auto& item) { return !survey.contains(item.first); });
        }
        const auto [place, isFirst] = printed_.try_emplace(address, mark);
        if (!isFirst && std::exchange(place->second, mark) == mark) return;
        writeJSON(writer_, sighting, std::nullopt, network.statistics, listedMaker);
        writer_.newline();
        put(writer_.text());
        writer_.clear();
        std::fflush(stdout);
    }

  private:
    static std::size_t markOf(const capture::Sighting& sighting) {
        const auto& elements = sighting.record.ieBuffer();
        std::string octets = std::to_string(sighting.record.capabilities());
        if (elements) octets.append(elements->bytes().begin(), elements->bytes().end());
        return std::hash<std::string>()(octets);
    }

    JSONWriter writer_{JSONWriter::Layout::OneLine};
    std::map<MacAddress, std::size_t> printed_;
};

class Watch {
  public:
    Watch(const WatchOptions& options, LiveSource& source, SignalQueue& signals,
          std::optional<PcapngWriter> writer, int keyboard)
        : options_(options),
          source_(source),
          signals_(signals),
          writer_(std::move(writer)),
          keyboard_(keyboard),
          heard_(options.list.mostNetworks) {}

    // Until it ends. A screen shows the rows meanwhile.
    void run(bool hasScreen) {
        if (hasScreen) screen_ = std::make_unique<Screen>(STDOUT_FILENO, keyboard_);
        draw();
        while (!isEnded_) step();
        screen_.reset();
        finishFile();
    }

    // Prints what is known at the end.
    void print() {
        ListOptions list = options_.list;
        list.list = ListKind::Captures;
        auto all = heard_.survey().networks();
        const std::array<std::optional<std::int64_t>, 1> ends = {heard_.lastTime()};
        const CellSurroundings surroundings = cellSurroundings(list, ends);
        const auto networks = listed(all, list, options_.format, surroundings);
        if (options_.isFindingsList) {
            printFindings(networks, list);
        } else if (isList(options_.format)) {
            printList(networks, list, options_.format, surroundings);
        } else if (options_.format != Format::JSONLines) {
            printRecords(networks);
        }
        std::fflush(stdout);
        if (list.isQuiet) return;
        auto lines = summaryOfNetworks(heard_.survey(), list, all, networks);
        if (list.filter.isEmpty()) lines.push_back(heard_.framesText());
        const LiveCounts counts = source_.counts();
        if (counts.droppedByKernel > 0) {
            lines.push_back(std::to_string(counts.droppedByKernel) +
                            " frames dropped by the kernel");
        }
        printSummary(lines, list);
    }

    const std::optional<std::string>& fileFault() const { return fileFault_; }

  private:
    WatchList::Time elapsed() const { return Clock::now() - start_; }

    void step() {
        std::optional<Clock::time_point> end;
        if (options_.duration) end = start_ + *options_.duration;
        const Clock::time_point wake = end ? std::min(*end, nextDraw_) : nextDraw_;
        source_.setDeadline(wake);
        const NextPacket packet = source_.next();
        if (!packet) {
            isEnded_ = true;
            return;
        }
        if (*packet) take(**packet);
        if (!*packet) handleInterrupts();
        const Clock::time_point now = Clock::now();
        if (end && now >= *end) isEnded_ = true;
        if (now >= nextDraw_) draw();
    }

    void take(const Packet& packet) {
        if (writer_) noteFault(writer_->add(packet));
        const auto address = heard_.add(packet, elapsed());
        if (address && options_.format == Format::JSONLines) {
            records_.note(heard_.survey(), *address, options_.list.filter);
            if (std::ferror(stdout) != 0) isEnded_ = true;
        }
        if (options_.count && heard_.frames() >= *options_.count) isEnded_ = true;
    }

    void handleInterrupts() {
        while (const auto signal = signals_.take()) {
            if (*signal == SIGTSTP) {
                stop();
            } else if (*signal != SIGWINCH) {
                isEnded_ = true;
            }
            nextDraw_ = Clock::now();
        }
        if (screen_ && keyboard_ >= 0) readKeys();
    }

    // Gives the terminal back until the program goes on.
    void stop() {
        if (screen_) screen_->leave();
        ::raise(SIGSTOP);
        if (screen_) screen_->enter();
    }

    void readKeys() {
        pollfd keys = {keyboard_, POLLIN, 0};
        if (::poll(&keys, 1, 0) != 1) return;
        std::array<char, 64> typed{};
        const ssize_t count = ::read(keyboard_, typed.data(), typed.size());
        if (count <= 0) keyboard_ = -1;
        for (ssize_t i = 0; i < count; ++i) {
            const char key = typed.at(static_cast<std::size_t>(i));
            if (key == 'q') isEnded_ = true;
            if (key != 'f') continue;
            isFrozen_ = !isFrozen_;
            heard_.list().freeze(isFrozen_);
        }
        nextDraw_ = Clock::now();
    }

    // Also brings the file up to date.
    void draw() {
        const Clock::time_point now = Clock::now();
        nextDraw_ = now + kBetweenDraws;
        if (writer_) noteFault(writer_->flush());
        if (!screen_) return;
        heard_.list().advance(now - start_);
        const Surroundings output = surroundingsOf(stdout);
        const auto rows = heard_.list().rows(options_.list.filter);
        const WatchView view{.rows = rows,
                             .columns = options_.list.columns,
                             .width = options_.list.width.value_or(output.columns.value_or(80)),
                             .height = output.lines.value_or(24)};
        const Theme theme(options_.list.color, output);
        screen_->show(watchScreen(view, status(now), cellSurroundings(options_.list, {}), theme));
    }

    WatchStatus status(Clock::time_point now) {
        if (source_.faults().size() != knownFaults_) {
            knownFaults_ = source_.faults().size();
            messageEnd_ = now + kMessageTime;
        }
        WatchStatus status{
            .interfaces = joinedNames(options_.interfaces),
            .channel = heard_.channel(),
            .counts = heard_.list().counts(),
            .frames = heard_.frames(),
            .dropped = source_.counts().droppedByKernel,
            .elapsed = std::chrono::duration_cast<std::chrono::seconds>(now - start_),
            .isFrozen = isFrozen_};
        if (knownFaults_ > 0 && now < messageEnd_) {
            status.message = joinedNames({headline(source_.faults().back())});
        }
        return status;
    }

    void printRecords(std::span<const Network> networks) {
        const auto writer = RecordWriter::create(options_.format, stdout, listedMaker);
        for (const Network& network : networks) {
            if (network.heard == nullptr) continue;
            writer->write(network.heard->sighting(), std::nullopt, network.statistics);
        }
        writer->finish();
    }

    void finishFile() {
        if (!writer_) return;
        for (std::uint32_t i = 0; i < source_.interfaces().size(); ++i) {
            const LiveCounts counts = source_.counts(i);
            noteFault(writer_->addCounts(i, heard_.lastTime().value_or(0), counts.received,
                                         counts.droppedByKernel));
        }
        noteFault(writer_->flush());
    }

    void noteFault(const PcapngWriter::Fault& fault) {
        if (!fault || fileFault_) return;
        fileFault_ = fault;
        isEnded_ = true;
    }

    const WatchOptions& options_;
    LiveSource& source_;
    SignalQueue& signals_;
    std::optional<PcapngWriter> writer_;
    int keyboard_;
    Heard heard_;
    RecordStream records_;
    std::unique_ptr<Screen> screen_;
    Clock::time_point start_ = Clock::now();
    Clock::time_point nextDraw_ = start_;
    Clock::time_point messageEnd_ = start_;
    std::size_t knownFaults_ = 0;
    bool isFrozen_ = false;
    bool isEnded_ = false;
    std::optional<std::string> fileFault_;
};

// Whether the networks are shown while they are heard.
bool hasScreenFor(const WatchOptions& options) {
    const Surroundings output = surroundingsOf(stdout);
    return output.isTerminal && !output.term.empty() && output.term != "dumb" &&
           options.format == Format::Table && !options.isFindingsList;
}

Result<PcapngWriter, std::string> openFile(const std::string& path, const LiveSource& source) {
    std::vector<WrittenInterface> interfaces;
    for (const LiveInterface& interface : source.interfaces()) {
        interfaces.push_back({interface.name, interface.linkType,
                              static_cast<std::uint32_t>(interface.snapshotLength)});
    }
    return PcapngWriter::create(path, interfaces, "halvane");
}

int watch(const WatchOptions& options) {
    SignalQueue signals({SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP, SIGWINCH});
    const bool hasScreen = hasScreenFor(options);
    const int keyboard = hasScreen && ::isatty(STDIN_FILENO) != 0 ? STDIN_FILENO : -1;
    LiveOptions live{.interrupts = {signals.descriptor()}};
    if (keyboard >= 0) live.interrupts.push_back(keyboard);
    const auto source = LiveSource::open(options.interfaces, live);
    if (!source) {
        complainOf(source.error());
        return kExitFailed;
    }
    std::optional<PcapngWriter> writer;
    if (options.file) {
        auto file = openFile(*options.file, **source);
        if (!file) {
            complain("watch: " + file.error());
            return kExitFailed;
        }
        writer.emplace(std::move(*file));
    }
    if (!hasScreen && !options.list.isQuiet) {
        complain("watch: listening to " + joinedNames(options.interfaces) + "; Control-C ends");
    }
    Watch watch(options, **source, signals, std::move(writer), keyboard);
    watch.run(hasScreen);
    watch.print();
    for (const LiveFault& fault : (*source)->faults()) complainOf(fault);
    if (watch.fileFault()) complain("watch: " + *watch.fileFault());
    return (*source)->faults().empty() && !watch.fileFault() ? kExitDone : kExitFailed;
}

}  // namespace

int watchCommand() {
    const auto options = takeWatchOptions();
    if (!options) return refuse("watch", options.error());
    if (options->list.isColumnsHelp) {
        printColumnsHelp(ListKind::Watch);
        return kExitDone;
    }
    return watch(*options);
}

}  // namespace halvane::tool
