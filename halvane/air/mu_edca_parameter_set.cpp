#include "halvane/air/mu_edca_parameter_set.h"

#include "halvane/air/access_category_layout_internal.h"
#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr auto kLayout = [](auto& codec, auto& element) {
    kApQosInfoLayout(codec, element.qosInfo);
    kAccessRecordsLayout(codec, element.records, [&](auto& record) {
        codec.number("MU EDCA Timer", record.timer, {.unit = "8 TU"});
    });
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(MuEdcaParameterSet, kLayout)

}  // namespace halvane::air
