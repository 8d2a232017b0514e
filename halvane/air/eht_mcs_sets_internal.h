// The fields of the second half of EHT Capabilities.
#ifndef HALVANE_AIR_EHT_MCS_SETS_INTERNAL_H
#define HALVANE_AIR_EHT_MCS_SETS_INTERNAL_H

#include <span>
#include <string_view>

#include "halvane/air/eht_mcs_sets.h"
#include "halvane/air/eht_phy_capabilities.h"
#include "halvane/air/element_codec_internal.h"
#include "halvane/air/he_phy_capabilities.h"
#include "halvane/air/ppe_thresholds_internal.h"

namespace halvane::air {

inline constexpr BitField kEhtMcs20Fields[] = {
    {0, 4, "Rx Max NSS That Supports EHT-MCS 0-7"},
    {4, 4, "Tx Max NSS That Supports EHT-MCS 0-7"},
    {8, 4, "Rx Max NSS That Supports EHT-MCS 8-9"},
    {12, 4, "Tx Max NSS That Supports EHT-MCS 8-9"},
    {16, 4, "Rx Max NSS That Supports EHT-MCS 10-11"},
    {20, 4, "Tx Max NSS That Supports EHT-MCS 10-11"},
    {24, 4, "Rx Max NSS That Supports EHT-MCS 12-13"},
    {28, 4, "Tx Max NSS That Supports EHT-MCS 12-13"},
};
inline constexpr BitField kEhtMcsFields[] = {
    {0, 4, "Rx Max NSS That Supports EHT-MCS 0-9"},
    {4, 4, "Tx Max NSS That Supports EHT-MCS 0-9"},
    {8, 4, "Rx Max NSS That Supports EHT-MCS 10-11"},
    {12, 4, "Tx Max NSS That Supports EHT-MCS 10-11"},
    {16, 4, "Rx Max NSS That Supports EHT-MCS 12-13"},
    {20, 4, "Tx Max NSS That Supports EHT-MCS 12-13"},
};

// What decides on the fields. The writer takes those that are there.
struct EhtMcsSetsPresence {
    bool only20 = false;
    bool at160 = false;
    bool at320 = false;
    bool ppe = false;
};

constexpr EhtMcsSetsPresence ehtMcsSetsPresence(const EhtPhyCapabilities& eht,
                                                const HePhyCapabilities& he, EhtSender sender) {
    // The widths of the HE Capabilities without the two bits on 242-tone RUs.
    const bool knowsOnly20 = (he.supportedChannelWidthSet() & 0x0F) == 0;
    return {sender == EhtSender::Station && knowsOnly20, he.has(HePhyCapability::Width160),
            eht.has(EhtPhyCapability::Width320), eht.has(EhtPhyCapability::PpeThresholdsPresent)};
}

inline constexpr auto kEhtMcsSetsLayout = [](auto& codec, auto& sets,
                                             const EhtMcsSetsPresence& has) {
    const auto map = [&](bool isPresent, auto& value, std::string_view label, auto fields) {
        codec.when(isPresent, value,
                   [&](auto& set) { codec.group(label, [&] { codec.bits(set.fields, fields); }); });
    };
    const std::span<const BitField> fields = kEhtMcsFields;
    map(has.only20, sets.only20, "EHT-MCS Map (20 MHz-Only Non-AP STA)",
        std::span<const BitField>(kEhtMcs20Fields));
    map(!has.only20, sets.upTo80, "EHT-MCS Map (BW <= 80 MHz, Except 20 MHz-Only Non-AP STA)",
        fields);
    map(!has.only20 && has.at160, sets.at160, "EHT-MCS Map (BW = 160 MHz)", fields);
    map(!has.only20 && has.at320, sets.at320, "EHT-MCS Map (BW = 320 MHz)", fields);
    codec.when(has.ppe, sets.ppe, [&](auto& ppe) { kPpeThresholdsLayout(codec, ppe, "PPETmax"); });
    codec.rest(sets.rest);
};

}  // namespace halvane::air

#endif
