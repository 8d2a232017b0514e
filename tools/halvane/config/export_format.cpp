#include "tools/halvane/config/export_format.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <utility>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/hex_digits.h"
#include "halvane/base/utf8_internal.h"

#include "tools/halvane/config/configured_security.h"
#include "tools/halvane/config/contradictions.h"

namespace halvane::tool {

namespace {

constexpr const ExportFormat* kFormats[] = {&kHostapdFormat, &kIwdFormat, &kNetworkManagerFormat};

bool isOneLine(std::string_view value) {
    return std::ranges::none_of(value, [](char c) {
        const auto octet = static_cast<std::uint8_t>(c);
        return octet < 0x20 || octet == 0x7F;
    });
}

std::vector<std::string> sentencesOf(std::span<const ExportGap> gaps,
                                     const HalvaneBSSConfig& configuration) {
    std::vector<std::string> sentences;
    for (const ExportGap& gap : gaps) {
        if (gap.holds(configuration)) sentences.emplace_back(gap.sentence);
    }
    return sentences;
}

std::vector<std::string> obstaclesOf(const HalvaneBSSConfig& configuration,
                                     const ExportFormat& format) {
    std::vector<std::string> sentences;
    for (Contradiction& contradiction : contradictionsIn(configuration)) {
        if (!contradiction.isOursAlone) sentences.push_back(std::move(contradiction.sentence));
    }
    return sentences.empty() ? sentencesOf(format.refusals, configuration) : sentences;
}

std::string commentOf(const std::string& heading) {
    std::string comment = "# ";
    for (const char c : heading) {
        comment += c;
        if (c == '\n') comment += "# ";
    }
    return comment + '\n';
}

void append(ExportedConfig& config, const ExportSection& section,
            const HalvaneBSSConfig& configuration) {
    std::string lines;
    for (const ExportLine& line : section.lines) {
        const auto value = line.value(configuration);
        if (!value) continue;
        if (isOneLine(*value)) {
            lines += line.key + ('=' + *value) + '\n';
        } else {
            config.losses.push_back(std::string(line.key) +
                                    " is left out: the text has a control character.");
        }
    }
    if (lines.empty()) return;
    if (!section.name.empty()) config.text += "\n[" + std::string(section.name) + "]\n";
    config.text += lines;
}

}  // namespace

const ExportFormat* exportFormatOf(std::string_view name) {
    const auto* const found = std::ranges::find(kFormats, name, &ExportFormat::name);
    return found != std::end(kFormats) ? *found : nullptr;
}

Result<ExportedConfig, std::vector<std::string>> exported(const HalvaneBSSConfig& configuration,
                                                          const ExportFormat& format) {
    auto obstacles = obstaclesOf(configuration, format);
    if (!obstacles.empty()) return Unexpected(std::move(obstacles));
    ExportedConfig config = {commentOf(format.heading(configuration)),
                             sentencesOf(format.losses, configuration)};
    for (const ExportSection& section : format.sections) append(config, section, configuration);
    return config;
}

std::string textOf(const ByteBuffer& octets) {
    return std::string(octets.text());
}

std::string ssidText(const HalvaneBSSConfig& configuration) {
    return configuration.ssid() ? textOf(*configuration.ssid()) : std::string();
}

std::string hexText(std::string_view octets) {
    std::string digits;
    for (const char c : octets) {
        const auto octet = static_cast<std::uint8_t>(c);
        digits += kHexDigitsLowercase[octet >> 4];
        digits += kHexDigitsLowercase[octet & 0x0F];
    }
    return digits;
}

bool isUTF8Text(std::string_view text) {
    while (!text.empty()) {
        const auto character = firstUtf8Character(text);
        if (!character) return false;
        text.remove_prefix(character->size);
    }
    return true;
}

std::string keyFileValue(std::string_view text) {
    std::string value;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isEnd = i == 0 || i + 1 == text.size();
        if (text[i] == '\\') {
            value += "\\\\";
        } else if (text[i] == ' ' && isEnd) {
            value += "\\s";
        } else {
            value += text[i];
        }
    }
    return value;
}

bool hasOtherRetries(const HalvaneBSSConfig& configuration) {
    const auto usual = HalvaneBSSConfig::init();
    return configuration.eapolRetryCount() != usual.eapolRetryCount() ||
           configuration.eapolRetryInterval() != usual.eapolRetryInterval();
}

bool hasOtherRotation(const HalvaneBSSConfig& configuration) {
    return configuration.eapolGTKRotation() != HalvaneBSSConfig::init().eapolGTKRotation();
}

bool hasWPSText(const HalvaneBSSConfig& configuration) {
    return configuration.wpsDeviceName() || configuration.wpsManufacturerName() ||
           configuration.wpsModelName() || configuration.wpsModelNumber() ||
           configuration.wpsSerialNumber();
}

bool hasNoSecret(const HalvaneBSSConfig& configuration) {
    return isPersonal(configuration) && !configuration.passphrase() && !configuration.keyMaterial();
}

bool isWPSAlone(const HalvaneBSSConfig& configuration) {
    return configuration.allowSecurityWPS() && !encrypts(configuration) &&
           !configuration.allowSecurityOpen();
}

bool isWide(const HalvaneBSSConfig& configuration) {
    return configuration.channelWidth() > 20;
}

bool hasOrder(const HalvaneBSSConfig& configuration) {
    return configuration.preferredOrder() != 0;
}

}  // namespace halvane::tool
