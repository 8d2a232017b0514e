// Notifications of stations as lines of output.
#ifndef TOOLS_HALVANE_OUTPUT_STATION_EVENT_H
#define TOOLS_HALVANE_OUTPUT_STATION_EVENT_H

#include <chrono>
#include <ctime>
#include <optional>
#include <string>

#include "halvane/daemon/daemon_events.h"

#include "tools/halvane/output/format.h"
#include "tools/halvane/output/property_table.h"
#include "tools/halvane/output/theme.h"

namespace halvane::tool {

// Since 1970-01-01 00:00 UTC.
using EventTime = std::chrono::milliseconds;

// The time of this machine's clock.
EventTime eventTimeNow();

// "2023-01-06T21:10:04.117Z".
std::string utcText(EventTime time);

// For one thread.
class StationEventLines {
  public:
    // Text has the local time of day and, in front of the first event of another day, a line of the
    // date: "-- 2023-01-06 --".
    StationEventLines(Format format, const Theme& theme) : format_(format), theme_(theme) {}

    // The line of the day on which the output begins. Without it the first day has no line.
    std::string begin(EventTime now);

    // The line of an event, each with its newline: as text, which is safe to show, or as JSON.
    std::string linesOf(const StationChange& change, EventTime time);

  private:
    struct Day {
        int year = 0;
        int ofYear = 0;

        friend bool operator==(const Day&, const Day&) = default;
    };

    std::string dateLine(const std::tm& time) const;
    std::string textLines(const StationChange& change, EventTime time);

    const Format format_;
    const Theme theme_;
    std::optional<Day> day_;
};

// The members of the JSON.
PropertyRows stationEventRows();

}  // namespace halvane::tool

#endif
