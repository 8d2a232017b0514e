// The manufacturer's dynamic WDS element: the role of a base station in a wireless distribution
// system.
//
// A vendor-specific element (IEEE 802.11-2020, 9.4.2.25):
//
//     0      element ID 221
//     1      length; ignored: the buffer's own size counts
//     2-4    kVendorOUI
//     5      vendor type 1
//     6-7    ignored
//     8      role
//     9-12   flags, big-endian, unlike the fields of other elements
//
// A value type, used by one thread at a time.
#ifndef HALVANE_IE_DWDS_IE_H
#define HALVANE_IE_DWDS_IE_H

#include <cstdint>
#include <optional>
#include <string>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"

namespace halvane {

class HALVANE_EXPORT HalvaneDWDSIE {
  public:
    // An empty object: nothing present, not valid.
    HalvaneDWDSIE() = default;

    // Decodes `ie`, the whole element including its header.
    static HalvaneDWDSIE initWithIE(const ByteBuffer& ie);

    // The whole element.
    const std::optional<ByteBuffer>& rawIE() const { return rawIE_; }

    // True once built from an element, however short.
    bool isValid() const { return isValid_; }

    // The role's text; also "Unknown" if the element ends before its role.
    const std::optional<std::string>& DWDSRole() const { return role_; }

    // All false if the element ends before or within its flags.
    bool isAMPDUNotSupportedOverDWDS() const { return hasFlag(0); }
    bool isAMPDUWorkaroundOverDWDS() const { return hasFlag(1); }
    bool isAMPDUFullSupportOverDWDS() const { return hasFlag(2); }
    bool isClosedNetworkOverDWDS() const { return hasFlag(3); }

    // Decodes rawIE() again.
    void parseIE();

    // 0 "Inactive", 1 "Master", 2 "Relay", 3 "Remote", any other "Unknown".
    static std::string stringValueForDWDSRole(std::uint8_t role);

    // Lines with padded labels, indented by four spaces.
    std::string description() const;

  private:
    bool hasFlag(unsigned bit) const { return (flags_ >> bit & 1u) != 0; }

    std::optional<ByteBuffer> rawIE_;
    bool isValid_ = false;
    std::optional<std::string> role_;
    std::uint32_t flags_ = 0;
};

}  // namespace halvane

#endif
