#include "halvane/air/hotspot_indication.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr ValueName kReleases[] = {{0, "Release 1"}, {1, "Release 2"}, {2, "Release 3"}};

constexpr BitField kConfiguration[] = {{0, 1, "DGAF Disabled"},
                                       {1, 1, "PPS MO ID Present"},
                                       {2, 1, "ANQP Domain ID Present"},
                                       {3, 1, "Reserved"},
                                       {4, 4, "Release Number", {.names = kReleases}}};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.group("Hotspot Configuration",
                [&] { codec.bits(element.configuration, kConfiguration); });
    codec.when(element.hasPpsMoId(), element.ppsMoId,
               [&](auto& value) { codec.number("PPS MO ID", value); });
    codec.when(element.hasAnqpDomainId(), element.anqpDomainId,
               [&](auto& value) { codec.number("ANQP Domain ID", value); });
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(HotspotIndication, kLayout)

}  // namespace halvane::air
