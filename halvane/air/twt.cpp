#include "halvane/air/twt.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr ValueName kNegotiations[] = {
    {0, "individual"}, {1, "next TBTT"}, {2, "broadcast schedules"}, {3, "broadcast membership"}};
constexpr ValueName kSetups[] = {{0, "Request TWT"},  {1, "Suggest TWT"}, {2, "Demand TWT"},
                                 {3, "TWT Grouping"}, {4, "Accept TWT"},  {5, "Alternate TWT"},
                                 {6, "Dictate TWT"},  {7, "Reject TWT"}};
constexpr ValueName kFlowTypes[] = {{0, "announced"}, {1, "unannounced"}};
constexpr ValueName kWakeUnits[] = {{0, "256 us"}, {1, "TU"}};

constexpr std::size_t kNdpPaging = 0;
constexpr std::size_t kLinkBitmap = 6;

constexpr BitField kControl[] = {
    {kNdpPaging, 1, "NDP Paging Indicator"},
    {1, 1, "Responder PM Mode"},
    {2, 2, "Negotiation Type", {.names = kNegotiations}},
    {4, 1, "TWT Information Frame Disabled"},
    {5, 1, "Wake Duration Unit", {.names = kWakeUnits}},
    {kLinkBitmap, 1, "Link ID Bitmap Present"},
    {7, 1, "Aligned TWT"},
};
constexpr BitField kIndividualRequest[] = {
    {0, 1, "TWT Request"},
    {1, 3, "TWT Setup Command", {.names = kSetups}},
    {4, 1, "Trigger"},
    {5, 1, "Implicit"},
    {6, 1, "Flow Type", {.names = kFlowTypes}},
    {7, 3, "TWT Flow Identifier"},
    {10, 5, "TWT Wake Interval Exponent"},
    {15, 1, "TWT Protection"},
};
constexpr BitField kBroadcastRequest[] = {
    {0, 1, "TWT Request"},
    {1, 3, "TWT Setup Command", {.names = kSetups}},
    {4, 1, "Trigger"},
    {5, 1, "Last Broadcast Parameter Set"},
    {6, 1, "Flow Type", {.names = kFlowTypes}},
    {7, 3, "Broadcast TWT Recommendation"},
    {10, 5, "TWT Wake Interval Exponent"},
    {15, 1, "Reserved"},
};
constexpr std::size_t kRestricted = 0;
constexpr BitField kBroadcastInformation[] = {
    {kRestricted, 1, "Restricted TWT Traffic Info Present"},
    {1, 2, "Restricted TWT Schedule Info"},
    {3, 5, "Broadcast TWT ID"},
    {8, 8, "Broadcast TWT Persistence"},
};
constexpr BitField kTrafficControl[] = {
    {0, 1, "DL TID Bitmap Valid"}, {1, 1, "UL TID Bitmap Valid"}, {2, 6, "Reserved"}};
constexpr BitField kNdpPagingField[] = {{0, 32, "NDP Paging"}};

constexpr auto kWakeLayout = [](auto& codec, auto& parameters) {
    codec.number("Nominal Minimum TWT Wake Duration", parameters.minWakeDuration);
    codec.number("TWT Wake Interval Mantissa", parameters.wakeIntervalMantissa);
};

// The group assignment has 3 octets, and 6 more if bit 7 of its first says so.
constexpr auto kGroupLayout = [](auto& codec, auto& twt) {
    const bool hasOffset = (codec.peek().value_or(0) & 0x80) != 0;
    codec.octets("TWT Group Assignment", twt.groupAssignment, hasOffset ? 9 : 3);
};

constexpr auto kIndividualLayout = [](auto& codec, auto& twt, const BitOctets<1>& control) {
    codec.bits(twt.parameters.request, kIndividualRequest);
    const bool isGrouping = twt.parameters.setup() == TwtSetup::Grouping;
    codec.when(!isGrouping, twt.targetWakeTime,
               [&](auto& value) { codec.number("Target Wake Time", value, {.unit = "us"}); });
    if (isGrouping) kGroupLayout(codec, twt);
    kWakeLayout(codec, twt.parameters);
    codec.number("TWT Channel", twt.channel);
    codec.when(control.bit(kNdpPaging), twt.ndpPaging,
               [&](auto& value) { codec.bits(value, kNdpPagingField); });
    codec.when(control.bit(kLinkBitmap), twt.links,
               [&](auto& value) { codec.number("Link ID Bitmap", value); });
};

constexpr auto kBroadcastLayout = [](auto& codec, auto& twt) {
    codec.bits(twt.parameters.request, kBroadcastRequest);
    codec.number("Target Wake Time", twt.targetWakeTime, {.unit = "TU"});
    kWakeLayout(codec, twt.parameters);
    codec.bits(twt.information, kBroadcastInformation);
    codec.when(twt.information.bit(kRestricted), twt.restricted, [&](auto& restricted) {
        codec.bits(restricted.control, kTrafficControl);
        codec.number("Restricted TWT DL TID Bitmap", restricted.downlinkTids);
        codec.number("Restricted TWT UL TID Bitmap", restricted.uplinkTids);
    });
};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.group("Control", [&] { codec.bits(element.control, kControl); });
    if (!element.isBroadcast()) {
        codec.when(true, element.individual, [&](auto& twt) {
            codec.group("Individual TWT Parameter Set",
                        [&] { kIndividualLayout(codec, twt, element.control); });
        });
    } else {
        bool wasLast = false;
        codec.listWhile([&](const auto&) { return !wasLast; }, element.broadcast,
                        [&](auto& twt) {
                            codec.group("Broadcast TWT Parameter Set",
                                        [&] { kBroadcastLayout(codec, twt); });
                            wasLast = twt.isLast();
                        });
    }
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(Twt, kLayout)

}  // namespace halvane::air
