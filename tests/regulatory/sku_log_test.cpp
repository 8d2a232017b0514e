// What searches log.
#include <gtest/gtest.h>

#include "halvane/regulatory/sku.h"
#include "halvane/utils/log.h"

#include "tests/support/log_recorder.h"

namespace {

using halvane::HalvaneSKU;
using halvane::testing::LogRecorder;

HalvaneSKU someSKU() {
    auto sku = HalvaneSKU::initWithFriendlyName_withShortName("Some", "S");
    sku.addDefaultCountry_withISOName_withISOCode("Austria", "AT", 40);
    sku.addDefaultCountry_withISOName_withISOCode("Belgium", "BE", 56);
    sku.addDefaultCountry_withISOName_withISOCode("Bulgaria", "BG", 100);
    return sku;
}

class SKUSearchLog : public ::testing::Test {
  protected:
    SKUSearchLog() {
        LogUtils_Finalize();
        LogIsEnabled(&gLogCategory_WiFi, kLogLevelVerbose);
        setLevel("verbose");
        LogControl(("WiFi:flags=function;level,WiFi:output=" + recorder_.spec()).c_str());
    }
    ~SKUSearchLog() override { LogUtils_Finalize(); }

    static void setLevel(const std::string& level) { LogControl(("WiFi:level=" + level).c_str()); }

    LogRecorder recorder_;
};

TEST_F(SKUSearchLog, TellsEachComparisonUpToTheMatch) {
    EXPECT_NE(someSKU().findCountryByFriendlyName("belgium"), nullptr);
    EXPECT_EQ(recorder_.text(),
              "[,findCountryByFriendlyName:@verbose] "
              "Compare Country <belgium> to Friendly Name <Austria>\n"
              "[,findCountryByFriendlyName:@verbose] "
              "Compare Country <belgium> to Friendly Name <Belgium>\n");
    EXPECT_EQ(recorder_.function, "-[HalvaneSKU findCountryByFriendlyName:]");
    EXPECT_EQ(recorder_.levels, (std::vector<std::uint32_t>{20, 20}));
}

TEST_F(SKUSearchLog, TellsISONamesAsSuch) {
    EXPECT_NE(someSKU().findCountryByISOName("at"), nullptr);
    EXPECT_EQ(recorder_.text(),
              "[,findCountryByISOName:@verbose] Compare Country <at> to ISO Name <AT>\n");
    EXPECT_EQ(recorder_.function, "-[HalvaneSKU findCountryByISOName:]");
}

TEST_F(SKUSearchLog, TellsEveryComparisonOfAVainSearch) {
    EXPECT_EQ(someSKU().findCountryByISOName("XX"), nullptr);
    EXPECT_EQ(recorder_.levels.size(), 3u);
}

TEST_F(SKUSearchLog, TellsARemovalAsItsSearch) {
    auto sku = someSKU();
    EXPECT_TRUE(sku.removeCountryByFriendlyName("Austria"));
    EXPECT_EQ(recorder_.text(),
              "[,findCountryByFriendlyName:@verbose] "
              "Compare Country <Austria> to Friendly Name <Austria>\n");
}

TEST_F(SKUSearchLog, TellsAbsentAndOddNames) {
    auto sku = someSKU();
    sku.countries()[0].setFriendlyName(std::nullopt);
    sku.countries()[1].setFriendlyName("%s %@");
    EXPECT_NE(sku.findCountryByFriendlyName("%S %@"), nullptr);
    EXPECT_EQ(recorder_.text(),
              "[,findCountryByFriendlyName:@verbose] "
              "Compare Country <%S %@> to Friendly Name <<<NULL>>>\n"
              "[,findCountryByFriendlyName:@verbose] "
              "Compare Country <%S %@> to Friendly Name <%s %@>\n");
}

TEST_F(SKUSearchLog, TellsNothingOfASKUWithoutCountries) {
    auto sku = HalvaneSKU::initWithFriendlyName_withShortName("Some", "S");
    EXPECT_EQ(sku.findCountryByFriendlyName("Austria"), nullptr);
    EXPECT_EQ(sku.findCountryByISOName("AT"), nullptr);
    EXPECT_FALSE(sku.removeCountryByFriendlyName("Austria"));
    EXPECT_TRUE(recorder_.pieces.empty());
}

TEST_F(SKUSearchLog, TellsNothingAboveItsLevel) {
    setLevel("verbose+1");
    EXPECT_NE(someSKU().findCountryByFriendlyName("belgium"), nullptr);
    EXPECT_EQ(someSKU().findCountryByISOName("XX"), nullptr);
    EXPECT_TRUE(recorder_.pieces.empty());
}

}  // namespace
