#include "halvane/regulatory/country.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "halvane/base/describe.h"
#include "halvane/base/skeleton_internal.h"
#include "halvane/regulatory/case_folding_internal.h"
#include "halvane/regulatory/sorted_rows_internal.h"
#include "halvane/utils/printf/std_string_internal.h"
#include "halvane/utils/text/ignore_case_internal.h"

namespace halvane {

namespace {

constexpr const char* kFriendlyName = "FriendlyName";
constexpr const char* kISOName = "ISOName";
constexpr const char* kISOCode = "ISOCode";
constexpr const char* kChannels = "Channels";

// In the order of the whole list.
enum class Band { TwoDot4GHz, Low, Middle, HCEPT, Upper, ISM };

enum Flag : unsigned { kRadarProne = 1, kDisabled = 2, k40MHz = 4 };

struct DefaultChannel {
    Band band;
    int number;
    int frequency;  // MHz
    unsigned flags;
};

// The disabled channels are Japan's own: 14, and the low band's channels from before Japan adopted
// those of the rest of the world.
constexpr DefaultChannel kDefaultChannels[] = {
    {Band::TwoDot4GHz, 1, 2412, 0},
    {Band::TwoDot4GHz, 2, 2417, 0},
    {Band::TwoDot4GHz, 3, 2422, 0},
    {Band::TwoDot4GHz, 4, 2427, 0},
    {Band::TwoDot4GHz, 5, 2432, 0},
    {Band::TwoDot4GHz, 6, 2437, 0},
    {Band::TwoDot4GHz, 7, 2442, 0},
    {Band::TwoDot4GHz, 8, 2447, 0},
    {Band::TwoDot4GHz, 9, 2452, 0},
    {Band::TwoDot4GHz, 10, 2457, 0},
    {Band::TwoDot4GHz, 11, 2462, 0},
    {Band::TwoDot4GHz, 12, 2467, 0},
    {Band::TwoDot4GHz, 13, 2472, 0},
    {Band::TwoDot4GHz, 14, 2484, kDisabled},
    {Band::Low, 34, 5170, kDisabled},
    {Band::Low, 36, 5180, k40MHz},
    {Band::Low, 38, 5190, kDisabled},
    {Band::Low, 40, 5200, k40MHz},
    {Band::Low, 42, 5210, kDisabled},
    {Band::Low, 44, 5220, k40MHz},
    {Band::Low, 46, 5230, kDisabled},
    {Band::Low, 48, 5240, k40MHz},
    {Band::Middle, 52, 5260, kRadarProne | k40MHz},
    {Band::Middle, 56, 5280, kRadarProne | k40MHz},
    {Band::Middle, 60, 5300, kRadarProne | k40MHz},
    {Band::Middle, 64, 5320, kRadarProne | k40MHz},
    {Band::HCEPT, 100, 5500, kRadarProne | k40MHz},
    {Band::HCEPT, 104, 5520, kRadarProne | k40MHz},
    {Band::HCEPT, 108, 5540, kRadarProne | k40MHz},
    {Band::HCEPT, 112, 5560, kRadarProne | k40MHz},
    {Band::HCEPT, 116, 5580, kRadarProne | k40MHz},
    {Band::HCEPT, 120, 5600, kRadarProne | k40MHz},
    {Band::HCEPT, 124, 5620, kRadarProne | k40MHz},
    {Band::HCEPT, 128, 5640, kRadarProne | k40MHz},
    {Band::HCEPT, 132, 5660, kRadarProne | k40MHz},
    {Band::HCEPT, 136, 5680, kRadarProne | k40MHz},
    {Band::HCEPT, 140, 5700, kRadarProne},
    {Band::Upper, 149, 5745, k40MHz},
    {Band::Upper, 153, 5765, k40MHz},
    {Band::Upper, 157, 5785, k40MHz},
    {Band::Upper, 161, 5805, k40MHz},
    {Band::ISM, 165, 5825, 0},
};
static_assert(std::ranges::is_sorted(kDefaultChannels, {}, &DefaultChannel::band));

HalvaneChannel channelOf(const DefaultChannel& row) {
    auto channel = HalvaneChannel::initWithChannel_withFrequency_isRadarProne(
        row.number, row.frequency, (row.flags & kRadarProne) != 0);
    channel.setIsDisabled((row.flags & kDisabled) != 0);
    channel.setSupports40MHz((row.flags & k40MHz) != 0);
    return channel;
}

// Makes room for `count` more channels by doubling, so that repeated appending rarely moves them.
void makeRoom(std::vector<HalvaneChannel>& channels, std::size_t count) {
    if (channels.capacity() - channels.size() >= count) return;
    channels.reserve(std::max(channels.size() + count, 2 * channels.size()));
}

// Appends all channels of the band, or none if memory runs out.
void appendDefaults(std::vector<HalvaneChannel>& channels, Band band) {
    const auto rows = rowsOf(kDefaultChannels, &DefaultChannel::band, band);
    makeRoom(channels, rows.size());
    std::ranges::transform(rows, std::back_inserter(channels), channelOf);
}

}  // namespace

HalvaneCountry HalvaneCountry::initWithFriendlyName_withISOName_withISOCode(
    std::string friendlyName, std::string isoName, const Number& isoCode) {
    HalvaneCountry country;
    country.friendlyName_ = std::move(friendlyName);
    country.isoName_ = std::move(isoName);
    country.isoCode_ = isoCode.int64();
    return country;
}

HalvaneCountry HalvaneCountry::initWithSkeletonRepresentation(
    const PropertyListDictionary& skeleton) {
    HalvaneCountry country;
    country.friendlyName_ = skeleton::textFor(skeleton, kFriendlyName);
    country.isoName_ = skeleton::textFor(skeleton, kISOName);
    country.isoCode_ = skeleton::int64For(skeleton, kISOCode);
    country.channels_ = skeleton::recordsFor<HalvaneChannel>(skeleton, kChannels);
    return country;
}

PropertyListDictionary HalvaneCountry::skeletonRepresentation() const {
    PropertyListDictionary skeleton;
    skeleton::setIfPresent(skeleton, kFriendlyName, friendlyName_);
    skeleton::setIfPresent(skeleton, kISOName, isoName_);
    skeleton.set(kISOCode, isoCode_);
    skeleton.set(kChannels, skeleton::skeletonsOf(channels_));
    return skeleton;
}

void HalvaneCountry::createDefaultChannelList() {
    makeRoom(channels_, std::size(kDefaultChannels));
    createDefaultChannelList2Dot4GHz();
    createDefaultChannelList5GHzLowBand();
    createDefaultChannelList5GHzMiddleBand();
    createDefaultChannelList5GHzHCEPTBand();
    createDefaultChannelList5GHzUpperBand();
    createDefaultChannelList5GHzISMBand();
}

void HalvaneCountry::createDefaultChannelList2Dot4GHz() {
    appendDefaults(channels_, Band::TwoDot4GHz);
}

void HalvaneCountry::createDefaultChannelList5GHzLowBand() {
    appendDefaults(channels_, Band::Low);
}

void HalvaneCountry::createDefaultChannelList5GHzMiddleBand() {
    appendDefaults(channels_, Band::Middle);
}

void HalvaneCountry::createDefaultChannelList5GHzHCEPTBand() {
    appendDefaults(channels_, Band::HCEPT);
}

void HalvaneCountry::createDefaultChannelList5GHzUpperBand() {
    appendDefaults(channels_, Band::Upper);
}

void HalvaneCountry::createDefaultChannelList5GHzISMBand() {
    appendDefaults(channels_, Band::ISM);
}

void HalvaneCountry::sortChannelsByFrequency() {
    std::ranges::stable_sort(channels_, [](const HalvaneChannel& a, const HalvaneChannel& b) {
        return compareByFrequency_channel2(a, b) < 0;
    });
}

int HalvaneCountry::compareByFrequency_channel2(const HalvaneChannel& channel1,
                                                const HalvaneChannel& channel2) {
    return orderOf(channel1.channelFrequency(), channel2.channelFrequency());
}

std::string HalvaneCountry::description() const {
    const PropertyListValue friendlyName = describe(friendlyName_);
    const PropertyListValue isoName = describe(isoName_);
    return stringPrintF("Friendly Name <%@>, ISO Code <%@>, ISO Number <%lld>", &friendlyName,
                        &isoName, static_cast<long long>(isoCode_));
}

int WiFiManagerCompareCountryByFriendlyName(const HalvaneCountry& first,
                                            const HalvaneCountry& second, void*) {
    const auto& a = first.friendlyName();
    const auto& b = second.friendlyName();
    return a && b ? orderOfFolded(*a, *b) : orderOf(a.has_value(), b.has_value());
}

}  // namespace halvane
