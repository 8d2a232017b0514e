#include "halvane/ie/wps_ie.h"

#include <cstddef>

#include "halvane/base/byte_cursor.h"
#include "halvane/base/describe.h"
#include "halvane/ie/fancy_formatting.h"
#include "halvane/utils/printf/std_string_internal.h"

namespace halvane {

namespace {

// Element ID, length, OUI and vendor type.
constexpr std::size_t kHeaderSize = 6;

}  // namespace

HalvaneWPSIE HalvaneWPSIE::initWithIE(const std::optional<ByteBuffer>& ie) {
    HalvaneWPSIE object;
    if (ie) {
        object.rawIE_ = ie;
        object.parseIE();
    }
    return object;
}

void HalvaneWPSIE::parseIE() {
    if (!rawIE_) return;
    ByteCursor cursor(*rawIE_);
    if (!cursor.skip(kHeaderSize) || cursor.atEnd()) return;
    tlvs_ = HalvaneWPSTLVs::initWithData(cursor.restBuffer());
}

std::string HalvaneWPSIE::description() const {
    std::string text;
    if (!rawIE_) return text;
    appendPrintF(text, "    IE                    : %s\n",
                 FancyFormatting::formattedHexData(*rawIE_).c_str());
    appendPrintF(text, "    TLVS\n%s\n", describe(tlvs_).c_str());
    return text;
}

}  // namespace halvane
