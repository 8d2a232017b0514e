#include "halvane/ie/tessic_p2p_ie.h"

#include <vector>

#include "halvane/base/element_id.h"
#include "halvane/base/vendor.h"
#include "halvane/ie/fancy_formatting.h"
#include "halvane/utils/printf/std_string_internal.h"

namespace halvane {

HalvaneTessicP2PIE HalvaneTessicP2PIE::initWithIE(const ByteBuffer& ie) {
    HalvaneTessicP2PIE object;
    object.isValid_ = true;
    object.rawIE_ = ie;
    object.parseIE();
    return object;
}

void HalvaneTessicP2PIE::parseIE() {}

void HalvaneTessicP2PIE::generateIE() {
    rawIE_.reset();
    isValid_ = false;

    std::vector<std::uint8_t> element = {kElementIDVendorSpecific, 0};
    element.insert(element.end(), kVendorOUI.begin(), kVendorOUI.end());
    element.push_back(kVendorTypeP2P);
    element[1] = static_cast<std::uint8_t>(element.size() - kElementHeaderSize);

    signatureLength_ = element.size() - 1;
    rawIE_ = ByteBuffer(element);
    isValid_ = true;
}

std::string HalvaneTessicP2PIE::description() const {
    return stringPrintF("    IE                  : %s\n",
                        FancyFormatting::formattedHexData(rawIE_).c_str());
}

}  // namespace halvane
