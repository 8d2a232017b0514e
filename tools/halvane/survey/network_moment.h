// How a network is now, where a list is one of now.
//
// Plain values. Threads: as for a standard container.
#ifndef TOOLS_HALVANE_SURVEY_NETWORK_MOMENT_H
#define TOOLS_HALVANE_SURVEY_NETWORK_MOMENT_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace halvane::tool {

struct NetworkMoment {
    static constexpr std::size_t kHistory = 12;

    enum class State { Known, InUse, New, Lost };
    enum class Trend { Steady, Rising, Falling };

    State state = State::Known;
    std::optional<std::int64_t> age{};  // nanoseconds since its last frame
    std::optional<int> signal{};        // dBm; absent: that of the statistics counts
    Trend trend = Trend::Steady;
    // dBm, the latest last; absent where no frame was heard.
    std::array<std::optional<int>, kHistory> history{};
};

}  // namespace halvane::tool

#endif
