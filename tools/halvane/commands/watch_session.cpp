#include "tools/halvane/commands/watch_session.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <unistd.h>
#include <utility>

#include "tools/halvane/commands/list_output.h"
#include "tools/halvane/input/live_messages.h"
#include "tools/halvane/networks/network_columns.h"
#include "tools/halvane/networks/network_summary.h"
#include "tools/halvane/options/list_options.h"
#include "tools/halvane/output/format.h"
#include "tools/halvane/output/record_writer.h"
#include "tools/halvane/output/shown_text.h"

namespace halvane::tool {

namespace {

constexpr std::chrono::milliseconds kBetweenDraws{500};
constexpr std::chrono::seconds kMessageTime{5};

}  // namespace

std::string joinedNames(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) {
        if (!text.empty()) text += ", ";
        text += shownText(name, {.isASCII = true}).octets();
    }
    return text;
}

WatchSession::WatchSession(const WatchOptions& options, LiveSource& source, SignalQueue& signals,
                           std::optional<PcapngWriter> writer, int keyboard)
    : options_(options),
      source_(source),
      signals_(signals),
      writer_(std::move(writer)),
      keyboard_(keyboard),
      heard_(options.list.mostNetworks),
      list_(options.list) {}

void WatchSession::run(bool hasScreen) {
    if (hasScreen) display_.emplace(options_, heard_.list(), keyboard_);
    draw();
    while (!isEnded_) step();
    if (display_) list_ = display_->chosenOptions();
    display_.reset();
    finishFile();
}

void WatchSession::print() {
    ListOptions list = list_;
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
        const auto writer = RecordWriter::create(options_.format, stdout, listedMaker);
        printRecords(networks, *writer);
    }
    std::fflush(stdout);
    if (list.isQuiet) return;
    auto lines = summaryOfNetworks(heard_.survey(), list, all, networks);
    if (list.filter.isEmpty()) lines.push_back(heard_.summaryLine());
    const LiveCounts counts = source_.counts();
    if (counts.droppedByKernel > 0) {
        lines.push_back(std::to_string(counts.droppedByKernel) + " frames dropped by the kernel");
    }
    printSummary(lines, list);
}

void WatchSession::step() {
    std::optional<Clock::time_point> end;
    if (options_.duration) end = start_ + *options_.duration;
    Clock::time_point wake = end ? std::min(*end, nextDraw_) : nextDraw_;
    if (display_ && display_->due()) wake = std::min(wake, *display_->due());
    source_.setDeadline(wake);
    const NextPacket packet = source_.next();
    if (!packet) {
        isEnded_ = true;
        return;
    }
    if (*packet) take(**packet);
    if (!*packet) handleInterrupts();
    const Clock::time_point now = Clock::now();
    if (display_ && !*packet) takeKeys(now);
    if (end && now >= *end) isEnded_ = true;
    if (now >= nextDraw_) draw();
}

void WatchSession::take(const Packet& packet) {
    if (writer_) noteFault(writer_->add(packet));
    const auto address = heard_.add(packet, elapsed());
    if (address && options_.format == Format::JSONLines) {
        records_.note(heard_.survey(), *address, options_.list.filter);
        if (std::ferror(stdout) != 0) isEnded_ = true;
    }
    if (options_.count && heard_.count() >= *options_.count) isEnded_ = true;
}

void WatchSession::handleInterrupts() {
    while (const auto signal = signals_.take()) {
        if (*signal == SIGTSTP) {
            stop();
        } else if (*signal == SIGCONT) {
            if (display_) display_->renew();
        } else if (*signal != SIGWINCH) {
            isEnded_ = true;
        }
        nextDraw_ = Clock::now();
    }
}

// Gives the terminal back until the program goes on.
void WatchSession::stop() {
    if (display_) display_->leave();
    ::raise(SIGSTOP);
    if (display_) display_->enter();
}

void WatchSession::takeKeys(Clock::time_point now) {
    bool wasPressed = display_->readKeys(now);
    if (display_->due() && *display_->due() <= now) {
        display_->takeDue();
        wasPressed = true;
    }
    if (wasPressed) nextDraw_ = now;
    if (display_->isEnded()) isEnded_ = true;
}

// Also brings the file up to date.
void WatchSession::draw() {
    const Clock::time_point now = Clock::now();
    nextDraw_ = now + kBetweenDraws;
    if (writer_) noteFault(writer_->flush());
    if (!display_) return;
    display_->advance(now - start_);
    display_->draw(status(now), now - start_);
}

WatchStatus WatchSession::status(Clock::time_point now) {
    if (source_.faults().size() != knownFaults_) {
        knownFaults_ = source_.faults().size();
        messageEnd_ = now + kMessageTime;
    }
    WatchStatus status{.interfaces = joinedNames(options_.interfaces),
                       .channel = heard_.channel(),
                       .counts = heard_.list().counts(),
                       .frames = heard_.count(),
                       .dropped = source_.counts().droppedByKernel,
                       .elapsed = std::chrono::duration_cast<std::chrono::seconds>(now - start_)};
    if (knownFaults_ > 0 && now < messageEnd_) {
        status.message = joinedNames({headline(source_.faults().back())});
    }
    return status;
}

void WatchSession::finishFile() {
    if (!writer_) return;
    for (std::uint32_t i = 0; i < source_.interfaces().size(); ++i) {
        const LiveCounts counts = source_.counts(i);
        noteFault(writer_->addCounts(i, heard_.lastTime().value_or(0), counts.received,
                                     counts.droppedByKernel));
    }
    noteFault(writer_->flush());
}

void WatchSession::noteFault(const PcapngWriter::Fault& fault) {
    if (!fault || fileFault_) return;
    fileFault_ = fault;
    isEnded_ = true;
}

}  // namespace halvane::tool
