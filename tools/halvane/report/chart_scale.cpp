#include "tools/halvane/report/chart_scale.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace halvane::tool {

namespace {

constexpr double kGap = 1.6;             // per cent, between pieces
constexpr double kLeastHeight = 2;       // pixels, of the weakest signal
constexpr double kChannelWidth = 20;     // MHz
constexpr double kChannelDistance2 = 5;  // MHz, at 2.4 GHz

constexpr FrequencyRange kPieces2[] = {{2397, 2488}};
constexpr FrequencyRange kPieces5[] = {{5155, 5345}, {5475, 5900}};
constexpr FrequencyRange kPieces6[] = {{5925, 7125}};

constexpr NamedRange kNamed5[] = {{"U-NII-1", {5170, 5250}},
                                  {"U-NII-2A", {5250, 5330}},
                                  {"U-NII-2C", {5490, 5730}},
                                  {"U-NII-3", {5735, 5835}},
                                  {"U-NII-4", {5835, 5895}}};
constexpr NamedRange kNamed6[] = {{"U-NII-5", {5945, 6425}},
                                  {"U-NII-6", {6425, 6525}},
                                  {"U-NII-7", {6525, 6875}},
                                  {"U-NII-8", {6875, 7115}}};

constexpr int kChannels2[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14};
constexpr int kChannels5[] = {36,  40,  44,  48,  52,  56,  60,  64,  100, 104, 108, 112, 116, 120,
                              124, 128, 132, 136, 140, 144, 149, 153, 157, 161, 165, 169, 173, 177};

constexpr std::size_t kChannelCount6 = 59;
constexpr std::array<int, kChannelCount6> kChannels6 = [] {
    std::array<int, kChannelCount6> channels{};
    for (std::size_t i = 0; i < channels.size(); ++i) channels[i] = 1 + 4 * static_cast<int>(i);
    return channels;
}();

Segment segmentAt(double center, double width, int firstIndex) {
    return {{center - width / 2, center + width / 2}, firstIndex};
}

}  // namespace

std::optional<ChartScale> ChartScale::of(air::Band band) {
    ChartScale scale(band);
    switch (band) {
        case air::Band::Ghz2:
            scale.pieces_ = kPieces2;
            scale.channels_ = kChannels2;
            return scale;
        case air::Band::Ghz5:
            scale.pieces_ = kPieces5;
            scale.named_ = kNamed5;
            scale.channels_ = kChannels5;
            return scale;
        case air::Band::Ghz6:
            scale.pieces_ = kPieces6;
            scale.named_ = kNamed6;
            scale.channels_ = kChannels6;
            return scale;
        default:
            return std::nullopt;
    }
}

double ChartScale::cellWidth() const {
    return band_ == air::Band::Ghz2 ? kChannelDistance2 : kChannelWidth;
}

bool ChartScale::isNumbered(int channel) const {
    return band_ != air::Band::Ghz6 ||
           air::isPreferredScanningChannel({band_, static_cast<std::uint8_t>(channel)});
}

double ChartScale::xOf(double frequency) const {
    double all = 0;
    double before = 0;
    double gaps = 0;
    for (const FrequencyRange& piece : pieces_) {
        all += piece.high - piece.low;
        before += std::clamp(frequency - piece.low, 0.0, piece.high - piece.low);
        if (&piece != pieces_.data() && frequency >= piece.low) gaps += kGap;
    }
    const double allGaps = kGap * static_cast<double>(pieces_.size() - 1);
    return kLeft + gaps + before / all * (kRight - kLeft - allGaps);
}

double ChartScale::yOf(int signal) {
    const double height = (kBottom - kTop) * (signal - kWeakest) / (kStrongest - kWeakest);
    return kBottom - std::clamp(height, kLeastHeight, kBottom - kTop);
}

std::vector<FrequencyRange> ChartScale::shown(const FrequencyRange& range) const {
    std::vector<FrequencyRange> parts;
    for (const FrequencyRange& piece : pieces_) {
        const FrequencyRange part{std::max(range.low, piece.low), std::min(range.high, piece.high)};
        if (!part.isEmpty()) parts.push_back(part);
    }
    return parts;
}

std::vector<Segment> segmentsOf(const air::ChannelUse& channel) {
    const air::ChannelSpan& span = *channel.span;
    if (!channel.band || !span.center1) return {};
    if (!span.center2) return {segmentAt(*span.center1, span.width, 0)};
    const double half = span.width / 2.0;
    const int count = static_cast<int>(half / kChannelWidth);
    const auto [low, high] = std::minmax(*span.center1, *span.center2);
    return {segmentAt(low, half, 0), segmentAt(high, half, count)};
}

SegmentParts partsOf(const Segment& segment, const air::ChannelUse& channel) {
    const unsigned mask = channel.punctured ? **channel.punctured : 0u;
    if (mask == 0) return {.used = {segment.range}};
    SegmentParts parts;
    const auto channels =
        static_cast<int>(std::ceil((segment.range.high - segment.range.low) / kChannelWidth));
    for (int i = 0; i < channels; ++i) {
        const double low = segment.range.low + i * kChannelWidth;
        auto& own = (mask >> (segment.firstIndex + i) & 1) != 0 ? parts.punctured : parts.used;
        if (!own.empty() && own.back().high == low) {
            own.back().high += kChannelWidth;
        } else {
            own.push_back({low, low + kChannelWidth});
        }
    }
    return parts;
}

bool reaches(const air::ChannelUse& channel, double frequency) {
    return std::ranges::any_of(segmentsOf(channel), [&](const Segment& segment) {
        const SegmentParts parts = partsOf(segment, channel);
        return std::ranges::any_of(
            parts.used, [&](const FrequencyRange& part) { return part.contains(frequency); });
    });
}

}  // namespace halvane::tool
