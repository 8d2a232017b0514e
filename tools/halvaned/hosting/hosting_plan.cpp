#include "tools/halvaned/hosting/hosting_plan.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <net/if.h>
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

// Names the interfaces of the networks behind the first.
class Names {
  public:
    Names(const std::string& interface, const IsTaken& isTaken)
        : interface_(interface), isTaken_(isTaken) {}

    std::string next() {
        std::string name = numbered(++number_);
        while (isTaken_(name)) name = numbered(++number_);
        return name;
    }

  private:
    // A name has at most 15 characters, and those of adapters in a USB socket often have all.
    std::string numbered(std::size_t number) const {
        const std::string suffix = '_' + std::to_string(number);
        return interface_.substr(0, IFNAMSIZ - 1 - suffix.size()) + suffix;
    }

    const std::string& interface_;
    const IsTaken& isTaken_;
    std::size_t number_ = 0;
};

// The flags of a radio with a domain of its own are those of its driver, whatever hostapd sets.
ChannelRules rulesFor(const HalvaneBSSConfig& configuration, const DeviceList& devices,
                      const DeviceInterface& interface, const Radio& radio) {
    const bool isAnother = configuration.country() && !radio.hasOwnRegulatoryDomain &&
                           configuration.country() != devices.countryOf(interface);
    return isAnother ? ChannelRules::Another : ChannelRules::InForce;
}

Result<std::int64_t, std::string> channelOf(const HalvaneBSSConfig& configuration,
                                            const DeviceList& devices,
                                            const DeviceInterface& interface, const Radio& radio) {
    const auto rules = rulesFor(configuration, devices, interface, radio);
    auto channel = channelFor(configuration, radio, rules);
    if (channel && !configuration.country() && isRadarProne(radio, *channel)) {
        return Unexpected("Channel " + std::to_string(*channel) +
                          " needs radar detection, and that a country.");
    }
    return channel;
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
                                             const InterfaceState& state, const Settings& settings,
                                             const IsTaken& isTaken) {
    HostapdPlan plan{.driver = settings.driver};
    std::uint32_t mostStations = settings.stations;
    auto configurations = ordered(state.configurations);
    for (auto& each : configurations) each = withCountry(std::move(each), settings);
    if (const Radio* const radio = devices.radioOf(interface)) {
        if (configurations.size() > radio->mostNetworks()) {
            return Unexpected(radio->name + " can host " + std::to_string(radio->mostNetworks()) +
                              " networks at the same time, and " + interface.name + " has " +
                              std::to_string(configurations.size()) + ".");
        }
        const auto channel = channelOf(configurations.front(), devices, interface, *radio);
        if (!channel) return Unexpected(channel.error());
        plan.channel = *channel;
        mostStations =
            std::min<std::uint32_t>(mostStations, radio->mostStations.value_or(mostStations));
    }
    Names names(interface.name, isTaken);
    for (auto& configuration : configurations) {
        const std::string name = plan.networks.empty() ? interface.name : names.next();
        if (!isHostableName(name)) return Unexpected("No interface can be called " + name + ".");
        plan.networks.push_back({.interface = name,
                                 .configuration = std::move(configuration),
                                 .maxStations = mostStations});
    }
    auto radius = radiusServer(settings);
    if (!radius) return Unexpected(std::move(radius).error());
    plan.radius = *std::move(radius);
    plan.eapUserFile = settings.eapUserFile.value_or("");
    plan.controlFolder = settings.runtimeFolder + "/control";
    return plan;
}

}  // namespace halvane::hosting
