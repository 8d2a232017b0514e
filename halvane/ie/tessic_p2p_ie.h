// The manufacturer's peer-to-peer element, which is only generated, never decoded.
//
// A vendor-specific element (IEEE 802.11-2020, 9.4.2.25) without a body after its type:
//
//     0     element ID 221
//     1     length 4
//     2-4   kVendorOUI
//     5     vendor type 5
//
// A value type, used by one thread at a time.
#ifndef HALVANE_IE_TESSIC_P2P_IE_H
#define HALVANE_IE_TESSIC_P2P_IE_H

#include <cstdint>
#include <optional>
#include <string>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"

namespace halvane {

class HALVANE_EXPORT HalvaneTessicP2PIE {
  public:
    // An empty object: no element, not valid.
    HalvaneTessicP2PIE() = default;

    // Stores `ie`, the whole element including its header, unchanged. The object is valid.
    static HalvaneTessicP2PIE initWithIE(const ByteBuffer& ie);

    // The whole element, as given or generated.
    const std::optional<ByteBuffer>& rawIE() const { return rawIE_; }

    bool isValid() const { return isValid_; }

    // The size of the generated element less one: 5; 0 if none was generated.
    std::uint64_t signatureLength() const { return signatureLength_; }

    // Does nothing, since there is nothing to decode.
    void parseIE();

    // Replaces rawIE() by the element above. The object is valid then.
    void generateIE();

    // One line, indented by four spaces: the element's bytes.
    std::string description() const;

  private:
    std::optional<ByteBuffer> rawIE_;
    bool isValid_ = false;
    std::uint64_t signatureLength_ = 0;
};

}  // namespace halvane

#endif
