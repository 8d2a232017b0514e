#include "halvane/model/device.h"

#include "halvane/base/skeleton_internal.h"
#include "halvane/model/address_text_internal.h"
#include "halvane/utils/printf/std_string_internal.h"

namespace halvane {

namespace {

constexpr const char* kMAC = "MAC";
constexpr const char* kIndex = "Index";
// The format's key for numRadioChains().
constexpr const char* kNumberSpatialStreams = "NumberSpatialStreams";

}  // namespace

HalvaneDevice HalvaneDevice::initWithMACAddress_withIndex(const std::optional<ByteBuffer>& address,
                                                          std::uint64_t index) {
    HalvaneDevice device;
    Fields& fields = device.fields_.change();
    fields.MACAddress = address;
    fields.deviceIndex = index;
    return device;
}

HalvaneDevice HalvaneDevice::initWithSkeletonRepresentation(
    const PropertyListDictionary& skeleton) {
    HalvaneDevice device;
    Fields fields = {
        skeleton::dataFor(skeleton, kMAC),
        skeleton::uint64For(skeleton, kIndex),
        skeleton::uint64For(skeleton, kNumberSpatialStreams),
    };
    if (fields != *device.fields_) device.fields_.change() = std::move(fields);
    return device;
}

PropertyListDictionary HalvaneDevice::skeletonRepresentation() const {
    PropertyListDictionary skeleton;
    skeleton::setIfPresent(skeleton, kMAC, MACAddress());
    skeleton.set(kIndex, deviceIndex());
    skeleton.set(kNumberSpatialStreams, numRadioChains());
    return skeleton;
}

std::string HalvaneDevice::description() const {
    std::string text =
        stringPrintF("MAC Address               : %s\n", addressText(MACAddress()).c_str());
    appendPrintF(text, "Index                     : %llu\n",
                 static_cast<unsigned long long>(deviceIndex()));
    appendPrintF(text, "Number of Spatial Streams : %llu\n",
                 static_cast<unsigned long long>(numRadioChains()));
    return text;
}

}  // namespace halvane
