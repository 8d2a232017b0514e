#include "halvane/model/interface_builder.h"

#include <memory>
#include <optional>
#include <utility>

#include "halvane/base/byte_buffer.h"

namespace halvane {

InterfaceBuilder::InterfaceBuilder(std::string name, std::string role, std::string subsystem)
    : interface_(HalvaneInterface::initWithDevice_withMAC_withBSDName(nullptr, std::nullopt,
                                                                      std::move(name))) {
    interface_.ifRole_ = std::move(role);
    interface_.ifSubsystem_ = std::move(subsystem);
}

InterfaceBuilder::InterfaceBuilder(HalvaneInterface interface) : interface_(std::move(interface)) {}

InterfaceBuilder& InterfaceBuilder::role(std::string value) {
    interface_.ifRole_ = std::move(value);
    return *this;
}

InterfaceBuilder& InterfaceBuilder::address(const MacAddress& value) {
    interface_.ifMAC_ = value.buffer();
    return *this;
}

InterfaceBuilder& InterfaceBuilder::device(const HalvaneDevice& value) {
    interface_.wifiDevice_ = std::make_shared<HalvaneDevice>(value);
    return *this;
}

InterfaceBuilder& InterfaceBuilder::channels(std::vector<HalvaneChannel> value) {
    interface_.setAvailableChannels(std::move(value));
    return *this;
}

}  // namespace halvane
