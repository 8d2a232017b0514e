#include "tools/halvane/report/report_data.h"

#include <algorithm>
#include <array>
#include <utility>

#include "halvane/air/finding.h"
#include "halvane/base/ascii_internal.h"
#include "halvane/base/mac_address.h"
#include "halvane/capture/frame_record.h"

#include "tools/halvane/networks/network_groups.h"
#include "tools/halvane/output/network_name.h"

namespace halvane::tool {

namespace {

std::string idOf(const MacAddress& address) {
    std::string id = "n-";
    for (const std::uint8_t octet : address.octets()) appendHexOctet(id, octet, kLowerHexDigits);
    return id;
}

// The strongest first; what is not told stands last.
bool isStronger(const std::optional<int>& left, const std::optional<int>& right) {
    return left && (!right || *left > *right);
}

std::vector<ReportNetwork> reportNetworks(std::vector<Network>&& sorted,
                                          const ReportOptions& options) {
    std::vector<ReportNetwork> networks;
    networks.reserve(sorted.size());
    for (Network& network : sorted) {
        ReportNetwork& place = networks.emplace_back();
        place.id = idOf(network.bssid);
        place.name = networkName(network, {});
        place.isOwn = options.isOwn && options.isOwn(network);
        place.isNameless = !isNamed(network);
        place.signal = signalOf(network);
        place.network = std::move(network);
    }
    return networks;
}

// Own ones first, and then the strongest: a flood of strong ones pushes nobody's own off the page.
std::vector<ReportNetwork*> byImportance(std::vector<ReportNetwork>& networks) {
    std::vector<ReportNetwork*> order;
    order.reserve(networks.size());
    for (const bool isOwn : {true, false}) {
        for (ReportNetwork& network : networks) {
            if (network.isOwn == isOwn) order.push_back(&network);
        }
    }
    return order;
}

bool isNotable(const ReportNetwork& network) {
    const auto isGrave = [](const air::Finding& finding) {
        return finding.info().severity != air::Severity::Note;
    };
    return network.isOwn || std::ranges::any_of(network.network.profile.findings, isGrave);
}

std::size_t octetsOf(const Network& network) {
    if (network.heard == nullptr) return 0;
    const capture::Sighting sighting = network.heard->sighting();
    const auto& elements = sighting.record.ieBuffer();
    return elements ? elements->bytes().size() : 0;
}

// Details grow with the elements that they explain.
std::size_t rowCount(std::span<ReportNetwork* const> order, const ReportLimits& limits) {
    const std::size_t most = std::min(order.size(), limits.rows);
    std::size_t octets = 0;
    for (std::size_t i = 0; i < most; ++i) {
        octets += octetsOf(order[i]->network);
        if (octets > limits.rowOctets) return i;
    }
    return most;
}

void placeNetworks(std::span<ReportNetwork* const> order, const ReportLimits& limits) {
    const std::size_t rows = rowCount(order, limits);
    for (std::size_t i = rows; i < order.size(); ++i) {
        order[i]->place = i - rows < limits.briefRows ? ReportNetwork::Place::BriefRow
                                                      : ReportNetwork::Place::Nowhere;
    }
}

void chooseOctets(std::span<ReportNetwork* const> order, ReportDetails details,
                  const ReportLimits& limits) {
    if (details == ReportDetails::None) return;
    const bool isBound = details == ReportDetails::Auto;
    const bool hasAll =
        details == ReportDetails::All || (isBound && order.size() <= limits.withOctets);
    std::size_t count = 0;
    std::size_t octets = 0;
    for (ReportNetwork* const network : order) {
        if (network->place != ReportNetwork::Place::Row) return;
        if (!hasAll && !isNotable(*network)) continue;
        octets += octetsOf(network->network);
        if (isBound && (count == limits.withOctets || octets > limits.octets)) return;
        network->hasOctets = true;
        ++count;
    }
}

// The order of the networks is that of the radios too.
std::vector<Radio> groupRadios(std::span<const Network> sorted) {
    std::vector<Radio> radios;
    for (const NetworkGroup& group : groupsByRadio(sorted)) {
        Radio& radio = radios.emplace_back();
        radio.signal = signalOf(*group.front());
        for (const Network* const network : group) {
            radio.networks.push_back(static_cast<std::size_t>(network - sorted.data()));
        }
    }
    return radios;
}

void connect(std::vector<Radio>& radios, std::vector<ReportNetwork>& networks) {
    for (std::size_t i = 0; i < radios.size(); ++i) {
        for (const std::size_t index : radios[i].networks) {
            radios[i].isOwn = radios[i].isOwn || networks[index].isOwn;
            networks[index].radio = i;
        }
    }
}

}  // namespace

std::size_t ReportData::countOf(ReportNetwork::Place place) const {
    return static_cast<std::size_t>(std::ranges::count(networks, place, &ReportNetwork::place));
}

std::optional<air::Band> ReportData::bandOf(const Radio& radio) const {
    const auto& band = channelOf(radio).band;
    return band ? std::optional(**band) : std::nullopt;
}

ShownText ReportData::nameOf(const Radio& radio) const {
    const std::string& device = strongestOf(radio).network.details.accessPoint;
    return device.empty() ? strongestOf(radio).name : shownText(device, {});
}

ReportData reportData(ReportSource source, ReportOptions options, ReportLimits limits) {
    ReportData data;
    std::ranges::stable_sort(source.networks, isStronger,
                             [](const Network& network) { return signalOf(network); });
    data.radios = groupRadios(source.networks);
    data.networks = reportNetworks(std::move(source.networks), options);
    const auto order = byImportance(data.networks);
    placeNetworks(order, limits);
    chooseOctets(order, options.details, limits);
    connect(data.radios, data.networks);
    data.hasOwn = static_cast<bool>(options.isOwn);
    data.files = std::move(source.files);
    data.captures = source.captures;
    data.all = source.all;
    data.letGo = source.letGo;
    data.options = std::move(options);
    data.limits = limits;
    return data;
}

int rankOf(air::Security security) {
    using air::Security;
    constexpr std::array kWeakestFirst = {Security::Wep,
                                          Security::WpaPersonal,
                                          Security::WpaEnterprise,
                                          Security::Open,
                                          Security::EnhancedOpenTransition,
                                          Security::Broken,
                                          Security::Unknown,
                                          Security::WpaWpa2Personal,
                                          Security::WpaWpa2Enterprise,
                                          Security::Wapi,
                                          Security::Osen,
                                          Security::Wpa2Personal,
                                          Security::Wpa2Enterprise,
                                          Security::Dpp,
                                          Security::EnhancedOpen,
                                          Security::Wpa2Wpa3Personal,
                                          Security::Wpa2Wpa3Enterprise,
                                          Security::Wpa3Personal,
                                          Security::Wpa3Enterprise,
                                          Security::Wpa3Enterprise192};
    const auto* const place = std::ranges::find(kWeakestFirst, security);
    return static_cast<int>(place - kWeakestFirst.begin());
}

}  // namespace halvane::tool
