// The decoder of today's networks: the walk over elements, and profiles of hostile frames.
//
// The size of a row is in octets, so that its constant is the time of each octet.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "halvane/air/bss_profile.h"
#include "halvane/air/channel.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_range.h"
#include "halvane/air/inheritance.h"
#include "halvane/air/multi_link.h"
#include "halvane/air/profile.h"
#include "halvane/base/mac_address.h"

#include "bench/foreign_bytes.h"
#include "bench/growth.h"

using namespace halvane::air;

namespace bench {

namespace {

constexpr std::size_t kMost = 65536;

// An element of one octet of ID, and of the extension if it has one.
Bytes elementOf(ElementId id, const Bytes& body) {
    Bytes element = {idOctetOf(id), 0};
    if (const auto extension = extensionOf(id)) element.push_back(*extension);
    append(element, body);
    element[1] = static_cast<std::uint8_t>(element.size() - 2);
    return element;
}

// The piece again and again, as often as it fits into `size` octets, but at least once.
Bytes filled(std::size_t size, const Bytes& piece) {
    Bytes bytes = piece;
    while (bytes.size() + piece.size() <= size) append(bytes, piece);
    return bytes;
}

Bytes filled(std::size_t size, ElementId id, const Bytes& body) {
    return filled(size, elementOf(id, body));
}

// --- The walk ---

// One element, and the fragments that bring it to `size` octets.
Bytes fragmented(ElementId id, Bytes body, std::size_t size) {
    constexpr std::size_t kFull = 255;
    if (const auto extension = extensionOf(id)) body.insert(body.begin(), *extension);
    if (body.size() < size) body.resize(size);
    Bytes bytes;
    for (std::size_t from = 0; from < body.size(); from += kFull) {
        const std::size_t length = std::min(kFull, body.size() - from);
        append(bytes, {from == 0 ? idOctetOf(id) : idOctetOf(ElementId::Fragment),
                       static_cast<unsigned>(length)});
        const auto start = body.begin() + static_cast<std::ptrdiff_t>(from);
        bytes.insert(bytes.end(), start, start + static_cast<std::ptrdiff_t>(length));
    }
    return bytes;
}

template <typename Make>
void addWalk(const char* row, Make make) {
    addGrowth(row, kMost, make, [](const Bytes& bytes) {
        std::size_t octets = 0;
        for (const Element& element : ElementRange(bytes)) octets += element.octets.size();
        return octets == bytes.size();
    });
}

void addWalkRows() {
    addWalk("air walk: empty elements", [](std::size_t n) { return filled(n, {0, 0}); });
    addWalk("air walk: one element of fragments",
            [](std::size_t n) { return fragmented(ElementId::MultiLink, {}, n); });
    addWalk("air walk: elements of two pieces",
            [](std::size_t n) { return filled(n, fragmented(ElementId::MultiLink, {}, 255)); });
    addWalk("air walk: fragments of nothing",
            [](std::size_t n) { return filled(n, ElementId::Fragment, Bytes(255)); });
}

// --- Profiles ---

const FixedFields kFixed = {halvane::MacAddress({2, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E}), 0x0411, 100};

template <typename Make, typename Holds>
void addProfile(const char* row, Make make, Holds holds) {
    addGrowth(row, kMost, make,
              [holds](const Bytes& bytes) { return holds(profileOf(bytes, kFixed, {5180})); });
}

bool hasFindings(const BssProfile& profile) {
    return !profile.findings.empty();
}

// As many access points of type 1, which take three octets each, as an element holds.
Bytes denseReport() {
    Bytes report;
    for (int channel = 0; channel < 4; ++channel) {
        append(report, {0xF1, 3, 81, 6});
        for (unsigned i = 0; i < 16; ++i) append(report, {0, i, 0});
    }
    return elementOf(ElementId::ReducedNeighborReport, report);
}

Bytes linkOf(unsigned id) {
    return {0, 9, static_cast<std::uint8_t>(0x20 | id), 0, 7, 2, 0, 0, 0, 0, 1};
}

// A Basic element with as many links as `size` octets hold.
Bytes multiLink(std::size_t size) {
    Bytes body = {0x10, 0, 8, 2, 0, 0, 0, 0, 9, 0};
    for (unsigned i = 1; body.size() < size; ++i) append(body, linkOf(i % 16));
    return fragmented(ElementId::MultiLink, body, 0);
}

void addProfileRows() {
    addProfile(
        "air profile: empty elements",
        [](std::size_t n) {
            return filled(n, {0, 0});
        },
        hasFindings);
    addProfile(
        "air profile: damaged elements",
        [](std::size_t n) {
            return filled(n, ElementId::Rsn, {1, 0, 0, 0x0F, 0xAC, 4, 255, 255});
        },
        hasFindings);
    addProfile(
        "air profile: whole RSN elements",
        [](std::size_t n) {
            return filled(n, ElementId::Rsn, {1, 0, 0, 0x0F, 0xAC, 4, 1, 0, 0, 0x0F, 0xAC, 4});
        },
        hasFindings);
    addProfile(
        "air profile: WPS",
        [](std::size_t n) {
            return filled(n, ElementId::Vendor,
                          {0x00, 0x50, 0xF2, 4, 0x10, 0x4A, 0, 1, 0x10, 0x10, 0x44, 0, 1, 2});
        },
        hasFindings);
    addProfile(
        "air profile: unknown vendors",
        [](std::size_t n) {
            return filled(n, ElementId::Vendor, {1, 2, 3, 4});
        },
        hasFindings);
    addProfile(
        "air profile: elements out of order",
        [](std::size_t n) {
            return filled(n, {5, 4, 0, 1, 0, 0, 3, 1, 6, 1, 1, 12});
        },
        hasFindings);
    addProfile(
        "air profile: Reduced Neighbor Report",
        [](std::size_t n) { return filled(n, denseReport()); },
        [](const BssProfile& profile) { return !profile.neighbors.empty(); });
}

void addLinkRows() {
    const auto hasLinks = [](const BssProfile& profile) {
        return profile.mld && !profile.mld->links.empty();
    };
    addProfile("air profile: links of one Multi-Link", multiLink, hasLinks);
    addProfile(
        "air profile: Multi-Link elements", [](std::size_t n) { return filled(n, multiLink(0)); },
        hasLinks);
    addProfile(
        "air profile: links beside neighbours",
        [](std::size_t n) {
            Bytes bytes = multiLink(n / 2);
            append(bytes, filled(n / 2, denseReport()));
            return bytes;
        },
        hasLinks);
}

// --- Networks that share a beacon ---

// A profile of twelve octets, or more with `more`.
Bytes nontransmitted(unsigned index, const Bytes& more = {}) {
    Bytes profile = {83, 2, 0x11, 0x04, 85, 1, static_cast<std::uint8_t>(index), 0, 0};
    append(profile, more);
    Bytes subelement = {0, static_cast<std::uint8_t>(profile.size())};
    append(subelement, profile);
    return subelement;
}

// Multiple BSSID elements with as many profiles as fit, one in each.
Bytes sharedBeacon(std::size_t size) {
    Bytes bytes;
    for (unsigned index = 1; bytes.size() < size; ++index) {
        Bytes body = {8};
        append(body, nontransmitted(index % 256));
        append(bytes, elementOf(ElementId::MultipleBssid, body));
    }
    return bytes;
}

// Half of the octets are profiles, half are what they inherit.
template <typename Make>
void addShared(const char* row, Make inherited) {
    addProfile(
        row,
        [inherited](std::size_t n) {
            Bytes bytes = inherited(n / 2);
            append(bytes, sharedBeacon(n / 2));
            return bytes;
        },
        [](const BssProfile& profile) { return !profile.nontransmitted.empty(); });
}

void addSharedRows() {
    addShared("air profile: networks of one beacon", [](std::size_t) { return Bytes(); });
    addShared("air profile: networks that inherit empty elements", [](std::size_t n) {
        return filled(n, {0, 0});
    });
    addShared("air profile: networks that inherit RSN elements", [](std::size_t n) {
        return filled(n, ElementId::Rsn, {1, 0, 0, 0x0F, 0xAC, 4, 1, 0, 0, 0x0F, 0xAC, 4});
    });
    addShared("air profile: networks that inherit neighbours",
              [](std::size_t n) { return filled(n, denseReport()); });
}

}  // namespace

void addAirRows() {
    addWalkRows();
    addProfileRows();
    addLinkRows();
    addSharedRows();
}

}  // namespace bench
