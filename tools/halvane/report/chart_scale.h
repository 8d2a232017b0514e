// Where frequencies and signals lie in the picture of a band.
//
// Plain values and pure functions; any thread may call them.
#ifndef TOOLS_HALVANE_REPORT_CHART_SCALE_H
#define TOOLS_HALVANE_REPORT_CHART_SCALE_H

#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "halvane/air/channel.h"
#include "halvane/air/channel_use.h"

namespace halvane::tool {

// A range of frequencies in MHz.
struct FrequencyRange {
    double low = 0;
    double high = 0;

    bool isEmpty() const { return low >= high; }
    bool contains(double frequency) const { return low < frequency && frequency < high; }
    friend bool operator==(const FrequencyRange&, const FrequencyRange&) = default;
};

// A range that regulators name.
struct NamedRange {
    std::string_view name;
    FrequencyRange range;
};

// The scale of a band: linear over its pieces, with a gap between them. Places across are per cent
// of the picture's width, so that it stretches; places down are pixels.
class ChartScale {
  public:
    static constexpr double kLeft = 4.2;  // per cent
    static constexpr double kRight = 99.4;
    static constexpr double kTop = 46;      // pixels, of kStrongest
    static constexpr double kBottom = 346;  // of kWeakest: the axis
    static constexpr int kStrongest = -15;  // dBm
    static constexpr int kWeakest = -95;

    // Absent for a band that has no picture.
    static std::optional<ChartScale> of(air::Band band);

    air::Band band() const { return band_; }
    std::span<const FrequencyRange> pieces() const { return pieces_; }
    std::span<const NamedRange> namedRanges() const { return named_; }
    // Numbers of the channels of 20 MHz, each with a cell below the axis.
    std::span<const int> channels() const { return channels_; }
    // The width of such a cell, MHz.
    double cellWidth() const;
    // Whether the number of a channel stands below the axis; all stand in the cells' titles.
    bool isNumbered(int channel) const;

    // REQUIRES: `frequency` lies in a piece.
    double xOf(double frequency) const;
    // Signals beyond the scale stay at its ends; the weakest keeps a height that can be seen.
    static double yOf(int signal);

    // The parts of a range that the pieces show.
    std::vector<FrequencyRange> shown(const FrequencyRange& range) const;

  private:
    explicit ChartScale(air::Band band) : band_(band) {}

    air::Band band_;
    std::span<const FrequencyRange> pieces_{};
    std::span<const NamedRange> named_{};
    std::span<const int> channels_{};
};

// The frequencies that a network fills, by segments: one, or two for 80+80. Empty if it does not
// tell its channel.
struct Segment {
    FrequencyRange range;
    int firstIndex = 0;  // of its lowest 20 MHz, among those that puncturing counts
};
std::vector<Segment> segmentsOf(const air::ChannelUse& channel);

// The parts of a segment that are used, and those that puncturing leaves out.
struct SegmentParts {
    std::vector<FrequencyRange> used{};
    std::vector<FrequencyRange> punctured{};
};
SegmentParts partsOf(const Segment& segment, const air::ChannelUse& channel);

// Whether a network uses a frequency.
bool reaches(const air::ChannelUse& channel, double frequency);

}  // namespace halvane::tool

#endif
