// Interfaces with devices and channels, as a daemon's reply lists them.
#ifndef BENCH_INTERFACE_LIST_H
#define BENCH_INTERFACE_LIST_H

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/property_list_value.h"
#include "halvane/model/device.h"
#include "halvane/model/interface.h"
#include "halvane/regulatory/channel.h"

namespace bench {

inline std::vector<halvane::HalvaneChannel> channels() {
    constexpr int kChannels = 42;
    std::vector<halvane::HalvaneChannel> list;
    for (int i = 0; i < kChannels; ++i) {
        const int number = 36 + 4 * i;
        auto channel = halvane::HalvaneChannel::initWithChannel_withFrequency_isRadarProne(
            number, 5000 + 5 * number, i % 3 == 0);
        channel.setSupports40MHz(i % 2 == 0);
        list.push_back(channel);
    }
    return list;
}

inline halvane::HalvaneInterface interface(int index) {
    using namespace halvane;
    const auto last = static_cast<std::uint8_t>(index);
    auto device = std::make_shared<HalvaneDevice>(HalvaneDevice::initWithMACAddress_withIndex(
        ByteBuffer{0x02, 0x1A, 0x2B, 0x3C, 0x4D, last}, static_cast<unsigned>(index)));
    device->setNumRadioChains(3);
    auto skeleton = HalvaneInterface::initWithDevice_withMAC_withBSDName(
                        std::move(device), ByteBuffer{0x02, 0x1A, 0x2B, 0x3C, 0x4E, last},
                        "wlan" + std::to_string(index))
                        .skeletonRepresentation();
    skeleton.set("Role", "infrastructure");
    skeleton.set("Subsystem", "ieee80211");
    auto record = HalvaneInterface::initWithSkeletonRepresentation(skeleton);
    if (!record) std::abort();
    record->setAvailableChannels(channels());
    return *record;
}

inline std::vector<halvane::HalvaneInterface> interfaces(int count) {
    std::vector<halvane::HalvaneInterface> list;
    for (int i = 0; i < count; ++i) list.push_back(interface(i));
    return list;
}

}  // namespace bench

#endif
