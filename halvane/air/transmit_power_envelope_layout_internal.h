// The layout of Transmit Power Envelope, which Channel Switch Wrapper holds too.
#ifndef HALVANE_AIR_TRANSMIT_POWER_ENVELOPE_LAYOUT_INTERNAL_H
#define HALVANE_AIR_TRANSMIT_POWER_ENVELOPE_LAYOUT_INTERNAL_H

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/field_sink.h"

namespace halvane::air {

inline constexpr ValueName kPowerInterpretations[] = {
    {0, "local EIRP"},
    {1, "local EIRP PSD"},
    {2, "regulatory client EIRP"},
    {3, "regulatory client EIRP PSD"},
    {4, "additional regulatory client EIRP"},
    {5, "additional regulatory client EIRP PSD"},
};
inline constexpr ValueName kPowerCategories[] = {{0, "default"}, {1, "subordinate device"}};

inline constexpr BitField kPowerInformation[] = {
    {0, 3, "Maximum Transmit Power Count"},
    {3, 3, "Maximum Transmit Power Interpretation", {.names = kPowerInterpretations}},
    {6, 2, "Maximum Transmit Power Category", {.names = kPowerCategories}},
};

inline constexpr BitField kPsdExtension[] = {
    {0, 4, "Extension Maximum Transmit PSD Count"},
    {4, 4, "Reserved"},
};

inline constexpr auto kPsdExtensionLayout = [](auto& codec, auto& extension) {
    codec.bits(extension.information, kPsdExtension);
    codec.list(extension.information.bits(0, 4), extension.values, [&](auto& value) {
        codec.number("Maximum Transmit PSD", value, {.unit = "0.5 dBm/MHz"});
    });
};

inline constexpr auto kTransmitPowerEnvelopeLayout = [](auto& codec, auto& element) {
    codec.group("Transmit Power Information",
                [&] { codec.bits(element.information, kPowerInformation); });
    const bool isPsd = element.isPsd();
    codec.list(element.valueCount(), element.values, [&](auto& value) {
        codec.number(isPsd ? "Maximum Transmit PSD" : "Maximum Transmit Power", value,
                     {.unit = isPsd ? "0.5 dBm/MHz" : "0.5 dBm"});
    });
    if (isPsd) {
        codec.ifMore(element.psdExtension, [&](auto& extension) {
            codec.group("Extension Maximum Transmit PSD",
                        [&] { kPsdExtensionLayout(codec, extension); });
        });
    } else {
        codec.ifMore(element.power320, [&](auto& value) {
            codec.number("Maximum Transmit Power For 320 MHz", value, {.unit = "0.5 dBm"});
        });
    }
    codec.rest(element.rest);
};

}  // namespace halvane::air

#endif
