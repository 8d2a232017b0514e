#include "halvane/air/reduced_neighbor_report.h"

#include <algorithm>

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/reduced_neighbor_report_internal.h"

namespace halvane::air {

namespace {

constexpr ValueName kTypes[] = {{0, "neighbor AP"}, {1, "MLD parameters"}};

constexpr BitField kHeader[] = {
    {0, 2, "TBTT Information Field Type", {.names = kTypes}},
    {2, 1, "Filtered Neighbor AP"},
    {3, 1, "Reserved"},
    {4, 4, "TBTT Information Count less 1"},
    {8, 8, "TBTT Information Length"},
};
constexpr BitField kBssParameters[] = {
    {0, 1, "OCT Recommended"},
    {1, 1, "Same SSID"},
    {2, 1, "Multiple BSSID"},
    {3, 1, "Transmitted BSSID"},
    {4, 1, "Member Of ESS With 2.4/5 GHz Co-Located AP"},
    {5, 1, "Unsolicited Probe Responses Active"},
    {6, 1, "Co-Located AP"},
    {7, 1, "Reserved"},
};
constexpr BitField kMldParameters[] = {
    {0, 8, "AP MLD ID"},
    {8, 4, "Link ID"},
    {12, 8, "BSS Parameters Change Count"},
    {20, 1, "All Updates Included"},
    {21, 1, "Disabled Link Indication"},
    {22, 2, "Reserved"},
};
constexpr ValueName kOffsets[] = {{254, "254 TU or more"}, {255, "unknown"}};
constexpr ValueName kPsds[] = {{127, "no limit"}};

// The fields of one access point.
struct Shape {
    bool offset = false;
    bool bssid = false;
    bool shortSsid = false;
    bool parameters = false;
    bool psd = false;
    bool mld = false;
};
struct LengthShape {
    std::size_t length;
    Shape shape;
};
// Table 9-338 with 802.11be; a length of more than 16 adds octets that are not known.
constexpr LengthShape kShapes[] = {
    {1, {.offset = true}},
    {2, {.offset = true, .parameters = true}},
    {5, {.offset = true, .shortSsid = true}},
    {6, {.offset = true, .shortSsid = true, .parameters = true}},
    {7, {.offset = true, .bssid = true}},
    {8, {.offset = true, .bssid = true, .parameters = true}},
    {9, {.offset = true, .bssid = true, .parameters = true, .psd = true}},
    {10, {.offset = true, .bssid = true, .mld = true}},
    {11, {.offset = true, .bssid = true, .shortSsid = true}},
    {12, {.offset = true, .bssid = true, .shortSsid = true, .parameters = true}},
    {13, {.offset = true, .bssid = true, .shortSsid = true, .parameters = true, .psd = true}},
    {16, {true, true, true, true, true, true}},
};

constexpr std::size_t kMldSize = 3;
constexpr std::size_t kWholeSize = 16;

constexpr Shape shapeOf(std::uint8_t type, std::size_t length) {
    if (type == 1 && length >= kMldSize) return {.mld = true};
    if (type != 0) return {};
    for (const LengthShape& row : kShapes) {
        if (row.length == std::min(length, kWholeSize)) return row.shape;
    }
    return {};
}

constexpr auto kAccessPointLayout = [](auto& codec, auto& point, const Shape& shape) {
    codec.when(shape.offset, point.tbttOffset, [&](auto& value) {
        codec.number("Neighbor AP TBTT Offset", value, {.unit = "TU", .names = kOffsets});
    });
    codec.when(shape.bssid, point.bssid, [&](auto& value) { codec.address("BSSID", value); });
    codec.when(shape.shortSsid, point.shortSsid,
               [&](auto& value) { codec.number("Short SSID", value); });
    codec.when(shape.parameters, point.bssParameters, [&](auto& value) {
        codec.group("BSS Parameters", [&] { codec.bits(value.fields, kBssParameters); });
    });
    codec.when(shape.psd, point.psd, [&](auto& value) {
        codec.number("20 MHz PSD", value, {.unit = "0.5 dBm/MHz", .names = kPsds});
    });
    codec.when(shape.mld, point.mldParameters, [&](auto& value) {
        codec.group("MLD Parameters", [&] { codec.bits(value.fields, kMldParameters); });
    });
    codec.rest(point.rest);
};

constexpr auto kNeighborLayout = [](auto& codec, auto& neighbor, auto& accessPoints) {
    codec.group("TBTT Information Header", [&] { codec.bits(neighbor.header, kHeader); });
    codec.number("Operating Class", neighbor.operatingClass);
    codec.number("Channel Number", neighbor.channel);
    const std::size_t length = neighbor.length();
    if (length == 0) return;
    codec.list(neighbor.header.bits(4, 4) + 1, accessPoints, [&](auto& point) {
        codec.group("TBTT Information", [&] {
            codec.within(length, [&] {
                kAccessPointLayout(codec, point, shapeOf(neighbor.type(), length));
            });
        });
    });
};

constexpr std::size_t kHeaderSize = 4;

// Whether a channel and all of its access points follow.
constexpr auto kFits = [](const auto& codec) {
    const std::size_t count = (codec.peek().value_or(0) >> 4) + 1u;
    const std::size_t length = codec.peek(1).value_or(0);
    return codec.remaining() >= kHeaderSize + count * length;
};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.listWhile(kFits, element.neighbors, [&](auto& neighbor) {
        codec.group("Neighbor AP Information",
                    [&] { kNeighborLayout(codec, neighbor, neighbor.accessPoints); });
    });
    codec.rest(element.rest);
};

// In place of the list of a channel's access points: hands each on.
struct AccessPoints {
    using value_type = TbttInformation;

