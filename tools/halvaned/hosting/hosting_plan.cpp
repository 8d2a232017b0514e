#include "tools/halvaned/hosting/hosting_plan.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "halvane/base/property_list_value.h"
#include "halvane/model/bss_config.h"
#include "halvane/platform/os/file_internal.h"

#include "tools/halvaned/hosting/channel_choice.h"
#include "tools/halvaned/radio/radio.h"

namespace halvane::hosting {

namespace {

constexpr std::size_t kLongestSecretFile = 4096;

std::vector<HalvaneBSSConfig> ordered(std::vector<HalvaneBSSConfig> configurations) {
    std::stable_sort(
        configurations.begin(), configurations.end(),
        [](const auto& a, const auto& b) { return a.preferredOrder() < b.preferredOrder(); });
    return configurations;
}

// A configuration without a country gets that of the settings.
HalvaneBSSConfig withCountry(HalvaneBSSConfig configuration, const Settings& settings) {
    if (!settings.country || configuration.country()) return configuration;
    auto skeleton = configuration.skeletonRepresentation();
    skeleton.set("country", *settings.country);
    return HalvaneBSSConfig::initWithSkeletonRepresentation(skeleton);
}

std::string networkName(const std::string& interface, std::size_t index) {
    return index == 0 ? interface : interface + '_' + std::to_string(index);
}

Result<std::optional<RadiusServer>, std::string> radiusServer(const Settings& settings) {
    if (!settings.radiusServer) return std::optional<RadiusServer>();
    RadiusServer server{.address = *settings.radiusServer,
                        .port = static_cast<std::uint16_t>(settings.radiusPort)};
    if (settings.radiusSecretFile) {
        const std::string& path = *settings.radiusSecretFile;
        const FileText file = readFile(path, kLongestSecretFile);
        if (file.text.empty()) return Unexpected(path + " has no secret that can be read.");
        server.secret = file.text.substr(0, file.text.find('\n'));
    }
    return std::optional(std::move(server));
}

}  // namespace

Result<HostapdPlan, std::string> hostingPlan(const DeviceList& devices,
                                             const DeviceInterface& interface,
                                             const InterfaceState& state,
                                             const Settings& settings) {
    HostapdPlan plan{.driver = settings.driver};
    const auto configurations = ordered(state.configurations);
    if (const Radio* const radio = devices.radioOf(interface)) {
        if (configurations.size() > radio->mostNetworks()) {
            return Unexpected(radio->name + " can host " + std::to_string(radio->mostNetworks()) +
                              " networks at the same time, and " + interface.name + " has " +
                              std::to_string(configurations.size()) + ".");
        }
        const auto channel = channelFor(configurations.front(), *radio);
        if (!channel) return Unexpected(channel.error());
        plan.channel = *channel;
    }
    for (std::size_t i = 0; i < configurations.size(); ++i) {
        const std::string name = networkName(interface.name, i);
        if (!isInterfaceName(name)) return Unexpected("No interface can be called " + name + ".");
        plan.networks.push_back({.interface = name,
                                 .configuration = withCountry(configurations[i], settings),
                                 .maxStations = settings.stations});
    }
    auto radius = radiusServer(settings);
    if (!radius) return Unexpected(std::move(radius).error());
    plan.radius = *std::move(radius);
    plan.eapUserFile = settings.eapUserFile.value_or("");
    plan.controlFolder = settings.runtimeFolder + "/control";
    return plan;
}

}  // namespace halvane::hosting
