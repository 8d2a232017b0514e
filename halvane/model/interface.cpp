#include "halvane/model/interface.h"

#include <tuple>

#include "halvane/base/describe.h"
#include "halvane/base/skeleton_internal.h"
#include "halvane/model/address_text_internal.h"
#include "halvane/utils/printf/std_string_internal.h"

namespace halvane {

namespace {

constexpr const char* kMAC = "MAC";
constexpr const char* kInterfaceName = "InterfaceName";
constexpr const char* kRole = "Role";
constexpr const char* kSubsystem = "Subsystem";
constexpr const char* kDevice = "Device";
constexpr const char* kChannels = "Channels";

bool areEqual(const HalvaneDevice* a, const HalvaneDevice* b) {
    return a == b || (a != nullptr && b != nullptr && *a == *b);
}

// Returns the texts of the channels, which the engine prints as an array.
PropertyListValue descriptionsOf(const std::vector<HalvaneChannel>& channels) {
    PropertyListArray texts;
    texts.reserve(channels.size());
    for (const HalvaneChannel& channel : channels) texts.emplace_back(channel.description());
    return texts;
}

}  // namespace

HalvaneInterface HalvaneInterface::initWithDevice_withMAC_withBSDName(
    std::shared_ptr<HalvaneDevice> device, std::optional<ByteBuffer> mac,
    std::optional<std::string> name) {
    HalvaneInterface interface;
    interface.wifiDevice_ = std::move(device);
    interface.ifMAC_ = std::move(mac);
    interface.ifName_ = std::move(name);
    return interface;
}

std::optional<HalvaneInterface> HalvaneInterface::initWithSkeletonRepresentation(
    const PropertyListDictionary& skeleton) {
    HalvaneInterface interface;
    interface.ifName_ = skeleton::textFor(skeleton, kInterfaceName);
    interface.ifRole_ = skeleton::textFor(skeleton, kRole);
    interface.ifSubsystem_ = skeleton::textFor(skeleton, kSubsystem);
    if (!interface.ifName_ || !interface.ifRole_ || !interface.ifSubsystem_) return std::nullopt;
    interface.ifMAC_ = skeleton::dataFor(skeleton, kMAC);
    interface.wifiDevice_ = std::make_shared<HalvaneDevice>(
        HalvaneDevice::initWithSkeletonRepresentation(skeleton::dictionaryFor(skeleton, kDevice)));
    interface.availableChannels_ = skeleton::recordsFor<HalvaneChannel>(skeleton, kChannels);
    return interface;
}

PropertyListDictionary HalvaneInterface::skeletonRepresentation() const {
    PropertyListDictionary skeleton;
    skeleton::setIfPresent(skeleton, kMAC, ifMAC_);
    skeleton::setIfPresent(skeleton, kInterfaceName, ifName_);
    skeleton::setIfPresent(skeleton, kRole, ifRole_);
    skeleton::setIfPresent(skeleton, kSubsystem, ifSubsystem_);
    if (wifiDevice_) skeleton.set(kDevice, wifiDevice_->skeletonRepresentation());
    skeleton.set(kChannels, skeleton::skeletonsOf(availableChannels_));
    return skeleton;
}

std::string HalvaneInterface::description() const {
    const std::pair<const char*, PropertyListValue> lines[] = {
        {"MAC Address    : %@\n", addressText(ifMAC_)},
        {"Interface Name : %@\n", describe(ifName_)},
        {"Role           : %@\n", describe(ifRole_)},
        {"Subsystem      : %@\n", describe(ifSubsystem_)},
    };
    std::string text;
    for (const auto& [format, value] : lines) appendPrintF(text, format, &value);
    if (!availableChannels_.empty()) {
        const PropertyListValue channels = descriptionsOf(availableChannels_);
        appendPrintF(text, "Channels       : \n%@\n", &channels);
    }
    return text;
}

bool operator==(const HalvaneInterface& a, const HalvaneInterface& b) {
    const auto values = [](const HalvaneInterface& interface) {
        return std::tie(interface.ifMAC_, interface.ifName_, interface.ifRole_,
                        interface.ifSubsystem_, interface.availableChannels_);
    };
    return values(a) == values(b) && areEqual(a.wifiDevice_.get(), b.wifiDevice_.get());
}

}  // namespace halvane
