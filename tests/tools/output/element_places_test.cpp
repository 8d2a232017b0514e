#include "tools/halvane/output/element_places.h"

#include <gtest/gtest.h>
#include <optional>

#include "halvane/air/ds_parameter_set.h"
#include "halvane/air/element_id.h"
#include "halvane/air/source.h"

#include "tests/air/element_samples.h"
#include "tests/support/hostile_bytes.h"

using namespace halvane;
using namespace halvane::air;
using namespace halvane::tool;
using halvane::testing::Bytes;
using halvane::testing::bytesOf;

namespace {

class ElementPlacesTest : public ::testing::Test {
  protected:
    // SSID "a", DS of channel 6 and a vendor's element.
    const Bytes octets_ = bytesOf("000161 030106 DD060050F2010100");
    const ElementPlaces places_{octets_, 36};
};

TEST_F(ElementPlacesTest, AreOctetsOfTheFrame) {
    EXPECT_EQ(places_.at(0), "@36");
    EXPECT_EQ(places_.of(Source{Origin::Element, ElementId::DsParameterSet, 3}),
              "DS Parameter Set @39");
    EXPECT_EQ(places_.of(ElementId::DsParameterSet), "DS Parameter Set @39");
    EXPECT_EQ(places_.inBody(ElementId::DsParameterSet, 0), "DS Parameter Set @41");
    EXPECT_EQ(ElementPlaces(octets_, 0).of(ElementId::DsParameterSet), "DS Parameter Set @3");
}

TEST_F(ElementPlacesTest, HaveNoOctetWhereThereIsNoElement) {
    EXPECT_EQ(places_.find(ElementId::Rsn), nullptr);
    EXPECT_EQ(places_.of(ElementId::Rsn), "RSN");
    EXPECT_EQ(places_.decode<DsParameterSet>()->currentChannel, 6);
    EXPECT_EQ(ElementPlaces({}, 0).decode<DsParameterSet>(), std::nullopt);
}

TEST_F(ElementPlacesTest, NameSourcesThatAreNoElements) {
    EXPECT_EQ(places_.of(Source{.origin = Origin::BeaconInterval}),
              originName(Origin::BeaconInterval));
}

TEST_F(ElementPlacesTest, HaveACommaBetweenSeveral) {
    EXPECT_EQ(places_.of(Sources()), "");
    EXPECT_EQ(places_.of(Sources{{Origin::Element, ElementId::Ssid, 0},
                                 {Origin::Element, ElementId::DsParameterSet, 3}}),
              "SSID @36, DS Parameter Set @39");
}

TEST_F(ElementPlacesTest, FindElementsByTheirFirstOctet) {
    ASSERT_NE(places_.elementAt(3), nullptr);
    EXPECT_EQ(places_.elementAt(3)->id, ElementId::DsParameterSet);
    EXPECT_EQ(places_.elementAt(4), nullptr);
    EXPECT_EQ(places_.elementAt(100), nullptr);
}

}  // namespace
