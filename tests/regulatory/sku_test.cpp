#include "halvane/regulatory/sku.h"

#include <algorithm>
#include <cstddef>
#include <gtest/gtest.h>
#include <set>
#include <utility>
#include <vector>

#include "tests/support/scarce_memory.h"
#include "tests/support/skeletons.h"

using halvane::HalvaneCountry;
using halvane::HalvaneSKU;
using halvane::PropertyListArray;
using halvane::PropertyListDictionary;
using halvane::PropertyListValue;
using halvane::testing::awkwardText;
using halvane::testing::throughXml;
using halvane::testing::valuesOfEveryKind;
using halvane::testing::withEverLessScarceMemory;

namespace {

HalvaneCountry country(std::string name, std::string isoName = "", int isoCode = 0) {
    return HalvaneCountry::initWithFriendlyName_withISOName_withISOCode(
        std::move(name), std::move(isoName), isoCode);
}

HalvaneCountry nameless() {
    auto record = country("", "");
    record.setFriendlyName(std::nullopt);
    record.setIsoName(std::nullopt);
    return record;
}

HalvaneSKU empty() {
    return HalvaneSKU::initWithFriendlyName_withShortName("Worldwide ETSI", "ETSI");
}

HalvaneSKU of(std::vector<HalvaneCountry> countries) {
    auto sku = empty();
    sku.setCountries(std::move(countries));
    return sku;
}

// Returns the SKU of the default list with this short name.
HalvaneSKU defaultSKU(const std::string& shortName) {
    for (HalvaneSKU& sku : HalvaneSKU::createDefaultSKUList()) {
        if (sku.shortName() == shortName) return std::move(sku);
    }
    ADD_FAILURE() << shortName;
    return empty();
}

std::vector<std::string> descriptionsOf(const HalvaneSKU& sku) {
    std::vector<std::string> descriptions;
    for (const HalvaneCountry& member : sku.countries()) {
        descriptions.push_back(member.description());
    }
    return descriptions;
}

TEST(SKU, StartsWithItsNamesAndNoCountries) {
    EXPECT_EQ(empty().friendlyName(), "Worldwide ETSI");
    EXPECT_EQ(empty().shortName(), "ETSI");
    EXPECT_TRUE(empty().countries().empty());
    const auto unnamed = HalvaneSKU::initWithFriendlyName_withShortName(std::nullopt, std::nullopt);
    EXPECT_FALSE(unnamed.friendlyName());
    EXPECT_FALSE(unnamed.shortName());
    EXPECT_TRUE(unnamed.countries().empty());
}

TEST(SKU, TakesWhatItIsSet) {
    auto sku = empty();
    sku.setFriendlyName("Worldwide FCC");
    sku.setShortName(std::nullopt);
    sku.setCountries({country("A")});
    sku.countries().push_back(country("B"));
    EXPECT_EQ(sku.friendlyName(), "Worldwide FCC");
    EXPECT_FALSE(sku.shortName());
    EXPECT_EQ(sku.countries(), (std::vector{country("A"), country("B")}));
}

TEST(SKU, DescribesItself) {
    EXPECT_EQ(empty().description(), "Friendly Name <Worldwide ETSI>, Short Name <ETSI>");
    EXPECT_EQ(HalvaneSKU::initWithFriendlyName_withShortName(std::nullopt, "100% %s").description(),
              "Friendly Name <(null)>, Short Name <100% %s>");
}

TEST(SKU, DescribesItsNamesWhole) {
    const std::string name("a\0b", 3);
    const std::string shortName("\0c", 2);
    EXPECT_EQ(HalvaneSKU::initWithFriendlyName_withShortName(name, shortName).description(),
              "Friendly Name <" + name + ">, Short Name <" + shortName + ">");
}

TEST(SKU, AddsCountriesAtItsEnd) {
    auto sku = empty();
    sku.addCountry(country("B"));
    sku.addCountry(country("A"));
    sku.addCountry(country("A"));
    EXPECT_EQ(sku.countries(), (std::vector{country("B"), country("A"), country("A")}));
}

TEST(SKU, AddsADefaultCountryWithItsChannels) {
    auto sku = of({country("A")});
    sku.addDefaultCountry_withISOName_withISOCode("Unknown", "XO", -1);
    auto expected = country("Unknown", "XO", -1);
    expected.createDefaultChannelList();
    EXPECT_EQ(sku.countries(), (std::vector{country("A"), expected}));
}

TEST(DefaultSKUs, AreSeven) {
    std::vector<std::string> lines;
    for (const HalvaneSKU& sku : HalvaneSKU::createDefaultSKUList()) {
        lines.push_back(sku.description() + " " + std::to_string(sku.countries().size()) + ": " +
                        sku.countries().front().isoName().value() + " to " +
                        sku.countries().back().isoName().value());
    }
    const std::vector<std::string> expected = {
        "Friendly Name <Asia-Pacific>, Short Name <APAC> 10: AU to VN",
        "Friendly Name <Japan>, Short Name <Japan> 1: JP to JP",
        "Friendly Name <Korea>, Short Name <Korea> 1: KR to KR",
        "Friendly Name <Rest of World>, Short Name <ROW> 10: BD to TH",
        "Friendly Name <Worldwide ETSI>, Short Name <ETSI> 36: AT to GB",
        "Friendly Name <Worldwide FCC>, Short Name <FCC> 14: AR to VE",
        "Friendly Name <Unused>, Short Name <Unused> 167: XO to ZW",
    };
    EXPECT_EQ(lines, expected);
}

// The whole table is tested through the command that prints it.
TEST(DefaultSKUs, HoldCountriesAsTheyAreSpelt) {
    EXPECT_EQ(descriptionsOf(defaultSKU("APAC")),
              (std::vector<std::string>{
                  "Friendly Name <Australia>, ISO Code <AU>, ISO Number <36>",
                  "Friendly Name <Brunei Darussalam>, ISO Code <BN>, ISO Number <96>",
                  "Friendly Name <Hong Kong>, ISO Code <HK>, ISO Number <344>",
                  "Friendly Name <India>, ISO Code <IN>, ISO Number <356>",
                  "Friendly Name <Malaysia>, ISO Code <MY>, ISO Number <458>",
                  "Friendly Name <Maldives>, ISO Code <MV>, ISO Number <462>",
                  "Friendly Name <New Zealand>, ISO Code <NZ>, ISO Number <554>",
                  "Friendly Name <Philippines>, ISO Code <PH>, ISO Number <608>",
                  "Friendly Name <Singapore>, ISO Code <SG>, ISO Number <702>",
                  "Friendly Name <Viet Nam>, ISO Code <VN>, ISO Number <704>",
              }));
    EXPECT_EQ(descriptionsOf(defaultSKU("Korea")).front(),
              "Friendly Name <Korea, Republic Of>, ISO Code <KR>, ISO Number <410>");
    const auto unused = descriptionsOf(defaultSKU("Unused"));
    EXPECT_EQ(unused.front(), "Friendly Name <Unknown>, ISO Code <XO>, ISO Number <-1>");
    for (const char* line : {
             "Friendly Name <Bosnia And Herzegowina>, ISO Code <BA>, ISO Number <70>",
             "Friendly Name <Cote D'ivoire>, ISO Code <CI>, ISO Number <384>",
             "Friendly Name <East Timor>, ISO Code <TP>, ISO Number <626>",
             "Friendly Name <France, Metropolitan>, ISO Code <FX>, ISO Number <249>",
             "Friendly Name <Heard And Mc Donald Islands>, ISO Code <HM>, ISO Number <334>",
             "Friendly Name <Netherlands Antilles>, ISO Code <AN>, ISO Number <530>",
             "Friendly Name <Virgin Islands (U.S.)>, ISO Code <VI>, ISO Number <850>",
             "Friendly Name <Yugoslavia>, ISO Code <YU>, ISO Number <891>",
             "Friendly Name <Zaire>, ISO Code <ZR>, ISO Number <180>",
         }) {
        EXPECT_EQ(std::count(unused.begin(), unused.end(), line), 1) << line;
    }
}

TEST(DefaultSKUs, HaveEachOf239CountriesOnceWithAllChannels) {
    auto reference = country("");
    reference.createDefaultChannelList();
    std::set<std::string> names;
    std::set<std::string> isoNames;
    std::set<std::int64_t> isoCodes;
    std::size_t count = 0;
    for (const HalvaneSKU& sku : HalvaneSKU::createDefaultSKUList()) {
        for (const HalvaneCountry& member : sku.countries()) {
            ++count;
            names.insert(member.friendlyName().value());
            isoNames.insert(member.isoName().value());
            isoCodes.insert(member.isoCode());
            EXPECT_EQ(member.channels(), reference.channels()) << member.description();
        }
    }
    EXPECT_EQ(count, 239u);
    EXPECT_EQ(names.size(), 239u);
    EXPECT_EQ(isoNames.size(), 239u);
    EXPECT_EQ(isoCodes.size(), 239u);
}

TEST(DefaultSKUs, AreTheCallersOwn) {
    auto list = HalvaneSKU::createDefaultSKUList();
    list[0].countries()[0].channels().clear();
    list.pop_back();
    EXPECT_EQ(HalvaneSKU::createDefaultSKUList().size(), 7u);
    EXPECT_EQ(HalvaneSKU::createDefaultSKUList()[0].countries()[0].channels().size(), 42u);
}

// The result of a search, as text.
std::string textOf(const HalvaneCountry* found) {
    return found != nullptr ? found->description() : "none";
}

TEST(Search, IgnoresCase) {
    const auto etsi = defaultSKU("ETSI");
    const std::string unitedKingdom =
        "Friendly Name <United Kingdom>, ISO Code <GB>, ISO Number <826>";
    EXPECT_EQ(textOf(etsi.findCountryByISOName("gb")), unitedKingdom);
    EXPECT_EQ(textOf(etsi.findCountryByISOName("GB")), unitedKingdom);
    EXPECT_EQ(textOf(etsi.findCountryByFriendlyName("UNITED kingdom")), unitedKingdom);
    EXPECT_EQ(textOf(etsi.findCountryByFriendlyName("solvenia")),
              "Friendly Name <Solvenia>, ISO Code <SI>, ISO Number <705>");
    EXPECT_EQ(textOf(etsi.findCountryByISOName("578")),
              "Friendly Name <Norway>, ISO Code <578>, ISO Number <0>");
}

TEST(Search, IgnoresCaseBeyondASCII) {
    const auto sku = of({country("\xC3\x85land", "AX", 248)});
    EXPECT_NE(sku.findCountryByFriendlyName("\xC3\xA5LAND"), nullptr);
    EXPECT_EQ(sku.findCountryByFriendlyName("\xC3\xA4land"), nullptr);
}

TEST(Search, FindsNothingThatIsNotThere) {
    const auto etsi = defaultSKU("ETSI");
    for (const char* name : {"Slovenia", "GB", "United", "United Kingdom ", "", "(null)"}) {
        EXPECT_EQ(textOf(etsi.findCountryByFriendlyName(name)), "none") << name;
    }
    for (const char* name : {"NO", "United Kingdom", "G", "GBR", "", "826", "AU"}) {
        EXPECT_EQ(textOf(etsi.findCountryByISOName(name)), "none") << name;
    }
    EXPECT_EQ(textOf(empty().findCountryByFriendlyName("x")), "none");
    EXPECT_EQ(textOf(empty().findCountryByISOName("x")), "none");
}

TEST(Search, TakesTheFirstMatch) {
    const auto sku = of({country("A", "xx", 1), country("b", "yy", 2), country("B", "YY", 3)});
    EXPECT_EQ(sku.findCountryByFriendlyName("B")->isoCode(), 2);
    EXPECT_EQ(sku.findCountryByISOName("YY")->isoCode(), 2);
}

TEST(Search, NeverFindsWhatHasNoName) {
    const auto sku = of({nameless(), country("", "", 7)});
    EXPECT_EQ(sku.findCountryByFriendlyName("")->isoCode(), 7);
    EXPECT_EQ(sku.findCountryByISOName("")->isoCode(), 7);
    EXPECT_EQ(of({nameless()}).findCountryByFriendlyName(""), nullptr);
    EXPECT_EQ(of({nameless()}).findCountryByISOName("(null)"), nullptr);
}

TEST(Search, LeadsToTheCountryItself) {
    auto sku = of({country("A", "XX")});
    sku.findCountryByFriendlyName("a")->setFriendlyName("B");
    sku.findCountryByISOName("xx")->setIsoCode(5);
    EXPECT_EQ(sku.countries(), std::vector{country("B", "XX", 5)});
}

TEST(Removal, TakesOutTheCountryThatIsFound) {
    auto sku = of({country("A"), country("b", "", 1), country("B", "", 2), country("C")});
    EXPECT_EQ(sku.removeCountryByFriendlyName("B"), country("b", "", 1));
    EXPECT_EQ(sku.countries(), (std::vector{country("A"), country("B", "", 2), country("C")}));
}

TEST(Removal, TakesOutAllThatAreEqualToIt) {
    auto changed = country("B");
    changed.createDefaultChannelList();
    auto sku = of({country("B"), country("A"), country("B"), changed, country("B")});
    EXPECT_EQ(sku.removeCountryByFriendlyName("b"), country("B"));
    EXPECT_EQ(sku.countries(), (std::vector{country("A"), changed}));
}

TEST(Removal, OfAnUnknownNameChangesNothing) {
    auto sku = of({country("A"), nameless()});
    const auto before = sku;
    EXPECT_EQ(sku.removeCountryByFriendlyName("B"), std::nullopt);
    EXPECT_EQ(sku.removeCountryByFriendlyName(""), std::nullopt);
    EXPECT_EQ(sku, before);
    EXPECT_EQ(empty().removeCountryByFriendlyName("A"), std::nullopt);
}

TEST(Removal, MayBeByTheNameOfTheCountryItself) {
    auto sku = of({country("A country with a name of some length"), country("B")});
    const std::string& name = *sku.countries()[0].friendlyName();
    EXPECT_EQ(sku.removeCountryByFriendlyName(name)->friendlyName(),
              "A country with a name of some length");
    EXPECT_EQ(sku.countries(), std::vector{country("B")});
}

TEST(CountriesOfASKU, AreSortedByNameWithoutRegardToCase) {
    auto sku = of({country("b", "1"), country("C"), country("a"), country("B", "2"), nameless(),
                   country("B", "0")});
    sku.sortCountriesByFriendlyName();
    EXPECT_EQ(sku.countries(), (std::vector{nameless(), country("a"), country("b", "1"),
                                            country("B", "2"), country("B", "0"), country("C")}));
    auto none = empty();
    none.sortCountriesByFriendlyName();
    EXPECT_TRUE(none.countries().empty());
}

TEST(CountriesOfASKU, OfTheSameNameStayAsTheyWere) {
    auto sku = empty();
    // There are enough of them to show whether the sort is stable.
    for (int code = 0; code < 100; ++code) sku.addCountry(country(code % 2 ? "a" : "A", "", code));
    const auto before = sku;
    sku.sortCountriesByFriendlyName();
    EXPECT_EQ(sku, before);
}

TEST(CountriesOfASKU, AreNotSortedUnasked) {
    const auto etsi = defaultSKU("ETSI");
    EXPECT_EQ(etsi.countries()[34].isoName(), "AE");
    auto sorted = etsi;
    sorted.sortCountriesByFriendlyName();
    EXPECT_EQ(sorted.countries().front().friendlyName(), "Austria");
    EXPECT_EQ(sorted.countries()[26].friendlyName(), "Romania");
    EXPECT_EQ(sorted.countries().back().friendlyName(), "United Kingdom");
    EXPECT_EQ(sorted.countries().size(), 36u);
}

TEST(SKUSkeleton, HasThreeKeys) {
    PropertyListDictionary expected;
    expected.set("FriendlyName", "Worldwide ETSI");
    expected.set("ShortName", "ETSI");
    expected.set("Countries", PropertyListArray{country("A").skeletonRepresentation()});
    EXPECT_EQ(of({country("A")}).skeletonRepresentation(), expected);
}

TEST(SKUSkeleton, LeavesOutAbsentNamesAlone) {
    const auto unnamed = HalvaneSKU::initWithFriendlyName_withShortName(std::nullopt, std::nullopt);
    PropertyListDictionary expected;
    expected.set("Countries", PropertyListArray());
    EXPECT_EQ(unnamed.skeletonRepresentation(), expected);
    EXPECT_EQ(HalvaneSKU::initWithSkeletonRepresentation(expected), unnamed);
    EXPECT_EQ(
        HalvaneSKU::initWithFriendlyName_withShortName("", "").skeletonRepresentation().size(), 3u)
        << "an empty name is one";
}

TEST(SKUSkeleton, LeadsBackThroughXml) {
    auto list = HalvaneSKU::createDefaultSKUList();
    list.push_back(HalvaneSKU::initWithFriendlyName_withShortName(awkwardText(), ""));
    list.back().addCountry(country(awkwardText(), "\"<&>\"", -1));
    list.back().addCountry(nameless());
    for (const HalvaneSKU& sku : list) {
        EXPECT_EQ(
            HalvaneSKU::initWithSkeletonRepresentation(throughXml(sku.skeletonRepresentation())),
            sku);
    }
}

// Returns an empty SKU with a value of one key.
HalvaneSKU read(const char* key, const PropertyListValue& value) {
    auto skeleton = empty().skeletonRepresentation();
    skeleton.set(key, value);
    return HalvaneSKU::initWithSkeletonRepresentation(skeleton);
}

TEST(SKUSkeleton, ReadsMissingKeysAsNothing) {
    const auto record = HalvaneSKU::initWithSkeletonRepresentation({});
    EXPECT_FALSE(record.friendlyName());
    EXPECT_FALSE(record.shortName());
    EXPECT_TRUE(record.countries().empty());
}

TEST(SKUSkeleton, ReadsValuesOfTheWrongKindAsMissing) {
    for (const PropertyListValue& value : valuesOfEveryKind()) {
        const auto* text = value.as<std::string>();
        const auto expectedText = text != nullptr ? std::optional(*text) : std::nullopt;
        EXPECT_EQ(read("FriendlyName", value).friendlyName(), expectedText);
        EXPECT_EQ(read("ShortName", value).shortName(), expectedText);
        EXPECT_TRUE(read("Countries", value).countries().empty());
    }
}

TEST(SKUSkeleton, PassesOverWhatIsNoCountry) {
    PropertyListArray array = valuesOfEveryKind();
    array.emplace_back(country("A").skeletonRepresentation());
    // Both dictionaries in the array become countries with no keys set.
    EXPECT_EQ(read("Countries", array).countries(),
              (std::vector{nameless(), nameless(), country("A")}));
}

TEST(SKU, HasNoDefaultListWhereMemoryIsShort) {
    std::size_t size = 0;
    const auto attempts =
        withEverLessScarceMemory([&size] { size = HalvaneSKU::createDefaultSKUList().size(); },
                                 [&size](bool hasEnded) { EXPECT_EQ(size, hasEnded ? 0u : 7u); });
    EXPECT_GT(attempts, 239u) << "each country has a list";
}

}  // namespace
