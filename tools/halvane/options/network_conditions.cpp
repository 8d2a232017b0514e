#include "tools/halvane/options/network_conditions.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "halvane/air/channel.h"
#include "halvane/air/security.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/escaped_text.h"

#include "tools/halvane/networks/generation_label.h"
#include "tools/halvane/networks/security_label.h"
#include "tools/halvane/networks/wildcard.h"
#include "tools/halvane/options/argument.h"
#include "tools/halvane/output/folded_case.h"
#include "tools/halvane/survey/network.h"

namespace halvane::tool {

namespace {

constexpr int kAddressBits = 48;

std::uint64_t numberOf(const MacAddress& address) {
    std::uint64_t number = 0;
    for (const std::uint8_t octet : address.octets()) number = number << 8 | octet;
    return number;
}

std::optional<std::uint64_t> maskOf(std::string_view text) {
    if (const auto mask = addressOf(text)) return numberOf(*mask);
    const auto bits = signedDecimalOf(text);
    if (!bits || *bits < 0 || *bits > kAddressBits) return std::nullopt;
    const std::uint64_t all = (std::uint64_t{1} << kAddressBits) - 1;
    return all & ~((std::uint64_t{1} << (kAddressBits - *bits)) - 1);
}

// The kinds of security that a word stands for.
struct SecurityWord {
    std::string_view word;  // small letters
    std::string_view part;  // of the full names, small letters
};
constexpr SecurityWord kSecurityWords[] = {
    {"personal", "personal"}, {"enterprise", "enterprise"}, {"wpa2", "wpa2"}, {"wpa3", "wpa3"}};

bool hasSecurity(air::Security security, const std::string& word) {
    const std::string name = foldedCase(air::securityName(security));
    if (name == word || foldedCase(shortSecurityName(security)) == word) return true;
    if (word == "wpa") return name.starts_with("wpa-") || name.starts_with("wpa/");
    return std::ranges::any_of(kSecurityWords, [&](const SecurityWord& known) {
        return known.word == word && name.find(known.part) != std::string::npos;
    });
}

constexpr std::array<std::string_view, 3> kLegacyLabels = {"a", "b", "g"};
constexpr std::array<std::string_view, 5> kGenerationLabels = {"4", "5", "6", "6E", "7"};

constexpr air::Severity kSeverities[] = {air::Severity::Note, air::Severity::Warning,
                                         air::Severity::Error};

}  // namespace

std::optional<MacAddress> addressOf(std::string_view text) {
    if (const auto address = MacAddress::fromText(text)) return address;
    const auto octets = ByteBuffer::fromHex(text);
    return octets ? MacAddress::fromBytes(octets->bytes()) : std::nullopt;
}

std::optional<NetworkCondition> bssidCondition(std::string_view text) {
    const std::size_t slash = text.find('/');
    const auto address = addressOf(text.substr(0, slash));
    const bool hasMask = slash != std::string_view::npos;
    const auto mask = hasMask ? maskOf(text.substr(slash + 1)) : maskOf("48");
    if (!address || !mask) return std::nullopt;
    return [wanted = numberOf(*address) & *mask, mask = *mask](const Network& network) {
        return (numberOf(network.bssid) & mask) == wanted;
    };
}

std::optional<NetworkCondition> ssidCondition(std::string_view text) {
    // A name without such signs is shown as it is.
    const bool mayBeEscaped = text.find('\\') != std::string_view::npos;
    return [pattern = std::string(text), mayBeEscaped](const Network& network) {
        const std::string_view name = nameOf(network);
        return name == pattern || matchesWildcard(pattern, name) ||
               (mayBeEscaped && escapedText(name) == pattern);
    };
}

std::optional<NetworkCondition> bandCondition(std::string_view text) {
    for (int i = 0; i <= static_cast<int>(air::Band::Ghz60); ++i) {
        const auto band = static_cast<air::Band>(i);
        if (foldedCase(air::bandName(band)) != foldedCase(text)) continue;
        return [band](const Network& network) {
            const auto& told = network.profile.channel.band;
            return told && told->value == band;
        };
    }
    return std::nullopt;
}

std::optional<NetworkCondition> channelCondition(std::string_view text) {
    const auto channel = signedDecimalOf(text);
    if (!channel || *channel < 1 || *channel > UINT8_MAX) return std::nullopt;
    return [channel = *channel](const Network& network) {
        const auto& told = network.profile.channel.primaryChannel;
        return told && told->value == channel;
    };
}

std::optional<NetworkCondition> securityCondition(std::string_view text) {
    const std::string word = foldedCase(text);
    bool isKnown = false;
    for (int i = 0; i <= static_cast<int>(air::Security::Broken); ++i) {
        isKnown = isKnown || hasSecurity(static_cast<air::Security>(i), word);
    }
    if (!isKnown) return std::nullopt;
    return [word](const Network& network) {
        return hasSecurity(network.profile.security.name.value, word);
    };
}

std::optional<NetworkCondition> generationCondition(std::string_view text) {
    const bool isOpen = text.ends_with('+');
    if (isOpen) text.remove_suffix(1);
    const auto* const found = std::ranges::find_if(kGenerationLabels, [&](std::string_view label) {
        return foldedCase(label) == foldedCase(text);
    });
    const bool isLegacy = std::ranges::count(kLegacyLabels, text) > 0;
    if (found == kGenerationLabels.end() && (!isLegacy || isOpen)) return std::nullopt;
    if (!isOpen) {
        return [label = isLegacy ? std::string(text) : std::string(*found)](
                   const Network& network) { return generationLabel(network) == label; };
    }
    return [found](const Network& network) {
        const auto* const own = std::ranges::find(kGenerationLabels, generationLabel(network));
        return own != kGenerationLabels.end() && own >= found;
    };
}

std::optional<NetworkCondition> signalCondition(std::string_view text) {
    if (text.ends_with("dBm")) text.remove_suffix(3);
    const auto least = signedDecimalOf(text);
    if (!least || *least > 0) return std::nullopt;
    return [least = *least](const Network& network) {
        const auto signal = network.statistics->signal.median();
        return signal && *signal >= least;
    };
}

NetworkCondition findingsCondition(air::Severity least) {
    return [least](const Network& network) {
        return std::ranges::any_of(network.profile.findings, [&](const air::Finding& finding) {
            return finding.info().severity >= least;
        });
    };
}

std::vector<std::string_view> bandWords() {
    std::vector<std::string_view> words;
    for (int i = 0; i <= static_cast<int>(air::Band::Ghz60); ++i) {
        words.push_back(air::bandName(static_cast<air::Band>(i)));
    }
    return words;
}

std::vector<std::string_view> securityWords() {
    std::vector<std::string_view> words = {"WPA", "WPA2", "WPA3", "Personal", "Enterprise"};
    for (int i = 0; i <= static_cast<int>(air::Security::Broken); ++i) {
        words.push_back(shortSecurityName(static_cast<air::Security>(i)));
        words.push_back(air::securityName(static_cast<air::Security>(i)));
    }
    return words;
}

std::vector<std::string_view> generationWords() {
    std::vector<std::string_view> words(kGenerationLabels.begin(), kGenerationLabels.end());
    words.insert(words.end(), kLegacyLabels.begin(), kLegacyLabels.end());
    return words;
}

std::vector<std::string_view> severityWords() {
    std::vector<std::string_view> words;
    for (const auto severity : kSeverities) words.push_back(air::severityName(severity));
    return words;
}

std::optional<air::Severity> severityNamed(std::string_view name) {
    for (const auto severity : kSeverities) {
        if (air::severityName(severity) == name) return severity;
    }
    return std::nullopt;
}

NetworkCondition hiddenCondition() {
    return isHidden;
}

}  // namespace halvane::tool
