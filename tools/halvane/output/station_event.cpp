#include "tools/halvane/output/station_event.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string_view>
#include <tuple>

#include "halvane/base/escaped_text.h"
#include "halvane/ie/fancy_formatting.h"

#include "tools/halvane/output/json_record.h"
#include "tools/halvane/output/json_writer.h"
#include "tools/halvane/output/property_table.h"

namespace halvane::tool {

namespace {

struct TimedChange {
    const StationChange& change;
    EventTime time;
};

}  // namespace

template <>
inline constexpr std::string_view kTableName<TimedChange> = "stationEvent";
template <>
inline constexpr auto kProperties<TimedChange> = std::tuple{
    Property{"event", [](const TimedChange& event) { return nameOf(event.change.kind); }},
    Property{"mac",
             [](const TimedChange& event) { return Address{event.change.address.octets()}; }},
    Property{"interfaceName", [](const TimedChange& event) { return event.change.interface; }},
    Property{"time", [](const TimedChange& event) { return utcText(event.time); }},
};

PropertyRows stationEventRows() {
    return kPropertyRows<TimedChange>;
}

namespace {

// Pads the text with blanks up to `width`.
std::string padded(std::string text, std::size_t width) {
    if (text.size() < width) text.resize(width, ' ');
    return text;
}

// The same as in the tables of lists.
std::string orDash(const std::string& text) {
    return text.empty() ? "-" : text;
}

std::chrono::seconds secondsOf(EventTime time) {
    return std::chrono::floor<std::chrono::seconds>(time);
}

int millisecondsOf(EventTime time) {
    return static_cast<int>((time - secondsOf(time)).count());
}

std::tm localTimeOf(EventTime time) {
    const auto seconds = static_cast<std::time_t>(secondsOf(time).count());
    std::tm local{};
    ::localtime_r(&seconds, &local);
    return local;
}

std::string formatted(const char* format, const std::tm& time) {
    std::array<char, 64> text{};
    return {text.data(), std::strftime(text.data(), text.size(), format, &time)};
}

std::string threeDigits(int number) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%03d", number);
    return text.data();
}

Meaning meaningOf(StationChange::Kind kind) {
    switch (kind) {
        case StationChange::Kind::Authorized:
        case StationChange::Kind::Joined:
            return Meaning::Good;
        case StationChange::Kind::Kicked:
            return Meaning::Caution;
        case StationChange::Kind::Left:
            return Meaning::Secondary;
    }
    return Meaning::Plain;
}

}  // namespace

EventTime eventTimeNow() {
    return std::chrono::floor<EventTime>(std::chrono::system_clock::now().time_since_epoch());
}

std::string utcText(EventTime time) {
    const auto seconds = static_cast<std::time_t>(secondsOf(time).count());
    std::tm utc{};
    ::gmtime_r(&seconds, &utc);
    return formatted("%Y-%m-%dT%H:%M:%S.", utc) + threeDigits(millisecondsOf(time)) + "Z";
}

std::string StationEventLines::begin(EventTime now) {
    if (format_ != Format::Text) return {};
    const std::tm time = localTimeOf(now);
    day_ = Day{time.tm_year, time.tm_yday};
    return dateLine(time);
}

std::string StationEventLines::linesOf(const StationChange& change, EventTime time) {
    if (format_ == Format::Text) return textLines(change, time);
    JSONWriter writer;
    writeObject(writer, TimedChange{change, time});
    return std::string(writer.text()) + '\n';
}

std::string StationEventLines::dateLine(const std::tm& time) const {
    return theme_.painted(formatted("-- %Y-%m-%d --", time), Meaning::Secondary) + '\n';
}

std::string StationEventLines::textLines(const StationChange& change, EventTime time) {
    constexpr std::size_t kEventWidth = 10;
    const std::tm local = localTimeOf(time);
    const Day day = {local.tm_year, local.tm_yday};
    std::string lines = day_ && *day_ != day ? dateLine(local) : "";
    day_ = day;
    lines += formatted("%H:%M:%S.", local) + threeDigits(millisecondsOf(time)) + " ";
    lines += theme_.painted(padded(nameOf(change.kind), kEventWidth), meaningOf(change.kind)) + " ";
    lines += FancyFormatting::formattedMAC(change.address.buffer()) + " ";
    return lines + orDash(escapedText(change.interface)) + '\n';
}

}  // namespace halvane::tool
