#include "tools/halvane/commands/record_stream.h"

#include <cstdio>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "halvane/capture/frame_record.h"

#include "tools/halvane/commands/list_output.h"
#include "tools/halvane/output/record_json.h"
#include "tools/halvane/output/standard_output.h"
#include "tools/halvane/survey/network.h"

namespace halvane::tool {

namespace {

std::size_t markOf(const capture::Sighting& sighting) {
    const auto& elements = sighting.record.ieBuffer();
    std::string octets = std::to_string(sighting.record.capabilities());
    if (elements) octets.append(elements->bytes().begin(), elements->bytes().end());
    return std::hash<std::string>()(octets);
}

}  // namespace

void RecordStream::note(const Survey& survey, const MacAddress& address,
                        const NetworkFilter& filter) {
    const auto networks = survey.networksOf(address);
    if (networks.empty()) return;
    const Network& network = networks.front();
    if (!filter.passes(network)) return;
    const capture::Sighting sighting = network.heard->sighting();
    const std::size_t mark = markOf(sighting);
    if (printed_.size() > 2 * survey.most()) {
        std::erase_if(printed_, [&](const auto& item) { return !survey.contains(item.first); });
    }
    const auto [place, isFirst] = printed_.try_emplace(address, mark);
    if (!isFirst && std::exchange(place->second, mark) == mark) return;
    writeJSON(writer_, sighting, std::nullopt, network.statistics, listedMaker);
    writer_.newline();
    put(writer_.text());
    writer_.clear();
    std::fflush(stdout);
}

}  // namespace halvane::tool
