// The channel that a BSS uses, as its operation elements tell it together.
//
// Plain values and pure functions. Any thread may call them.
#ifndef HALVANE_AIR_CHANNEL_USE_H
#define HALVANE_AIR_CHANNEL_USE_H

#include <cstdint>
#include <optional>

#include "halvane/air/channel.h"
#include "halvane/air/rule.h"

namespace halvane::air {

// The frequencies that a BSS fills.
struct ChannelSpan {
    int width = 20;                // MHz: 20, 40, 80, 160, 320; 160 with two centres is 80+80
    std::optional<int> center1{};  // MHz; absent where band or channel are unknown
    std::optional<int> center2{};  // MHz, of the second segment of 80+80

    friend constexpr bool operator==(const ChannelSpan&, const ChannelSpan&) = default;
};

struct ChannelUse {
    std::optional<Derived<Band>> band{};           // of the primary channel
    std::optional<Derived<int>> primaryChannel{};  // its number in the band
    std::optional<int> primaryFrequency{};         // MHz
    Derived<ChannelSpan> span{};                   // the whole channel
    // Bit k: the k-th 20 MHz from the lowest are not used. Absent if the BSS does not tell.
    std::optional<Derived<std::uint16_t>> punctured{};
};

}  // namespace halvane::air

#endif
