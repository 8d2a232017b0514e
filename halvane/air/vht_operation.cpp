#include "halvane/air/vht_operation.h"

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/mcs_map_internal.h"
#include "halvane/air/vht_operation_layout_internal.h"

namespace halvane::air {

namespace {

constexpr auto kLayout = [](auto& codec, auto& element) {
    kVhtOperationInformationLayout(codec, element.information);
    codec.group("Basic VHT-MCS and NSS Set",
                [&] { codec.bits(element.basicMcs.fields, kVhtMcsFields); });
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(VhtOperation, kLayout)

}  // namespace halvane::air
