// The options of `halvane channels`.
#ifndef TOOLS_HALVANE_OPTIONS_CHANNEL_OPTIONS_H
#define TOOLS_HALVANE_OPTIONS_CHANNEL_OPTIONS_H

#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/channel.h"
#include "halvane/base/result.h"
#include "halvane/utils/cli.h"

#include "tools/halvane/options/argument.h"
#include "tools/halvane/output/format.h"

namespace halvane::tool {

// A channel number is one octet in every element. Every frequency in MHz is larger.
inline constexpr std::uint64_t kLastChannelNumber = 255;

// One channel number, or one centre frequency.
struct ChannelQuery {
    bool isNumber = true;
    std::uint32_t value = 0;  // the number, or the frequency in MHz
};

// The channels of one width.
struct WidthChoice {
    int megahertz = 20;
    bool isPair = false;  // those of 80 MHz that may be one half of 80+80
};

struct ChannelOptions {
    Format format = Format::Text;
    // Whether an option asks for the channels of all bands and widths, and not for those of the
    // channel map.
    bool isPlan = false;
    std::vector<ChannelQuery> asked;  // of the arguments, --channel and --frequency
    std::optional<air::Band> band;    // absent for all
    std::optional<WidthChoice> width;
    bool hasEveryWidth = false;
    bool isPreferredScanning = false;
    bool hasClasses = false;                     // whether --class was typed
    std::optional<std::uint8_t> operatingClass;  // absent for all
};

extern CLIOption gChannelsOptions[];

// Returns what gChannelsOptions has read since the last call, and the remaining arguments.
Result<ChannelOptions, UsageError> takeChannelOptions();

}  // namespace halvane::tool

#endif
