// Builders of the elements that tell of a channel and of a radio, from Wi-Fi 4 to Wi-Fi 7. Where a
// standard leaves a choice, they take what access points on the market send.
#ifndef TOOLS_MAKE_SAMPLES_RADIO_ELEMENTS_H
#define TOOLS_MAKE_SAMPLES_RADIO_ELEMENTS_H

#include <cstdint>

#include "halvane/air/channel.h"

#include "tools/make_samples/bytes.h"

namespace halvane::samples {

// The channel of a BSS and what its radio can do.
struct RadioSetup {
    air::Channel primary{};
    air::ChannelWidth width = air::ChannelWidth::Mhz20;
    int streams = 2;
    std::uint16_t punctured = 0;  // bit k: the k-th 20 MHz from the lowest
};
Bytes htCapabilities(const RadioSetup& setup);
Bytes htOperation(const RadioSetup& setup);
Bytes vhtCapabilities(const RadioSetup& setup);
Bytes vhtOperation(const RadioSetup& setup);
Bytes heCapabilities(const RadioSetup& setup);
// At 6 GHz with the 6 GHz Operation Information.
Bytes heOperation(const RadioSetup& setup, std::uint8_t color);
Bytes sixGhzCapabilities();
Bytes ehtCapabilities(const RadioSetup& setup);
// Tells the channel where HE Operation cannot: from 320 MHz on, and for a punctured one.
Bytes ehtOperation(const RadioSetup& setup);
// The power that clients may use indoors at 6 GHz in Europe.
Bytes indoorPower();

}  // namespace halvane::samples

#endif
