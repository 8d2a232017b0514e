// The octets that Supported Rates and Extended Supported Rates hold, and their words.
#ifndef HALVANE_AIR_RATE_LAYOUT_INTERNAL_H
#define HALVANE_AIR_RATE_LAYOUT_INTERNAL_H

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/field_sink.h"

namespace halvane::air {

// The rates of 802.11, 802.11b, 802.11g and 802.11a, and the selectors.
inline constexpr ValueName kRateNames[] = {
    {0x02, "1 Mb/s"},
    {0x04, "2 Mb/s"},
    {0x0B, "5.5 Mb/s"},
    {0x0C, "6 Mb/s"},
    {0x12, "9 Mb/s"},
    {0x16, "11 Mb/s"},
    {0x18, "12 Mb/s"},
    {0x24, "18 Mb/s"},
    {0x2C, "22 Mb/s"},
    {0x30, "24 Mb/s"},
    {0x42, "33 Mb/s"},
    {0x48, "36 Mb/s"},
    {0x60, "48 Mb/s"},
    {0x6C, "54 Mb/s"},
    {0x82, "1 Mb/s, basic"},
    {0x84, "2 Mb/s, basic"},
    {0x8B, "5.5 Mb/s, basic"},
    {0x8C, "6 Mb/s, basic"},
    {0x92, "9 Mb/s, basic"},
    {0x96, "11 Mb/s, basic"},
    {0x98, "12 Mb/s, basic"},
    {0xA4, "18 Mb/s, basic"},
    {0xAC, "22 Mb/s, basic"},
    {0xB0, "24 Mb/s, basic"},
    {0xC2, "33 Mb/s, basic"},
    {0xC8, "36 Mb/s, basic"},
    {0xE0, "48 Mb/s, basic"},
    {0xEC, "54 Mb/s, basic"},
    {0xF9, "BSS membership selector: EHT PHY"},
    {0xFA, "BSS membership selector: HE PHY"},
    {0xFB, "BSS membership selector: SAE Hash to Element Only"},
    {0xFC, "BSS membership selector: EPD"},
    {0xFD, "BSS membership selector: GLK"},
    {0xFE, "BSS membership selector: VHT PHY"},
    {0xFF, "BSS membership selector: HT PHY"},
};

inline constexpr auto kRatesLayout = [](auto& codec, auto& element) {
    codec.listToEnd(element.rates,
                    [&](auto& rate) { codec.number("Rate", rate.octet, {.names = kRateNames}); });
};

}  // namespace halvane::air

#endif
