#include "halvane/ie/mac.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <span>
#include <type_traits>
#include <utility>

#include "halvane/base/byte_cursor.h"
#include "halvane/base/element_id.h"
#include "halvane/base/oui.h"
#include "halvane/base/vendor.h"
#include "halvane/ie/element_walk_internal.h"
#include "halvane/ie/fancy_formatting.h"
#include "halvane/ie/link_quality.h"
#include "halvane/ie/mac_record.h"
#include "halvane/ie/mcs_set_internal.h"
#include "halvane/utils/log.h"
#include "halvane/utils/scan_time.h"

namespace halvane {

namespace {

constexpr std::size_t kMaximumRates = 8;
constexpr std::size_t kMaximumExtendedRates = 255;

// The upper bit marks a basic rate. The bits below are the rate in units of 500 kbit/s.
constexpr unsigned kRateMask = 0x7F;
constexpr double kRatesPerMbps = 2;

constexpr int kWordSize = 64;

using Walk = MACRecord::Walk;
using Link = MACRecord::Link;
using RateBits = MACRecord::RateBits;
using Octets = std::span<const std::uint8_t>;

// The first four octets of a vendor-specific element's body.
constexpr std::uint32_t vendorKind(const OUI& oui, std::uint8_t type) {
    return ouiNumber(oui) << 8 | type;
}

std::uint64_t now() {
    return UpTicksToMicroseconds(UpTicks());
}

// Returns the bytes after ID and length; none if the element has no length byte.
Octets bodyOf(Octets element) {
    ByteCursor cursor(element);
    return cursor.skip(kElementHeaderSize) ? cursor.rest() : Octets();
}

// Returns the octets of a rate element; absent for other elements and for those that are ignored.
std::optional<Octets> ratesOf(Octets element, std::size_t maximumLength) {
    if (element.size() < kElementHeaderSize) return std::nullopt;
    const Octets rates = bodyOf(element);
    return rates.size() <= maximumLength ? std::optional(rates) : std::nullopt;
}
std::optional<Octets> ratesOf(Octets element) {
    if (element.empty()) return std::nullopt;
    if (element[0] == kElementIDSupportedRates) return ratesOf(element, kMaximumRates);
    if (element[0] == kElementIDExtendedSupportedRates) {
        return ratesOf(element, kMaximumExtendedRates);
    }
    return std::nullopt;
}

// The greatest rate in Mbit/s; absent if there is none.
std::optional<Number> greatestOf(const RateBits& rates) {
    if ((rates.low | rates.high) == 0) return std::nullopt;
    const auto width =
        rates.high != 0 ? kWordSize + std::bit_width(rates.high) : std::bit_width(rates.low);
    return Number(static_cast<double>(width - 1) / kRatesPerMbps);
}

void noteRates(RateBits& noted, Octets octets) {
    RateBits rates = noted;  // a copy that the compiler may keep in registers
    for (const std::uint8_t octet : octets) {
        const unsigned rate = octet & kRateMask;
        const std::uint64_t bit = std::uint64_t{1} << rate % kWordSize;
        const std::uint64_t low = rate < kWordSize ? bit : 0;
        const std::uint64_t high = rate < kWordSize ? 0 : bit;
        rates.areRepeated |= ((rates.low & low) | (rates.high & high)) != 0;
        rates.low |= low;
        rates.high |= high;
    }
    rates.areSome = true;
    noted = rates;
}

// Calls each(rate) for every rate, ascending.
template <typename Each>
void forEachRate(const RateBits& rates, Each each) {
    const auto forEachBit = [&](unsigned first, std::uint64_t bits) {
        for (; bits != 0; bits &= bits - 1) {
            each(first + static_cast<unsigned>(std::countr_zero(bits)));
        }
    };
    forEachBit(0, rates.low);
    forEachBit(kWordSize, rates.high);
}

// Counts how often each rate occurs. Rates are counted instead of sorted, since a hostile record
// may hold hundreds of thousands of elements.
class RateCounts {
  public:
    void count(const std::vector<Number>& rates) {
        for (const Number& rate : rates) {
            const auto octet = static_cast<std::uint8_t>(rate.real() * kRatesPerMbps);
            count(Octets(&octet, 1));
        }
    }
    void count(Octets octets) {
        noteRates(bits_, octets);
        for (const std::uint8_t octet : octets) ++counts_[octet & kRateMask];
        total_ += octets.size();
    }

