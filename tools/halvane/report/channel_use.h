// Who uses each channel of a band.
//
// Pure functions and plain values; any thread may call them.
#ifndef TOOLS_HALVANE_REPORT_CHANNEL_USE_H
#define TOOLS_HALVANE_REPORT_CHANNEL_USE_H

#include <cstddef>
#include <span>
#include <vector>

#include "halvane/air/channel.h"

#include "tools/halvane/report/chart_scale.h"
#include "tools/halvane/report/report_data.h"

namespace halvane::tool {

// A channel of 20 MHz.
struct ChannelCell {
    int number = 0;
    double frequency = 0;       // of the centre, MHz
    std::size_t radios = 0;     // that reach over the centre
    std::size_t networks = 0;   // of these radios
    std::size_t primaries = 0;  // radios whose primary channel this is
    std::size_t told = 0;       // access points that others tell of, and that were not heard
    const ReportNetwork* strongest = nullptr;
    std::vector<int> loads{};  // of 255, that the radios with this primary channel tell, falling
};

// The indexes of the radios of a band whose channel is known.
std::vector<std::size_t> radiosOf(const ReportData& data, air::Band band);

// One for each channel of the scale, in its order.
std::vector<ChannelCell> channelCells(const ReportData& data, const ChartScale& scale,
                                      std::span<const std::size_t> radios);

// The greatest number of radios over one channel.
std::size_t mostRadios(std::span<const ChannelCell> cells);

}  // namespace halvane::tool

#endif
