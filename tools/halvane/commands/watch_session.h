// One run of `halvane watch`: it hears until it ends, and shows, streams and keeps what it hears.
//
// For one thread.
#ifndef TOOLS_HALVANE_COMMANDS_WATCH_SESSION_H
#define TOOLS_HALVANE_COMMANDS_WATCH_SESSION_H

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "tools/halvane/commands/record_stream.h"
#include "tools/halvane/commands/signal_queue.h"
#include "tools/halvane/commands/watch_display.h"
#include "tools/halvane/input/live_source.h"
#include "tools/halvane/input/packet_source.h"
#include "tools/halvane/input/pcapng_writer.h"
#include "tools/halvane/networks/heard_frames.h"
#include "tools/halvane/networks/watch_list.h"
#include "tools/halvane/networks/watch_screen.h"
#include "tools/halvane/options/list_options.h"
#include "tools/halvane/options/watch_options.h"

namespace halvane::tool {

// The names as they are shown, with ", " between them.
std::string joinedNames(const std::vector<std::string>& names);

class WatchSession {
  public:
    // `keyboard` is a terminal, or -1.
    // REQUIRES: options, source and signals outlive the session.
    WatchSession(const WatchOptions& options, LiveSource& source, SignalQueue& signals,
                 std::optional<PcapngWriter> writer, int keyboard);

    // Until it ends. A screen shows the rows meanwhile.
    void run(bool hasScreen);

    // Prints what is known at the end.
    void print();

    // Why the file could not be written.
    const std::optional<std::string>& fileFault() const { return fileFault_; }

  private:
    using Clock = LiveSource::Clock;

    WatchList::Time elapsed() const { return Clock::now() - start_; }
    void step();
    void take(const Packet& packet);
    void handleInterrupts();
    void stop();
    void takeKeys(Clock::time_point now);
    void draw();
    WatchStatus status(Clock::time_point now);
    void finishFile();
    void noteFault(const PcapngWriter::Fault& fault);

    const WatchOptions& options_;
    LiveSource& source_;
    SignalQueue& signals_;
    std::optional<PcapngWriter> writer_;
    int keyboard_;
    HeardFrames heard_;
    RecordStream records_;
    ListOptions list_;  // with what the user chose
    std::optional<WatchDisplay> display_;
    Clock::time_point start_ = Clock::now();
    Clock::time_point nextDraw_ = start_;
    Clock::time_point messageEnd_ = start_;
    std::size_t knownFaults_ = 0;
    bool isEnded_ = false;
    std::optional<std::string> fileFault_;
};

}  // namespace halvane::tool

#endif