    // Ascending.
    std::vector<Number> numbers() const {
        std::vector<Number> numbers;
        numbers.reserve(total_);
        forEachRate(bits_, [&](unsigned rate) {
            for (std::size_t i = 0; i < counts_[rate]; ++i) {
                numbers.emplace_back(rate / kRatesPerMbps);
            }
        });
        return numbers;
    }

  private:
    RateBits bits_;
    std::array<std::uint32_t, kRateMask + 1> counts_{};
    std::size_t total_ = 0;
};

// Splits the buffer into elements. They are counted first, since a list that grows takes several
// times the room.
std::vector<ByteBuffer> cutElements(const ByteBuffer& elements) {
    const Octets walked = walkedBytesOf(elements.bytes());
    std::size_t count = 0;
    walkElements(walked, [&](auto, auto) { ++count; });
    std::vector<ByteBuffer> cut;
    cut.reserve(count);
    walkElements(walked, [&](std::size_t offset, Octets element) {
        cut.emplace_back(elements, offset, element.size());
    });
    return cut;
}

// Calls each(octets) for every element of the record.
template <typename Each>
void forEachElement(const MACRecord& record, Each each) {
    if (record.areIEsAwaited) {
        walkElements(walkedBytesOf(record.ieBuffer->bytes()),
                     [&](auto, Octets element) { each(element); });
    } else {
        for (const ByteBuffer& element : record.IEs) each(element.bytes());
    }
}

std::vector<Number> countedRatesOf(const MACRecord& record) {
    RateCounts counts;
    forEachElement(record, [&](Octets element) {
        if (const auto rates = ratesOf(element)) counts.count(*rates);
    });
    return counts.numbers();
}

std::vector<Number> numbersOf(const RateBits& rates) {
    std::vector<Number> numbers;
    const int count = std::popcount(rates.low) + std::popcount(rates.high);
    numbers.reserve(static_cast<std::size_t>(count));
    forEachRate(rates, [&](unsigned rate) { numbers.emplace_back(rate / kRatesPerMbps); });
    return numbers;
}

// Makes an object where it stays, since `emplace` would move it there.
template <typename Make>
struct MadeInPlace {
    const Make& make;
    operator std::invoke_result_t<const Make&>() const { return make(); }  // NOLINT(*-explicit-*)
};

template <typename Element, typename Make>
void put(std::optional<Element>& element, const Make& make) {
    element.emplace(MadeInPlace<Make>{make});
}

// Decodes elements one by one.
class Decoder {
  public:
    explicit Decoder(Walk& walk) : walk_(walk) {}

    // Decodes the element at an offset in the bytes. Those of other kinds are skipped.
    void decode(const ByteBuffer& bytes, std::size_t offset, Octets element) {
        const auto whole = [&] { return bytes.slice(offset, element.size()); };
        switch (element[0]) {
            case kElementIDSSID:
                decodeSSID(bytes, offset, element);
                break;
            case kElementIDSupportedRates:
            case kElementIDExtendedSupportedRates:
                if (const auto rates = ratesOf(element)) noteRates(walk_.awaitedRates, *rates);
                break;
            case kElementIDCountry:
                put(walk_.countryIE,
                    [&] { return HalvaneCountryIE::initWithIE(bytes, offset, element.size()); });
                break;
            case kElementIDHTCapabilities:
                put(walk_.HTCaps, [&] {
                    return HalvaneHTCapabilitiesIE::initWithIE(bytes, offset, element.size());
                });
                break;
            case kElementIDRSN:
                put(walk_.rsn, [&] {
                    return HalvaneRSNIE::initWithIE_withOUI(bytes, offset, element.size(), kRSNOUI);
                });
                break;
            case kElementIDHTOperation:
                put(walk_.HTOperation, [&] {
                    return HalvaneHTOperationIE::initWithIE(bytes, offset, element.size());
                });
                break;
            case kElementIDVendorSpecific:
                decodeVendorSpecific(element, whole);
                break;
            default:
                break;
        }
    }

    void decodeSSID(const ByteBuffer& bytes, std::size_t offset, Octets element) {
        const Octets name = bodyOf(element);
        const bool isHidden = std::ranges::all_of(name, [](auto octet) { return octet == 0; });
        if (!isHidden) walk_.SSID.emplace(bytes, offset + kElementHeaderSize, name.size());
    }

