#include "halvane/ie/mac.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <numeric>
#include <utility>

#include "halvane/base/byte_cursor.h"
#include "halvane/base/element_id.h"
#include "halvane/base/oui.h"
#include "halvane/base/vendor.h"
#include "halvane/ie/fancy_formatting.h"
#include "halvane/ie/link_quality.h"
#include "halvane/ie/mac_record.h"
#include "halvane/ie/mcs.h"
#include "halvane/utils/log.h"
#include "halvane/utils/scan_time.h"

namespace halvane {

namespace {

constexpr std::size_t kOUISize = 3;
constexpr unsigned kMaximumRates = 8;
constexpr unsigned kMaximumExtendedRates = 255;

// The upper bit marks a basic rate. The bits below are the rate in units of 500 kbit/s.
constexpr unsigned kRateMask = 0x7F;
constexpr double kRatesPerMbps = 2;

using Walk = MACRecord::Walk;
using Link = MACRecord::Link;

std::uint64_t now() {
    return UpTicksToMicroseconds(UpTicks());
}

// Returns the bytes after ID and length; absent if the element has no length byte.
std::optional<ByteCursor> bodyOf(const ByteBuffer& element) {
    ByteCursor cursor(element);
    if (!cursor.skip(kElementHeaderSize)) return std::nullopt;
    return cursor;
}

// Returns the greatest body length of a rate element; absent for other elements.
std::optional<unsigned> maximumRatesOf(const ByteBuffer& element) {
    const auto id = ByteCursor(element).u8();
    if (id == kElementIDSupportedRates) return kMaximumRates;
    if (id == kElementIDExtendedSupportedRates) return kMaximumExtendedRates;
    return std::nullopt;
}

// Counts how often each rate occurs. Rates are counted instead of sorted, since a hostile record
// may hold hundreds of thousands of elements.
class RateCounts {
  public:
    explicit RateCounts(const std::optional<std::vector<Number>>& rates) : anyElements_(rates) {
        if (!rates) return;
        for (const Number& rate : *rates) {
            count(static_cast<std::uint8_t>(rate.real() * kRatesPerMbps));
        }
    }

    // Counts the octets of a rate element whose body has at most `maximumLength` bytes.
    void countElement(const ByteBuffer& element, unsigned maximumLength) {
        auto body = bodyOf(element);
        if (!body || body->remaining() > maximumLength) return;
        anyElements_ = true;
        for (const std::uint8_t octet : body->rest()) count(octet);
    }

    // Ascending; absent if there was no element.
    std::optional<std::vector<Number>> numbers() const {
        if (!anyElements_) return std::nullopt;
        std::vector<Number> numbers;
        numbers.reserve(std::accumulate(counts_.begin(), counts_.end(), std::size_t{0}));
        for (std::size_t rate = 0; rate < counts_.size(); ++rate) {
            const Number number = static_cast<double>(rate) / kRatesPerMbps;
            numbers.insert(numbers.end(), counts_[rate], number);
        }
        return numbers;
    }

  private:
    void count(std::uint8_t octet) { ++counts_[octet & kRateMask]; }

    std::array<std::size_t, kRateMask + 1> counts_{};
    bool anyElements_;
};

// Calls each(offset, size) for every element. Returns the offset of the trailing bytes that form no
// element.
template <typename Each>
std::size_t walkElements(ByteCursor cursor, Each each) {
    while (!cursor.atEnd()) {
        // The size of an element has 8 bits.
        const auto length = cursor.peek(1);
        const auto size = static_cast<std::uint8_t>(length.value_or(0) + kElementHeaderSize);
        if (!length || size == 0 || size > cursor.remaining()) break;
        each(cursor.position(), size);
        cursor.skip(size);
    }
    return cursor.position();
}

// Splits the buffer into elements, and returns the trailing bytes that form none. Elements are
// counted first, since a list that grows takes several times the room.
std::optional<ByteBuffer> cutElements(const ByteBuffer& elements, std::vector<ByteBuffer>& cut) {
    // The number of remaining bytes has 16 bits.
    const auto size = static_cast<std::uint16_t>(elements.size());
    const ByteBuffer walked = elements.slice(0, size);
    std::size_t count = 0;
    const std::size_t end = walkElements(ByteCursor(walked), [&](auto, auto) { ++count; });
    cut.reserve(count);
    walkElements(ByteCursor(walked), [&](std::size_t offset, std::size_t length) {
        cut.emplace_back(walked, offset, length);
    });
    return end < walked.size() ? std::optional(walked.slice(end)) : std::nullopt;
}

// Keeps a number that the other sighting lacks.
void takeOver(std::optional<Number>& number, const std::optional<Number>& other) {
    if (other && number != other) number = other;
}

// Absent bytes print as an absent value.
std::optional<PropertyListValue> bytesOf(const std::optional<ByteBuffer>& bytes) {
    return bytes ? std::optional<PropertyListValue>(*bytes) : std::nullopt;
}

// Absent bytes print as empty ones.
std::optional<PropertyListValue> textAndHexOf(const std::optional<ByteBuffer>& bytes) {
    return FancyFormatting::formattedData_includeHex(bytes.value_or(ByteBuffer()), true);
}

// Logs two buffers, either of which may be absent, as the values that `valueOf` makes of them.
void logMerge(const char* format, const std::optional<ByteBuffer>& before,
              const std::optional<ByteBuffer>& after,
              std::optional<PropertyListValue> (*valueOf)(const std::optional<ByteBuffer>&)) {
    if (!LogIsEnabled(&gLogCategory_WiFiIE, kLogLevelVerbose)) return;
    const auto old = valueOf(before);
    const auto recent = valueOf(after);
    LogPrintF(&gLogCategory_WiFiIE, "-[HalvaneMAC mergeEntries:]", kLogLevelVerbose, format,
              old ? &*old : nullptr, recent ? &*recent : nullptr);
}

// Returns the first label that applies, or null.
const char* securityLabelOf(const HalvaneMAC& record) {
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
        if ((record.*holds)()) return label;
    }
    return nullptr;
}

}  // namespace

