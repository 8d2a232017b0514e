#include "halvane/air/feature_use.h"

#include <cstdint>
#include <gtest/gtest.h>

#include "halvane/air/element_id.h"
#include "halvane/air/profile.h"

#include "tests/air/element_samples.h"
#include "tests/support/elements.h"
#include "tests/support/hostile_bytes.h"

using halvane::testing::Bytes;
using halvane::testing::bytesOf;
using halvane::testing::element;
using halvane::testing::joined;
using halvane::testing::ssidElement;
using namespace halvane::air;

namespace {

// SSID, RM Enabled Capabilities, RSN with SAE hash-to-element, WMM with U-APSD, Extended
// Capabilities (BSS Transition).
const Bytes kElements =
    joined({ssidElement("net"), element(70, bytesOf("7200000000")), element(244, bytesOf("20")),
            element(221, bytesOf("0050F202 0101 80 00 03A40000 27A40000 42435E00 62322F00")),
            element(127, bytesOf("0000080000000000"))});

Source at(ElementId id, std::uint32_t offset) {
    return {Origin::Element, id, offset};
}

TEST(AirFeatureUse, TellsTheElementOfEachFeature) {
    const FeatureUses expected = {
        {Feature::RadioMeasurement, at(ElementId::RmEnabledCapabilities, 5)},
        {Feature::BssTransition, at(ElementId::ExtendedCapabilities, 41)},
        {Feature::SaeHashToElement, at(ElementId::Rsnx, 12)},
        {Feature::Wmm, at(ElementId::Vendor, 15)},
        {Feature::UapsdAvailable, at(ElementId::Vendor, 15)},
    };
    EXPECT_EQ(featureUsesOf(kElements), expected);
}

TEST(AirFeatureUse, AgreesWithTheProfile) {
    Features features;
    for (const FeatureUse& use : featureUsesOf(kElements)) features.push_back(use.feature);
    EXPECT_EQ(features, profileOf(kElements).features);
    EXPECT_TRUE(featureUsesOf({}).empty());
}

}  // namespace
