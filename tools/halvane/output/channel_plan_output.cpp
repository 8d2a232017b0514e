#include "tools/halvane/output/channel_plan_output.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "halvane/air/channel.h"

#include "tools/halvane/output/channel_properties.h"
#include "tools/halvane/output/json_record.h"
#include "tools/halvane/output/json_writer.h"
#include "tools/halvane/output/print_records.h"
#include "tools/halvane/output/standard_output.h"
#include "tools/halvane/output/text_table.h"

namespace halvane::tool {

namespace {

using Channel = air::PlannedChannel;
using Class = air::OperatingClass;

constexpr const char* kNone = "-";

std::string orNone(const std::string& text) {
    return text.empty() ? kNone : text;
}

std::string bandText(air::Band band) {
    const std::string name(air::bandName(band));
    return band == air::Band::SubOneGhz ? name : name + " GHz";
}

// "5180 MHz", "5032.5 MHz".
std::string megahertzText(std::uint32_t kilohertz) {
    std::string text = std::to_string(kilohertz / 1000);
    if (kilohertz % 1000 != 0) text += "." + std::to_string(kilohertz % 1000 / 100);
    return text + " MHz";
}

template <typename Items>
std::string joined(const Items& items) {
    std::string text;
    for (const auto& item : items) {
        if (!text.empty()) text += ", ";
        if constexpr (requires { std::to_string(item); }) {
            text += std::to_string(item);
        } else {
            text += item;
        }
    }
    return text;
}

// "38 (5190)".
std::string centerText(const air::WideChannel& channel) {
    return std::to_string(channel.center.number) + " (" +
           std::to_string(air::centerFrequencyOf(channel.center).value_or(0)) + ")";
}

// The centres of the channels of this width that have the channel in them.
template <int kMegahertz>
std::string blockCell(const Channel& channel) {
    std::vector<std::string> centers;
    for (const air::WideChannel& wide : widerOf(channel)) {
        if (megahertzOf(wide.width) == kMegahertz) centers.push_back(centerText(wide));
    }
    return orNone(joined(centers));
}

// "36-48".
std::string partsText(const std::optional<air::WideChannel>& wide) {
    if (!wide || wide->subchannelCount() < 2) return kNone;
    return std::to_string(wide->subchannel(0).number) + "-" +
           std::to_string(wide->subchannel(wide->subchannelCount() - 1).number);
}

std::string notesOf(const Channel& channel) {
    std::vector<std::string> notes;
    const air::Channel center{channel.band, channel.number};
    if (channel.width == 20 && air::isPreferredScanningChannel(center)) notes.emplace_back("PSC");
    if (channel.needsRadarDetection) notes.emplace_back("DFS");
    return orNone(joined(notes));
}

constexpr Column<Channel> kColumns[] = {
    {"Band", Align::Left, [](const Channel& channel) { return bandText(channel.band); }},
    {"Channel", Align::Right,
     [](const Channel& channel) { return std::to_string(channel.number); }},
    {"Frequency", Align::Right,
     [](const Channel& channel) { return megahertzText(channel.frequency); }},
    {"Width", Align::Right,
     [](const Channel& channel) { return std::to_string(channel.width) + " MHz"; }},
    {"20 MHz", Align::Left, [](const Channel& channel) { return partsText(channel.wide()); }},
    {"40 MHz", Align::Left, blockCell<40>},
    {"80 MHz", Align::Left, blockCell<80>},
    {"160 MHz", Align::Left, blockCell<160>},
    {"320 MHz", Align::Left, blockCell<320>},
    {"Classes", Align::Left,
     [](const Channel& channel) { return orNone(joined(air::usableClassesOf(channel))); }},
    {"Notes", Align::Left, notesOf},
};

// Those in which a record has a value.
template <typename Record>
std::vector<Column<Record>> filledColumns(std::span<const Column<Record>> columns,
                                          const std::vector<Record>& records) {
    std::vector<Column<Record>> filled;
    std::ranges::copy_if(columns, std::back_inserter(filled), [&](const Column<Record>& column) {
        return std::ranges::any_of(
            records, [&](const Record& record) { return column.cell(record) != kNone; });
    });
    return filled;
}

template <typename Record, std::size_t kCount>
void printFilled(const Column<Record> (&columns)[kCount], const std::vector<Record>& records) {
    if (records.empty()) return;
    const auto filled = filledColumns(std::span<const Column<Record>>(columns), records);
    printTable(std::span<const Column<Record>>(filled), records);
}

// --- Operating classes ---

std::string widthText(const Class& row) {
    return (row.isPair ? "80+80" : std::to_string(row.channelWidth())) + " MHz";
}

// "36, 40, 44, 48"; "1, 5, ..., 233" for a long row of equal steps.
std::string channelsText(const Class& row) {
    constexpr std::size_t kLong = 8;
    const auto& numbers = row.channels;
    const int step = numbers.size() > 1 ? numbers[1] - numbers[0] : 0;
    const auto isUneven = [step](std::uint8_t a, std::uint8_t b) { return b - a != step; };
    if (numbers.size() <= kLong || std::ranges::adjacent_find(numbers, isUneven) != numbers.end()) {
        return joined(numbers);
    }
    return joined(numbers.first(2)) + ", ..., " + std::to_string(numbers.back());
}

constexpr Column<Class> kClassColumns[] = {
    {"Class", Align::Right, [](const Class& row) { return std::to_string(row.number); }},
    {"Band", Align::Left, [](const Class& row) { return bandText(row.band); }},
    {"Width", Align::Right, widthText},
    {"Start", Align::Right, [](const Class& row) { return megahertzText(row.start); }},
    {"Channels", Align::Left, channelsText},
    {"Behaviour limits", Align::Left,
     [](const Class& row) { return orNone(joined(row.behaviorLimits())); }},
};

// A channel that a class lists.
struct Listed {
    Class row;
    std::uint8_t number;
};

// What the class means by the number: for a primary channel the channel around it.
std::optional<air::WideChannel> wideOf(const Listed& listed) {
    const air::Channel channel{listed.row.band, listed.number};
    if (listed.row.hasCenters) return air::wideChannelAt(channel, listed.row.channelWidth());
    return listed.row.wideChannel(listed.number);
}

constexpr Column<Listed> kListedColumns[] = {
    {"Channel", Align::Right, [](const Listed& listed) { return std::to_string(listed.number); }},
    {"Frequency", Align::Right,
     [](const Listed& listed) {
         return megahertzText(listed.row.frequency(listed.number).value_or(0));
     }},
    {"Centre", Align::Left,
     [](const Listed& listed) {
         const auto wide = wideOf(listed);
         const bool isCenter = !wide || wide->center.number == listed.number;
         return isCenter ? std::string(kNone) : centerText(*wide);
     }},
    {"20 MHz", Align::Left, [](const Listed& listed) { return partsText(wideOf(listed)); }},
};

void putValue(std::string name, const std::string& value) {
    constexpr std::size_t kValueColumn = 18;
    name.resize(kValueColumn, ' ');
    put(name + value + '\n');
}

void printClassText(const Class& row) {
    putValue("Operating class", std::to_string(row.number));
    putValue("Band", bandText(row.band));
    putValue("Width", widthText(row));
    putValue("Spacing", std::to_string(row.spacing) + " MHz");
    putValue("Start frequency", megahertzText(row.start));
    putValue("Numbers", row.hasCenters ? "of the centres" : "of the primary channels");
    putValue("Behaviour limits", orNone(joined(row.behaviorLimits())));
    put("\n");
    std::vector<Listed> listed;
    for (const std::uint8_t number : row.channels) listed.push_back({row, number});
    printFilled(kListedColumns, listed);
}

}  // namespace

void writeJSON(JSONWriter& writer, const air::PlannedChannel& channel) {
    writeObject(writer, channel);
}

void writeJSON(JSONWriter& writer, const air::OperatingClass& row) {
    writeObject(writer, row);
}

void printChannelPlan(const std::vector<Channel>& channels, Format format) {
    if (format == Format::Text) return printFilled(kColumns, channels);
    printJSON(channels, format);
}

void printOperatingClasses(const std::vector<Class>& classes, Format format) {
    if (format == Format::Text) return printFilled(kClassColumns, classes);
    printJSON(classes, format);
}

void printOperatingClass(const Class& row, Format format) {
    if (format == Format::Text) return printClassText(row);
    printJSON(std::vector{row}, format);
}

}  // namespace halvane::tool