    template <typename Whole>
    void decodeVendorSpecific(Octets element, const Whole& whole) {
        ByteCursor body(bodyOf(element));
        const auto kind = body.u32be();
        if (!kind) return;
        if (kind == vendorKind(kWPAOUI, kWPSType)) {
            put(walk_.rare.change().wpsIE, [&] { return HalvaneWPSIE::initWithIE(whole()); });
        } else if (kind == vendorKind(kWPAOUI, kWPAType)) {
            put(walk_.rare.change().wpa,
                [&] { return HalvaneRSNIE::initWithIE_withOUI(whole(), ByteBuffer(kWPAOUI)); });
        } else if (kind == vendorKind(kVendorOUI, kVendorTypeDWDS)) {
            put(walk_.rare.change().dwdsIE, [&] { return HalvaneDWDSIE::initWithIE(whole()); });
        } else if (*kind >> 8 == ouiNumber(kVendorGeneralOUI)) {
            put(walk_.rare.change().tessicIE, [&] { return HalvaneTessicIE::initWithIE(whole()); });
        }
    }

  private:
    Walk& walk_;
};

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

// What decides on the label of a record.
struct SecurityTerms {
    bool isOpen() const { return !isPrivacy; }
    bool isWEP() const { return isPrivacy && !walk.rsn && !walk.rare->wpa; }
    bool isWPAPersonal() const { return allows(&HalvaneRSNIE::allowKeyManagementPSK); }
    bool isWPAEnterprise() const { return allows(&HalvaneRSNIE::allowKeyManagement8021X); }
    bool isWPS() const { return walk.rare->wpsIE.has_value(); }

    // Returns the first label that applies, or null.
    const char* label() const {
        if (isWPAEnterprise()) return "WPA Enterprise";
        if (isWPAPersonal()) return "WPA Personal";
        if (isWEP()) return "WEP";
        if (isWPS()) return "WPS";
        return isOpen() ? "Open" : nullptr;
    }

    const Walk& walk;
    bool isPrivacy;

