// The options of halvaned-sim.
#ifndef TOOLS_HALVANED_SIM_OPTIONS_H
#define TOOLS_HALVANED_SIM_OPTIONS_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "halvane/utils/cli.h"

namespace halvane::sim {

struct Texts {
    char** items = nullptr;
    std::size_t count = 0;

    std::vector<std::string> strings() const { return {items, items + count}; }
};

// What CLIParse() has read; null or 0 means not typed. The program frees the texts.
struct SimOptions {
    std::int32_t isPrivate = 0;
    std::int32_t printsState = 0;
    const char* state = nullptr;
    Texts lines{};
    Texts linesToSend{};
};
extern SimOptions gSimOptions;

// The table for CLIParse().
CLIOption* simOptions();

}  // namespace halvane::sim

#endif
