#include <optional>

#include "halvane/platform/local_time_internal.h"

namespace halvane {

namespace {

struct Moment {
    std::time_t seconds;
    long secondsWest;  // of UTC
    const char* zone;
    const char* summerZone;

    friend bool operator==(const Moment&, const Moment&) = default;
};

Moment momentOf(std::time_t seconds) {
    return {seconds, ::timezone, ::tzname[0], ::tzname[1]};
}

struct Memory {
    std::optional<Moment> moment;
    std::tm fields;
};

}  // namespace

std::tm localTime(std::time_t seconds) {
    thread_local Memory last;
    if (last.moment != momentOf(seconds)) {
        ::localtime_r(&seconds, &last.fields);
        last.moment = momentOf(seconds);  // the first conversion of all sets the zone
    }
    return last.fields;
}

}  // namespace halvane
