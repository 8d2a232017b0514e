#include "halvane/ie/mac.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <utility>

#include "halvane/base/byte_cursor.h"
#include "halvane/base/element_id.h"
#include "halvane/base/oui.h"
#include "halvane/base/vendor.h"
#include "halvane/ie/fancy_formatting.h"
#include "halvane/ie/mcs.h"
#include "halvane/utils/log.h"
#include "halvane/utils/scan_time.h"

namespace halvane {

namespace {

constexpr std::size_t kOUISize = 3;
constexpr unsigned kMaximumRates = 8;
constexpr unsigned kMaximumExtendedRates = 255;

// What one allocation each should do for.
constexpr std::size_t kUsualRates = 12;
constexpr std::size_t kUsualElements = 16;

// The basic-rate bit stands above a rate in units of 500 kbit/s.
constexpr unsigned kRateMask = 0x7F;

std::uint64_t now() {
    return UpTicksToMicroseconds(UpTicks());
}

// The bytes after ID and length; absent for an element that has no length byte.
std::optional<ByteCursor> bodyOf(const ByteBuffer& element) {
    ByteCursor cursor(element);
    if (!cursor.skip(kElementHeaderSize)) return std::nullopt;
    return cursor;
}

// A number that the other sighting lacks is kept.
void takeOver(std::optional<Number>& number, const std::optional<Number>& other) {
    if (other && number != other) number = other;
}

// Absent bytes print as the value that is not there.
std::optional<PropertyListValue> bytesOf(const std::optional<ByteBuffer>& bytes) {
    return bytes ? std::optional<PropertyListValue>(*bytes) : std::nullopt;
}

// Absent bytes print as none do.
std::optional<PropertyListValue> textAndHexOf(const std::optional<ByteBuffer>& bytes) {
    return FancyFormatting::formattedData_includeHex(bytes.value_or(ByteBuffer()), true);
}

// Tells of two buffers, either of which may be absent, as the values that `valueOf` makes of them.
void logMerge(const char* format, const std::optional<ByteBuffer>& before,
              const std::optional<ByteBuffer>& after,
              std::optional<PropertyListValue> (*valueOf)(const std::optional<ByteBuffer>&)) {
    if (!LogIsEnabled(&gLogCategory_WiFiIE, kLogLevelVerbose)) return;
    const auto old = valueOf(before);
    const auto recent = valueOf(after);
    LogPrintF(&gLogCategory_WiFiIE, "-[HalvaneMAC mergeEntries:]", kLogLevelVerbose, format,
              old ? &*old : nullptr, recent ? &*recent : nullptr);
}

}  // namespace

HalvaneMAC::HalvaneMAC(const ByteBuffer& mac) : mac_(mac), firstAdded_(now()) {}

HalvaneMAC HalvaneMAC::initWithMAC(const ByteBuffer& mac) {
    return HalvaneMAC(mac);
}

void HalvaneMAC::setCapabilityField(std::uint16_t field) {
    capabilities_ = field;
    lastUpdated_ = now();
}

void HalvaneMAC::setInformationElements(const ByteBuffer& elements) {
    lastUpdated_ = now();
    ieBuffer_ = elements;
    cutElements();
    parseInformationElements();
}

void HalvaneMAC::cutElements() {
    invalidIEs_.reset();
    IEs_.clear();
    IEs_.reserve(kUsualElements);
    // The count of remaining bytes is 16 bits wide, the size of an element 8.
    const auto count = static_cast<std::uint16_t>(ieBuffer_->size());
    const ByteBuffer walked = ieBuffer_->slice(0, count);
    ByteCursor cursor(walked);
    while (!cursor.atEnd()) {
        const auto length = cursor.peek(1);
        const auto size = static_cast<std::uint8_t>(length.value_or(0) + kElementHeaderSize);
        if (!length || size == 0 || size > cursor.remaining()) {
            invalidIEs_ = cursor.restBuffer();
            return;
        }
        IEs_.emplace_back(walked, cursor.position(), size);
        cursor.skip(size);
    }
}

void HalvaneMAC::cleanupIEs() {
    SSID_.reset();
    supportedRates_.reset();
    countryIE_.reset();
    HTCaps_.reset();
    rsn_.reset();
    HTOperation_.reset();
    wpa_.reset();
    wpsIE_.reset();
    tessicIE_.reset();
    dwdsIE_.reset();
}

void HalvaneMAC::parseInformationElements() {
    cleanupIEs();
    for (const ByteBuffer& element : IEs_) parseInformationElement(element);
    deriveRateAndSecurity();
}

void HalvaneMAC::parseInformationElement(const ByteBuffer& element) {
    const auto id = ByteCursor(element).u8();
    if (!id) return;
    switch (*id) {
        case kElementIDSSID:
            parseInformationElementSSID(element);
            break;
        case kElementIDSupportedRates:
            parseInformationElementSupportedRates_withMaximumLength(element, kMaximumRates);
            break;
        case kElementIDCountry:
            countryIE_ = HalvaneCountryIE::initWithIE(element);
            break;
        case kElementIDHTCapabilities:
            HTCaps_ = HalvaneHTCapabilitiesIE::initWithIE(element);
            break;
        case kElementIDRSN:
            rsn_ = HalvaneRSNIE::initWithIE_withOUI(element, ByteBuffer(kRSNOUI));
            break;
        case kElementIDExtendedSupportedRates:
            parseInformationElementSupportedRates_withMaximumLength(element, kMaximumExtendedRates);
            break;
        case kElementIDHTOperation:
            HTOperation_ = HalvaneHTOperationIE::initWithIE(element);
            break;
        case kElementIDVendorSpecific:
            parseInformationElementVendorSpecific(element);
            break;
        default:  // stays in IEs() only
            break;
    }
}

void HalvaneMAC::parseInformationElementSSID(const ByteBuffer& element) {
    auto body = bodyOf(element);
    if (!body) return;
    ByteBuffer octets = body->restBuffer();
    const bool isHidden =
        std::ranges::all_of(octets.bytes(), [](auto octet) { return octet == 0; });
    if (!isHidden) SSID_ = std::move(octets);
}

void HalvaneMAC::parseInformationElementSupportedRates_withMaximumLength(const ByteBuffer& element,
                                                                         unsigned maximumLength) {
    auto body = bodyOf(element);
    if (!body || body->remaining() > maximumLength) return;
    if (!supportedRates_) supportedRates_.emplace().reserve(kUsualRates);

    auto& rates = *supportedRates_;
    const auto old = static_cast<std::ptrdiff_t>(rates.size());
    for (const std::uint8_t octet : body->rest()) {
        rates.emplace_back((octet & kRateMask) * 500 / 1000.0);
    }
    // Sorted apart and merged: a hostile buffer may hold hundreds of full elements.
    const auto isLower = [](const Number& a, const Number& b) { return a.real() < b.real(); };
    std::sort(rates.begin() + old, rates.end(), isLower);
    if (old > 0 && old < std::ssize(rates) && isLower(rates.begin()[old], rates.begin()[old - 1])) {
        std::inplace_merge(rates.begin(), rates.begin() + old, rates.end(), isLower);
    }
}

void HalvaneMAC::parseInformationElementVendorSpecific(const ByteBuffer& element) {
    auto body = bodyOf(element);
    const auto oui = body ? body->take(kOUISize) : std::nullopt;
    const auto type = oui ? body->u8() : std::nullopt;
    if (!type) return;
    if (std::ranges::equal(*oui, kWPAOUI) && *type == kWPSType) {
        wpsIE_ = HalvaneWPSIE::initWithIE(element);
    } else if (std::ranges::equal(*oui, kWPAOUI) && *type == kWPAType) {
        wpa_ = HalvaneRSNIE::initWithIE_withOUI(element, ByteBuffer(kWPAOUI));
    } else if (std::ranges::equal(*oui, kVendorOUI) && *type == kVendorTypeDWDS) {
        dwdsIE_ = HalvaneDWDSIE::initWithIE(element);
    } else if (std::ranges::equal(*oui, kVendorGeneralOUI)) {
        tessicIE_ = HalvaneTessicIE::initWithIE(element);
    }
}

void HalvaneMAC::deriveRateAndSecurity() {
    Number width = 20;
    if (HTCaps_ && HTOperation_) {
        if (HTCaps_->supports40MHzOperation()) width = HTOperation_->staChannelWidth();
        const bool shortGI =
            width == 40 ? HTCaps_->supports40MHzShortGI() : HTCaps_->supports20MHzShortGI();
        static const std::vector<Number> kNoRates;
        const auto& indices = HTCaps_->mcsRates();
        maxPHYRate_ = HalvaneMCS::sharedSystem().rateForMCSSet_withChannelWidth_shortGI(
            indices ? *indices : kNoRates, width.int64(), shortGI);
    } else if (supportedRates_ && !supportedRates_->empty()) {
        maxPHYRate_ = supportedRates_->back();
    } else {
        maxPHYRate_.reset();
    }
    if (!maxPHYRate_) return;

    channelWidth_ = width;
    if (const char* label = securityLabel()) securityFriendlyName_ = label;
}

// The first label that holds, or null.
const char* HalvaneMAC::securityLabel() const {
    struct Row {
        bool (HalvaneMAC::*holds)() const;
        const char* label;
    };
    static constexpr std::array kRows = {
        Row{&HalvaneMAC::doesSupportSecurityWPAEnterprise, "WPA Enterprise"},
        Row{&HalvaneMAC::doesSupportSecurityWPAPersonal, "WPA Personal"},
        Row{&HalvaneMAC::doesSupportSecurityWEP, "WEP"},
        Row{&HalvaneMAC::doesSupportSecurityWPS, "WPS"},
        Row{&HalvaneMAC::doesSupportSecurityOpen, "Open"},
    };
    for (const auto& [holds, label] : kRows) {
        if ((this->*holds)()) return label;
    }
    return nullptr;
}

bool HalvaneMAC::doesSupportSecurityOpen() const {
    return !isPrivacy();
}

bool HalvaneMAC::doesSupportSecurityWEP() const {
    return isPrivacy() && !rsn_ && !wpa_;
}

bool HalvaneMAC::doesSupportSecurityWPAPersonal() const {
    return isPrivacy() &&
           ((rsn_ && rsn_->allowKeyManagementPSK()) || (wpa_ && wpa_->allowKeyManagementPSK()));
}

bool HalvaneMAC::doesSupportSecurityWPAEnterprise() const {
    return isPrivacy() &&
           ((rsn_ && rsn_->allowKeyManagement8021X()) || (wpa_ && wpa_->allowKeyManagement8021X()));
}

bool HalvaneMAC::doesSupportSecurityWPS() const {
    return wpsIE_.has_value();
}

void HalvaneMAC::mergeEntries(const HalvaneMAC& other) {
    if (mac_ != other.mac_) return;
    logMerge("Old IEs <%@>\n, New IEs <%@>\n\n", ieBuffer_, other.ieBuffer_, bytesOf);
    lastUpdated_ = now();
    takeOver(channel_, other.channel_);
    takeOver(noise_, other.noise_);
    takeOver(RSSI_, other.RSSI_);
    takeOver(beaconInterval_, other.beaconInterval_);
    if (capabilities_ != other.capabilities_) setCapabilityField(other.capabilities_);
    if (SSID_ != other.SSID_) {
        logMerge("Old SSID <%@>, New SSID <%@>\n", SSID_, other.SSID_, textAndHexOf);
    }
    if (!SSID_ && other.SSID_ && other.ieBuffer_) setInformationElements(*other.ieBuffer_);
}

void HalvaneMAC::updateLinkQuality_withTxRate(const Number& rssi, const Number& txRate) {
    linkQualityHistory_.add(HalvaneLinkQuality::initWithRSSI_withTxRate(rssi, txRate));
    averageRate_ = linkQualityHistory_.averageRate();
}

void HalvaneMAC::determineMaximumClientRate(const Number& rate) {
    const bool isBeyondBSS = maxPHYRate_ && rate >= *maxPHYRate_;
    maxClientRate_ = isBeyondBSS ? maxPHYRate_->real() : rate.real();
}

}  // namespace halvane
