// Options that count once.
#ifndef TOOLS_HALVANE_OPTIONS_SINGLE_OPTION_H
#define TOOLS_HALVANE_OPTIONS_SINGLE_OPTION_H

#include <cstdint>
#include <span>

#include "halvane/utils/cli.h"

namespace halvane::tool {

// In the flags of an option's row: the option may be repeated. A kCLIStringArray, which collects
// the values, and a kCLICallback may be without it.
inline constexpr auto kRepeatable = std::uint32_t{1} << 31;

// Makes every option of the commands, and of the commands within them, a usage error if it is
// given twice, except those that may be repeated: "halvane: decode: --format is given twice".
// --no-option takes the first one back. Call it before CLIParse().
// REQUIRES: the rows stay where they are as long as they are used. One thread.
void refuseRepeatedOptions(std::span<CLIOption> commands);

}  // namespace halvane::tool

#endif
