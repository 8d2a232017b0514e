#include "tools/halvaned/radio/device_records.h"

#include <optional>
#include <utility>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/mac_address.h"
#include "halvane/model/interface_builder.h"

#include "tools/halvaned/radio/radio.h"

namespace halvane::hosting {

namespace {

std::optional<ByteBuffer> bufferOf(const std::optional<MacAddress>& address) {
    return address ? std::optional(address->buffer()) : std::nullopt;
}

// If no file tells the address of a radio, that of its first interface is as good.
std::optional<MacAddress> addressOf(const DeviceList& devices, const Radio& radio) {
    if (radio.address) return radio.address;
    for (const DeviceInterface& interface : devices.interfaces) {
        if (interface.radio == radio.index && interface.address) return interface.address;
    }
    return std::nullopt;
}

HalvaneDevice recordOf(const DeviceList& devices, const Radio& radio) {
    auto record = HalvaneDevice::initWithMACAddress_withIndex(bufferOf(addressOf(devices, radio)),
                                                              radio.index);
    record.setNumRadioChains(radio.chains());
    return record;
}

HalvaneDevice recordOfWired(const DeviceInterface& interface) {
    return HalvaneDevice::initWithMACAddress_withIndex(bufferOf(interface.address),
                                                       interface.index);
}

HalvaneDevice deviceOf(const DeviceList& devices, const DeviceInterface& interface) {
    const Radio* const radio = devices.radioOf(interface);
    return radio != nullptr ? recordOf(devices, *radio) : recordOfWired(interface);
}

HalvaneChannel recordOf(const RadioBand& band, const RadioChannel& channel, int number) {
    auto record = HalvaneChannel::initWithChannel_withFrequency_isRadarProne(
        number, channel.frequency, channel.isRadarProne);
    record.setIsDisabled(!channel.canHost());
    record.setSupports40MHz(band.allows40(channel));
    record.setSupports80MHz(band.allows80(channel));
    return record;
}

}  // namespace

std::vector<HalvaneDevice> deviceRecords(const DeviceList& devices) {
    std::vector<HalvaneDevice> records;
    for (const Radio& radio : devices.radios) records.push_back(recordOf(devices, radio));
    for (const DeviceInterface& interface : devices.interfaces) {
        if (!interface.radio) records.push_back(recordOfWired(interface));
    }
    return records;
}

std::vector<HalvaneChannel> channelRecords(const DeviceList& devices,
                                           const DeviceInterface& interface) {
    std::vector<HalvaneChannel> records;
    const Radio* const radio = devices.radioOf(interface);
    if (radio == nullptr) return records;
    for (const auto& [band, content] : radio->bands) {
        for (const auto& [place, channel] : content.channels) {
            const auto number = channel.channel();
            if (number) records.push_back(recordOf(content, channel, number->number));
        }
    }
    return records;
}

HalvaneInterface interfaceRecord(const DeviceList& devices, const DeviceInterface& interface,
                                 std::string role, std::string_view subsystem) {
    InterfaceBuilder builder(interface.name, std::move(role), std::string(subsystem));
    builder.device(deviceOf(devices, interface)).channels(channelRecords(devices, interface));
    if (interface.address) builder.address(*interface.address);
    return builder.build();
}

}  // namespace halvane::hosting
