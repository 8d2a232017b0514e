#include "halvane/platform/os/local_time_internal.h"

namespace halvane {

std::tm localTime(std::time_t seconds) {
    std::tm fields{};
    ::localtime_r(&seconds, &fields);
    return fields;
}

}  // namespace halvane
