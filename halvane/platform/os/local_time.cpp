#include "halvane/platform/os/local_time_internal.h"

namespace halvane {

std::tm localTime(std::time_t seconds) {
    std::tm fields{};
    ::localtime_r(&seconds, &fields);
    return fields;
}

ZoneMark zoneMark() {
    return {__atomic_load_n(&::timezone, __ATOMIC_RELAXED),
            __atomic_load_n(&::tzname[0], __ATOMIC_RELAXED),
            __atomic_load_n(&::tzname[1], __ATOMIC_RELAXED)};
}

}  // namespace halvane
