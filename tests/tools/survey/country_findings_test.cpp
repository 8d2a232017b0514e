#include "tools/halvane/survey/country_findings.h"

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/air/finding.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/ie/mac.h"

#include "tests/support/elements.h"
#include "tests/support/hostile_bytes.h"
#include "tools/halvane/survey/network.h"
#include "tools/halvane/survey/survey.h"

using namespace halvane;
using namespace halvane::tool;
using halvane::testing::Bytes;
using halvane::testing::element;
using halvane::testing::joined;
using halvane::testing::ssidElement;

namespace {

// A name, and a country unless `country` is empty.
Bytes elementsOf(std::string_view country) {
    const Bytes name = ssidElement("home");
    if (country.empty()) return name;
    Bytes body(country.begin(), country.end());
    for (const std::uint8_t octet : Bytes{0x20, 1, 13, 20}) body.push_back(octet);
    return joined({name, element(7, body)});
}

// Hears a network for each country.
void hear(Survey& survey, const std::vector<std::string_view>& countries) {
    std::uint8_t last = 0;
    for (const std::string_view country : countries) {
        auto record = HalvaneMAC::initWithMAC({0x02, 0, 0, 0, 0, ++last});
        record.setInformationElements(ByteBuffer(elementsOf(country)));
        survey.add({record}, {.number = last});
    }
}

bool isDifferent(const Network& network) {
    return std::ranges::count(network.profile.findings, air::FindingKind::CountryDiffers,
                              &air::Finding::kind) > 0;
}

// "-" for a network whose country is that of most, "x" for another one.
std::string foundIn(const std::vector<std::string_view>& countries) {
    Survey survey;
    hear(survey, countries);
    std::string found;
    for (const Network& network : survey.networks()) found += isDifferent(network) ? 'x' : '-';
    return found;
}

TEST(CountryFindings, AreOfNetworksWithAnotherCountryThanMost) {
    EXPECT_EQ(foundIn({"KR", "KR", "US"}), "--x");
    EXPECT_EQ(foundIn({"DE", "US", "US", "US", "FR"}), "x---x");
}

TEST(CountryFindings, NeedAMajority) {
    EXPECT_EQ(foundIn({}), "");
    EXPECT_EQ(foundIn({"KR", "US"}), "--");
    EXPECT_EQ(foundIn({"KR", "KR", "US", "DE"}), "----");
    EXPECT_EQ(foundIn({"KR", "KR", "KR", "US", "DE"}), "---xx");
}

TEST(CountryFindings, PassOverNetworksWithoutACountry) {
    EXPECT_EQ(foundIn({"", "", "KR", "", "KR", "US"}), "-----x");
    EXPECT_EQ(foundIn({"", "US", ""}), "---");
}

// What is no code of a country has a finding of its own.
TEST(CountryFindings, PassOverWhatIsNoCountry) {
    EXPECT_EQ(foundIn({"00", "KR", "KR"}), "---");
    EXPECT_EQ(foundIn({"XX", "KR", "KR"}), "---");
    EXPECT_EQ(foundIn({"00", "00", "00", "KR", "KR", "US"}), "-----x");
}

TEST(CountryFindings, NameTheElementAndKeepTheOrder) {
    Survey survey;
    hear(survey, {"KR", "KR", "US"});
    const auto networks = survey.networks();
    const auto& findings = networks[2].profile.findings;
    const auto found =
        std::ranges::find(findings, air::FindingKind::CountryDiffers, &air::Finding::kind);
    ASSERT_NE(found, findings.end());
    ASSERT_EQ(found->sources.size(), 1u);
    EXPECT_EQ(found->sources[0].offset, 6u);  // behind the name
    EXPECT_TRUE(std::ranges::is_sorted(findings, [](const auto& a, const auto& b) {
        const auto ofA = a.info().severity;
        const auto ofB = b.info().severity;
        return ofA != ofB ? ofA > ofB : a.kind < b.kind;
    }));
}

}  // namespace
