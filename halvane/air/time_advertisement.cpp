#include "halvane/air/time_advertisement.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

enum Capability : std::uint8_t { kOffset = 1, kUtc = 2 };

constexpr ValueName kCapabilities[] = {{0, "no external time source"},
                                       {kOffset, "offset of the TSF from UTC"},
                                       {kUtc, "UTC when the TSF was 0"}};

constexpr auto kUtcLayout = [](auto& codec, auto& utc) {
    codec.number("Year", utc.year);
    codec.number("Month", utc.month);
    codec.number("Day", utc.day);
    codec.number("Hours", utc.hours);
    codec.number("Minutes", utc.minutes);
    codec.number("Seconds", utc.seconds);
    codec.number("Milliseconds", utc.milliseconds);
    codec.number("Reserved", utc.reserved);
};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.number("Timing Capabilities", element.capabilities, {.names = kCapabilities});
    const bool isOffset = element.capabilities == kOffset;
    const bool isUtc = element.capabilities == kUtc;
    codec.when(isOffset, element.offset,
               [&](auto& value) { codec.octets("Time Value", value.octets); });
    codec.when(isUtc, element.utc,
               [&](auto& utc) { codec.group("Time Value", [&] { kUtcLayout(codec, utc); }); });
    codec.when(isOffset || isUtc, element.error, [&](auto& value) {
        codec.template numberOf<5>("Time Error", value, {.unit = "ns"});
    });
    codec.when(isUtc, element.updateCounter,
               [&](auto& value) { codec.number("Time Update Counter", value); });
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(TimeAdvertisement, kLayout)

}  // namespace halvane::air