HalvaneMAC::HalvaneMAC(const ByteBuffer& mac) {
    MACRecord& record = record_.change();
    record.mac = mac;
    record.firstAdded = now();
    record.ieBuffer.reset();
}

HalvaneMAC HalvaneMAC::initWithMAC(const ByteBuffer& mac) {
    return HalvaneMAC(mac);
}

HalvaneMAC::~HalvaneMAC() = default;

void HalvaneMAC::setCapabilityField(std::uint16_t field) {
    MACRecord& record = record_.change();
    record.capabilities = field;
    record.lastUpdated = now();
}

// The walk changes the record step by step, so the old elements are kept until it ends. If memory
// runs out, all elements stay as they were.
void HalvaneMAC::setInformationElements(const ByteBuffer& elements) {
    MACRecord& record = record_.change();
    std::optional<ByteBuffer> buffer = elements;
    std::vector<ByteBuffer> cut;
    Boxed<Walk> walk;
    walk.change().invalidIEs = cutElements(elements, cut);
    walk.change().channelWidth = record.walk->channelWidth;
    walk.change().securityFriendlyName = record.walk->securityFriendlyName;
    const auto exchange = [&]() noexcept {
        std::swap(record.ieBuffer, buffer);
        std::swap(record.IEs, cut);
        std::swap(record.walk, walk);
    };
    exchange();
    try {
        parseInformationElements();
    } catch (...) {
        exchange();
        throw;
    }
    record.lastUpdated = now();
}

void HalvaneMAC::cleanupIEs() {
    Walk& walk = record_.change().walk.change();
    walk.SSID.reset();
    walk.supportedRates.reset();
    walk.countryIE.makeFresh();
    walk.HTCaps.makeFresh();
    walk.rsn.makeFresh();
    walk.HTOperation.makeFresh();
    walk.wpa.makeFresh();
    walk.wpsIE.makeFresh();
    walk.tessicIE.makeFresh();
    walk.dwdsIE.makeFresh();
}

void HalvaneMAC::parseInformationElements() {
    cleanupIEs();
    RateCounts rates(supportedRates());
    for (const ByteBuffer& element : record_->IEs) {
        if (const auto maximum = maximumRatesOf(element)) {
            rates.countElement(element, *maximum);
        } else {
            parseInformationElement(element);
        }
    }
    record_.change().walk.change().supportedRates = rates.numbers();
    deriveRateAndSecurity();
}

void HalvaneMAC::parseInformationElement(const ByteBuffer& element) {
    const auto id = ByteCursor(element).u8();
    if (!id) return;
    Walk& walk = record_.change().walk.change();
    switch (*id) {
        case kElementIDSSID:
            parseInformationElementSSID(element);
            break;
        case kElementIDSupportedRates:
            parseInformationElementSupportedRates_withMaximumLength(element, kMaximumRates);
            break;
        case kElementIDCountry:
            walk.countryIE.change() = HalvaneCountryIE::initWithIE(element);
            break;
        case kElementIDHTCapabilities:
            walk.HTCaps.change() = HalvaneHTCapabilitiesIE::initWithIE(element);
            break;
        case kElementIDRSN:
            walk.rsn.change() = HalvaneRSNIE::initWithIE_withOUI(element, ByteBuffer(kRSNOUI));
            break;
        case kElementIDExtendedSupportedRates:
            parseInformationElementSupportedRates_withMaximumLength(element, kMaximumExtendedRates);
            break;
        case kElementIDHTOperation:
            walk.HTOperation.change() = HalvaneHTOperationIE::initWithIE(element);
            break;
        case kElementIDVendorSpecific:
            parseInformationElementVendorSpecific(element);
            break;
        default:  // it is only in IEs()
            break;
    }
}

void HalvaneMAC::parseInformationElementSSID(const ByteBuffer& element) {
    auto body = bodyOf(element);
    if (!body) return;
    ByteBuffer octets = body->restBuffer();
    const bool isHidden =
        std::ranges::all_of(octets.bytes(), [](auto octet) { return octet == 0; });
    if (!isHidden) record_.change().walk.change().SSID = std::move(octets);
}

