// What the command line of `halvane decode` asks for.
#ifndef TOOLS_HALVANE_DECODE_OPTIONS_H
#define TOOLS_HALVANE_DECODE_OPTIONS_H

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "halvane/base/byte_buffer.h"

namespace halvane::tool {

enum class Format { Text, JSON, JSONLines, PropertyList };

struct DecodeOptions {
    std::vector<std::string> files;
    Format format = Format::Text;
    bool isPerFrame = false;
    bool isHex = false;
    std::optional<std::uint16_t> capabilities;  // of a hexadecimal element buffer
    std::optional<ByteBuffer> bssid;
    std::optional<std::string> ssid;
};

// Why there is nothing to run.
struct HelpAsked {};
struct UsageError {
    std::string message;
};

// argv[0] is the command's name.
std::variant<DecodeOptions, HelpAsked, UsageError> parseDecodeOptions(int argc, char** argv);

const char* decodeHelp();

}  // namespace halvane::tool

#endif
