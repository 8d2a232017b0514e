#include "halvane/ie/rsn_ie.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <iterator>
#include <utility>

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

// Of the version field: after the header, and in a WPA element after OUI and type.
constexpr std::size_t kRSNFieldsOffset = 2;
constexpr std::size_t kWPAFieldsOffset = 6;

std::optional<std::size_t> fieldsOffset(const std::optional<ByteBuffer>& oui) {
    if (isOUI(oui, kRSNOUI)) return kRSNFieldsOffset;
    if (isOUI(oui, kWPAOUI)) return kWPAFieldsOffset;
    return std::nullopt;
}

// A suite selector as a number: the octets of its OUI, and then its type, least significant first.
constexpr std::uint32_t kSuiteOUIMask = 0x00FFFFFF;
constexpr unsigned kSuiteTypeShift = 24;
constexpr std::uint32_t kNoSuiteOUI = UINT32_MAX;

std::uint32_t suiteOUIOf(const std::optional<ByteBuffer>& oui) {
    if (!oui || oui->size() != kSuiteSize - 1) return kNoSuiteOUI;
    const auto octets = oui->bytes();
    return std::uint32_t{octets[0]} | std::uint32_t{octets[1]} << 8 |
           std::uint32_t{octets[2]} << 16;
}

// Calls found(type) for a suite selector of that OUI.
template <typename SuiteFound>
void findSuite(std::uint32_t suite, std::uint32_t oui, SuiteFound found) {
    if ((suite & kSuiteOUIMask) == oui) found(static_cast<std::uint8_t>(suite >> kSuiteTypeShift));
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

HalvaneRSNIE HalvaneRSNIE::initWithIE_withOUI(const ByteBuffer& elements, std::size_t offset,
                                              std::size_t size, const OUI& oui) {
    HalvaneRSNIE object;
    object.oui_.emplace(oui);
    object.isValid_ = true;
    object.rawIE_.emplace(elements, offset, size);
    object.parseFields(oui == kRSNOUI ? kRSNFieldsOffset : kWPAFieldsOffset);
    return object;
}

void HalvaneRSNIE::parseIE() {
    const auto offset = fieldsOffset(oui_);
    if (rawIE_ && offset) parseFields(*offset);
}

void HalvaneRSNIE::parseFields(std::size_t offset) {
    ByteCursor cursor(*rawIE_);
    cursor.skip(offset);
    readVersion(cursor);
    if (isValid_) readGroupCipher(cursor);
    if (isValid_) readPairwiseCipher(cursor);
    if (isValid_) readAKM(cursor);
    if (isValid_) readCapabilities(cursor);
    if (isValid_) readPMKIDs(cursor);
}

std::size_t HalvaneRSNIE::parse(Read read, std::size_t position, std::size_t length) {
    const ByteBuffer bytes = rawIE_ ? rawIE_->slice(position, length) : ByteBuffer();
    ByteCursor cursor(bytes);
    return (this->*read)(cursor) ? cursor.remaining() : bytes.size();
}

std::size_t HalvaneRSNIE::parseVersion_withLength(std::size_t position, std::size_t length) {
    return parse(&HalvaneRSNIE::readVersion, position, length);
}

std::size_t HalvaneRSNIE::parseGroupCipher_withLength(std::size_t position, std::size_t length) {
    return parse(&HalvaneRSNIE::readGroupCipher, position, length);
}

std::size_t HalvaneRSNIE::parsePairwiseCipher_withLength(std::size_t position, std::size_t length) {
    return parse(&HalvaneRSNIE::readPairwiseCipher, position, length);
}

std::size_t HalvaneRSNIE::parseAKM_withLength(std::size_t position, std::size_t length) {
    return parse(&HalvaneRSNIE::readAKM, position, length);
}

std::size_t HalvaneRSNIE::parseCapabilities_withLength(std::size_t position, std::size_t length) {
    return parse(&HalvaneRSNIE::readCapabilities, position, length);
}

std::size_t HalvaneRSNIE::parsePMKIDs_withLength(std::size_t position, std::size_t length) {
    return parse(&HalvaneRSNIE::readPMKIDs, position, length);
}

bool HalvaneRSNIE::readVersion(ByteCursor& cursor) {
    const auto version = cursor.u16le();
    if (!version) return isValid_ = false;
    version_ = *version;
    return true;
}

bool HalvaneRSNIE::readGroupCipher(ByteCursor& cursor) {
    const auto suite = cursor.u32le();
    if (!suite) return isValid_ = false;
    findSuite(*suite, suiteOUIOf(oui_), [this](auto type) { setMulticastCipher(type); });
    return true;
}

// Reads a 16-bit count and that many suite selectors. If there are fewer, the element is invalid.
template <typename SuiteFound>
bool HalvaneRSNIE::readSuites(ByteCursor& cursor, SuiteFound found) {
    const auto count = cursor.u16le();
    if (!count || cursor.remaining() / kSuiteSize < *count) return isValid_ = false;
    const std::uint32_t oui = suiteOUIOf(oui_);
    for (std::size_t i = 0; i < *count; ++i) findSuite(*cursor.u32le(), oui, found);
    return true;
}

bool HalvaneRSNIE::readPairwiseCipher(ByteCursor& cursor) {
    return readSuites(cursor, [this](std::uint8_t type) { setUnicastCipher(type); });
}

// Unlike setAKM(), this sets the flag of each listed AKM and clears none.
bool HalvaneRSNIE::readAKM(ByteCursor& cursor) {
    return readSuites(cursor, [this](std::uint8_t type) {
        if (type == kAKM8021X) allowKeyManagement8021X_ = true;
        if (type == kAKMPSK) allowKeyManagementPSK_ = true;
    });
}

// IEEE 802.11-2020, figure 9-285. Nothing reads a single byte that is left.
bool HalvaneRSNIE::readCapabilities(ByteCursor& cursor) {
    const auto field = cursor.u16le();
    if (!field) return false;
    supportsPreAuthentication_ = *field & 1u << 0;
    hasNoPairwise_ = *field & 1u << 1;
    replayCounterPTKSA_ = *field >> 2 & 3u;
    replayCounterGTKSA_ = *field >> 4 & 3u;
    isPeerKeyEnabled_ = *field & 1u << 9;
    return true;
}

bool HalvaneRSNIE::readPMKIDs(ByteCursor& cursor) {
    const auto count = cursor.u16le();
    if (!count) return false;
    pmkids_.emplace();
    if (cursor.remaining() / kPMKIDSize < *count) return isValid_ = false;
    pmkids_->reserve(*count);
    for (std::size_t i = 0; i < *count; ++i) pmkids_->push_back(*cursor.takeBuffer(kPMKIDSize));
    return true;
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
