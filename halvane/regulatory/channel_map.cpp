#include <mutex>

#include "halvane/regulatory/channel_map_internal.h"

namespace halvane {

namespace {

struct StandardChannel {
    unsigned number;
    unsigned extension;
};

// IEEE 802.11-2020, annex E: the channels of the 2.4 GHz and 5 GHz bands, each with the other half
// of its 40 MHz channel.
constexpr StandardChannel kStandardChannels[] = {
    {1, 0},     {2, 0},     {3, 0},     {4, 0},     {5, 0},     {6, 0},     {7, 0},
    {8, 0},     {9, 0},     {10, 0},    {11, 0},    {12, 0},    {13, 0},    {14, 0},
    {34, 0},    {36, 40},   {38, 0},    {40, 36},   {42, 0},    {44, 48},   {46, 0},
    {48, 44},   {52, 56},   {56, 52},   {60, 64},   {64, 60},   {100, 104}, {104, 100},
    {108, 112}, {112, 108}, {116, 120}, {120, 116}, {124, 128}, {128, 124}, {132, 136},
    {136, 132}, {140, 0},   {149, 153}, {153, 149}, {157, 161}, {161, 157}, {165, 0},
};

// IEEE 802.11-2020, 17.3.8.4.2 and 15.4.4.3: channels stand 5 MHz apart, but channel 14.
constexpr unsigned centreFrequency(unsigned channel) {
    if (channel == 14) return 2484;
    return (channel < 14 ? 2407 : 5000) + 5 * channel;
}

}  // namespace

void ChannelMap::build() {
    {
        const std::shared_lock lock(mutex_);
        if (rows_) return;
    }
    const std::unique_lock lock(mutex_);
    if (rows_) return;
    rows_.emplace();
    for (const auto& [number, extension] : kStandardChannels) {
        rows_->push_back({number, centreFrequency(number), extension});
    }
}

void ChannelMap::add(unsigned channel, unsigned frequency, unsigned extensionChannel) {
    const std::unique_lock lock(mutex_);
    if (rows_) rows_->push_back({channel, frequency, extensionChannel});
}

// When no row matches, the frequency of the last row examined is what remains: 5825 with the
// standard rows. Callers rely on that leftover, so it is not mended to 0.
unsigned ChannelMap::numberForFrequency(unsigned frequency) {
    build();
    const std::shared_lock lock(mutex_);
    unsigned result = 0;
    for (const Row& row : *rows_) {
        result = row.frequency;
        if (row.frequency == frequency) return row.channel;
    }
    return result;
}

unsigned ChannelMap::frequencyForNumber(unsigned channel) {
    build();
    const std::shared_lock lock(mutex_);
    for (const Row& row : *rows_) {
        if (row.channel == channel) return row.frequency;
    }
    return 0;
}

unsigned ChannelMap::extensionForNumber(unsigned channel) {
    build();
    const std::shared_lock lock(mutex_);
    for (const Row& row : *rows_) {
        if (row.channel == channel && row.extension != 0) return row.extension;
    }
    return 0;
}

}  // namespace halvane
