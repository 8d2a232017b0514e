// Prints the notifications of stations as they arrive.
#include <cerrno>
#include <cstdio>
#include <new>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "halvane/base/result.h"
#include "halvane/daemon/daemon_client.h"
#include "halvane/daemon/daemon_events.h"
#include "halvane/daemon/daemon_result.h"
#include "halvane/platform/os/counting_semaphore.h"
#include "halvane/utils/cli.h"

#include "tools/halvane/commands/command.h"
#include "tools/halvane/commands/daemon_session.h"
#include "tools/halvane/commands/ending_signals.h"
#include "tools/halvane/commands/waited_end.h"
#include "tools/halvane/options/argument.h"
#include "tools/halvane/options/format_option.h"
#include "tools/halvane/output/format.h"
#include "tools/halvane/output/message.h"
#include "tools/halvane/output/standard_output.h"
#include "tools/halvane/output/station_event.h"
#include "tools/halvane/output/surroundings.h"
#include "tools/halvane/output/theme.h"

namespace halvane::tool {

namespace {

constexpr const char* kName = "monitor";

// Prints lines until one is lost. Its functions are called on the client's queue.
class LinePrinter {
  public:
    LinePrinter(Format format, WaitedEnd& end) : LinePrinter(format, surroundingsOf(stdout), end) {}

    // On a terminal the output begins with the date.
    void begin() noexcept {
        if (isTerminal_) put([this] { return lines_.begin(eventTimeNow()); });
    }

    void print(const StationChange& change) noexcept {
        put([&] { return lines_.linesOf(change, eventTimeNow()); });
    }

  private:
    LinePrinter(Format format, const Surroundings& surroundings, WaitedEnd& end)
        : lines_(format, Theme(ColorChoice::Auto, surroundings)),
          isTerminal_(surroundings.isTerminal),
          end_(end) {}

    template <typename Text>
    void put(Text text) noexcept {
        if (isLost_) return;
        try {
            isLost_ = !putAtOnce(text());
        } catch (const std::bad_alloc&) {
            noteLostOutput(ENOMEM);
            isLost_ = true;
        }
        if (isLost_) end_.end(WaitedEnd::Reason::OutputLost);
    }

    StationEventLines lines_;
    const bool isTerminal_;
    WaitedEnd& end_;
    bool isLost_ = false;
};

void say(const char* text) noexcept {
    try {
        complain(std::string(kName) + ": " + text);
    } catch (const std::bad_alloc&) {
        // There is no memory for the message, so it is left out.
    }
}

// Whether a request failed because the daemon or the bus went away.
bool isLoss(DaemonError::Kind kind) {
    using Kind = DaemonError::Kind;
    return kind == Kind::NoDaemon || kind == Kind::DaemonLeft || kind == Kind::BusGone ||
           kind == Kind::Ending;
}

// Reports when the daemon or the bus goes away and comes back, after the last notification from
// before. Called on the client's queue, which keeps the order of what happens.
class DaemonTeller {
  public:
    DaemonTeller(LinePrinter& printer, WaitedEnd& end) : printer_(printer), end_(end) {}

    // The daemon has agreed to send notifications. From now on there is something to report.
    void begin() noexcept {
        isAsked_ = true;
        endOnSignals();
        say("asked for notifications; Control-C ends");
        printer_.begin();
    }

    void tell(DaemonState state) noexcept {
        if (!isAsked_) return;
        if (state == DaemonState::DaemonGone) say("the daemon is gone; waiting for it");
        if (state == DaemonState::BusGone) say("the bus is gone; waiting for it");
    }

    // If the daemon or the bus went away meanwhile, the new state reports it.
    void tellRenewal(const DaemonResult<void>& result) noexcept {
        if (!isAsked_) return;
        if (result) return say("the daemon is back; asked for notifications again");
        if (isLoss(result.error().kind)) return;
        refusal_ = result.error();
        end_.end(WaitedEnd::Reason::DaemonRefused);
    }

    // REQUIRES: the reason of the end is DaemonRefused.
    const DaemonError& refusal() const { return refusal_; }

  private:
    bool isAsked_ = false;
    DaemonError refusal_;
    LinePrinter& printer_;
    WaitedEnd& end_;
};

// Asks for notifications. The teller begins in the completion: on another thread it could miss a
// daemon that leaves at once.
DaemonResult<void> ask(DaemonClient& daemon, DaemonTeller& teller) {
    DaemonResult<void> outcome;
    CountingSemaphore isDone(0);
    daemon.subscribe(true, [&](const DaemonResult<void>& result) {
        outcome = result;
        if (result) teller.begin();
        isDone.signal();
    });
    isDone.wait();
    return outcome;
}

int watch(Format format) {
    takeEndingSignals();  // before the client starts its threads
    WaitedEnd end;
    LinePrinter printer(format, end);
    DaemonTeller teller(printer, end);
    DaemonClient daemon(
        {.station = [&](const StationChange& change) { printer.print(change); },
         .state = [&](DaemonState state) { teller.tell(state); },
         .renewal = [&](const DaemonResult<void>& result) { teller.tellRenewal(result); }});
    if (const auto asked = ask(daemon, teller); !asked) return failFor(kName, asked.error());
    // main() reports lost output, as for every command.
    if (end.wait() == WaitedEnd::Reason::OutputLost) return kExitFailed;
    return failFor(kName, teller.refusal());
}

Result<Format, UsageError> takeLineFormat() {
    auto format = takeFormat();
    if (!format || *format == Format::Text || *format == Format::JSONLines) return format;
    return Unexpected(UsageError{"prints lines: --format=text or jsonl"});
}

int run() {
    const std::vector<std::string> arguments = takeArguments();
    const auto format = takeLineFormat();
    if (!format) return refuse(kName, format.error());
    if (!arguments.empty()) return refuse(kName, "takes no argument ('" + arguments[0] + "')");
    return watch(*format);
}

CLIOption gOptions[] = {
    formatOption("text: local time, event, address and interface; jsonl: one object per\n"
                 "line.",
                 "text (default) or jsonl"),
    {.type = kCLISection,
     .shortHelp = "EXIT STATUS",
     .longHelp = "0 ended by SIGINT (Control-C) or SIGTERM after it has said that it asked;\n"
                 "1 there is no daemon at the start, the daemon refused, or writing failed;\n"
                 "2 usage error."},
    {.type = kCLIEnd},
};

constexpr CLIOption kCommands[] = {
    {.type = kCLICommand,
     .longName = kName,
     .handler = handle<run>,
     .subOptions = gOptions,
     .shortHelp = "print stations that come and go",
     .longHelp = "Asks the Wi-Fi daemon for notifications and prints each as it arrives:\n"
                 "stations that join, are authorized, are kicked, or leave. When the daemon\n"
                 "has agreed, the command says so on standard error. If the daemon or the bus\n"
                 "goes away, the command says so, waits, and asks again."},
};

}  // namespace

std::span<const CLIOption> monitorCommands() {
    return kCommands;
}

}  // namespace halvane::tool
