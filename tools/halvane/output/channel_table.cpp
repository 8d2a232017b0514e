#include "tools/halvane/output/channel_table.h"

#include <cstdio>
#include <string>

namespace halvane::tool {

namespace {

std::string flagsOf(const HalvaneChannel& channel) {
    struct Flag {
        bool (HalvaneChannel::*holds)() const;
        const char* name;
    };
    static constexpr Flag kFlags[] = {
        {&HalvaneChannel::isDisabled, "disabled"},
        {&HalvaneChannel::isRadarProne, "radar prone"},
        {&HalvaneChannel::supports40MHz, "40 MHz"},
        {&HalvaneChannel::supports80MHz, "80 MHz"},
    };
    std::string text;
    for (const auto& [holds, name] : kFlags) {
        if (!(channel.*holds)()) continue;
        if (!text.empty()) text += ", ";
        text += name;
    }
    return text.empty() ? "-" : text;
}

}  // namespace

void printChannelTable(const std::vector<HalvaneChannel>& channels) {
    std::puts("Channel  Frequency  Flags");
    for (const HalvaneChannel& channel : channels) {
        std::printf("%7lld  %5lld MHz  %s\n", static_cast<long long>(channel.channelNumber()),
                    static_cast<long long>(channel.channelFrequency()), flagsOf(channel).c_str());
    }
}

}  // namespace halvane::tool
