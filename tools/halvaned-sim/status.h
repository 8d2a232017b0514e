// The values of "status" in replies, and their texts for people.
#ifndef TOOLS_HALVANED_SIM_STATUS_H
#define TOOLS_HALVANED_SIM_STATUS_H

#include <cstdint>
#include <string_view>

namespace halvane::sim {

// Name, value, text. docs/halvaned-sim.md lists them for people.
#define HALVANE_SIM_STATUSES(X)                                                      \
    X(Done, 0, "done")                                                               \
    X(UnknownCommand, 1, "there is no such command")                                 \
    X(BadRequest, 2, "a key is missing, or its value is of no use")                  \
    X(UnknownInterface, 3, "there is no such interface")                             \
    X(BadConfiguration, 4, "that is no configuration with an SSID of 1 to 32 bytes") \
    X(UnknownConfiguration, 5, "the interface has no such configuration")            \
    X(InterfaceDisabled, 6, "the interface is disabled")                             \
    X(WrongRole, 7, "the interface's role is not AP")                                \
    X(NothingToStart, 8, "the interface has no configuration to start")              \
    X(NoBSS, 9, "the interface hosts no BSS")                                        \
    X(UnknownStation, 10, "no such station is associated")                           \
    X(TooManyStations, 11, "there would be too many stations")                       \
    X(TooLarge, 12, "the reply is larger than a bus accepts")

enum class Status : std::int64_t {
#define HALVANE_SIM_STATUS(name, value, text) name = (value),
    HALVANE_SIM_STATUSES(HALVANE_SIM_STATUS)
#undef HALVANE_SIM_STATUS
};

constexpr std::string_view textOf(Status status) {
    switch (status) {
#define HALVANE_SIM_STATUS(name, value, text) \
    case Status::name:                        \
        return text;
        HALVANE_SIM_STATUSES(HALVANE_SIM_STATUS)
#undef HALVANE_SIM_STATUS
    }
    return "";
}

}  // namespace halvane::sim

#endif