void HalvaneMAC::parseInformationElementSupportedRates_withMaximumLength(const ByteBuffer& element,
                                                                         unsigned maximumLength) {
    RateCounts rates(supportedRates());
    rates.countElement(element, maximumLength);
    record_.change().walk.change().supportedRates = rates.numbers();
}

void HalvaneMAC::parseInformationElementVendorSpecific(const ByteBuffer& element) {
    auto body = bodyOf(element);
    const auto oui = body ? body->take(kOUISize) : std::nullopt;
    const auto type = oui ? body->u8() : std::nullopt;
    if (!type) return;
    Walk& walk = record_.change().walk.change();
    if (std::ranges::equal(*oui, kWPAOUI) && *type == kWPSType) {
        walk.wpsIE.change() = HalvaneWPSIE::initWithIE(element);
    } else if (std::ranges::equal(*oui, kWPAOUI) && *type == kWPAType) {
        walk.wpa.change() = HalvaneRSNIE::initWithIE_withOUI(element, ByteBuffer(kWPAOUI));
    } else if (std::ranges::equal(*oui, kVendorOUI) && *type == kVendorTypeDWDS) {
        walk.dwdsIE.change() = HalvaneDWDSIE::initWithIE(element);
    } else if (std::ranges::equal(*oui, kVendorGeneralOUI)) {
        walk.tessicIE.change() = HalvaneTessicIE::initWithIE(element);
    }
}

void HalvaneMAC::deriveRateAndSecurity() {
    Walk& walk = record_.change().walk.change();
    Number width = 20;
    if (HTCaps() && HTOperation()) {
        if (HTCaps()->supports40MHzOperation()) width = HTOperation()->staChannelWidth();
        const bool shortGI =
            width == 40 ? HTCaps()->supports40MHzShortGI() : HTCaps()->supports20MHzShortGI();
        static const std::vector<Number> kNoRates;
        const auto& indices = HTCaps()->mcsRates();
        walk.maxPHYRate = HalvaneMCS::sharedSystem().rateForMCSSet_withChannelWidth_shortGI(
            indices ? *indices : kNoRates, width.int64(), shortGI);
    } else if (walk.supportedRates && !walk.supportedRates->empty()) {
        walk.maxPHYRate = walk.supportedRates->back();
    } else {
        walk.maxPHYRate.reset();
    }
    if (!walk.maxPHYRate) return;

    walk.channelWidth = width;
    if (const char* label = securityLabelOf(*this)) walk.securityFriendlyName = label;
}

bool HalvaneMAC::doesSupportSecurityOpen() const {
    return !isPrivacy();
}

bool HalvaneMAC::doesSupportSecurityWEP() const {
    return isPrivacy() && !rsn() && !wpa();
}

bool HalvaneMAC::doesSupportSecurityWPAPersonal() const {
    return isPrivacy() &&
           ((rsn() && rsn()->allowKeyManagementPSK()) || (wpa() && wpa()->allowKeyManagementPSK()));
}

bool HalvaneMAC::doesSupportSecurityWPAEnterprise() const {
    return isPrivacy() && ((rsn() && rsn()->allowKeyManagement8021X()) ||
                           (wpa() && wpa()->allowKeyManagement8021X()));
}

bool HalvaneMAC::doesSupportSecurityWPS() const {
    return wpsIE().has_value();
}

void HalvaneMAC::mergeEntries(const HalvaneMAC& other) {
    if (mac() != other.mac()) return;
    logMerge("Old IEs <%@>\n, New IEs <%@>\n\n", ieBuffer(), other.ieBuffer(), bytesOf);
    MACRecord& record = record_.change();
    record.lastUpdated = now();
    takeOver(record.channel, other.channel());
    takeOver(record.noise, other.noise());
    takeOver(record.RSSI, other.RSSI());
    takeOver(record.beaconInterval, other.beaconInterval());
    if (capabilities() != other.capabilities()) setCapabilityField(other.capabilities());
    if (SSID() != other.SSID()) {
        logMerge("Old SSID <%@>, New SSID <%@>\n", SSID(), other.SSID(), textAndHexOf);
    }
    if (!SSID() && other.SSID() && other.ieBuffer()) setInformationElements(*other.ieBuffer());
}

void HalvaneMAC::updateLinkQuality_withTxRate(const Number& rssi, const Number& txRate) {
    Link& link = record_.change().link.change();
    link.history.add(HalvaneLinkQuality::initWithRSSI_withTxRate(rssi, txRate));
    link.averageRate = link.history.averageRate();
}

void HalvaneMAC::determineMaximumClientRate(const Number& rate) {
    const bool isBeyondBSS = maxPHYRate() && rate >= *maxPHYRate();
    record_.change().link.change().maxClientRate = isBeyondBSS ? maxPHYRate()->real() : rate.real();
}

}  // namespace halvane
