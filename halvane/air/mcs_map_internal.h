// The names of the fields of an MCS map.
#ifndef HALVANE_AIR_MCS_MAP_INTERNAL_H
#define HALVANE_AIR_MCS_MAP_INTERNAL_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/field_sink.h"

namespace halvane::air {

inline constexpr ValueName kVhtMcsNames[] = {
    {0, "MCS 0-7"}, {1, "MCS 0-8"}, {2, "MCS 0-9"}, {3, "not supported"}};
inline constexpr ValueName kHeMcsNames[] = {
    {0, "MCS 0-7"}, {1, "MCS 0-9"}, {2, "MCS 0-11"}, {3, "not supported"}};

constexpr std::array<BitField, 8> mcsMapFields(std::span<const ValueName> names) {
    constexpr std::string_view kLabels[] = {"1 stream",  "2 streams", "3 streams", "4 streams",
                                            "5 streams", "6 streams", "7 streams", "8 streams"};
    std::array<BitField, 8> fields{};
    for (std::size_t i = 0; i < fields.size(); ++i) {
        fields[i] = {static_cast<std::uint8_t>(2 * i), 2, kLabels[i], {.names = names}};
    }
    return fields;
}
inline constexpr auto kVhtMcsFields = mcsMapFields(kVhtMcsNames);
inline constexpr auto kHeMcsFields = mcsMapFields(kHeMcsNames);

}  // namespace halvane::air

#endif
