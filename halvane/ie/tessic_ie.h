// The maker's vendor-general element: what an own base station says about itself.
//
// A vendor-specific element (IEEE 802.11-2020, 9.4.2.25), of any type:
//
//     0     element ID 221
//     1     length; not looked at: the buffer's own size counts
//     2-4   kVendorGeneralOUI
//     5     version, where other vendor elements have their type
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

    // Decodes `ie`, the whole element with its header.
    static HalvaneTessicIE initWithIE(const std::optional<ByteBuffer>& ie);

    // The whole element.
    const std::optional<ByteBuffer>& rawIE() const { return rawIE_; }

    // True only for an element of at least 9 bytes. A shorter one keeps the fields it has whole:
    // the version from 6 bytes on, the product from 7 on.
    bool isValid() const { return isValid_; }

    // 0 to 255.
    const std::optional<Number>& TessicVersion() const { return version_; }

    // The model's name, "Unknown" for a product ID that no model has.
    const std::optional<std::string>& TessicProductName() const { return productName_; }

    // The feature flags, in the order of the description; all false where the element ends before
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

    // Decodes rawIE() anew; without one, isValid() becomes false.
    void parseIE();

    // The name of the base-station model of that ID, or "Unknown".
    static std::string stringValueForProductID(std::int64_t productID);

    // Lines of four-space-indented, padded labels; only the element's bytes while it is not valid.
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
