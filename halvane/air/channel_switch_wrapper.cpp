#include "halvane/air/channel_switch_wrapper.h"

#include "halvane/air/bandwidth_indication_layout_internal.h"
#include "halvane/air/country_layout_internal.h"
#include "halvane/air/element_codec_internal.h"
#include "halvane/air/transmit_power_envelope_layout_internal.h"
#include "halvane/air/wide_bandwidth_channel_switch_layout_internal.h"

namespace halvane::air {

namespace {

constexpr bool isExtension(const auto& subelement, ElementId id) {
    return subelement.id == kExtendedElementId && subelement.extension == extensionOf(id);
}

constexpr auto kBodyLayout = [](auto& codec, auto& subelement) {
    const auto is = [&](ElementId id) { return subelement.id == idOctetOf(id); };
    if (is(ElementId::BandwidthIndication)) {
        codec.ifMore(subelement.extension,
                     [&](auto& extension) { codec.number("Element ID Extension", extension); });
    }
    codec.when(is(ElementId::Country), subelement.newCountry,
               [&](auto& part) { kCountryLayout(codec, part); });
    codec.when(is(ElementId::WideBandwidthChannelSwitch), subelement.wideBandwidth,
               [&](auto& part) { kWideBandwidthChannelSwitchLayout(codec, part); });
    codec.when(is(ElementId::TransmitPowerEnvelope), subelement.newPower,
               [&](auto& part) { kTransmitPowerEnvelopeLayout(codec, part); });
    codec.when(isExtension(subelement, ElementId::BandwidthIndication), subelement.bandwidth,
               [&](auto& part) { kBandwidthIndicationLayout(codec, part); });
    codec.rest(subelement.body);
};

constexpr ValueName kSubelements[] = {{7, "New Country"},
                                      {194, "Wide Bandwidth Channel Switch"},
                                      {195, "New Transmit Power Envelope"},
                                      {255, "extension"}};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.listToEnd(element.subelements, [&](auto& subelement) {
        codec.group("Subelement", [&] {
            codec.number("Subelement ID", subelement.id, {.names = kSubelements});
            codec.template sized<std::uint8_t>("Length", 0,
                                               [&] { kBodyLayout(codec, subelement); });
        });
    });
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(ChannelSwitchWrapper, kLayout)

}  // namespace halvane::air
