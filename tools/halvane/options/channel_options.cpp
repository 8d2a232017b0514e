#include "tools/halvane/options/channel_options.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string>
#include <string_view>
#include <utility>

#include "halvane/air/channel_plan.h"
#include "halvane/air/operating_class.h"

#include "tools/halvane/options/format_option.h"

namespace halvane::tool {

namespace {

constexpr std::uint64_t kLastFrequency = 99999;
constexpr int kHalfOfPair = 80;

// The options as typed; null or 0 means not typed.
struct Typed {
    const char* band = nullptr;
    const char* width = nullptr;
    const char* operatingClass = nullptr;
    const char* channel = nullptr;
    const char* frequency = nullptr;
    std::int32_t psc = 0;
};
Typed gTyped;

constexpr CLIOption valueOption(const char* name, const char** place, const char* value,
                                const char* help, const char* longHelp = nullptr) {
    return {.type = kCLIString,
            .longName = name,
            .valuePtr = place,
            .argName = value,
            .flags = kCLIBareName,
            .shortHelp = help,
            .longHelp = longHelp};
}

}  // namespace

CLIOption gChannelsOptions[] = {
    formatOption("json, plist: one document; jsonl: one line per channel."),
    valueOption("band", &gTyped.band, "BAND", "2.4, 3.6, 4.9, 5, 5.9, 6, 60, s1g or all",
                "Channels of 20 MHz (at 60 GHz: of all widths), with the wider channels\n"
                "that they belong to, and their operating classes."),
    valueOption("width", &gTyped.width, "WIDTH", "5, 10, 20, 40, 80, 160, 80+80, 320 or all",
                "In MHz. A NUMBER or FREQUENCY may then also name a part of a channel."),
    valueOption("class", &gTyped.operatingClass, "N", "an operating class, or all",
                "Its band, width, start frequency, behaviour limits and channels."),
    valueOption("channel", &gTyped.channel, "N", "this number, in every band and of every width"),
    valueOption("frequency", &gTyped.frequency, "MHZ",
                "the channels with this centre frequency (MHz)"),
    {.type = kCLIBoolean,
     .longName = "psc",
     .valuePtr = &gTyped.psc,
     .flags = kCLINoValue,
     .shortHelp = "only preferred scanning channels (6 GHz)"},
    {.type = kCLIArgument,
     .longName = "NUMBER|FREQUENCY...",
     .flags = kCLIOptionalValue,
     .shortHelp = "up to 255 a channel, above it a frequency in MHz"},
    {.type = kCLISection,
     .shortHelp = "EXIT STATUS",
     .longHelp = "0 success; 1 a channel is unknown, or writing failed; 2 usage error."},
    {.type = kCLIEnd},
};

namespace {

using Problem = std::optional<UsageError>;

bool isSameWord(std::string_view a, std::string_view b) {
    const auto lower = [](char letter) { return std::tolower(static_cast<unsigned char>(letter)); };
    return std::ranges::equal(a, b, {}, lower, lower);
}

UsageError badValue(const char* name, const char* value, const char* expected) {
    return {std::string("--") + name + ": '" + value + "' is not " + expected};
}

constexpr std::array<std::string_view, 9> kBandWords = {"2.4", "3.6", "4.9", "5",  "5.9",
                                                        "6",   "60",  "s1g", "all"};

Problem readBand(const char* text, ChannelOptions& options) {
    if (text == nullptr || isSameWord(text, "all")) return std::nullopt;
    for (int i = 0; i <= static_cast<int>(air::Band::Ghz60); ++i) {
        const auto band = static_cast<air::Band>(i);
        if (isSameWord(text, air::bandName(band))) options.band = band;
    }
    if (options.band) return std::nullopt;
    return withSuggestion(badValue("band", text, "2.4, 3.6, 4.9, 5, 5.9, 6, 60, s1g or all"),
                          "--band=", text, kBandWords);
}

bool isWidth(std::uint64_t megahertz) {
    return std::ranges::any_of(air::operatingClasses(), [&](const air::OperatingClass& row) {
        return static_cast<std::uint64_t>(row.channelWidth()) == megahertz;
    });
}

Problem readWidth(const char* text, ChannelOptions& options) {
    if (text == nullptr) return std::nullopt;
    options.hasEveryWidth = isSameWord(text, "all");
    if (options.hasEveryWidth) return std::nullopt;
    const bool isPair = std::string_view(text) == "80+80";
    const auto megahertz = isPair ? kHalfOfPair : decimalOf(text).value_or(0);
    if (!isWidth(megahertz)) {
        return badValue("width", text, "5, 10, 20, 40, 80, 160, 80+80, 320 or all");
    }
    options.width = WidthChoice{static_cast<int>(megahertz), isPair};
    return std::nullopt;
}

Problem readClass(const char* text, ChannelOptions& options) {
    options.hasClasses = text != nullptr;
    if (text == nullptr || isSameWord(text, "all")) return std::nullopt;
    const auto number = decimalOf(text);
    if (!number || *number > UINT8_MAX) {
        return badValue("class", text, "an operating class (0 to 255) or all");
    }
    options.operatingClass = static_cast<std::uint8_t>(*number);
    return std::nullopt;
}

Problem readQueries(const Typed& typed, ChannelOptions& options) {
    if (typed.channel != nullptr) {
        const auto number = decimalOf(typed.channel);
        if (!number || *number > kLastChannelNumber) {
            return badValue("channel", typed.channel, "a channel number (0 to 255)");
        }
        options.asked.push_back({true, static_cast<std::uint32_t>(*number)});
    }
    if (typed.frequency != nullptr) {
        const auto frequency = decimalOf(typed.frequency);
        if (!frequency || *frequency > kLastFrequency) {
            return badValue("frequency", typed.frequency, "a frequency in MHz");
        }
        options.asked.push_back({false, static_cast<std::uint32_t>(*frequency)});
    }
    return std::nullopt;
}

Problem readArguments(const std::vector<std::string>& arguments, ChannelOptions& options) {
    for (const std::string& argument : arguments) {
        const auto value = decimalOf(argument);
        if (!value || *value > kLastFrequency) {
            return UsageError{"'" + argument + "' is no channel number and no frequency in MHz"};
        }
        options.asked.push_back({*value <= kLastChannelNumber, static_cast<std::uint32_t>(*value)});
    }
    return std::nullopt;
}

// --- Options that contradict each other ---

Problem conflictOfQueries(const Typed& typed, bool hasArguments, const ChannelOptions& options) {
    const bool isTyped = typed.channel != nullptr || typed.frequency != nullptr;
    if (typed.channel != nullptr && typed.frequency != nullptr) {
        return UsageError{"--channel and --frequency do not go together"};
    }
    if (isTyped && hasArguments) {
        return UsageError{"--channel and --frequency do not go with NUMBER or FREQUENCY"};
    }
    if (options.hasClasses && (isTyped || hasArguments || options.isPreferredScanning)) {
        return UsageError{"--class goes with --band, --width and --format alone"};
    }
    return std::nullopt;
}

Problem conflictOfScanning(const ChannelOptions& options) {
    if (!options.isPreferredScanning) return std::nullopt;
    if (options.band && *options.band != air::Band::Ghz6) {
        return UsageError{"--psc is for the 6 GHz band"};
    }
    if (options.width && options.width->megahertz != 20) {
        return UsageError{"--psc is for channels of 20 MHz"};
    }
    return std::nullopt;
}

std::string textOf(const WidthChoice& width) {
    return (width.isPair ? "80+80" : std::to_string(width.megahertz)) + " MHz";
}

bool has(const air::PlannedChannel& channel, const WidthChoice& width) {
    return channel.width == width.megahertz && (!width.isPair || channel.isSegment);
}

// A band that has channels, but none of the width.
Problem conflictOfWidth(const ChannelOptions& options) {
    if (!options.band || !options.width) return std::nullopt;
    bool isKnown = false;
    for (const air::PlannedChannel& channel : air::channelPlan()) {
        if (channel.band != *options.band) continue;
        if (has(channel, *options.width)) return std::nullopt;
        isKnown = true;
    }
    if (!isKnown) return std::nullopt;
    return UsageError{"the " + std::string(air::bandName(*options.band)) +
                      " GHz band has no channels of " + textOf(*options.width)};
}

Problem conflictOfClass(const ChannelOptions& options) {
    if (!options.operatingClass) return std::nullopt;
    const auto* const row = air::operatingClass(*options.operatingClass);
    if (row == nullptr) return std::nullopt;
    const std::string name = "operating class " + std::to_string(row->number);
    if (options.band && *options.band != row->band) {
        return UsageError{name + " is in the " + std::string(air::bandName(row->band)) +
                          " GHz band"};
    }
    const WidthChoice width{row->channelWidth(), row->isPair};
    if (options.width &&
        (options.width->megahertz != width.megahertz || options.width->isPair != width.isPair)) {
        return UsageError{name + " has channels of " + textOf(width)};
    }
    return std::nullopt;
}

Problem conflictOfFormat(const ChannelOptions& options) {
    if (!options.isPlan || options.format != Format::PropertyList) return std::nullopt;
    return UsageError{"--format=plist goes with NUMBER and FREQUENCY alone"};
}

}  // namespace

Result<ChannelOptions, UsageError> takeChannelOptions() {
    const Typed typed = std::exchange(gTyped, Typed());
    const std::vector<std::string> arguments = takeArguments();
    ChannelOptions options;
    const auto format = takeFormat();
    if (!format) return Unexpected(format.error());
    options.format = *format;
    options.isPreferredScanning = typed.psc != 0;
    options.isPlan = typed.band != nullptr || typed.width != nullptr ||
                     typed.operatingClass != nullptr || typed.channel != nullptr ||
                     typed.frequency != nullptr || options.isPreferredScanning;
    if (auto error = readBand(typed.band, options)) return Unexpected(*error);
    if (auto error = readWidth(typed.width, options)) return Unexpected(*error);
    if (auto error = readClass(typed.operatingClass, options)) return Unexpected(*error);
    if (auto error = readQueries(typed, options)) return Unexpected(*error);
    if (auto error = readArguments(arguments, options)) return Unexpected(*error);
    if (auto error = conflictOfQueries(typed, !arguments.empty(), options)) {
        return Unexpected(*error);
    }
    if (auto error = conflictOfScanning(options)) return Unexpected(*error);
    if (auto error = conflictOfWidth(options)) return Unexpected(*error);
    if (auto error = conflictOfClass(options)) return Unexpected(*error);
    if (auto error = conflictOfFormat(options)) return Unexpected(*error);
    return options;
}

}  // namespace halvane::tool
