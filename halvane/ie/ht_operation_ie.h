// The HT Operation element (ID 61): IEEE 802.11-2020, 9.4.2.56.
//
// Only an element of exactly 24 bytes is decoded; multi-byte fields are little-endian.
// A value type, used by one thread at a time.
#ifndef HALVANE_IE_HT_OPERATION_IE_H
#define HALVANE_IE_HT_OPERATION_IE_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"

namespace halvane {

class HALVANE_EXPORT HalvaneHTOperationIE {
  public:
    // An empty object: not valid, every field zero or absent.
    // (A defaulted constructor would clear the whole object first, which takes longer than
    // decoding.)
    HalvaneHTOperationIE() {}  // NOLINT(modernize-use-equals-default)

    // Decodes the whole element, including ID and length.
    static HalvaneHTOperationIE initWithIE(const ByteBuffer& ie);
    // The same for the element of `size` bytes at `offset` in the buffer.
    static HalvaneHTOperationIE initWithIE(const ByteBuffer& elements, std::size_t offset,
                                           std::size_t size);

    // The whole element; absent in an empty object.
    const std::optional<ByteBuffer>& rawIE() const { return rawIE_; }

    // False for an element of any other size, which is not decoded.
    bool isValid() const { return isValid_; }

    std::int64_t primaryChannel() const { return primaryChannel_; }

    // The five octets of the HT operation information after the primary channel (figure 9-385). The
    // first is decoded below; the others stay raw for callers that need their bits.
    std::uint8_t capabilities1() const { return capabilities1_; }
    std::uint16_t capabilities2() const { return capabilities2_; }
    std::uint16_t capabilities3() const { return capabilities3_; }

    // 0: no secondary channel, 1: above the primary channel, 3: below it.
    std::int64_t secondaryChannelOffset() const { return secondaryChannelOffset_; }
    // In MHz: 20 or 40 once decoded, 0 before.
    std::int64_t staChannelWidth() const { return staChannelWidth_; }

    bool supportsRIFS() const { return supportsRIFS_; }

    // Never decoded: always 0 or false, whatever the raw fields contain.
    std::int64_t htProtectionMode() const { return 0; }
    bool nonGreenfieldHTSTAsPresent() const { return false; }
    bool nonHTSTAsPresentOBSS() const { return false; }
    bool transmitsDualBeacon() const { return false; }
    bool requiresDualCTSProtection() const { return false; }
    bool isSTBCBeacon() const { return false; }
    bool supportsLSIGTXOPProtectionFullSupport() const { return false; }
    bool hasActivePCO() const { return false; }
    bool pcoPhase20MHz() const { return false; }
    bool pcoPhase40MHz() const { return false; }

    // The 16 bytes of the basic HT-MCS set.
    const std::optional<ByteBuffer>& basicMCSSet() const { return basicMCSSet_; }

    // Decodes rawIE(): checks its size, then runs the stage below.
    void parseIE();

    // Decodes capabilities1().
    void parseCapabilities1();

    // "Not Present", "Above Primary" or "Below Primary"; absent for any other value.
    static std::optional<std::string> stringValueForSecondaryChannelOffset(std::int64_t offset);

    // Lines with padded labels, indented by four spaces.
    std::string description() const;

  private:
    std::optional<ByteBuffer> rawIE_;
    std::optional<ByteBuffer> basicMCSSet_;
    bool isValid_ = false;
    bool supportsRIFS_ = false;
    std::uint8_t primaryChannel_ = 0;
    std::uint8_t capabilities1_ = 0;
    std::uint8_t secondaryChannelOffset_ = 0;
    std::uint8_t staChannelWidth_ = 0;
    std::uint16_t capabilities2_ = 0;
    std::uint16_t capabilities3_ = 0;
};

}  // namespace halvane

#endif
