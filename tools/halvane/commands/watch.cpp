#include <array>
#include <climits>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

#include "halvane/base/result.h"

#include "tools/halvane/commands/command.h"
#include "tools/halvane/commands/list_output.h"
#include "tools/halvane/commands/signal_queue.h"
#include "tools/halvane/commands/watch_session.h"
#include "tools/halvane/input/live_fault.h"
#include "tools/halvane/input/live_messages.h"
#include "tools/halvane/input/live_source.h"
#include "tools/halvane/input/nl80211_interfaces.h"
#include "tools/halvane/input/pcapng_writer.h"
#include "tools/halvane/networks/network_columns.h"
#include "tools/halvane/options/watch_options.h"
#include "tools/halvane/output/format.h"
#include "tools/halvane/output/message.h"
#include "tools/halvane/output/surroundings.h"

namespace halvane::tool {

namespace {

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
    SignalQueue signals({SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP, SIGCONT, SIGWINCH});
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
    WatchSession session(options, **source, signals, std::move(writer), keyboard);
    session.run(hasScreen);
    session.print();
    for (const LiveFault& fault : (*source)->faults()) complainOf(fault);
    if (session.fileFault()) complain("watch: " + *session.fileFault());
    return (*source)->faults().empty() && !session.fileFault() ? kExitDone : kExitFailed;
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
