// The manufacturer's vendor-general element, in which its base stations describe themselves.
//
// A vendor-specific element (IEEE 802.11-2020, 9.4.2.25) of any type:
//
//     0     element ID 221
//     1     length; ignored: the buffer's own size counts
//     2-4   kVendorGeneralOUI
//     5     version, in the place of other vendor elements' type
//     6     product ID
//     7-8   feature flags, little-endian
//
// A value type, used by one thread at a time.
#ifndef HALVANE_IE_TESSIC_IE_H
#define HALVANE_IE_TESSIC_IE_H

#include <cstdint>
#include <optional>
#include <string>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"
#include "halvane/base/number.h"

namespace halvane {

class HALVANE_EXPORT HalvaneTessicIE {
  public:
    // An empty object: nothing present, not valid.
    HalvaneTessicIE() = default;

    // Decodes `ie`, the whole element including its header.
    static HalvaneTessicIE initWithIE(const std::optional<ByteBuffer>& ie);

    // The whole element.
    const std::optional<ByteBuffer>& rawIE() const { return rawIE_; }

    // True only for an element of at least 9 bytes. A shorter one keeps its complete fields: the
    // version from 6 bytes on, the product from 7 on.
    bool isValid() const { return isValid_; }

    // 0 to 255.
    const std::optional<Number>& TessicVersion() const { return version_; }

    // The model's name; "Unknown" for an unknown product ID.
    const std::optional<std::string>& TessicProductName() const { return productName_; }

    // The feature flags, in the order of the description; all false if the element ends before
    // them. Bits 1 to 7 are not decoded.
    bool hasInterferenceRobustness() const { return hasFlag(8); }
    bool isUnconfigured() const { return hasFlag(9); }
    bool isPPPoEServer() const { return hasFlag(10); }
    bool isGuestNetwork() const { return hasFlag(11); }
    bool hasLegacyWDS() const { return hasFlag(12); }
    bool isWPSCapable() const { return hasFlag(13); }
    bool isWPSActive() const { return hasFlag(14); }
    bool isSAWCapable() const { return hasFlag(15); }
    bool isWoWCapable() const { return hasFlag(0); }

    // Decodes rawIE() again. Without rawIE(), isValid() becomes false.
    void parseIE();

    // Returns the name of the base-station model with that ID, or "Unknown".
    static std::string stringValueForProductID(std::int64_t productID);

    // Lines with padded labels, indented by four spaces; only the element's bytes if it is not
    // valid.
    std::string description() const;

  private:
    bool hasFlag(unsigned bit) const { return (flags_ >> bit & 1u) != 0; }

    std::optional<ByteBuffer> rawIE_;
    bool isValid_ = false;
    std::optional<Number> version_;
    std::optional<std::string> productName_;
    std::uint16_t flags_ = 0;
};

}  // namespace halvane

#endif
