// The simulated daemon's state file, control lines and requests.
#include <cstddef>
#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/property_list_value.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/client.h"
#include "halvane/model/daemon_status.h"
#include "halvane/model/interface.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/plist/xml_property_list.h"

#include "bench/foreign_bytes.h"
#include "bench/growth.h"
#include "tests/sim/answers.h"
#include "tools/halvaned-sim/control.h"
#include "tools/halvaned-sim/default_world.h"
#include "tools/halvaned-sim/simulation.h"
#include "tools/halvaned-sim/world.h"
#include "tools/halvaned-sim/world_file.h"

using halvane::ByteBuffer;
using halvane::DaemonStatus;
using halvane::HalvaneBSSConfig;
using halvane::HalvaneClient;
using halvane::HalvaneInterface;
using halvane::IPCMessage;
using halvane::PropertyListArray;
using halvane::PropertyListDictionary;
using halvane::PropertyListValue;
using namespace halvane::sim;

namespace bench {

namespace {

std::string nameOf(std::size_t index) {
    return "wlan" + std::to_string(index);
}

ByteBuffer addressOf(std::size_t index) {
    return {2,
            0,
            static_cast<std::uint8_t>(index >> 24),
            static_cast<std::uint8_t>(index >> 16),
            static_cast<std::uint8_t>(index >> 8),
            static_cast<std::uint8_t>(index)};
}

HalvaneBSSConfig configOf(std::size_t index) {
    auto config = HalvaneBSSConfig::init();
    config.setSSID_error(std::to_string(index));
    return config;
}

// The default interface under n names.
PropertyListArray interfaces(std::size_t count) {
    PropertyListArray list;
    auto skeleton = defaultWorld().interfaces()[0].record.skeletonRepresentation();
    for (std::size_t i = 0; i < count; ++i) {
        skeleton.set("InterfaceName", nameOf(i));
        list.emplace_back(skeleton);
    }
    return list;
}

PropertyListDictionary fileOf(std::size_t interfaceCount) {
    PropertyListDictionary file;
    file.set("Interfaces", interfaces(interfaceCount));
    return file;
}

// Under `key` a list of n skeletons for one interface.
template <typename MakeSkeleton>
PropertyListDictionary fileOfList(const char* key, std::size_t count, MakeSkeleton make) {
    PropertyListArray list;
    for (std::size_t i = 0; i < count; ++i) list.emplace_back(make(i));
    PropertyListDictionary lists;
    lists.set(nameOf(0), std::move(list));
    PropertyListDictionary file = fileOf(1);
    file.set(key, std::move(lists));
    return file;
}

PropertyListDictionary fileOfConfigs(std::size_t count) {
    return fileOfList("Configs", count,
                      [](std::size_t i) { return configOf(i).skeletonRepresentation(); });
}

PropertyListDictionary fileOfStations(std::size_t count) {
    return fileOfList("Stations", count, [](std::size_t i) {
        return HalvaneClient::initWithMAC(addressOf(i)).skeletonRepresentation();
    });
}

// n interfaces, each with a list of its own, and all disabled.
PropertyListDictionary fileOfInterfacesWithConfigs(std::size_t count) {
    PropertyListDictionary file = fileOf(count);
    PropertyListDictionary lists;
    for (std::size_t i = 0; i < count; ++i) lists.set(nameOf(i), PropertyListArray());
    file.set("Configs", std::move(lists));
    return file;
}

PropertyListDictionary fileOfDisabled(std::size_t count) {
    PropertyListDictionary file = fileOf(count);
    PropertyListArray names;
    for (std::size_t i = 0; i < count; ++i) names.emplace_back(nameOf(i));
    file.set("Disabled", std::move(names));
    return file;
}

// n stations of an interface whose name has n bytes.
PropertyListDictionary fileOfLongName(std::size_t count) {
    const std::string name(count, 'w');
    PropertyListArray stations;
    for (std::size_t i = 0; i < count; ++i) {
        stations.emplace_back(HalvaneClient::initWithMAC(addressOf(i)).skeletonRepresentation());
    }
    auto interface = defaultWorld().interfaces()[0].record.skeletonRepresentation();
    interface.set("InterfaceName", name);
    PropertyListDictionary lists;
    lists.set(name, std::move(stations));
    PropertyListDictionary file;
    file.set("Interfaces", PropertyListArray{PropertyListValue(std::move(interface))});
    file.set("Stations", std::move(lists));
    return file;
}

void addState(const char* row, PropertyListDictionary (*make)(std::size_t)) {
    addGrowth(
        row, 4096, [make](std::size_t n) { return *halvane::xmlPropertyList(make(n)); },
        [](const std::string& text) { return !worldFromText(text)->interfaces().empty(); });
}

void addStateRows() {
    addState("simulation state: configurations", fileOfConfigs);
    addState("simulation state: stations", fileOfStations);
    addState("simulation state: interfaces", fileOf);
    addState("simulation state: interfaces with configurations", fileOfInterfacesWithConfigs);
    addState("simulation state: disabled interfaces", fileOfDisabled);
    addState("simulation state: stations, and a long name", fileOfLongName);
}

// A simulation of one interface with n stations in range.
std::unique_ptr<Simulation> simulationOf(const PropertyListDictionary& file) {
    return std::unique_ptr<Simulation>(new Simulation{*worldFromPropertyList(file), {}, {}, {}});
}

bool isFollowed(Simulation& simulation, const std::string& line) {
    return control(simulation, line).refusal.empty();
}

void addControlRows() {
    addGrowth(
        "simulation: start and stop with stations", 4096,
        [](std::size_t n) {
            auto simulation = simulationOf(fileOfStations(n));
            simulation->world.addConfig(nameOf(0), configOf(0));
            return simulation;
        },
        [](const auto& simulation) {
            const bool done =
                isFollowed(*simulation, "start wlan0") && isFollowed(*simulation, "stop wlan0");
            return done && !simulation->world.takeNotifications().empty();
        });
    addGrowth(
        "simulation: burst", 16384, [](std::size_t n) { return n; },
        [](std::size_t n) {
            const auto simulation = simulationOf(fileOf(1));
            simulation->world.addConfig(nameOf(0), configOf(0));
            return isFollowed(*simulation, "start wlan0") &&
                   isFollowed(*simulation, "burst wlan0 " + std::to_string(n));
        });
    addGrowth(
        "simulation: show interfaces", 4096,
        [](std::size_t n) {
            auto simulation = simulationOf(fileOf(n));
            simulation->world.addConfig(nameOf(0), configOf(0));
            requireRow("show", isFollowed(*simulation, "start wlan0") &&
                                   isFollowed(*simulation, "burst wlan0 " + std::to_string(n)));
            return simulation;
        },
        [](const auto& simulation) { return isFollowed(*simulation, "show"); });
    addGrowth(
        "simulation: words of a line", 65536,
        [](std::size_t n) {
            return std::pair(simulationOf(fileOf(1)), "show " + repeated("a ", n));
        },
        [](const auto& input) { return !isFollowed(*input.first, input.second); });
}

IPCMessage requestOf(const char* command) {
    IPCMessage request;
    request.entries().set("command", command);
    return request;
}

void addRequestRows() {
    addGrowth(
        "simulation: configurations added", 4096, [](std::size_t n) { return n; },
        [](std::size_t n) {
            const auto simulation = simulationOf(fileOf(1));
            for (std::size_t i = 0; i < n; ++i) {
                if (simulation->world.addConfig(nameOf(0), configOf(i)) != DaemonStatus::Done) {
                    return false;
                }
            }
            return true;
        });
    addGrowth(
        "simulation: configurations added and removed", 4096, [](std::size_t n) { return n; },
        [](std::size_t n) {
            const auto simulation = simulationOf(fileOf(1));
            World& world = simulation->world;
            for (std::size_t i = 0; i < n; ++i) world.addConfig(nameOf(0), configOf(i));
            for (std::size_t i = 0; i < n; ++i) {
                if (world.removeConfig(nameOf(0), configOf(i)) != DaemonStatus::Done) return false;
            }
            return world.interfaces()[0].configs.empty();
        });
    addGrowth(
        "simulation: configurations listed", 4096,
        [](std::size_t n) { return simulationOf(fileOfConfigs(n)); },
        [](const auto& simulation) {
            const auto reply = answer(*simulation, ":1.5", requestOf("queryBSSConfigList"));
            return reply.kind == Answer::Kind::Reply;
        });
    addGrowth(
        "simulation: subscribers", 4096, [](std::size_t n) { return n; },
        [](std::size_t n) {
            const auto simulation = simulationOf(fileOf(1));
            for (std::size_t i = 0; i < n; ++i) {
                simulation->subscribers.add(":1." + std::to_string(i));
            }
            return simulation->subscribers.names().size() == n;
        });
}

}  // namespace

void addSimulationRows() {
    addStateRows();
    addControlRows();
    addRequestRows();
}

}  // namespace bench
