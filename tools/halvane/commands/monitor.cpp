// Prints the notifications of stations as they come.
#include <cerrno>
#include <cstdio>
#include <new>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/daemon/xpc_client.h"
#include "halvane/utils/cli.h"
#include "halvane/utils/log.h"

#include "tools/halvane/commands/command.h"
#include "tools/halvane/commands/daemon_session.h"
#include "tools/halvane/commands/ending_signals.h"
#include "tools/halvane/commands/waited_end.h"
#include "tools/halvane/options/argument.h"
#include "tools/halvane/output/format.h"
#include "tools/halvane/output/message.h"
#include "tools/halvane/output/standard_output.h"
#include "tools/halvane/output/station_event.h"

namespace halvane::tool {

namespace {

constexpr const char* kName = "monitor";

// Prints lines until one is lost.
class LinePrinter {
  public:
    LinePrinter(Format format, WaitedEnd& end) : format_(format), end_(end) {}

    // Called on the client's queue.
    void print(const StationEvent& event) noexcept {
        if (isLost_) return;
        try {
            isLost_ = !putAtOnce(lineOf(event, format_) + '\n');
        } catch (const std::bad_alloc&) {
            noteLostOutput(ENOMEM);
            isLost_ = true;
        }
        if (isLost_) end_.end(WaitedEnd::Reason::OutputLost);
    }

  private:
    const Format format_;
    WaitedEnd& end_;
    bool isLost_ = false;
};

// The client tells nobody but its log that the daemon is gone: on the queue that notifications come
// from, so behind the last of them.
void hearOfLoss(const LogMessage*, const char* text, std::size_t length, void* end) {
    const std::string_view message(text, length);
    for (const std::string_view loss :
         {"connection was interrupted\n", "connection was invalidated\n"}) {
        if (message == loss) static_cast<WaitedEnd*>(end)->end(WaitedEnd::Reason::DaemonGone);
    }
}

// From now on what the client logs is heard, and not shown. No setting of the preferences stands
// against that.
void listenToLog(WaitedEnd& end) {
    LogIsEnabled(&gLogCategory_WiFiXPC, kLogLevelMax);  // reads them
    LogControl(nullptr);
    char control[160];
    std::snprintf(control, sizeof(control),
                  "^WiFiXPC$:level=error,^WiFiXPC$:flags=none,^WiFiXPC$:rate=0,"
                  "^WiFiXPC$:output=callback;func=%p;arg=%p",
                  reinterpret_cast<void*>(hearOfLoss), static_cast<void*>(&end));
    LogControl(control);
}

// That output was lost is told by main(), as for every command.
int statusOf(WaitedEnd::Reason reason) {
    switch (reason) {
        case WaitedEnd::Reason::DaemonGone:
            complain(std::string(kName) + ": the daemon is gone");
            break;
        case WaitedEnd::Reason::OutputLost:
            break;
    }
    return kExitFailed;
}

int watch(Format format) {
    WaitedEnd end;
    LinePrinter printer(format, end);
    listenToLog(end);
    const auto client = HalvaneXPCClient::init();
    client->setDelegate(delegateFor([&](const StationEvent& event) { printer.print(event); }));
    if (!findDaemon(kName, *client)) return kExitFailed;
    client->setSubscribeAP(true);
    endOnSignals();  // not before: what waits for an answer is ended by them in any case
    complain(std::string(kName) + ": asked for notifications; Control-C ends");
    return statusOf(end.wait());
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
    formatOption("text: event, address and interface; jsonl: an object a line.",
                 "text (default) or jsonl"),
    {.type = kCLISection,
     .shortHelp = "EXIT STATUS",
     .longHelp =
         "0 ended by SIGINT (Control-C) or SIGTERM once it has asked; 1 there is no daemon, it\n"
         "went away, or the output could not be written; 2 usage."},
    {.type = kCLIEnd},
};

constexpr CLIOption kCommands[] = {
    {.type = kCLICommand,
     .longName = kName,
     .handler = handle<run>,
     .subOptions = gOptions,
     .shortHelp = "print stations that come and go",
     .longHelp = "Asks the Wi-Fi daemon for notifications and prints each as it comes: stations "
                 "that join,\n"
                 "are authorized, are kicked, or leave. Says on standard error once it has asked. "
                 "A daemon\n"
                 "that goes away ends it: one that comes back would have to be asked again."},
};

}  // namespace

std::span<const CLIOption> monitorCommands() {
    return kCommands;
}

}  // namespace halvane::tool