    void push_back(const TbttInformation& accessPoint) const { use(channel, accessPoint); }

    const NeighborApInformation& channel;
    const NeighborUse& use;
};

std::size_t sizeOf(const TbttInformation& point) {
    ElementWriter writer;
    kAccessPointLayout(writer, point, Shape());
    return writer.take().size();
}

// Sets count and length to those of the access points. Returns false if the header cannot tell
// them.
bool markHeader(NeighborApInformation& neighbor) {
    const auto& points = neighbor.accessPoints;
    if (points.empty()) return true;
    constexpr std::size_t kMaxPoints = 16;
    constexpr std::size_t kMaxSize = 255;
    const std::size_t size = sizeOf(points[0]);
    const bool isAlike = std::ranges::all_of(
        points, [size](const TbttInformation& point) { return sizeOf(point) == size; });
    if (points.size() > kMaxPoints || size > kMaxSize || !isAlike) return false;
    neighbor.header.setBits(4, 4, static_cast<std::uint32_t>(points.size() - 1));
    neighbor.header.setBits(8, 8, static_cast<std::uint32_t>(size));
    return true;
}

}  // namespace

void forEachNeighbor(Octets body, const NeighborUse& use) {
    ElementReader reader(body);
    while (reader.hasMore() && kFits(reader)) {
        NeighborApInformation channel;
        const AccessPoints accessPoints = {channel, use};
        kNeighborLayout(reader, channel, accessPoints);
    }
}

std::optional<ReducedNeighborReport> ReducedNeighborReport::decode(Octets body) {
    return decodeBy<ReducedNeighborReport>(kLayout, body);
}

std::optional<ElementDamage> ReducedNeighborReport::describe(Octets body, FieldSink& sink) {
    return describeBy<ReducedNeighborReport>(kLayout, body, sink);
}

std::vector<std::uint8_t> ReducedNeighborReport::encode() const {
    ReducedNeighborReport report = *this;
    for (NeighborApInformation& neighbor : report.neighbors) {
        if (!markHeader(neighbor)) return {};
    }
    return encodeBy(kLayout, report);
}

}  // namespace halvane::air
