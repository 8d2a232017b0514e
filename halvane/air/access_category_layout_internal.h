// The layouts of the fields that tell how access categories contend for the medium.
#ifndef HALVANE_AIR_ACCESS_CATEGORY_LAYOUT_INTERNAL_H
#define HALVANE_AIR_ACCESS_CATEGORY_LAYOUT_INTERNAL_H

#include <array>
#include <cstddef>
#include <string_view>

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/field_sink.h"

namespace halvane::air {

inline constexpr std::array<std::string_view, 4> kAccessCategories = {
    "AC_BE Parameter Record", "AC_BK Parameter Record", "AC_VI Parameter Record",
    "AC_VO Parameter Record"};

inline constexpr ValueName kAccessCategoryNames[] = {
    {0, "AC_BE"}, {1, "AC_BK"}, {2, "AC_VI"}, {3, "AC_VO"}};

inline constexpr BitField kAccessPriority[] = {
    {0, 4, "AIFSN"},
    {4, 1, "ACM"},
    {5, 2, "ACI", {.names = kAccessCategoryNames}},
    {7, 1, "Reserved"},
};

inline constexpr BitField kContentionWindow[] = {{0, 4, "ECWmin"}, {4, 4, "ECWmax"}};

inline constexpr BitField kApQosInfo[] = {
    {0, 4, "EDCA Parameter Set Update Count"},
    {4, 1, "Q-Ack"},
    {5, 1, "Queue Request"},
    {6, 1, "TXOP Request"},
    {7, 1, "Reserved"},
};

inline constexpr auto kApQosInfoLayout = [](auto& codec, auto& info) {
    codec.group("QoS Info", [&] { codec.bits(info.fields, kApQosInfo); });
};

// The record of each category; `readLast` takes its last field.
inline constexpr auto kAccessRecordsLayout = [](auto& codec, auto& records, auto readLast) {
    for (std::size_t i = 0; i < records.size(); ++i) {
        auto& record = records[i];
        codec.group(kAccessCategories[i], [&] {
            codec.bits(record.priority.fields, kAccessPriority);
            codec.bits(record.window.fields, kContentionWindow);
            readLast(record);
        });
    }
};

inline constexpr auto kEdcaRecordsLayout = [](auto& codec, auto& records) {
    kAccessRecordsLayout(codec, records, [&](auto& record) {
        codec.number("TXOP Limit", record.txopLimit, {.unit = "32 us"});
    });
};

}  // namespace halvane::air

#endif
