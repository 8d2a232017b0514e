#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <shared_mutex>

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

// IEEE 802.11-2020, 17.3.8.4.2 and 15.4.4.3: channels are 5 MHz apart, except channel 14.
constexpr unsigned centreFrequency(unsigned channel) {
    if (channel == 14) return 2484;
    return (channel < 14 ? 2407 : 5000) + 5 * channel;
}

struct Row {
    unsigned channel;
    unsigned frequency;  // MHz
    unsigned extension;  // 0 for none
};

constexpr auto kStandardRows = [] {
    std::array<Row, std::size(kStandardChannels)> rows{};
    std::ranges::transform(kStandardChannels, rows.begin(), [](const StandardChannel& channel) {
        return Row{channel.number, centreFrequency(channel.number), channel.extension};
    });
    return rows;
}();

// The channel that has this frequency, if it is a standard one.
constexpr unsigned channelAt(unsigned frequency) {
    if (frequency == 2484) return 14;
    return (frequency - (frequency < 5000 ? 2407 : 5000)) / 5;
}

// For each channel number the index of its row, counted from 1; 0: there is none.
constexpr auto kStandardRowNumbers = [] {
    std::array<std::uint8_t, kStandardRows.back().channel + 1> numbers{};
    for (std::size_t i = 0; i < kStandardRows.size(); ++i) {
        numbers[kStandardRows[i].channel] = static_cast<std::uint8_t>(i + 1);
    }
    return numbers;
}();

// Returns the standard row of a channel or of a frequency, or null.
constexpr const Row* standardRowOfChannel(unsigned channel) {
    if (channel >= kStandardRowNumbers.size()) return nullptr;
    const std::size_t number = kStandardRowNumbers[channel];
    return number != 0 ? &kStandardRows[number - 1] : nullptr;
}
constexpr const Row* standardRowOfFrequency(unsigned frequency) {
    const Row* row = standardRowOfChannel(channelAt(frequency));
    return row != nullptr && row->frequency == frequency ? row : nullptr;
}
static_assert(std::ranges::all_of(kStandardRows, [](const Row& row) {
    return standardRowOfChannel(row.channel) == &row &&
           standardRowOfFrequency(row.frequency) == &row;
}));

}  // namespace

// Only the first row with a number or a frequency can be found, so no other one is kept.
class ChannelMap::AddedRows {
  public:
    void add(const Row& row) {
        const std::unique_lock lock(mutex_);
        Columns columns;
        columns.frequencies.emplace(row.channel, row.frequency);
        columns.numbers.emplace(row.frequency, row.channel);
        if (row.extension != 0) columns.extensions.emplace(row.channel, row.extension);
        // merge() moves the new nodes and allocates nothing.
        columns_.frequencies.merge(columns.frequencies);
        columns_.numbers.merge(columns.numbers);
        columns_.extensions.merge(columns.extensions);
        lastFrequency_ = row.frequency;
    }

    unsigned frequencyForNumber(unsigned channel) const {
        const std::shared_lock lock(mutex_);
        return find(columns_.frequencies, channel).value_or(0);
    }
    unsigned extensionForNumber(unsigned channel) const {
        const std::shared_lock lock(mutex_);
        return find(columns_.extensions, channel).value_or(0);
    }
    // If no row has `frequency`, returns the frequency of the last row.
    unsigned numberForFrequency(unsigned frequency) const {
        const std::shared_lock lock(mutex_);
        return find(columns_.numbers, frequency).value_or(lastFrequency_);
    }

  private:
    using Column = std::map<unsigned, unsigned>;
    struct Columns {
        Column frequencies;  // by number
        Column extensions;   // by number
        Column numbers;      // by frequency
    };

    static std::optional<unsigned> find(const Column& column, unsigned key) {
        const auto found = column.find(key);
        return found != column.end() ? std::optional(found->second) : std::nullopt;
    }

    mutable std::shared_mutex mutex_;
    Columns columns_;
    unsigned lastFrequency_ = kStandardRows.back().frequency;
};

ChannelMap::~ChannelMap() {
    delete added_.load();
}

// The first thread that adds a row creates the object.
ChannelMap::AddedRows& ChannelMap::addedRows() {
    if (auto* added = added_.load()) return *added;
    auto made = std::make_unique<AddedRows>();
    AddedRows* expected = nullptr;
    if (!added_.compare_exchange_strong(expected, made.get())) return *expected;
    return *made.release();
}

void ChannelMap::add(unsigned channel, unsigned frequency, unsigned extensionChannel) {
    if (exists_) addedRows().add({channel, frequency, extensionChannel});
}

// If no row matches, the result is the frequency of the last row: 5825 with the standard rows.
// Callers rely on that, so it must not become 0.
unsigned ChannelMap::numberForFrequency(unsigned frequency) {
    build();
    if (const Row* row = standardRowOfFrequency(frequency)) return row->channel;
    const AddedRows* added = added_;
    return added != nullptr ? added->numberForFrequency(frequency) : kStandardRows.back().frequency;
}

unsigned ChannelMap::frequencyForNumber(unsigned channel) {
    build();
    if (const Row* row = standardRowOfChannel(channel)) return row->frequency;
    const AddedRows* added = added_;
    return added != nullptr ? added->frequencyForNumber(channel) : 0;
}

unsigned ChannelMap::extensionForNumber(unsigned channel) {
    build();
    const Row* row = standardRowOfChannel(channel);
    if (row != nullptr && row->extension != 0) return row->extension;
    const AddedRows* added = added_;
    return added != nullptr ? added->extensionForNumber(channel) : 0;
}

}  // namespace halvane
