#include "halvane/regulatory/country.h"

#include <gtest/gtest.h>
#include <utility>
#include <vector>

#include "tests/support/scarce_memory.h"
#include "tests/support/skeletons.h"

using halvane::HalvaneChannel;
using halvane::HalvaneCountry;
using halvane::Number;
using halvane::PropertyListArray;
using halvane::PropertyListDictionary;
using halvane::PropertyListValue;
using halvane::testing::awkwardText;
using halvane::testing::throughXml;
using halvane::testing::valuesOfEveryKind;
using halvane::testing::withEachAllocationFailing;

namespace {

HalvaneCountry unitedKingdom() {
    return HalvaneCountry::initWithFriendlyName_withISOName_withISOCode("United Kingdom", "GB",
                                                                        826);
}

HalvaneCountry named(std::optional<std::string> name) {
    auto country = unitedKingdom();
    country.setFriendlyName(std::move(name));
    return country;
}

HalvaneChannel channelAt(int frequency, int number = 0) {
    return HalvaneChannel::initWithChannel_withFrequency_isRadarProne(number, frequency, false);
}

std::vector<std::int64_t> numbersOf(const HalvaneCountry& country) {
    std::vector<std::int64_t> numbers;
    for (const HalvaneChannel& channel : country.channels()) {
        numbers.push_back(channel.channelNumber());
    }
    return numbers;
}

// The channels from `first` to `last`. One number is 5 MHz.
struct Run {
    int first, last, step;
    int frequency;  // MHz, of the first
    bool isRadarProne, isDisabled, supports40MHz;
};

// The runs that an operation should append.
struct Band {
    void (HalvaneCountry::*create)();
    std::vector<Run> runs;
};

const std::vector<Band>& bands() {
    static const std::vector<Band> all = {
        {&HalvaneCountry::createDefaultChannelList2Dot4GHz,
         {{1, 13, 1, 2412, false, false, false}, {14, 14, 1, 2484, false, true, false}}},
        {&HalvaneCountry::createDefaultChannelList5GHzLowBand,
         {{34, 34, 1, 5170, false, true, false},
          {36, 36, 1, 5180, false, false, true},
          {38, 38, 1, 5190, false, true, false},
          {40, 40, 1, 5200, false, false, true},
          {42, 42, 1, 5210, false, true, false},
          {44, 44, 1, 5220, false, false, true},
          {46, 46, 1, 5230, false, true, false},
          {48, 48, 1, 5240, false, false, true}}},
        {&HalvaneCountry::createDefaultChannelList5GHzMiddleBand,
         {{52, 64, 4, 5260, true, false, true}}},
        {&HalvaneCountry::createDefaultChannelList5GHzHCEPTBand,
         {{100, 136, 4, 5500, true, false, true}, {140, 140, 4, 5700, true, false, false}}},
        {&HalvaneCountry::createDefaultChannelList5GHzUpperBand,
         {{149, 161, 4, 5745, false, false, true}}},
        {&HalvaneCountry::createDefaultChannelList5GHzISMBand,
         {{165, 165, 1, 5825, false, false, false}}},
    };
    return all;
}

std::vector<HalvaneChannel> channelsOf(const Band& band) {
    std::vector<HalvaneChannel> channels;
    for (const Run& run : band.runs) {
        for (int number = run.first; number <= run.last; number += run.step) {
            auto channel = HalvaneChannel::initWithChannel_withFrequency_isRadarProne(
                number, run.frequency + 5 * (number - run.first), run.isRadarProne);
            channel.setIsDisabled(run.isDisabled);
            channel.setSupports40MHz(run.supports40MHz);
            channels.push_back(channel);
        }
    }
    return channels;
}

std::vector<HalvaneChannel> channelsOfAllBands() {
    std::vector<HalvaneChannel> channels;
    for (const Band& band : bands()) {
        for (const HalvaneChannel& channel : channelsOf(band)) channels.push_back(channel);
    }
    return channels;
}

TEST(Country, StartsWithItsNamesAndNoChannels) {
    const auto country = unitedKingdom();
    EXPECT_EQ(country.friendlyName(), "United Kingdom");
    EXPECT_EQ(country.isoName(), "GB");
    EXPECT_EQ(country.isoCode(), 826);
    EXPECT_TRUE(country.channels().empty());
}

TEST(Country, TakesTheWholePartOfItsNumber) {
    const auto codeOf = [](const Number& code) {
        return HalvaneCountry::initWithFriendlyName_withISOName_withISOCode("", "", code).isoCode();
    };
    EXPECT_EQ(codeOf(-1), -1);
    EXPECT_EQ(codeOf(826.9), 826);
    EXPECT_EQ(codeOf(INT64_MIN), INT64_MIN);
    EXPECT_EQ(codeOf(UINT64_MAX), INT64_MAX);
}

TEST(Country, TakesWhatItIsSet) {
    auto country = unitedKingdom();
    country.setFriendlyName("Japan");
    country.setIsoName("JP");
    country.setIsoCode(392);
    country.setChannels({channelAt(2412, 1)});
    country.channels().push_back(channelAt(2484, 14));
    EXPECT_EQ(country.friendlyName(), "Japan");
    EXPECT_EQ(country.isoName(), "JP");
    EXPECT_EQ(country.isoCode(), 392);
    EXPECT_EQ(numbersOf(country), (std::vector<std::int64_t>{1, 14}));
    country.setFriendlyName(std::nullopt);
    country.setIsoName(std::nullopt);
    EXPECT_FALSE(country.friendlyName());
    EXPECT_FALSE(country.isoName());
}

TEST(Country, IsEqualInEveryProperty) {
    auto country = unitedKingdom();
    country.createDefaultChannelList();
    auto other = country;
    EXPECT_EQ(country, other);
    other.channels()[41].setSupports80MHz(true);
    EXPECT_FALSE(country == other);
    other = country;
    other.setIsoCode(827);
    EXPECT_FALSE(country == other);
    other = country;
    other.setIsoName(std::nullopt);
    EXPECT_FALSE(country == other);
    EXPECT_FALSE(named("x") == named("X"));
}

TEST(DefaultChannels, OfEachBandAreAppended) {
    for (const Band& band : bands()) {
        auto country = unitedKingdom();
        country.channels().push_back(channelAt(1, 1));
        (country.*band.create)();
        auto expected = channelsOf(band);
        expected.insert(expected.begin(), channelAt(1, 1));
        EXPECT_EQ(country.channels(), expected) << numbersOf(country).back();
    }
}

TEST(DefaultChannels, AreThoseOfAllBandsInOrder) {
    auto country = unitedKingdom();
    country.createDefaultChannelList();
    EXPECT_EQ(country.channels().size(), 42u);
    EXPECT_EQ(country.channels(), channelsOfAllBands());
    const auto& channels = country.channels();
    EXPECT_EQ(channels[13].channelNumber(), 14);
    EXPECT_TRUE(channels[13].isDisabled());
    EXPECT_EQ(channels[14].channelNumber(), 34);
    EXPECT_TRUE(channels[14].isDisabled());
    EXPECT_EQ(channels[35].description(),
              "Channel <136> Frequency <5680> Radar Prone <YES> Supports HT40 <YES>");
    EXPECT_EQ(channels[36].description(),
              "Channel <140> Frequency <5700> Radar Prone <YES> Supports HT40 <NO>");
}

TEST(DefaultChannels, AreTheChannelsOfTheMap) {
    auto country = unitedKingdom();
    country.createDefaultChannelList();
    std::vector<std::int64_t> mapped;
    for (unsigned number = 0; number < 256; ++number) {
        if (HalvaneChannel::channelFrequencyForNumber(number) != 0) mapped.push_back(number);
    }
    EXPECT_EQ(numbersOf(country), mapped);
    for (const HalvaneChannel& channel : country.channels()) {
        EXPECT_EQ(HalvaneChannel::channelFrequencyForNumber(
                      static_cast<unsigned>(channel.channelNumber())),
                  channel.channelFrequency());
        EXPECT_FALSE(channel.supports80MHz());
    }
}

TEST(DefaultChannels, AreThereTwiceWhenCreatedTwice) {
    auto country = unitedKingdom();
    country.createDefaultChannelList();
    country.createDefaultChannelList();
    ASSERT_EQ(country.channels().size(), 84u);
    EXPECT_EQ(country.channels()[41], country.channels()[83]);
    EXPECT_EQ(country.channels()[42].channelNumber(), 1);
}

TEST(DefaultChannels, AreAllThereOrNoneWhereMemoryIsShort) {
    auto country = unitedKingdom();
    const auto expectNone = [&country] { EXPECT_TRUE(country.channels().empty()); };
    const auto create = [&country] { country.createDefaultChannelList(); };
    EXPECT_GT(withEachAllocationFailing(create, expectNone), 0u);
    EXPECT_EQ(country.channels().size(), 42u);

    auto low = unitedKingdom();
    const auto expectNoneOfTheBand = [&low] { EXPECT_TRUE(low.channels().empty()); };
    const auto createLow = [&low] { low.createDefaultChannelList5GHzLowBand(); };
    EXPECT_GT(withEachAllocationFailing(createLow, expectNoneOfTheBand), 0u);
    EXPECT_EQ(low.channels().size(), 8u);
}

TEST(ChannelOrder, IsByFrequencyAlone) {
    EXPECT_EQ(HalvaneCountry::compareByFrequency_channel2(channelAt(2412, 9), channelAt(2417, 1)),
              -1);
    EXPECT_EQ(HalvaneCountry::compareByFrequency_channel2(channelAt(2417, 1), channelAt(2412, 9)),
              1);
    EXPECT_EQ(HalvaneCountry::compareByFrequency_channel2(channelAt(2412, 9), channelAt(2412, 1)),
              0);
    auto lowest = channelAt(0);
    lowest.setChannelFrequency(INT64_MIN);
    auto highest = channelAt(0);
    highest.setChannelFrequency(INT64_MAX);
    EXPECT_EQ(HalvaneCountry::compareByFrequency_channel2(lowest, highest), -1);
    EXPECT_EQ(HalvaneCountry::compareByFrequency_channel2(highest, lowest), 1);
}

TEST(ChannelOrder, KeepsChannelsOfOneFrequencyAsTheyWere) {
    auto country = unitedKingdom();
    // There are enough of them to show whether the sort is stable.
    std::vector<std::int64_t> expected;
    for (int number = 0; number < 100; ++number) {
        country.channels().push_back(channelAt(5000 - number % 2, number));
    }
    for (int number = 1; number < 100; number += 2) expected.push_back(number);
    for (int number = 0; number < 100; number += 2) expected.push_back(number);
    country.sortChannelsByFrequency();
    EXPECT_EQ(numbersOf(country), expected);
}

TEST(ChannelOrder, IsAscendingWhateverASkeletonHeld) {
    auto country = unitedKingdom();
    country.createDefaultChannelList();
    const auto ascending = country.channels();
    auto& channels = country.channels();
    channels.assign(ascending.rbegin(), ascending.rend());
    std::swap(channels[3], channels[30]);
    auto back = HalvaneCountry::initWithSkeletonRepresentation(country.skeletonRepresentation());
    EXPECT_EQ(back.channels(), channels) << "in the order of the skeleton";
    back.sortChannelsByFrequency();
    EXPECT_EQ(back.channels(), ascending);
}

TEST(ChannelOrder, OfNoChannelsIsNone) {
    auto country = unitedKingdom();
    country.sortChannelsByFrequency();
    EXPECT_TRUE(country.channels().empty());
}

TEST(Country, DescribesItself) {
    EXPECT_EQ(unitedKingdom().description(),
              "Friendly Name <United Kingdom>, ISO Code <GB>, ISO Number <826>");
    auto country = named(std::nullopt);
    country.setIsoName("100% %s");
    country.setIsoCode(INT64_MIN);
    country.createDefaultChannelList();
    EXPECT_EQ(country.description(),
              "Friendly Name <(null)>, ISO Code <100% %s>, ISO Number <-9223372036854775808>");
}

TEST(Country, DescribesItsNamesWhole) {
    const std::string name("a\0b", 3);
    auto country = named(name);
    country.setIsoName(std::string("\0", 1));
    country.setIsoCode(-1);
    EXPECT_EQ(country.description(), "Friendly Name <" + name + ">, ISO Code <" +
                                         std::string(1, '\0') + ">, ISO Number <-1>");
}

int order(std::optional<std::string> first, std::optional<std::string> second) {
    return WiFiManagerCompareCountryByFriendlyName(named(std::move(first)),
                                                   named(std::move(second)), nullptr);
}

TEST(CountryOrder, IsByFriendlyNameWithoutRegardToCase) {
    EXPECT_EQ(order("Viet Nam", "viet nam"), 0);
    EXPECT_EQ(order("VIET NAM", "Viet Nam"), 0);
    EXPECT_EQ(order("austria", "Belgium"), -1);
    EXPECT_EQ(order("Belgium", "austria"), 1);
    EXPECT_EQ(order("Niger", "NIGERIA"), -1);
    EXPECT_EQ(order("NIGERIA", "Niger"), 1);
    EXPECT_EQ(order("", "A"), -1);
    EXPECT_EQ(order("", ""), 0);
    // These characters lie between the capital and the small letters of ASCII. A letter sorts as a
    // small one.
    EXPECT_EQ(order("_", "A"), -1);
    EXPECT_EQ(order("{", "Z"), 1);
}

TEST(CountryOrder, HasNoRegardToCaseBeyondASCII) {
    EXPECT_EQ(order("\xC3\x85land", "\xC3\xA5land"), 0);
    EXPECT_EQ(order("\xC3\x89ire", "\xC3\xA9IRE"), 0);
    EXPECT_EQ(order("\xCE\x95\xCE\xBB", "\xCE\xB5\xCE\x9B"), 0);
    EXPECT_EQ(order("\xD0\xA0\xD1\x84", "\xD1\x80\xD0\xA4"), 0);
    EXPECT_EQ(order("\xC3\x85land", "\xC3\xA4land"), 1);
}

TEST(CountryOrder, IsByTheCodePointsOfOtherCharacters) {
    EXPECT_EQ(order("\xC3\x89ire", "Zambia"), 1);
    const std::string withNUL("A\0B", 3);
    EXPECT_EQ(order(withNUL, "A"), 1);
    EXPECT_EQ(order(withNUL, std::string("a\0c", 3)), -1);
    EXPECT_EQ(order(withNUL, std::string("a\0b", 3)), 0);
}

TEST(CountryOrder, PutsAnAbsentNameFirst) {
    EXPECT_EQ(order(std::nullopt, ""), -1);
    EXPECT_EQ(order("", std::nullopt), 1);
    EXPECT_EQ(order(std::nullopt, std::nullopt), 0);
}

TEST(CountryOrder, LooksAtNothingElse) {
    auto other = unitedKingdom();
    other.setIsoName("AA");
    other.setIsoCode(1);
    other.createDefaultChannelList();
    int context = 0;
    EXPECT_EQ(WiFiManagerCompareCountryByFriendlyName(unitedKingdom(), other, &context), 0);
}

TEST(CountrySkeleton, HasFourKeys) {
    auto country = unitedKingdom();
    country.channels().push_back(channelAt(2484, 14));
    PropertyListDictionary expected;
    expected.set("FriendlyName", "United Kingdom");
    expected.set("ISOName", "GB");
    expected.set("ISOCode", 826);
    expected.set("Channels", PropertyListArray{channelAt(2484, 14).skeletonRepresentation()});
    EXPECT_EQ(country.skeletonRepresentation(), expected);
}

TEST(CountrySkeleton, LeavesOutAbsentNamesAlone) {
    auto country = named(std::nullopt);
    country.setIsoName(std::nullopt);
    country.setIsoCode(0);
    PropertyListDictionary expected;
    expected.set("ISOCode", 0);
    expected.set("Channels", PropertyListArray());
    EXPECT_EQ(country.skeletonRepresentation(), expected);
    EXPECT_EQ(HalvaneCountry::initWithSkeletonRepresentation(expected), country);
    EXPECT_EQ(named("").skeletonRepresentation().size(), 4u) << "an empty name is one";
}

TEST(CountrySkeleton, LeadsBackThroughXml) {
    auto country = unitedKingdom();
    country.createDefaultChannelList();
    country.channels()[20].setSupports80MHz(true);
    country.setIsoCode(INT64_MIN);
    for (const std::string& name : {awkwardText(), std::string(), std::string(" \t\n "),
                                    std::string("Cote D'ivoire"), std::string("\"<&>\"")}) {
        country.setFriendlyName(name);
        country.setIsoName(name);
        EXPECT_EQ(HalvaneCountry::initWithSkeletonRepresentation(
                      throughXml(country.skeletonRepresentation())),
                  country)
            << name;
    }
}

TEST(CountrySkeleton, CarriesItsNumberAtBothLimitsThroughXml) {
    auto country = unitedKingdom();
    for (const std::int64_t code : {INT64_MIN, INT64_MAX}) {
        country.setIsoCode(code);
        const auto skeleton = throughXml(country.skeletonRepresentation());
        EXPECT_EQ(HalvaneCountry::initWithSkeletonRepresentation(skeleton).isoCode(), code);
    }
}

TEST(CountrySkeleton, KeepsNamesThatXmlCannotCarry) {
    const auto country = named(std::string("a\0\xFF", 3));
    EXPECT_EQ(HalvaneCountry::initWithSkeletonRepresentation(country.skeletonRepresentation()),
              country);
}

TEST(CountrySkeleton, ReadsMissingKeysAsNothing) {
    const auto empty = HalvaneCountry::initWithSkeletonRepresentation({});
    EXPECT_FALSE(empty.friendlyName());
    EXPECT_FALSE(empty.isoName());
    EXPECT_EQ(empty.isoCode(), 0);
    EXPECT_TRUE(empty.channels().empty());

    auto whole = unitedKingdom();
    whole.createDefaultChannelList();
    auto skeleton = whole.skeletonRepresentation();
    skeleton.erase("Channels");
    EXPECT_EQ(HalvaneCountry::initWithSkeletonRepresentation(skeleton), unitedKingdom());
    skeleton.erase("ISOCode");
    EXPECT_EQ(HalvaneCountry::initWithSkeletonRepresentation(skeleton).isoCode(), 0);
}

// Returns the United Kingdom with another value of one key.
HalvaneCountry read(const char* key, const PropertyListValue& value) {
    auto skeleton = unitedKingdom().skeletonRepresentation();
    skeleton.set(key, value);
    return HalvaneCountry::initWithSkeletonRepresentation(skeleton);
}

TEST(CountrySkeleton, ReadsValuesOfTheWrongKindAsMissing) {
    for (const PropertyListValue& value : valuesOfEveryKind()) {
        const auto* text = value.as<std::string>();
        const auto expectedText = text != nullptr ? std::optional(*text) : std::nullopt;
        EXPECT_EQ(read("FriendlyName", value).friendlyName(), expectedText);
        EXPECT_EQ(read("ISOName", value).isoName(), expectedText);
        EXPECT_TRUE(read("Channels", value).channels().empty());
        const auto* number = value.as<Number>();
        const auto expectedCode = number != nullptr ? number->int64() : value.as<bool>() ? 1 : 0;
        EXPECT_EQ(read("ISOCode", value).isoCode(), expectedCode);
    }
}

TEST(CountrySkeleton, PassesOverWhatIsNoChannel) {
    PropertyListArray array = valuesOfEveryKind();
    array.emplace_back(channelAt(2484, 14).skeletonRepresentation());
    // Both dictionaries in the array become channels with no keys set.
    EXPECT_EQ(read("Channels", array).channels(),
              (std::vector<HalvaneChannel>{channelAt(0), channelAt(0), channelAt(2484, 14)}));
}

}  // namespace
