#include <cstdint>
#include <limits>

#include "halvane/platform/os/local_time_internal.h"
#include "halvane/platform/os/wall_clock_internal.h"
#include "halvane/utils/log/stamp_internal.h"
#include "halvane/utils/printf/stamp_internal.h"

namespace halvane::logging {

namespace {

constexpr std::int64_t kNoSecond = std::numeric_limits<std::int64_t>::min();

struct KeptSecond {
    std::int64_t second = kNoSecond;
    ZoneMark zone;
    printing::Stamp stamp;
};

KeptSecond kept;

// Another thread may change the zone meanwhile. The marks then differ, and the text is not kept.
void convert(std::int64_t second) {
    const ZoneMark before = zoneMark();
    kept.stamp.setSecond(localTime(second));
    kept.zone = zoneMark();
    kept.second = before == kept.zone ? second : kNoSecond;
}

}  // namespace

std::string_view stampOfNow() {
    const WallTime now = wallTime();
    if (now.seconds != kept.second || kept.zone != zoneMark()) convert(now.seconds);
    kept.stamp.setMicroseconds(now.microseconds);
    return kept.stamp.textAndSpace();
}

}  // namespace halvane::logging
