// The HT Capabilities element (ID 45): IEEE 802.11-2020, 9.4.2.55.
//
// Only an element of exactly 28 bytes is decoded; multi-byte fields are little-endian.
// A value type, used by one thread at a time.
#ifndef HALVANE_IE_HT_CAPABILITIES_IE_H
#define HALVANE_IE_HT_CAPABILITIES_IE_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"
#include "halvane/base/number.h"

namespace halvane {

class HALVANE_EXPORT HalvaneHTCapabilitiesIE {
  public:
    // An empty object: not valid, every field zero or absent.
    // (A defaulted constructor would clear the whole object first, which takes longer than
    // decoding.)
    HalvaneHTCapabilitiesIE() {}  // NOLINT(modernize-use-equals-default)

    // Decodes the whole element, including ID and length.
    static HalvaneHTCapabilitiesIE initWithIE(const ByteBuffer& ie);
    // The same for the element of `size` bytes at `offset` in the buffer.
    static HalvaneHTCapabilitiesIE initWithIE(const ByteBuffer& elements, std::size_t offset,
                                              std::size_t size);

    // The whole element; absent in an empty object.
    const std::optional<ByteBuffer>& rawIE() const { return rawIE_; }

    // False for an element of any other size, which is not decoded.
    bool isValid() const { return isValid_; }

    // The HT capability information field (figure 9-376) and its decoded bits.
    std::uint16_t capabilities() const { return capabilities_; }
    bool supportsLDPCCoding() const { return hasCapability(0); }
    bool supports40MHzOperation() const { return hasCapability(1); }
    bool staticSMPowerSaveMode() const { return areCapabilitiesParsed_ && smPowerSave() == 0; }
    bool dynamicSMPowerSaveMode() const { return areCapabilitiesParsed_ && smPowerSave() == 1; }
    bool supportsGreenfield() const { return hasCapability(4); }
    bool supports20MHzShortGI() const { return hasCapability(5); }
    bool supports40MHzShortGI() const { return hasCapability(6); }
    bool supportsTxSTBC() const { return hasCapability(7); }
    // The number of spatial streams, 0 to 3.
    std::int64_t numSupportedRxSTBC() const { return capabilities_ >> 8 & 3; }

    bool supportsHTDelayedBlockAck() const { return hasCapability(10); }
    // In octets: 3839 or 7935 once decoded.
    std::int64_t maximumAMSDULength() const {
        if (!areCapabilitiesParsed_) return 0;
        return hasCapability(11) ? 7935 : 3839;
    }

    bool supportsDSSSCCK40MHz() const { return hasCapability(12); }
    bool fortyMHzIntolerant() const { return hasCapability(14); }
    bool supportsLSIGTXOPProtectionSupport() const { return hasCapability(15); }

    std::uint8_t paramsAMPDU() const { return paramsAMPDU_; }

    // The 16 bytes of the supported MCS set field (figure 9-378).
    const std::optional<ByteBuffer>& supportedMCSSet() const { return supportedMCSSet_; }

    // The MCS indices, 0 to 76, whose bits are set in the receive bitmask, ascending.
    const std::optional<std::vector<Number>>& mcsRates() const {
        if (isMCSSetAwaited_) appendMCSSet();
        return mcsRates_;
    }

    std::uint16_t extendedCapabilities() const { return extendedCapabilities_; }
    std::uint32_t transmitBeamformingCapabilities() const {
        return transmitBeamformingCapabilities_;
    }
    std::uint8_t aselCapability() const { return aselCapability_; }

    // Decodes rawIE(): checks its size, then runs the two stages below.
    void parseIE();

    // Decodes capabilities() into booleans and numbers.
    void parseCapabilities();

    // Appends the indices of supportedMCSSet() to mcsRates(). It creates mcsRates() if absent and
    // never empties it.
    void parseSupportedMCSSet();

    // Lines with padded labels, indented by four spaces.
    std::string description() const;

  private:
    bool hasCapability(unsigned bit) const { return (capabilities_ >> bit & 1u) != 0; }
    // Bits 2 and 3: 3 is "SM power save disabled", 2 is reserved.
    unsigned smPowerSave() const { return capabilities_ >> 2 & 3u; }
    void appendMCSSet() const;

    std::optional<ByteBuffer> rawIE_;
    std::optional<ByteBuffer> supportedMCSSet_;
    // Made when it is first asked for.
    mutable std::optional<std::vector<Number>> mcsRates_;
    mutable bool isMCSSetAwaited_ = false;
    bool isValid_ = false;
    bool areCapabilitiesParsed_ = false;
    std::uint8_t paramsAMPDU_ = 0;
    std::uint8_t aselCapability_ = 0;
    std::uint16_t capabilities_ = 0;
    std::uint16_t extendedCapabilities_ = 0;
    std::uint32_t transmitBeamformingCapabilities_ = 0;
};

}  // namespace halvane

#endif
