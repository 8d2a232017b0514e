// A beacon of Wi-Fi 7 with a multi-link device: 500 octets of elements and fixed fields.
#ifndef BENCH_MULTI_LINK_BEACON_H
#define BENCH_MULTI_LINK_BEACON_H

#include <cstdint>
#include <initializer_list>
#include <vector>

#include "halvane/air/element_id.h"
#include "halvane/air/element_writer.h"

#include "bench/beacon.h"

namespace bench {

inline std::vector<std::uint8_t> multiLinkBeacon() {
    using halvane::air::appendElement;
    using halvane::air::ElementId;
    using Bytes = std::vector<std::uint8_t>;
    Bytes frame(kBeacon, kBeacon + kFixedSize);
    const auto add = [&frame](ElementId id, const Bytes& body) { appendElement(frame, id, body); };
    add(ElementId::Ssid, {'n', 'e', 'i', 'g', 'h', 'b', 'o', 'u', 'r', '-', '1', '2'});
    add(ElementId::SupportedRates, {0x8C, 0x12, 0x98, 0x24, 0xB0, 0x48, 0x60, 0x6C});
    add(ElementId::Tim, {0, 2, 0, 0});
    add(ElementId::Country, {'D', 'E', 4, 36, 4, 23, 52, 4, 23, 100, 11, 30});
    add(ElementId::BssLoad, {9, 0, 60, 0, 0});
    add(ElementId::Rsn, {1, 0,    0x00, 0x0F, 0xAC, 9,    1, 0, 0x00, 0x0F, 0xAC, 9,    1,
                         0, 0x00, 0x0F, 0xAC, 24,   0xCC, 0, 0, 0,    0x00, 0x0F, 0xAC, 12});
    add(ElementId::RmEnabledCapabilities, {0x72, 0, 0, 0, 0});
    Bytes ht(26, 0);
    ht[0] = 0x6F;
    ht[3] = ht[4] = 0xFF;
    add(ElementId::HtCapabilities, ht);
    Bytes htOperation(22, 0);
    htOperation[0] = 36;
    htOperation[1] = 5;
    add(ElementId::HtOperation, htOperation);
    add(ElementId::ExtendedCapabilities, {4, 0, 8, 0, 0, 0, 0, 0x40, 0, 0x40, 0, 1});
    add(ElementId::VhtCapabilities, {0x76, 0, 0x82, 0x33, 0xFA, 0xFF, 0, 0, 0xFA, 0xFF, 0, 0x20});
    add(ElementId::VhtOperation, {1, 42, 50, 0xFC, 0xFF});
    add(ElementId::TransmitPowerEnvelope, {3, 40, 40, 40, 40});
    add(ElementId::ReducedNeighborReport,
        {0x00, 0x10, 81, 6, 255, 2, 0x1A, 0x2B, 0x3C, 0x4D, 0x60, 1, 2, 3, 4, 0x40, 20, 0, 1, 0});
    add(ElementId::Rsnx, {0x20});
    add(ElementId::HeCapabilities,
        {0x0D, 0,    0x08, 0x12, 0,    0x10, 0x4C, 0x20, 0x02, 0xC0, 0x4D, 0x0F, 0x03,
         0x98, 0x09, 0x00, 0x0C, 0xFA, 0xFF, 0xFA, 0xFF, 0xFA, 0xFF, 0xFA, 0xFF});
    add(ElementId::HeOperation, {0xF4, 0x3F, 0x00, 0x2A, 0xFC, 0xFF});
    add(ElementId::MuEdcaParameterSet, {0, 0, 0x0F, 1, 1, 0x0F, 1, 2, 0x0F, 1, 3, 0x0F, 1});
    add(ElementId::EhtOperation, {1, 0x44, 0x44, 0x44, 0x44, 3, 42, 50});
    add(ElementId::EhtCapabilities, {0x07, 0, 0xE0, 0xFF, 0xDB, 0, 0x18, 0x36, 0xD8, 0x1E, 0, 0x22,
                                     0x22, 0x22, 0x22, 0x22, 0x22});
    add(ElementId::MultiLink,
        {0xB0, 0x01, 13, 2,    0x1A, 0x2B, 0x3C, 0x4D, 0x70, 0,    3,    0,    0,    0x21,
         0,    0,    11, 0x31, 0,    7,    2,    0x1A, 0x2B, 0x3C, 0x4D, 0x60, 0x11, 0x04});
    appendElement(frame, ElementId::Vendor,
                  Bytes{0x00, 0x50, 0xF2, 2, 1,    1,    0x80, 0, 3,    0xA4, 0,    0,
                        0x27, 0xA4, 0,    0, 0x42, 0x43, 0x5E, 0, 0x62, 0x32, 0x2F, 0});
    Bytes rest = {0x8C, 0xFD, 0xF0, 1};
    while (frame.size() + 2 + rest.size() < 500) rest.push_back(0);
    appendElement(frame, ElementId::Vendor, rest);
    return frame;
}

}  // namespace bench

#endif
