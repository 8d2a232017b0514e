#include "halvane/air/erp.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr BitField kParameters[] = {
    {0, 1, "NonERP_Present"},
    {1, 1, "Use_Protection"},
    {2, 1, "Barker_Preamble_Mode"},
    {3, 5, "Reserved"},
};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.bits(element.parameters, kParameters);
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(Erp, kLayout)

}  // namespace halvane::air