  private:
    using KeyManagement = bool (HalvaneRSNIE::*)() const;
    bool allows(KeyManagement keyManagement) const {
        const auto holds = [&](const auto& ie) { return ie && ((*ie).*keyManagement)(); };
        return isPrivacy && (holds(walk.rsn) || holds(walk.rare->wpa));
    }
};

// REQUIRES: nobody has asked for the rates since they were decoded
void deriveRateAndSecurity(Walk& walk, bool isPrivacy) {
    std::int64_t width = 20;
    if (walk.HTCaps && walk.HTOperation) {
        const auto& caps = *walk.HTCaps;
        if (caps.supports40MHzOperation()) width = walk.HTOperation->staChannelWidth();
        const bool shortGI =
            width == 40 ? caps.supports40MHzShortGI() : caps.supports20MHzShortGI();
        walk.maxPHYRate = bestRateOfMCSSet(caps.supportedMCSSet(), width, shortGI);
    } else {
        walk.maxPHYRate = greatestOf(walk.awaitedRates);
    }
    if (!walk.maxPHYRate) return;

    walk.channelWidth = width;
    if (const char* label = SecurityTerms{walk, isPrivacy}.label()) {
        walk.securityFriendlyName = label;
    }
}

}  // namespace

HalvaneMAC::HalvaneMAC(const ByteBuffer& mac) {
    record_.makeRoom();
    MACRecord& record = record_.change();
    record.mac = mac;
    record.firstAdded = now();
    record.ieBuffer.reset();
}

HalvaneMAC HalvaneMAC::initWithMAC(const ByteBuffer& mac) {
    return HalvaneMAC(mac);
}

HalvaneMAC HalvaneMAC::initWithMAC_withCapabilityField_withInformationElements(
    const ByteBuffer& mac, std::uint16_t field, const ByteBuffer& elements) {
    HalvaneMAC object(mac);
    MACRecord& record = object.record_.change();
    record.capabilities = field;
    record.lastUpdated = record.firstAdded;
    object.setElements(elements);
    return object;
}

HalvaneMAC::~HalvaneMAC() = default;

void HalvaneMAC::setCapabilityField(std::uint16_t field) {
    MACRecord& record = record_.change();
    record.capabilities = field;
    record.lastUpdated = now();
}

void HalvaneMAC::setInformationElements(const ByteBuffer& elements) {
    setElements(elements);
    record_.change().lastUpdated = now();
}

// If memory runs out, all elements stay as they were.
void HalvaneMAC::setElements(const ByteBuffer& elements) {
    ByteBuffer buffer = elements;  // they may be the record's own
    record_.decodeAnew([&](Walk& walk) {
        walk.channelWidth = channelWidth();
        walk.securityFriendlyName = securityFriendlyName();
        Decoder decoder(walk);
        const Octets walked = walkedBytesOf(buffer.bytes());
        const std::size_t end = walkElements(walked, [&](std::size_t offset, Octets element) {
            decoder.decode(buffer, offset, element);
        });
        if (end < walked.size()) walk.invalidIEs.emplace(buffer, end, walked.size() - end);
        deriveRateAndSecurity(walk, isPrivacy());
    });
    MACRecord& record = record_.change();
    record.ieBuffer = std::move(buffer);
    record.IEs = {};
    record.areIEsAwaited = true;
}

const std::vector<ByteBuffer>& HalvaneMAC::IEs() const {
    const MACRecord& record = *record_;
    if (record.areIEsAwaited) {
        record.IEs = cutElements(*record.ieBuffer);
        record.areIEsAwaited = false;
    }
    return record.IEs;
}

const std::optional<std::vector<Number>>& HalvaneMAC::supportedRates() const {
    const Walk& walk = record_.walk();
    if (const RateBits& rates = walk.awaitedRates; rates.areSome) {
        walk.supportedRates = rates.areRepeated ? countedRatesOf(*record_) : numbersOf(rates);
        walk.awaitedRates = {};
    }
    return walk.supportedRates;
}

void HalvaneMAC::cleanupIEs() {
    Walk& walk = record_.changeWalk();
    walk.SSID.reset();
    walk.supportedRates.reset();
    walk.awaitedRates = {};
    walk.countryIE.reset();
    walk.HTCaps.reset();
    walk.rsn.reset();
    walk.HTOperation.reset();
    walk.rare.makeFresh();
}

void HalvaneMAC::parseInformationElements() {
    cleanupIEs();
    Walk& walk = record_.changeWalk();
    Decoder decoder(walk);
    for (const ByteBuffer& element : IEs()) {
        if (!element.empty()) decoder.decode(element, 0, element.bytes());
    }
    deriveRateAndSecurity(walk, isPrivacy());
}

void HalvaneMAC::parseInformationElement(const ByteBuffer& element) {
    const auto id = ByteCursor(element).u8();
    if (!id) return;
    switch (*id) {
        case kElementIDSupportedRates:
            parseInformationElementSupportedRates_withMaximumLength(element, kMaximumRates);
            break;
        case kElementIDExtendedSupportedRates:
            parseInformationElementSupportedRates_withMaximumLength(element, kMaximumExtendedRates);
            break;
        default:
            Decoder(record_.changeWalk()).decode(element, 0, element.bytes());
            break;
    }
}

void HalvaneMAC::parseInformationElementSSID(const ByteBuffer& element) {
    Decoder(record_.changeWalk()).decodeSSID(element, 0, element.bytes());
}

void HalvaneMAC::parseInformationElementSupportedRates_withMaximumLength(const ByteBuffer& element,
                                                                         unsigned maximumLength) {
    const auto octets = ratesOf(element.bytes(), maximumLength);
    if (!octets) return;
    RateCounts counts;
    if (const auto& rates = supportedRates()) counts.count(*rates);
    counts.count(*octets);
    record_.changeWalk().supportedRates = counts.numbers();
}

void HalvaneMAC::parseInformationElementVendorSpecific(const ByteBuffer& element) {
    Decoder(record_.changeWalk()).decodeVendorSpecific(element.bytes(), [&] { return element; });
}

bool HalvaneMAC::doesSupportSecurityOpen() const {
    return SecurityTerms{record_.walk(), isPrivacy()}.isOpen();
}

bool HalvaneMAC::doesSupportSecurityWEP() const {
    return SecurityTerms{record_.walk(), isPrivacy()}.isWEP();
}

bool HalvaneMAC::doesSupportSecurityWPAPersonal() const {
    return SecurityTerms{record_.walk(), isPrivacy()}.isWPAPersonal();
}

bool HalvaneMAC::doesSupportSecurityWPAEnterprise() const {
    return SecurityTerms{record_.walk(), isPrivacy()}.isWPAEnterprise();
}

bool HalvaneMAC::doesSupportSecurityWPS() const {
    return SecurityTerms{record_.walk(), isPrivacy()}.isWPS();
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
