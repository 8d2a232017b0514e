// How PPE Thresholds are read and told.
#ifndef HALVANE_AIR_PPE_THRESHOLDS_INTERNAL_H
#define HALVANE_AIR_PPE_THRESHOLDS_INTERNAL_H

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_codec_internal.h"
#include "halvane/air/field_sink.h"
#include "halvane/air/ppe_thresholds.h"

namespace halvane::air {

inline constexpr ValueName kPpeConstellations[] = {
    {0, "BPSK"},    {1, "QPSK"},     {2, "16-QAM"},   {3, "64-QAM"},
    {4, "256-QAM"}, {5, "1024-QAM"}, {6, "4096-QAM"}, {7, "none"},
};
inline constexpr std::string_view kPpeStreams[] = {
    "1 stream",   "2 streams",  "3 streams",  "4 streams",  "5 streams",  "6 streams",
    "7 streams",  "8 streams",  "9 streams",  "10 streams", "11 streams", "12 streams",
    "13 streams", "14 streams", "15 streams", "16 streams"};
inline constexpr std::string_view kPpeResourceUnits[] = {
    "242-tone RU", "484-tone RU", "996-tone RU", "2x996-tone RU", "4x996-tone RU"};

// `longer` is the name of the first threshold of a pair.
template <std::size_t StreamBits, std::size_t RuBits>
void tellPpeThresholds(BitTeller& teller, const PpeThresholds<StreamBits, RuBits>& ppe,
                       std::string_view longer) {
    const auto tellPair = [&](int streams, std::size_t unit) {
        const auto first = static_cast<std::uint16_t>(ppe.firstBitOf(streams, unit));
        const auto second = static_cast<std::uint16_t>(first + 3);
        teller.run({first, 3, longer, {.names = kPpeConstellations}});
        teller.run({second, 3, "PPET8", {.names = kPpeConstellations}});
    };
    teller.run({0, StreamBits, "NSTS"});
    teller.run({StreamBits, RuBits, "RU Index Bitmask"});
    for (int streams = 1; streams <= ppe.streams(); ++streams) {
        teller.group(kPpeStreams[streams - 1], [&] {
            for (std::size_t unit = 0; unit < RuBits; ++unit) {
                if (!ppe.hasResourceUnit(unit)) continue;
                teller.group(kPpeResourceUnits[unit], [&] { tellPair(streams, unit); });
            }
        });
    }
}

inline constexpr auto kPpeThresholdsLayout = [](auto& codec, auto& ppe, std::string_view longer) {
    codec.group("PPE Thresholds", [&] {
        codec.bitString(
            ppe.octets, [&](Octets left) { return ppe.sizeIn(left); },
            [&](BitTeller& teller) { tellPpeThresholds(teller, ppe, longer); });
    });
};

}  // namespace halvane::air

#endif
