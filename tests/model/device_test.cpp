#include "halvane/model/device.h"

#include <cstdint>
#include <gtest/gtest.h>

#include "tests/model/test_support.h"
#include "tests/support/skeletons.h"

using namespace halvane;
using namespace halvane::testing;

namespace {

const ByteBuffer kAddress = {0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E};

HalvaneDevice deviceOfThreeChains() {
    auto device = HalvaneDevice::initWithMACAddress_withIndex(kAddress, 2);
    device.setNumRadioChains(3);
    return device;
}

TEST(Device, KeepsItsAddressAndIndex) {
    const auto device = HalvaneDevice::initWithMACAddress_withIndex(kAddress, UINT64_MAX);
    EXPECT_EQ(device.MACAddress(), kAddress);
    EXPECT_EQ(device.deviceIndex(), UINT64_MAX);
    EXPECT_EQ(device.numRadioChains(), 0u);
}

TEST(Device, ItsRadioChainsCanBeSet) {
    EXPECT_EQ(deviceOfThreeChains().numRadioChains(), 3u);
}

TEST(Device, WritesItsRadioChainsAsSpatialStreams) {
    PropertyListDictionary expected;
    expected.set("MAC", kAddress);
    expected.set("Index", 2u);
    expected.set("NumberSpatialStreams", 3u);
    EXPECT_EQ(deviceOfThreeChains().skeletonRepresentation(), expected);
}

TEST(Device, LeavesAnAbsentAddressOut) {
    PropertyListDictionary expected;
    expected.set("Index", 5u);
    expected.set("NumberSpatialStreams", 0u);
    const auto device = HalvaneDevice::initWithMACAddress_withIndex(std::nullopt, 5);
    EXPECT_EQ(device.skeletonRepresentation(), expected);
}

TEST(Device, BuiltFromNothingIsEmptyAndWritesSo) {
    const auto device = HalvaneDevice::initWithSkeletonRepresentation({});
    EXPECT_EQ(device.MACAddress(), ByteBuffer());
    EXPECT_EQ(device.deviceIndex(), 0u);
    EXPECT_EQ(device.numRadioChains(), 0u);

    PropertyListDictionary expected;
    expected.set("MAC", ByteBuffer());
    expected.set("Index", 0u);
    expected.set("NumberSpatialStreams", 0u);
    EXPECT_EQ(device.skeletonRepresentation(), expected);
}

TEST(Device, ComesThroughXmlEqual) {
    for (const std::uint64_t number :
         {std::uint64_t{0}, std::uint64_t{INT64_MAX}, std::uint64_t{1} << 63, UINT64_MAX}) {
        auto device = HalvaneDevice::initWithMACAddress_withIndex(kAddress, number);
        device.setNumRadioChains(number);
        const auto skeleton = throughXml(device.skeletonRepresentation());
        EXPECT_EQ(skeleton, device.skeletonRepresentation());
        EXPECT_EQ(HalvaneDevice::initWithSkeletonRepresentation(skeleton), device);
    }
}

TEST(Device, ReadsNumbersOfTheWrongKindAsZero) {
    for (const auto& value : valuesThatAreNoNumber()) {
        auto skeleton = deviceOfThreeChains().skeletonRepresentation();
        skeleton.set("Index", value);
        EXPECT_EQ(HalvaneDevice::initWithSkeletonRepresentation(skeleton).deviceIndex(), 0u);
        skeleton.set("NumberSpatialStreams", value);
        EXPECT_EQ(HalvaneDevice::initWithSkeletonRepresentation(skeleton).numRadioChains(), 0u);
    }
}

TEST(Device, ReadsAnAddressOfTheWrongKindAsAnEmptyOne) {
    for (const auto& value : valuesOfOtherKinds<ByteBuffer>()) {
        auto skeleton = deviceOfThreeChains().skeletonRepresentation();
        skeleton.set("MAC", value);
        const auto device = HalvaneDevice::initWithSkeletonRepresentation(skeleton);
        EXPECT_EQ(device.MACAddress(), ByteBuffer());
        EXPECT_EQ(device.deviceIndex(), 2u);
    }
}

TEST(Device, ReadsOtherNumbersAsTheNearestThatItHolds) {
    struct Row {
        PropertyListValue value;
        std::uint64_t index;
    };
    for (const Row& row : {Row{-1, 0}, Row{2.9, 2}, Row{1e300, UINT64_MAX}, Row{true, 1}}) {
        PropertyListDictionary skeleton;
        skeleton.set("Index", row.value);
        EXPECT_EQ(HalvaneDevice::initWithSkeletonRepresentation(skeleton).deviceIndex(), row.index);
    }
}

TEST(Device, DescribesItself) {
    EXPECT_EQ(deviceOfThreeChains().description(),
              "MAC Address               : 02:1A:2B:3C:4D:5E\n"
              "Index                     : 2\n"
              "Number of Spatial Streams : 3\n");
}

TEST(Device, DescribesWhatIsMissingAndWhatIsLarge) {
    auto device = HalvaneDevice::initWithMACAddress_withIndex(std::nullopt, UINT64_MAX);
    device.setNumRadioChains(std::uint64_t{1} << 32);
    EXPECT_EQ(device.description(),
              "MAC Address               : (null)\n"
              "Index                     : 18446744073709551615\n"
              "Number of Spatial Streams : 4294967296\n");
    EXPECT_EQ(HalvaneDevice::initWithSkeletonRepresentation({}).description(),
              "MAC Address               : \n"
              "Index                     : 0\n"
              "Number of Spatial Streams : 0\n");
}

TEST(Device, IsEqualByItsThreeValues) {
    const auto device = deviceOfThreeChains();
    EXPECT_EQ(device, deviceOfThreeChains());
    auto other = device;
    other.setNumRadioChains(2);
    EXPECT_NE(device, other);
    EXPECT_NE(HalvaneDevice::initWithMACAddress_withIndex(kAddress, 1),
              HalvaneDevice::initWithMACAddress_withIndex(kAddress, 2));
    EXPECT_NE(HalvaneDevice::initWithMACAddress_withIndex(std::nullopt, 1),
              HalvaneDevice::initWithMACAddress_withIndex(ByteBuffer(), 1));
}

}  // namespace
