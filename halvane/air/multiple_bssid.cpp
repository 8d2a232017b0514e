#include "halvane/air/multiple_bssid.h"

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/subelement_internal.h"

namespace halvane::air {

namespace {

constexpr ValueName kSubelements[] = {{kNontransmittedProfile, "Nontransmitted BSSID Profile"},
                                      {221, "Vendor Specific"}};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.number("MaxBSSID Indicator", element.maxIndicator);
    kSubelementsLayout(codec, element.subelements, kSubelements, kNontransmittedProfile);
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(MultipleBssid, kLayout)

}  // namespace halvane::air
