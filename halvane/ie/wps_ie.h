// The Wi-Fi Protected Setup element: a vendor-specific element (IEEE 802.11-2020, 9.4.2.25) whose
// body is a sequence of attributes.
//
//     0     element ID 221
//     1     length; ignored: the buffer's own size counts
//     2-4   OUI 00-50-F2
//     5     vendor type 4
//     6-    attributes (wps_tlvs.h)
//
// A value type, used by one thread at a time.
#ifndef HALVANE_IE_WPS_IE_H
#define HALVANE_IE_WPS_IE_H

#include <optional>
#include <string>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"
#include "halvane/ie/wps_tlvs.h"

namespace halvane {

class HALVANE_EXPORT HalvaneWPSIE {
  public:
    // An empty object: nothing present.
    HalvaneWPSIE() = default;

    // Decodes `ie`, the whole element including its header. Without an element the object is empty.
    static HalvaneWPSIE initWithIE(const std::optional<ByteBuffer>& ie);

    // The whole element.
    const std::optional<ByteBuffer>& rawIE() const { return rawIE_; }

    // Always false: the element itself has no validity here. Use tlvs()->isValid().
    bool isValid() const { return false; }

    // The attributes; absent if the element has no attribute bytes.
    const std::optional<HalvaneWPSTLVs>& tlvs() const { return tlvs_; }

    // Decodes rawIE(). An element without attributes leaves tlvs() unchanged.
    void parseIE();

    // Lines with padded labels, indented by four spaces; empty without rawIE().
    std::string description() const;

  private:
    std::optional<ByteBuffer> rawIE_;
    std::optional<HalvaneWPSTLVs> tlvs_;
};

}  // namespace halvane

#endif
