#include "halvane/air/edca_parameter_set.h"

#include "halvane/air/access_category_layout_internal.h"
#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr auto kLayout = [](auto& codec, auto& element) {
    kApQosInfoLayout(codec, element.qosInfo);
    codec.number("Update EDCA Info", element.updateInfo);
    kEdcaRecordsLayout(codec, element.records);
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(EdcaParameterSet, kLayout)

}  // namespace halvane::air
