#include "halvane/air/wmm.h"

#include "halvane/air/access_category_layout_internal.h"
#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr ValueName kSubtypes[] = {{0, "Information"}, {1, "Parameter"}, {2, "TSPEC"}};

constexpr BitField kQosInfo[] = {
    {0, 4, "Parameter Set Count"}, {4, 3, "Reserved"}, {7, 1, "U-APSD"}};

constexpr auto kParametersLayout = [](auto& codec, auto& parameters) {
    codec.number("Reserved", parameters.reserved);
    kEdcaRecordsLayout(codec, parameters.records);
};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.number("OUI Subtype", element.subtypeNumber, {.names = kSubtypes});
    codec.number("Version", element.version);
    const bool hasParameters = element.subtype() == WmmSubtype::Parameter;
    codec.when(hasParameters || element.subtype() == WmmSubtype::Information, element.qosInfo,
               [&](auto& bits) { codec.group("QoS Info", [&] { codec.bits(bits, kQosInfo); }); });
    codec.when(hasParameters, element.parameters,
               [&](auto& parameters) { kParametersLayout(codec, parameters); });
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(Wmm, kLayout)

}  // namespace halvane::air
