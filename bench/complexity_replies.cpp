// Replies of the daemon, up to their records.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/property_list_value.h"
#include "halvane/base/skeleton_internal.h"
#include "halvane/daemon/xpc_client.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/client.h"
#include "halvane/model/device.h"
#include "halvane/model/interface.h"
#include "halvane/platform/bus/service_event.h"
#include "halvane/platform/plist/xml_property_list.h"
#include "halvane/regulatory/channel.h"

#include "bench/foreign_bytes.h"
#include "bench/growth.h"
#include "bench/hostile_reply.h"

using halvane::ByteBuffer;
using halvane::HalvaneBSSConfig;
using halvane::HalvaneChannel;
using halvane::HalvaneClient;
using halvane::HalvaneDevice;
using halvane::HalvaneInterface;
using halvane::HalvaneXPCClient;
using halvane::PropertyListArray;
using halvane::PropertyListDictionary;
using halvane::PropertyListValue;
using halvane::ServiceReply;

namespace bench {

namespace {

constexpr ByteBuffer (*kAddress)() = [] { return ByteBuffer{2, 0, 0, 0, 0, 1}; };

ServiceReply replyOfSkeletons(const char* key, PropertyListArray skeletons) {
    return replyOf(key, halvane::xmlPropertyList(std::move(skeletons)).value_or(""));
}

// An interface with n channels.
PropertyListDictionary skeletonOfInterface(std::size_t channels) {
    auto record = HalvaneInterface::initWithDevice_withMAC_withBSDName(
        std::make_shared<HalvaneDevice>(HalvaneDevice::initWithMACAddress_withIndex(kAddress(), 1)),
        kAddress(), "wlan0");
    record.setAvailableChannels(std::vector<HalvaneChannel>(
        channels, HalvaneChannel::initWithChannel_withFrequency_isRadarProne(6, 2437, false)));
    auto skeleton = record.skeletonRepresentation();
    skeleton.set("Role", "AP");
    skeleton.set("Subsystem", "ieee80211");
    return skeleton;
}

// A reply of n records like the one of `skeleton`.
template <typename Parse>
void addRecords(const char* row, const char* key, PropertyListDictionary (*skeleton)(),
                Parse parse) {
    struct Input {
        ServiceReply reply;
        std::size_t count;
    };
    addGrowth(
        row, 4096,
        [key, skeleton](std::size_t n) {
            return Input{replyOfSkeletons(key, PropertyListArray(n, PropertyListValue(skeleton()))),
                         n};
        },
        [parse](const Input& input) { return parse(input.reply).size() == input.count; });
}

void addRecordRows() {
    addRecords(
        "reply: clients", "clients",
        [] { return HalvaneClient::initWithMAC(kAddress()).skeletonRepresentation(); },
        [](const ServiceReply& reply) {
            return HalvaneXPCClient::queryClientListResponse_error(reply);
        });
    addRecords(
        "reply: devices", "devices",
        [] {
            return HalvaneDevice::initWithMACAddress_withIndex(kAddress(), 1)
                .skeletonRepresentation();
        },
        [](const ServiceReply& reply) {
            return HalvaneXPCClient::queryDeviceListResponse_error(reply);
        });
    addRecords(
        "reply: interfaces", "interfaces", [] { return skeletonOfInterface(0); },
        [](const ServiceReply& reply) {
            return HalvaneXPCClient::queryInterfaceListResponse_error(reply);
        });
    addRecords(
        "reply: channels", "channels",
        [] {
            return HalvaneChannel::initWithChannel_withFrequency_isRadarProne(6, 2437, false)
                .skeletonRepresentation();
        },
        [](const ServiceReply& reply) {
            return HalvaneXPCClient::queryChannelListResponse_error(reply);
        });
    addRecords(
        "reply: configurations", "configs",
        [] { return HalvaneBSSConfig::init().skeletonRepresentation(); },
        [](const ServiceReply& reply) {
            return HalvaneXPCClient::queryBSSConfigListResponse_error(reply);
        });
}

// One client whose "IEs" are those of `bytes`.
ServiceReply replyOfClient(const Bytes& bytes) {
    PropertyListArray elements;
    for (std::size_t i = 0; i < bytes.size(); i += 2u + bytes[i + 1]) {
        elements.emplace_back(ByteBuffer(std::span(bytes).subspan(i, 2u + bytes[i + 1])));
    }
    auto skeleton = HalvaneClient::initWithMAC(kAddress()).skeletonRepresentation();
    skeleton.set("IEs", std::move(elements));
    return replyOfSkeletons("clients", {PropertyListValue(std::move(skeleton))});
}

void addClient(const char* row, Bytes (*makeElements)(std::size_t)) {
    addGrowth(
        row, 16384, [makeElements](std::size_t n) { return replyOfClient(makeElements(n)); },
        [](const ServiceReply& reply) {
            return HalvaneXPCClient::queryClientListResponse_error(reply).size() == 1;
        });
}

void addLargeRecordRows() {
    addClient("reply: a client of rates, ascending", risingRateElements);
    addClient("reply: a client of rates, descending", fallingRateElements);
    addGrowth(
        "reply: an interface of channels", 4096,
        [](std::size_t n) {
            return replyOfSkeletons("interfaces", {PropertyListValue(skeletonOfInterface(n))});
        },
        [](const ServiceReply& reply) {
            return HalvaneXPCClient::queryInterfaceListResponse_error(reply).size() == 1;
        });
    const auto parse = [](const ServiceReply& reply) {
        return HalvaneXPCClient::queryClientListResponse_error(reply).size() < SIZE_MAX;
    };
    addGrowth(
        "reply: empty dictionaries for clients", 65536,
        [](std::size_t n) { return replyOf("clients", listXml(repeated("<dict/>", n))); }, parse);
    addGrowth(
        "reply: booleans for clients", 65536,
        [](std::size_t n) { return replyOf("clients", listXml(repeated("<true/>", n))); }, parse);
    addGrowth(
        "reply: a client of many keys", 65536,
        [](std::size_t n) {
            std::string xml = "<dict>";
            for (std::size_t i = 0; i < n; ++i)
                xml += "<key>" + std::to_string(i) + "</key><true/>";
            return replyOf("clients", listXml(xml + "</dict>"));
        },
        parse);
}

}  // namespace

void addReplyRows() {
    addRecordRows();
    addLargeRecordRows();
}

}  // namespace bench
