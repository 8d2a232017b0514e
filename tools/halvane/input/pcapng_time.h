// Time stamps of pcapng.
//
// A free function without state; any thread may call it.
#ifndef TOOLS_HALVANE_INPUT_PCAPNG_TIME_H
#define TOOLS_HALVANE_INPUT_PCAPNG_TIME_H

#include <cstdint>
#include <optional>

namespace halvane::tool {

// Converts a time stamp of an interface to nanoseconds since 1970-01-01 00:00 UTC, rounded down.
// `resolution` is the octet of its option if_tsresol: 6 is microseconds, 9 nanoseconds; with the
// upper bit set, the others are the negative power of two. `offset`, in seconds, is added. Absent
// if the result does not fit, which is the case from the year 2262 on.
std::optional<std::int64_t> nanosecondsOfTicks(std::uint64_t ticks, std::uint8_t resolution,
                                               std::int64_t offset);

}  // namespace halvane::tool

#endif
