#include "tools/halvane/options/decode_options.h"

#include <algorithm>
#include <charconv>
#include <string_view>
#include <system_error>
#include <utility>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/mac_address.h"
#include "halvane/utils/cli.h"

#include "tools/halvane/options/format_option.h"

namespace halvane::tool {

namespace {

// The options as typed; null or 0 means not typed.
struct Typed {
    const char* bssid = nullptr;
    const char* ssid = nullptr;
    const char* capabilities = nullptr;
    std::int32_t perFrame = 0;
    std::int32_t hex = 0;
    std::int32_t explain = 0;
};
Typed gTyped;

}  // namespace

CLIOption gDecodeOptions[] = {
    formatOption("json: one document; jsonl: one line per record; plist: skeletons."),
    {.type = kCLIBoolean,
     .longName = "per-frame",
     .valuePtr = &gTyped.perFrame,
     .flags = kCLINoValue,
     .shortHelp = "one record per frame, without folding"},
    {.type = kCLIBoolean,
     .longName = "explain",
     .valuePtr = &gTyped.explain,
     .flags = kCLINoValue,
     .shortHelp = "each value with its reason, and what is wrong"},
    {.type = kCLIString,
     .longName = "bssid",
     .valuePtr = &gTyped.bssid,
     .argName = "ADDRESS",
     .flags = kCLIBareName,
     .shortHelp = "only records of this BSSID"},
    {.type = kCLIString,
     .longName = "ssid",
     .valuePtr = &gTyped.ssid,
     .argName = "SSID",
     .flags = kCLIBareName,
     .shortHelp = "only records of this SSID, as octets or as printed"},
    {.type = kCLIBoolean,
     .longName = "hex",
     .valuePtr = &gTyped.hex,
     .flags = kCLINoValue,
     .shortHelp = "FILE is hexadecimal text of one element buffer"},
    {.type = kCLIString,
     .longName = "capabilities",
     .valuePtr = &gTyped.capabilities,
     .argName = "FIELD",
     .flags = kCLIBareName,
     .shortHelp = "with --hex: the capability field (default 0)"},
    {.type = kCLIArgument,
     .longName = "FILE...",
     .shortHelp = "pcap or pcapng; '-' is standard input"},
    {.type = kCLISection,
     .shortHelp = "EXIT STATUS",
     .longHelp = "0 success; 1 a file or a frame is damaged or cannot be read, or writing\n"
                 "failed; 2 usage error."},
    {.type = kCLIEnd},
};

namespace {

std::optional<MacAddress> addressOf(std::string_view text) {
    const auto octets = ByteBuffer::fromHex(text);
    return octets ? MacAddress::fromBytes(octets->bytes()) : std::nullopt;
}

// A 16-bit number, hexadecimal after "0x".
std::optional<std::uint16_t> fieldOf(std::string_view text) {
    const bool isHex = text.starts_with("0x") || text.starts_with("0X");
    if (isHex) text.remove_prefix(2);
    std::uint16_t value = 0;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value, isHex ? 16 : 10);
    if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
    return value;
}

// Reads an option's text if there is one. Returns false if the text cannot be read.
template <typename Place, typename Value>
bool read(const char* text, Place& place, std::optional<Value> (*valueOf)(std::string_view)) {
    if (text == nullptr) return true;
    const auto value = valueOf(text);
    if (value) place = *value;
    return value.has_value();
}

UsageError badValue(const char* name, const char* value, const char* expected) {
    return {std::string("--") + name + ": '" + value + "' is not " + expected};
}

std::optional<UsageError> readInto(DecodeOptions& options, const Typed& typed) {
    const auto format = takeFormat();
    if (!format) return format.error();
    options.format = *format;
    if (!read(typed.bssid, options.bssid, addressOf)) {
        return badValue("bssid", typed.bssid, "an address of six octets (02:1a:2b:3c:4d:5e)");
    }
    if (!read(typed.capabilities, options.capabilities, fieldOf)) {
        return badValue("capabilities", typed.capabilities, "a 16-bit number (0x0411)");
    }
    if (typed.ssid != nullptr) options.ssid = typed.ssid;
    options.isPerFrame = typed.perFrame != 0;
    options.isHex = typed.hex != 0;
    options.isExplained = typed.explain != 0;
    return std::nullopt;
}

std::optional<UsageError> conflictIn(const DecodeOptions& options) {
    if (options.files.empty()) return UsageError{"no file to decode ('-' is standard input)"};
    if (std::ranges::count(options.files, "-") > 1) return UsageError{"'-' can be read once only"};
    if (!options.isHex && options.capabilities) return UsageError{"--capabilities is for --hex"};
    if (options.isHex && options.files.size() > 1) return UsageError{"--hex takes one file"};
    if (options.isExplained && options.format != Format::Text) {
        return UsageError{"--explain goes with --format=text alone"};
    }
    if (options.isHex && options.isPerFrame) {
        return UsageError{"--hex and --per-frame do not go together"};
    }
    return std::nullopt;
}

}  // namespace

Result<DecodeOptions, UsageError> takeDecodeOptions() {
    const Typed typed = std::exchange(gTyped, Typed());
    DecodeOptions options;
    options.files = takeArguments();
    if (auto error = readInto(options, typed)) return Unexpected(*error);
    if (auto error = conflictIn(options)) return Unexpected(*error);
    return options;
}

}  // namespace halvane::tool
