#include "halvane/air/channel_plan.h"

#include <algorithm>
#include <tuple>

#include "halvane/air/operating_class.h"

namespace halvane::air {

namespace {

constexpr std::uint32_t kKilohertz = 1000;  // in a MHz
constexpr int kHalfOf40 = 2;                // channel numbers from a 20 MHz channel to its 40

// The channel that a class means by a number of its list.
PlannedChannel channelOf(const OperatingClass& row, std::uint8_t listed) {
    const std::uint32_t frequency = row.frequency(listed).value_or(0);
    PlannedChannel channel{
        row.band, listed, static_cast<std::uint16_t>(row.channelWidth()), frequency, {row.number}};
    channel.needsRadarDetection = row.needsRadarDetection;
    channel.isSegment = row.isPair;
    if (row.primary == OperatingClass::Primary::Any) return channel;
    const int step = row.primary == OperatingClass::Primary::Lower ? kHalfOf40 : -kHalfOf40;
    channel.number = static_cast<std::uint8_t>(listed + step);
    channel.frequency = static_cast<std::uint32_t>(static_cast<int>(frequency) + step * 5000);
    return channel;
}

auto placeOf(const PlannedChannel& channel) {
    return std::tuple(channel.band, channel.frequency, channel.width, channel.number);
}

// A channel of several classes stands once.
void add(std::vector<PlannedChannel>& plan, const PlannedChannel& channel) {
    const auto same = std::ranges::find(plan, placeOf(channel), placeOf);
    if (same == plan.end()) return plan.push_back(channel);
    for (const std::uint8_t number : channel.classes) same->classes.push_back(number);
    same->needsRadarDetection |= channel.needsRadarDetection;
    same->isSegment |= channel.isSegment;
}

// Channels of 20 MHz that no class of the table has.
void addSingles(std::vector<PlannedChannel>& plan) {
    for (int number = 1; number <= UINT8_MAX; ++number) {
        const Channel channel{Band::Ghz5, static_cast<std::uint8_t>(number)};
        const auto frequency = centerFrequencyOf(channel);
        if (!frequency || !wideChannelOf(channel, ChannelWidth::Mhz20)) continue;
        add(plan, {channel.band,
                   channel.number,
                   20,
                   static_cast<std::uint32_t>(*frequency) * kKilohertz,
                   {}});
    }
}

// The classes of 80 MHz and more do not state the radar detection of their parts.
bool hasRadarIn(const std::vector<PlannedChannel>& plan, const WideChannel& wide) {
    return std::ranges::any_of(plan, [&](const PlannedChannel& part) {
        return part.needsRadarDetection && part.width == 20 && part.band == wide.center.band &&
               wide.indexOf({part.band, part.number});
    });
}

}  // namespace

std::optional<WideChannel> PlannedChannel::wide() const {
    const auto mapped = centerFrequencyOf(band, number);
    if (!mapped || static_cast<std::uint32_t>(*mapped) * kKilohertz != frequency) {
        return std::nullopt;
    }
    return wideChannelAt({band, number}, width);
}

std::vector<PlannedChannel> channelPlan() {
    std::vector<PlannedChannel> plan;
    for (const OperatingClass& row : operatingClasses()) {
        for (const std::uint8_t listed : row.channels) add(plan, channelOf(row, listed));
    }
    addSingles(plan);
    for (PlannedChannel& channel : plan) {
        const auto wide = channel.wide();
        if (wide && hasRadarIn(plan, *wide)) channel.needsRadarDetection = true;
    }
    std::ranges::sort(plan, {}, placeOf);
    return plan;
}

InlineList<std::uint8_t, 16> usableClassesOf(const PlannedChannel& channel) {
    InlineList<std::uint8_t, 16> numbers;
    for (const OperatingClass& row : operatingClasses()) {
        const bool isItsOwn = channel.classes.contains(row.number);
        const bool isPrimary = channel.width == 20 && channel.wide() && row.band == channel.band &&
                               row.channelWidth() > channel.width &&
                               row.hasPrimary(channel.number) &&
                               row.frequency(channel.number) == channel.frequency;
        if (isItsOwn || isPrimary) numbers.push_back(row.number);
    }
    return numbers;
}

}  // namespace halvane::air
