#include "halvane/air/wmm.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr ValueName kSubtypes[] = {{0, "Information"}, {1, "Parameter"}, {2, "TSPEC"}};
constexpr ValueName kCategories[] = {
    {0, "Best Effort"}, {1, "Background"}, {2, "Video"}, {3, "Voice"}};

constexpr BitField kQosInfo[] = {
    {0, 4, "Parameter Set Count"}, {4, 3, "Reserved"}, {7, 1, "U-APSD"}};
constexpr BitField kAccess[] = {
    {0, 4, "AIFSN"}, {4, 1, "ACM"}, {5, 2, "ACI", {.names = kCategories}}, {7, 1, "Reserved"}};
constexpr BitField kContention[] = {{0, 4, "ECWmin"}, {4, 4, "ECWmax"}};

constexpr auto kParametersLayout = [](auto& codec, auto& parameters) {
    codec.number("Reserved", parameters.reserved);
    codec.list(parameters.categories.capacity(), parameters.categories, [&](auto& category) {
        codec.group("AC Parameters", [&] {
            codec.bits(category.access, kAccess);
            codec.bits(category.contention, kContention);
            codec.number("TXOP Limit", category.txopLimit, {.unit = "32 us"});
        });
    });
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
