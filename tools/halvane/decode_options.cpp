#include "tools/halvane/decode_options.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <getopt.h>
#include <string_view>

namespace halvane::tool {

namespace {

constexpr std::size_t kAddressLength = 6;

enum Option { kFormat = 256, kPerFrame, kBSSID, kSSID, kHex, kCapabilities, kHelp };

constexpr std::array kOptions = {
    option{"format", required_argument, nullptr, kFormat},
    option{"per-frame", no_argument, nullptr, kPerFrame},
    option{"bssid", required_argument, nullptr, kBSSID},
    option{"ssid", required_argument, nullptr, kSSID},
    option{"hex", no_argument, nullptr, kHex},
    option{"capabilities", required_argument, nullptr, kCapabilities},
    option{"help", no_argument, nullptr, kHelp},
    option{nullptr, 0, nullptr, 0},
};

constexpr std::pair<std::string_view, Format> kFormats[] = {
    {"text", Format::Text},
    {"json", Format::JSON},
    {"jsonl", Format::JSONLines},
    {"plist", Format::PropertyList},
};

std::optional<Format> formatNamed(std::string_view name) {
    for (const auto& [known, format] : kFormats) {
        if (name == known) return format;
    }
    return std::nullopt;
}

std::optional<ByteBuffer> addressOf(std::string_view text) {
    auto address = ByteBuffer::fromHex(text);
    if (!address || address->size() != kAddressLength) return std::nullopt;
    return address;
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

UsageError badValue(const char* name, const char* value, const char* expected) {
    return {std::string("--") + name + ": '" + value + "' is not " + expected};
}

// Stores one option's value; the error if it cannot be.
std::optional<UsageError> store(DecodeOptions& options, int option, const char* value) {
    switch (option) {
        case kFormat:
            if (const auto format = formatNamed(value)) {
                options.format = *format;
                return std::nullopt;
            }
            return badValue("format", value, "text, json, jsonl or plist");
        case kPerFrame:
            options.isPerFrame = true;
            return std::nullopt;
        case kBSSID:
            options.bssid = addressOf(value);
            if (options.bssid) return std::nullopt;
            return badValue("bssid", value, "an address of six octets (02:1a:2b:3c:4d:5e)");
        case kSSID:
            options.ssid = value;
            return std::nullopt;
        case kHex:
            options.isHex = true;
            return std::nullopt;
        case kCapabilities:
            if (const auto field = fieldOf(value)) {
                options.capabilities = *field;
                return std::nullopt;
            }
            return badValue("capabilities", value, "a 16-bit number (0x0411)");
        default:
            return UsageError{"see 'halvane decode --help'"};
    }
}

// getopt_long says which one: a short option in optopt, a long one that takes no value likewise.
UsageError refusedOption(const char* word) {
    for (const option& known : kOptions) {
        if (known.name != nullptr && known.val == optopt) {
            return {std::string("--") + known.name + " takes no value"};
        }
    }
    if (optopt != 0) return {std::string("unknown option '-") + static_cast<char>(optopt) + "'"};
    return {std::string("unknown option '") + word + "'"};
}

std::optional<UsageError> conflictIn(const DecodeOptions& options) {
    if (options.files.empty()) return UsageError{"no file to decode ('-' is standard input)"};
    if (std::ranges::count(options.files, "-") > 1) return UsageError{"'-' can be read once only"};
    if (!options.isHex && options.capabilities) return UsageError{"--capabilities is for --hex"};
    if (options.isHex && options.files.size() > 1) return UsageError{"--hex takes one file"};
    if (options.isHex && options.isPerFrame) {
        return UsageError{"--hex and --per-frame do not go together"};
    }
    return std::nullopt;
}

}  // namespace

const char* decodeHelp() {
    return "Usage: halvane decode [options] FILE...\n\n"
           "Prints the BSS records of the beacons and probe responses in capture files (pcap or\n"
           "pcapng; 802.11, radiotap, Prism, AVS or PPI). '-' is standard input. One record per\n"
           "BSSID, in order of first sighting, later frames folded in.\n\n"
           "Options:\n"
           "  --format=FORMAT       text (default), json (one document), jsonl (a line a record)\n"
           "                        or plist (the records' skeletons)\n"
           "  --per-frame           one record per frame, not folded\n"
           "  --bssid=ADDRESS       only records of this BSSID\n"
           "  --ssid=SSID           only records of this SSID, as octets or as printed\n"
           "  --hex                 FILE is hexadecimal text of one element buffer\n"
           "  --capabilities=FIELD  with --hex: the capability information field (default 0)\n"
           "  --help                print this help\n\n"
           "A summary of the frames read and skipped goes to standard error. Exit status: 0 done,\n"
           "1 a file or a frame could not be read to its end, or the output not be written, 2 "
           "usage.\n";
}

std::variant<DecodeOptions, HelpAsked, UsageError> parseDecodeOptions(int argc, char** argv) {
    DecodeOptions options;
    optind = 0;  // start over: this may be the second command line of a process
    opterr = 0;
    int option;
    while ((option = getopt_long(argc, argv, ":h", kOptions.data(), nullptr)) != -1) {
        if (option == kHelp || option == 'h') return HelpAsked{};
        if (option == ':') return UsageError{std::string(argv[optind - 1]) + " needs a value"};
        if (option == '?') return refusedOption(argv[optind - 1]);
        if (auto error = store(options, option, optarg)) return *error;
    }
    options.files.assign(argv + optind, argv + argc);
    if (auto error = conflictIn(options)) return *error;
    return options;
}

}  // namespace halvane::tool
