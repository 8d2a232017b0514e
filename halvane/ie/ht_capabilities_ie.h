// The HT Capabilities element (ID 45): IEEE 802.11-2020, 9.4.2.55.
//
// Only an element of exactly 28 bytes is decoded; multi-byte fields are little-endian.
// A value type, used by one thread at a time.
#ifndef HALVANE_IE_HT_CAPABILITIES_IE_H
#define HALVANE_IE_HT_CAPABILITIES_IE_H

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
    HalvaneHTCapabilitiesIE() = default;

    // Decodes the whole element, including ID and length.
    static HalvaneHTCapabilitiesIE initWithIE(const ByteBuffer& ie);

    // The whole element; absent in an empty object.
    const std::optional<ByteBuffer>& rawIE() const { return rawIE_; }

    // False for an element of any other size, which is not decoded.
    bool isValid() const { return isValid_; }

    // The HT capability information field (figure 9-376) and its decoded bits.
    std::uint16_t capabilities() const { return capabilities_; }
    bool supportsLDPCCoding() const { return supportsLDPCCoding_; }
    bool supports40MHzOperation() const { return supports40MHzOperation_; }
    bool staticSMPowerSaveMode() const { return staticSMPowerSaveMode_; }
    bool dynamicSMPowerSaveMode() const { return dynamicSMPowerSaveMode_; }
    bool supportsGreenfield() const { return supportsGreenfield_; }
    bool supports20MHzShortGI() const { return supports20MHzShortGI_; }
    bool supports40MHzShortGI() const { return supports40MHzShortGI_; }
    bool supportsTxSTBC() const { return supportsTxSTBC_; }
    // The number of spatial streams, 0 to 3.
    std::int64_t numSupportedRxSTBC() const { return numSupportedRxSTBC_; }

    bool supportsHTDelayedBlockAck() const { return supportsHTDelayedBlockAck_; }
    // In octets: 3839 or 7935 once decoded.
    std::int64_t maximumAMSDULength() const { return maximumAMSDULength_; }

    bool supportsDSSSCCK40MHz() const { return supportsDSSSCCK40MHz_; }
    bool fortyMHzIntolerant() const { return fortyMHzIntolerant_; }
    bool supportsLSIGTXOPProtectionSupport() const { return supportsLSIGTXOPProtectionSupport_; }

    std::uint8_t paramsAMPDU() const { return paramsAMPDU_; }

    // The 16 bytes of the supported MCS set field (figure 9-378).
    const std::optional<ByteBuffer>& supportedMCSSet() const { return supportedMCSSet_; }

    // The MCS indices, 0 to 76, whose bits are set in the receive bitmask, ascending.
    const std::optional<std::vector<Number>>& mcsRates() const { return mcsRates_; }

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
    std::optional<ByteBuffer> rawIE_;
    bool isValid_ = false;
    bool supportsLDPCCoding_ = false;
    bool supports40MHzOperation_ = false;
    bool staticSMPowerSaveMode_ = false;
    bool dynamicSMPowerSaveMode_ = false;
    bool supportsGreenfield_ = false;
    bool supports20MHzShortGI_ = false;
    bool supports40MHzShortGI_ = false;
    bool supportsTxSTBC_ = false;
    bool supportsHTDelayedBlockAck_ = false;
    bool supportsDSSSCCK40MHz_ = false;
    bool fortyMHzIntolerant_ = false;
    bool supportsLSIGTXOPProtectionSupport_ = false;
    std::uint8_t paramsAMPDU_ = 0;
    std::uint8_t aselCapability_ = 0;
    std::uint16_t capabilities_ = 0;
    std::uint16_t extendedCapabilities_ = 0;
    std::uint32_t transmitBeamformingCapabilities_ = 0;
    std::int64_t numSupportedRxSTBC_ = 0;
    std::int64_t maximumAMSDULength_ = 0;
    std::optional<ByteBuffer> supportedMCSSet_;
    std::optional<std::vector<Number>> mcsRates_;
};

}  // namespace halvane

#endif
