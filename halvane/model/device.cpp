#include "halvane/model/device.h"

#include "halvane/base/skeleton_internal.h"
#include "halvane/model/address_text_internal.h"
#include "halvane/utils/string_printf_internal.h"

namespace halvane {

namespace {

constexpr const char* kMAC = "MAC";
constexpr const char* kIndex = "Index";
// The key that the format has for numRadioChains().
constexpr const char* kNumberSpatialStreams = "NumberSpatialStreams";

}  // namespace

HalvaneDevice HalvaneDevice::initWithMACAddress_withIndex(const std::optional<ByteBuffer>& address,
                                                          std::uint64_t index) {
    HalvaneDevice device;
    device.MACAddress_ = address;
    device.deviceIndex_ = index;
    return device;
}

HalvaneDevice HalvaneDevice::initWithSkeletonRepresentation(
    const PropertyListDictionary& skeleton) {
    HalvaneDevice device;
    device.MACAddress_ = skeleton::dataFor(skeleton, kMAC);
    device.deviceIndex_ = skeleton::uint64For(skeleton, kIndex);
    device.numRadioChains_ = skeleton::uint64For(skeleton, kNumberSpatialStreams);
    return device;
}

PropertyListDictionary HalvaneDevice::skeletonRepresentation() const {
    PropertyListDictionary skeleton;
    skeleton::setIfPresent(skeleton, kMAC, MACAddress_);
    skeleton.set(kIndex, deviceIndex_);
    skeleton.set(kNumberSpatialStreams, numRadioChains_);
    return skeleton;
}

std::string HalvaneDevice::description() const {
    std::string text =
        stringPrintF("MAC Address               : %s\n", addressText(MACAddress_).c_str());
    appendPrintF(text, "Index                     : %llu\n",
                 static_cast<unsigned long long>(deviceIndex_));
    appendPrintF(text, "Number of Spatial Streams : %llu\n",
                 static_cast<unsigned long long>(numRadioChains_));
    return text;
}

}  // namespace halvane
