#include "halvane/ie/rsn_ie.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <iterator>
#include <span>

#include "halvane/base/byte_cursor.h"
#include "halvane/base/element_id.h"
#include "halvane/base/oui.h"
#include "halvane/ie/fancy_formatting.h"
#include "halvane/utils/printf/std_string_internal.h"

namespace halvane {

namespace {

constexpr std::size_t kSuiteSize = 4;
constexpr std::size_t kPMKIDSize = 16;

// Suite types, the octet after the OUI: IEEE 802.11-2020, tables 9-149 and 9-151.
constexpr std::uint8_t kCipherUseGroup = 0;
constexpr std::uint8_t kCipherWEP40 = 1;
constexpr std::uint8_t kCipherTKIP = 2;
constexpr std::uint8_t kCipherCCMP = 4;
constexpr std::uint8_t kCipherWEP104 = 5;
constexpr std::uint8_t kAKM8021X = 1;
constexpr std::uint8_t kAKMPSK = 2;

using Flag = bool (HalvaneRSNIE::*)() const;

struct SuiteFlag {
    std::uint8_t type;
    const char* name;
    Flag isSet;
};

constexpr std::array kUnicastCiphers = {
    SuiteFlag{kCipherCCMP, "CCMP", &HalvaneRSNIE::allowUnicastCipherCCMP},
    SuiteFlag{kCipherTKIP, "TKIP", &HalvaneRSNIE::allowUnicastCipherTKIP},
    SuiteFlag{kCipherUseGroup, "UseGroup", &HalvaneRSNIE::allowUnicastCipherUseGroup},
};

constexpr std::array kAKMs = {
    SuiteFlag{kAKM8021X, "802.1X", &HalvaneRSNIE::allowKeyManagement8021X},
    SuiteFlag{kAKMPSK, "PSK", &HalvaneRSNIE::allowKeyManagementPSK},
};

// From weak to strong: an element has one group cipher, the weakest allowed one.
constexpr std::array kMulticastCiphers = {
    SuiteFlag{kCipherWEP40, "WEP40", &HalvaneRSNIE::allowMulticastCipherWEP40},
    SuiteFlag{kCipherWEP104, "WEP104", &HalvaneRSNIE::allowMulticastCipherWEP104},
    SuiteFlag{kCipherTKIP, "TKIP", &HalvaneRSNIE::allowMulticastCipherTKIP},
    SuiteFlag{kCipherCCMP, "CCMP", &HalvaneRSNIE::allowMulticastCipherCCMP},
};

bool isOUI(const std::optional<ByteBuffer>& buffer, const OUI& oui) {
    return buffer && std::ranges::equal(buffer->bytes(), oui);
}

// Returns the offset of the version field: after the header, and in a WPA element after OUI and
// type.
std::optional<std::size_t> fieldsOffset(const std::optional<ByteBuffer>& oui) {
    if (isOUI(oui, kRSNOUI)) return 2;
    if (isOUI(oui, kWPAOUI)) return 6;
    return std::nullopt;
}

ByteCursor cursorAt(const std::optional<ByteBuffer>& element, std::size_t position,
                    std::size_t length) {
    const ByteCursor nothing{std::span<const std::uint8_t>()};
    if (!element) return nothing;
    ByteCursor whole(element->bytes());
    if (!whole.skip(position)) return nothing;
    return ByteCursor(*whole.take(std::min(length, whole.remaining())));
}

// Returns the type of a suite selector if its OUI is `oui`.
std::optional<std::uint8_t> takeSuiteType(ByteCursor& cursor,
                                          const std::optional<ByteBuffer>& oui) {
    const auto suiteOUI = cursor.take(kSuiteSize - 1);
    const auto type = cursor.u8();
    const bool isOurs = oui && suiteOUI && std::ranges::equal(*suiteOUI, oui->bytes());
    return isOurs ? type : std::nullopt;
}

void appendU16(std::vector<std::uint8_t>& element, std::uint64_t value) {
    element.push_back(static_cast<std::uint8_t>(value));
    element.push_back(static_cast<std::uint8_t>(value >> 8));
}

template <typename Suites>
std::size_t countSet(const HalvaneRSNIE& ie, const Suites& suites) {
    return static_cast<std::size_t>(std::ranges::count_if(
        suites, [&ie](const SuiteFlag& suite) { return (ie.*suite.isSet)(); }));
}

void appendNames(std::string& text, const HalvaneRSNIE& ie, const char* label,
                 std::initializer_list<SuiteFlag> suites) {
    text += label;
    for (const SuiteFlag& suite : suites) {
        if ((ie.*suite.isSet)()) appendPrintF(text, "%s ", suite.name);
    }
    text += '\n';
}

}  // namespace

HalvaneRSNIE HalvaneRSNIE::initWithIE_withOUI(const std::optional<ByteBuffer>& ie,
                                              const ByteBuffer& oui) {
    HalvaneRSNIE object;
    object.oui_ = oui;
    if (ie) {
        object.isValid_ = true;
        object.rawIE_ = ie;
        object.parseIE();
    }
    return object;
}

void HalvaneRSNIE::parseIE() {
    using Stage = std::size_t (HalvaneRSNIE::*)(std::size_t, std::size_t);
    constexpr std::array<Stage, 6> kStages = {
        &HalvaneRSNIE::parseVersion_withLength,        &HalvaneRSNIE::parseGroupCipher_withLength,
        &HalvaneRSNIE::parsePairwiseCipher_withLength, &HalvaneRSNIE::parseAKM_withLength,
        &HalvaneRSNIE::parseCapabilities_withLength,   &HalvaneRSNIE::parsePMKIDs_withLength,
    };

    const auto offset = fieldsOffset(oui_);
    if (!rawIE_ || !offset) return;
    const std::size_t size = rawIE_->size();
    std::size_t left = size > *offset ? size - *offset : 0;
    for (const Stage stage : kStages) {
        left = (this->*stage)(size - left, left);
        if (!isValid_) return;
    }
}

std::size_t HalvaneRSNIE::parseVersion_withLength(std::size_t position, std::size_t length) {
    ByteCursor cursor = cursorAt(rawIE_, position, length);
    if (const auto version = cursor.u16le()) {
        version_ = *version;
    } else {
        isValid_ = false;
    }
    return cursor.remaining();
}

std::size_t HalvaneRSNIE::parseGroupCipher_withLength(std::size_t position, std::size_t length) {
    ByteCursor cursor = cursorAt(rawIE_, position, length);
    if (cursor.remaining() < kSuiteSize) {
        isValid_ = false;
        return cursor.remaining();
    }
    if (const auto type = takeSuiteType(cursor, oui_)) setMulticastCipher(*type);
    return cursor.remaining();
}

// Reads a 16-bit count and that many suite selectors. If there are fewer, the element is invalid.
template <typename SuiteFound>
std::size_t HalvaneRSNIE::parseSuites(std::size_t position, std::size_t length, SuiteFound found) {
    ByteCursor cursor = cursorAt(rawIE_, position, length);
    const std::size_t available = cursor.remaining();
    const auto count = cursor.u16le();
    if (!count || cursor.remaining() / kSuiteSize < *count) {
        isValid_ = false;
        return available;
    }
    for (std::size_t i = 0; i < *count; ++i) {
        if (const auto type = takeSuiteType(cursor, oui_)) found(*type);
    }
    return cursor.remaining();
}

std::size_t HalvaneRSNIE::parsePairwiseCipher_withLength(std::size_t position, std::size_t length) {
    return parseSuites(position, length, [this](std::uint8_t type) { setUnicastCipher(type); });
}

// Unlike setAKM(), this sets the flag of each listed AKM and clears none.
std::size_t HalvaneRSNIE::parseAKM_withLength(std::size_t position, std::size_t length) {
    return parseSuites(position, length, [this](std::uint8_t type) {
        if (type == kAKM8021X) allowKeyManagement8021X_ = true;
        if (type == kAKMPSK) allowKeyManagementPSK_ = true;
    });
}

// IEEE 802.11-2020, figure 9-285. Nothing reads a single byte that is left.
std::size_t HalvaneRSNIE::parseCapabilities_withLength(std::size_t position, std::size_t length) {
    ByteCursor cursor = cursorAt(rawIE_, position, length);
    if (const auto field = cursor.u16le()) {
        supportsPreAuthentication_ = *field & 1u << 0;
        hasNoPairwise_ = *field & 1u << 1;
        replayCounterPTKSA_ = *field >> 2 & 3u;
        replayCounterGTKSA_ = *field >> 4 & 3u;
        isPeerKeyEnabled_ = *field & 1u << 9;
    }
    return cursor.remaining();
}

std::size_t HalvaneRSNIE::parsePMKIDs_withLength(std::size_t position, std::size_t length) {
    ByteCursor cursor = cursorAt(rawIE_, position, length);
    const std::size_t available = cursor.remaining();
    const auto count = cursor.u16le();
    if (!count) return available;
    pmkids_.emplace();
    if (cursor.remaining() / kPMKIDSize < *count) {
        isValid_ = false;
        return available;
    }
    pmkids_->reserve(*count);
    for (std::size_t i = 0; i < *count; ++i) pmkids_->push_back(*cursor.takeBuffer(kPMKIDSize));
    return cursor.remaining();
}

void HalvaneRSNIE::setUnicastCipher(std::uint8_t suiteType) {
    if (suiteType == kCipherCCMP) allowUnicastCipherCCMP_ = true;
    if (suiteType == kCipherTKIP) allowUnicastCipherTKIP_ = true;
    if (suiteType == kCipherUseGroup) allowUnicastCipherUseGroup_ = true;
}

void HalvaneRSNIE::setMulticastCipher(std::uint8_t suiteType) {
    if (suiteType == kCipherWEP40) allowMulticastCipherWEP40_ = true;
    if (suiteType == kCipherTKIP) allowMulticastCipherTKIP_ = true;
    if (suiteType == kCipherCCMP) allowMulticastCipherCCMP_ = true;
    if (suiteType == kCipherWEP104) allowMulticastCipherWEP104_ = true;
}

void HalvaneRSNIE::setAKM(std::uint8_t suiteType) {
    if (suiteType == kAKM8021X) allowKeyManagement8021X_ = true;
    if (suiteType == kAKMPSK) allowKeyManagement8021X_ = false;
}

std::size_t HalvaneRSNIE::countUnicastCiphers() const {
    return countSet(*this, kUnicastCiphers);
}

std::size_t HalvaneRSNIE::countAKMs() const {
    return countSet(*this, kAKMs);
}

void HalvaneRSNIE::appendSuite_cipher(std::vector<std::uint8_t>& buffer,
                                      std::uint8_t suiteType) const {
    if (oui_) std::ranges::copy(oui_->bytes(), std::back_inserter(buffer));
    buffer.push_back(suiteType);
}

std::uint8_t HalvaneRSNIE::groupCipherType() const {
    for (const SuiteFlag& suite : kMulticastCiphers) {
        if ((this->*suite.isSet)()) return suite.type;
    }
    return kCipherUseGroup;
}

// Appends the pairwise list and the AKM list, each after its count.
void HalvaneRSNIE::appendFlaggedSuites(std::vector<std::uint8_t>& element) const {
    const auto appendList = [&](const auto& suites) {
        appendU16(element, countSet(*this, suites));
        for (const SuiteFlag& suite : suites) {
            if ((this->*suite.isSet)()) appendSuite_cipher(element, suite.type);
        }
    };
    appendList(kUnicastCiphers);
    appendList(kAKMs);
}

// The PeerKey bit is only read, never written.
void HalvaneRSNIE::appendCapabilities(std::vector<std::uint8_t>& element) const {
    appendU16(element, (supportsPreAuthentication_ ? 1u << 0 : 0u) |
                           (hasNoPairwise_ ? 1u << 1 : 0u) | (replayCounterPTKSA_ & 3) << 2 |
                           (replayCounterGTKSA_ & 3) << 4);
}

void HalvaneRSNIE::appendPMKIDs(std::vector<std::uint8_t>& element) const {
    if (!pmkids_ || pmkids_->empty()) return;
    appendU16(element, pmkids_->size());
    for (const ByteBuffer& pmkid : *pmkids_) {
        std::ranges::copy(pmkid.bytes(), std::back_inserter(element));
    }
}

void HalvaneRSNIE::generateIE() {
    rawIE_.reset();
    isValid_ = false;
    const bool isRSN = isOUI(oui_, kRSNOUI);
    const bool isWPA = isOUI(oui_, kWPAOUI);
    if (!isRSN && !isWPA) return;
    if (countUnicastCiphers() == 0 || countAKMs() == 0) return;

    std::vector<std::uint8_t> element = {isRSN ? kElementIDRSN : kElementIDVendorSpecific, 0};
    if (isWPA) appendSuite_cipher(element, kWPAType);
    appendU16(element, static_cast<std::uint64_t>(version_));
    appendSuite_cipher(element, groupCipherType());
    appendFlaggedSuites(element);
    if (isRSN) appendCapabilities(element);
    appendPMKIDs(element);

    element[1] = static_cast<std::uint8_t>(element.size() - kElementHeaderSize);
    rawIE_ = ByteBuffer(element);
    isValid_ = true;
}

void HalvaneRSNIE::generateMatchingConfig(const HalvaneBSSConfig&) {}

std::string HalvaneRSNIE::description() const {
    using FancyFormatting::formattedHexData;
    const auto& [ccmp, tkip, useGroup] = kUnicastCiphers;
    const auto& [wep40, wep104, groupTKIP, groupCCMP] = kMulticastCiphers;
    const auto& [dot1X, psk] = kAKMs;

    std::string text;
    if (rawIE_) {
        appendPrintF(text, "    IE                    : %s\n", formattedHexData(*rawIE_).c_str());
    }
    appendPrintF(text, "    Version               : %lld\n", static_cast<long long>(version_));
    appendNames(text, *this, "    Unicast Cipher(s)     : ", {tkip, ccmp, useGroup});
    appendNames(text, *this, "    Group Cipher          : ", {wep40, wep104, groupTKIP, groupCCMP});
    appendNames(text, *this, "    Key Management        : ", {psk, dot1X});
    appendPrintF(text, "    Pre-Authentication    : %s\n", yesNo(supportsPreAuthentication_));
    appendPrintF(text, "    No Pairwise Cipher    : %s\n", yesNo(hasNoPairwise_));
    appendPrintF(text, "    PTKSA Replay Counters : %llu\n",
                 static_cast<unsigned long long>(replayCounterPTKSA_));
    appendPrintF(text, "    GTKSA Replay Counters : %llu\n",
                 static_cast<unsigned long long>(replayCounterGTKSA_));
    appendPrintF(text, "    Peer Key Enabled      : %s\n", yesNo(isPeerKeyEnabled_));
    if (pmkids_) {
        text += "    PMKIDs                : ";
        for (const ByteBuffer& pmkid : *pmkids_) {
            appendPrintF(text, "%s ", formattedHexData(pmkid).c_str());
        }
        text += '\n';
    }
    return text;
}

}  // namespace halvane
