#include "tools/halvaned-sim/simulation.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/property_list_value.h"
#include "halvane/base/skeleton_internal.h"
#include "halvane/model/bss_config.h"
#include "halvane/platform/plist/xml_property_list.h"
#include "halvane/platform/plist/xml_property_list_reader.h"

#include "tools/halvaned-sim/notification.h"
#include "tools/halvaned-sim/status.h"

namespace halvane::sim {

namespace {

// A request while it is carried out. Commands add their results to the reply, beside the status.
struct Request {
    Simulation& simulation;
    const std::string& sender;
    const PropertyListDictionary& keys;
    PropertyListDictionary reply;

    World& world() const { return simulation.world; }
    std::optional<std::string> text(const char* key) const { return skeleton::textFor(keys, key); }
};

// XML can hold each of the texts, because requests and world files cannot add others.
ByteBuffer dataOf(PropertyListArray list) {
    return ByteBuffer::fromText(xmlPropertyList(std::move(list)).value_or(""));
}

Status listDevices(Request& request) {
    request.reply.set("devices", dataOf(skeleton::skeletonsOf(request.world().devices())));
    return Status::Done;
}

Status listInterfaces(Request& request) {
    PropertyListArray list;
    for (const SimulatedInterface& interface : request.world().interfaces()) {
        list.emplace_back(interface.record.skeletonRepresentation());
    }
    request.reply.set("interfaces", dataOf(std::move(list)));
    return Status::Done;
}

Status listChannels(Request& request) {
    const auto name = request.text("interface");
    if (!name) return Status::BadRequest;
    const SimulatedInterface* const interface = request.world().interfaceFor(*name);
    if (interface == nullptr) return Status::UnknownInterface;
    request.reply.set("channels",
                      dataOf(skeleton::skeletonsOf(interface->record.availableChannels())));
    return Status::Done;
}

Status listConfigs(Request& request) {
    const bool isOfAll = request.keys.find("interface") == nullptr;
    const auto name = request.text("interface");
    if (!isOfAll && !name) return Status::BadRequest;
    if (name && request.world().interfaceFor(*name) == nullptr) return Status::UnknownInterface;
    PropertyListArray list;
    for (const SimulatedInterface& interface : request.world().interfaces()) {
        if (name && interface.name() != *name) continue;
        for (PropertyListValue& config : skeleton::skeletonsOf(interface.configs)) {
            list.push_back(std::move(config));
        }
    }
    request.reply.set("configs", dataOf(std::move(list)));
    return Status::Done;
}

// The reply lists all stations, however many there are.
constexpr std::size_t kListAround = 1024;  // everything around the stations
static_assert(kMaximumStations * kLargestNewcomer + kLargestStationsInRange + kListAround <=
              kLargestReply);

Status listClients(Request& request) {
    request.reply.set("clients", dataOf(skeleton::skeletonsOf(request.world().clients())));
    return Status::Done;
}

template <Status (World::*action)(std::string_view, const HalvaneBSSConfig&)>
Status changeConfigs(Request& request) {
    const auto name = request.text("interface");
    const auto* const value = request.keys.find("bssconfig");
    const auto* const data = value != nullptr ? value->as<ByteBuffer>() : nullptr;
    if (!name || data == nullptr) return Status::BadRequest;
    const auto bytes = data->bytes();
    const auto list =
        propertyListFromXml({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    const auto* const skeleton = list ? list->as<PropertyListDictionary>() : nullptr;
    // XML 1.1 has characters that no list of configurations could hold.
    if (skeleton == nullptr || !xmlPropertyList(*list)) return Status::BadConfiguration;
    return (request.world().*action)(*name,
                                     HalvaneBSSConfig::initWithSkeletonRepresentation(*skeleton));
}

template <Status (World::*action)(std::string_view)>
Status changeInterface(Request& request) {
    const auto name = request.text("interface");
    return name ? (request.world().*action)(*name) : Status::BadRequest;
}

Status changeRole(Request& request) {
    const auto name = request.text("interface");
    const auto role = request.text("role");
    return name && role ? request.world().changeRole(*name, *role) : Status::BadRequest;
}

Status changeLogging(Request& request) {
    return request.simulation.logging.change(request.keys);
}

Status tellLogging(Request& request) {
    request.reply.erase("status");
    request.reply.set("params", request.simulation.logging.text());
    return Status::Done;
}

Status subscribe(Request& request) {
    const auto* const value = request.keys.find("notifyAP");
    const auto* const wants = value != nullptr ? value->as<bool>() : nullptr;
    if (wants == nullptr) return Status::BadRequest;
    if (*wants) {
        request.simulation.subscribers.add(request.sender);
    } else {
        request.simulation.subscribers.remove(request.sender);
    }
    return Status::Done;
}

struct Command {
    std::string_view name;
    Status (*run)(Request&);
    bool isList = false;
};

constexpr Command kCommands[] = {
    {"queryDeviceList", listDevices, true},
    {"queryInterfaceList", listInterfaces, true},
    {"queryChannelList", listChannels, true},
    {"queryBSSConfigList", listConfigs, true},
    {"clientList", listClients, true},
    {"configAdd", changeConfigs<&World::addConfig>},
    {"configRemove", changeConfigs<&World::removeConfig>},
    {"enable", changeInterface<&World::enable>},
    {"disable", changeInterface<&World::disable>},
    {"role", changeRole},
    {"bssStart", changeInterface<&World::startBSS>},
    {"bssStop", changeInterface<&World::stopBSS>},
    {"logging", changeLogging},
    {"queryLogging", tellLogging},
    {"subscribe", subscribe},
};

const Command* commandFor(std::string_view name) {
    const auto* const found =
        std::find_if(std::begin(kCommands), std::end(kCommands),
                     [&](const Command& command) { return command.name == name; });
    return found != std::end(kCommands) ? found : nullptr;
}

IPCMessage carryOut(const Command& command, Request request) {
    request.reply.set("status", 0);
    const Status status = command.run(request);
    if (status != Status::Done) return statusReply(static_cast<std::int64_t>(status));
    return IPCMessage(std::move(request.reply));
}

}  // namespace

bool isCommand(std::string_view name) {
    return commandFor(name) != nullptr;
}

bool isListCommand(std::string_view name) {
    const Command* const command = commandFor(name);
    return command != nullptr && command->isList;
}

IPCMessage statusReply(std::int64_t status) {
    IPCMessage reply;
    reply.entries().set("status", status);
    return reply;
}

Answer answer(Simulation& simulation, const std::string& sender, const IPCMessage& request) {
    const auto name = skeleton::textFor(request.entries(), "command");
    const Command* const command = name ? commandFor(*name) : nullptr;
    if (command == nullptr) {
        const Status status = name ? Status::UnknownCommand : Status::BadRequest;
        return {.reply = statusReply(static_cast<std::int64_t>(status))};
    }
    const FaultSetting setting = simulation.faults.of(*name);
    switch (setting.fault) {
        case Fault::Status:
            return {.reply = statusReply(setting.status)};
        case Fault::Silent:
            return {.kind = Answer::Kind::Silence, .reply = {}};
        case Fault::Error:
            return {.kind = Answer::Kind::Error, .reply = {}};
        case Fault::Gone:
            return {.kind = Answer::Kind::Gone, .reply = {}};
        case Fault::None:
        case Fault::Garbled:
        case Fault::Missing:
        case Fault::Mistyped:
            break;
    }
    const IPCMessage reply = carryOut(*command, {simulation, sender, request.entries(), {}});
    return {.reply = spoilt(reply, setting.fault)};
}

std::optional<IPCMessage> eventFor(const Simulation& simulation, const Notification& notification) {
    const Fault fault = simulation.faults.of(kEventTarget).fault;
    if (fault == Fault::Silent) return std::nullopt;
    return spoilt(notification.message(), fault);
}

}  // namespace halvane::sim
