// BSS configurations in the formats of other programs.
//
// Free functions and constant tables; any thread may use them.
#ifndef TOOLS_HALVANE_CONFIG_EXPORT_FORMAT_H
#define TOOLS_HALVANE_CONFIG_EXPORT_FORMAT_H

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/result.h"
#include "halvane/model/bss_config.h"

namespace halvane::tool {

// A line "key=value". Without a value there is no line.
struct ExportLine {
    const char* key;
    std::optional<std::string> (*value)(const HalvaneBSSConfig&);
};

// A group of lines, behind "[name]" unless the name is empty. Without lines there is no group.
struct ExportSection {
    std::string_view name;
    std::span<const ExportLine> lines;
};

// What a format has no place for, and a sentence for who it holds for.
struct ExportGap {
    bool (*holds)(const HalvaneBSSConfig&);
    const char* sentence;
};

struct ExportFormat {
    std::string_view name;  // as --export takes it
    // Lines of comment without their "# ". They hold no text of the configuration but what is
    // printable ASCII.
    std::string (*heading)(const HalvaneBSSConfig&);
    std::span<const ExportSection> sections;
    std::span<const ExportGap> refusals;  // without these the network would be less secure, or none
    std::span<const ExportGap> losses;
};

// nullptr for a name that is none.
const ExportFormat* exportFormatOf(std::string_view name);

struct ExportedConfig {
    std::string text;  // holds the passphrase or the key
    std::vector<std::string> losses;
};

// Returns the configuration in the format, or the sentences why that cannot be: a contradiction of
// the configuration, or a refusal of the format. A value that is not one line is left out, so that
// no text of the configuration makes a line of its own.
Result<ExportedConfig, std::vector<std::string>> exported(const HalvaneBSSConfig& configuration,
                                                          const ExportFormat& format);

// --- For the formats ---

extern const ExportFormat kHostapdFormat;
extern const ExportFormat kIwdFormat;
extern const ExportFormat kNetworkManagerFormat;

// The octets as text of the same octets.
std::string textOf(const ByteBuffer& octets);

// The octets of the SSID; none if it is absent.
std::string ssidText(const HalvaneBSSConfig& configuration);

// Lower-case hexadecimal digits.
std::string hexText(std::string_view octets);

// Whether all of the text is UTF-8.
bool isUTF8Text(std::string_view text);

// A value of a key file (GLib's, and iwd's): backslashes and blanks at its ends are escaped.
std::string keyFileValue(std::string_view text);

// Gaps that several formats have.
bool hasOtherRetries(const HalvaneBSSConfig& configuration);
bool hasOtherRotation(const HalvaneBSSConfig& configuration);
bool hasWPSText(const HalvaneBSSConfig& configuration);
bool hasNoSecret(const HalvaneBSSConfig& configuration);
bool isWPSAlone(const HalvaneBSSConfig& configuration);
bool isWide(const HalvaneBSSConfig& configuration);
bool hasOrder(const HalvaneBSSConfig& configuration);

}  // namespace halvane::tool

#endif
