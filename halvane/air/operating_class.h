// The operating classes that all countries share (IEEE 802.11-2020, table E-4, with the rows of
// 802.11ax, 802.11ay and 802.11be): what a class number and a channel number mean together.
//
// Constant tables; nothing allocates. Any thread may call every function.
#ifndef HALVANE_AIR_OPERATING_CLASS_H
#define HALVANE_AIR_OPERATING_CLASS_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "halvane/air/channel.h"
#include "halvane/base/export.h"
#include "halvane/base/inline_list.h"

namespace halvane::air {

struct HALVANE_EXPORT OperatingClass {
    // Where the primary channel of a 40 MHz channel is.
    enum class Primary : std::uint8_t { Any, Lower, Upper };
    // What else annex D demands there: CCA-EDBehavior, NomadicBehavior, LicenseExemptBehavior.
    enum class Demand : std::uint8_t { None, EnergyDetection, Nomadic, LicenseExempt };

    std::uint8_t number = 0;
    Band band = Band::Ghz2;
    std::uint16_t spacing = 0;  // MHz: the width of the channels; 80 for 80+80
    std::uint32_t start = 0;    // kHz, where channel number 0 would be
    // Of the primary channel for 20 MHz and less and for 40 MHz below 6 GHz, otherwise of the
    // centre.
    std::span<const std::uint8_t> channels{};
    bool hasCenters = false;  // whether `channels` are centres
    Primary primary = Primary::Any;
    bool needsRadarDetection = false;  // DFS_50_100_Behavior
    bool isPair = false;               // two channels apart from each other: 80+80
    Demand demand = Demand::None;

    // The width of the channels in MHz; 160 for 80+80.
    int width() const { return isPair ? 2 * spacing : spacing; }
    // The width of one of its channels in MHz: as `spacing`, but 20 for the DSSS channels of the
    // classes 81 and 82, which are 25 MHz apart from each other.
    int channelWidth() const { return spacing == 25 ? 20 : spacing; }
    // Whether the class has the primary channel, or lists the number as a centre.
    bool hasPrimary(std::uint8_t channel) const;
    bool hasCenter(std::uint8_t channel) const;
    // The behaviour limits by the names of annex D, except UseEirpForVHTTxPowEnv, which tells how
    // to read Transmit Power Envelope: "PrimaryChannelLowerBehavior", "DFS_50_100_Behavior", "80+"
    // ...
    InlineList<std::string_view, 4> behaviorLimits() const;
    // The centre frequency of a number that the class lists or has as a primary channel, in kHz.
    std::optional<std::uint32_t> frequency(std::uint8_t channel) const;
    // The channel of the class that has the primary channel in it, or that has it as one half for
    // 80+80. Absent for classes below 20 MHz and at 60 GHz, if there is none, and if there are two
    // of 320 MHz.
    std::optional<WideChannel> wideChannel(std::uint8_t primary) const;
};

// All rows, in the order of their numbers.
HALVANE_EXPORT std::span<const OperatingClass> operatingClasses();

// Null for a number that the table has not.
HALVANE_EXPORT const OperatingClass* operatingClass(std::uint8_t number);

// The channel that a class and the number of a primary channel mean, as Neighbor Report, Reduced
// Neighbor Report and Extended Channel Switch Announcement tell it. Absent if the class is unknown
// or lacks the channel.
HALVANE_EXPORT std::optional<Channel> channelIn(std::uint8_t operatingClass, std::uint8_t channel);

}  // namespace halvane::air

#endif
