#include "halvane/ie/ht_capabilities_ie.h"

#include <bit>
#include <cstddef>

#include "halvane/base/byte_cursor.h"
#include "halvane/base/element_id.h"
#include "halvane/ie/fancy_formatting.h"
#include "halvane/utils/printf/std_string_internal.h"

namespace halvane {

namespace {

constexpr std::size_t kElementSize = 28;
constexpr std::size_t kMCSSetSize = 16;
constexpr int kMCSCount = 77;
constexpr std::size_t kUsualMCSCount = 16;  // two streams of equal modulation

// Figure 9-376, bits 2 and 3: 3 is "SM power save disabled", 2 is reserved.
constexpr unsigned kStaticSMPowerSave = 0;
constexpr unsigned kDynamicSMPowerSave = 1;

constexpr std::int64_t kShortAMSDULength = 3839;
constexpr std::int64_t kLongAMSDULength = 7935;

// The rows of the capability field in a description: a text for a boolean value, a format for a
// number.
struct BooleanLine {
    const char* format;
    bool (HalvaneHTCapabilitiesIE::*value)() const;
};
struct NumberLine {
    const char* format;
    std::int64_t (HalvaneHTCapabilitiesIE::*value)() const;
};

using IE = HalvaneHTCapabilitiesIE;

constexpr BooleanLine kLinesBeforeRxSTBC[] = {
    {"    Supports LDPC Coding              : %s\n", &IE::supportsLDPCCoding},
    {"    Supports 40MHz Operation          : %s\n", &IE::supports40MHzOperation},
    {"    Static SM Powersave Mode          : %s\n", &IE::staticSMPowerSaveMode},
    {"    Dynamic SM Powersave Mode         : %s\n", &IE::dynamicSMPowerSaveMode},
    {"    Supports Greenfield               : %s\n", &IE::supportsGreenfield},
    {"    Supports 20 MHz Short GI          : %s\n", &IE::supports20MHzShortGI},
    {"    Supports 40 MHz Short GI          : %s\n", &IE::supports40MHzShortGI},
    {"    Supports Tx STBC                  : %s\n", &IE::supportsTxSTBC},
};
constexpr NumberLine kRxSTBCLine = {"    Number Supported Rx STBC          : %lld\n",
                                    &IE::numSupportedRxSTBC};
constexpr BooleanLine kDelayedBlockAckLine = {"    Supports HT Delayed Block Ack     : %s\n",
                                              &IE::supportsHTDelayedBlockAck};
constexpr NumberLine kAMSDULine = {"    Maximum A-MSDU Length             : %lld\n",
                                   &IE::maximumAMSDULength};
constexpr BooleanLine kLinesAfterAMSDU[] = {
    {"    Supports DSSS CCK 40 MHz          : %s\n", &IE::supportsDSSSCCK40MHz},
    {"    40 MHz Intolerant                 : %s\n", &IE::fortyMHzIntolerant},
    {"    Supports LSIG TX OP Protection    : %s\n", &IE::supportsLSIGTXOPProtectionSupport},
};

void appendLine(std::string& text, const IE& ie, const BooleanLine& line) {
    appendPrintF(text, line.format, yesNo((ie.*line.value)()));
}

void appendLine(std::string& text, const IE& ie, const NumberLine& line) {
    appendPrintF(text, line.format, static_cast<long long>((ie.*line.value)()));
}

void appendCapabilityLines(std::string& text, const IE& ie) {
    for (const auto& line : kLinesBeforeRxSTBC) appendLine(text, ie, line);
    appendLine(text, ie, kRxSTBCLine);
    appendLine(text, ie, kDelayedBlockAckLine);
    appendLine(text, ie, kAMSDULine);
    for (const auto& line : kLinesAfterAMSDU) appendLine(text, ie, line);
}

}  // namespace

HalvaneHTCapabilitiesIE HalvaneHTCapabilitiesIE::initWithIE(const ByteBuffer& ie) {
    HalvaneHTCapabilitiesIE object;
    object.rawIE_ = ie;
    object.isValid_ = true;
    object.parseIE();
    return object;
}

void HalvaneHTCapabilitiesIE::parseIE() {
    if (!rawIE_ || rawIE_->size() != kElementSize) {
        isValid_ = false;
        return;
    }
    ByteCursor cursor(*rawIE_);
    cursor.skip(kElementHeaderSize);
    capabilities_ = *cursor.u16le();
    parseCapabilities();
    paramsAMPDU_ = *cursor.u8();
    supportedMCSSet_ = *cursor.takeBuffer(kMCSSetSize);
    parseSupportedMCSSet();
    extendedCapabilities_ = *cursor.u16le();
    transmitBeamformingCapabilities_ = *cursor.u32le();
    aselCapability_ = *cursor.u8();
}

void HalvaneHTCapabilitiesIE::parseCapabilities() {
    const auto bit = [this](unsigned number) { return (capabilities_ >> number & 1u) != 0; };
    const auto twoBits = [this](unsigned number) { return capabilities_ >> number & 3u; };
    supportsLDPCCoding_ = bit(0);
    supports40MHzOperation_ = bit(1);
    staticSMPowerSaveMode_ = twoBits(2) == kStaticSMPowerSave;
    dynamicSMPowerSaveMode_ = twoBits(2) == kDynamicSMPowerSave;
    supportsGreenfield_ = bit(4);
    supports20MHzShortGI_ = bit(5);
    supports40MHzShortGI_ = bit(6);
    supportsTxSTBC_ = bit(7);
    numSupportedRxSTBC_ = twoBits(8);
    supportsHTDelayedBlockAck_ = bit(10);
    maximumAMSDULength_ = bit(11) ? kLongAMSDULength : kShortAMSDULength;
    supportsDSSSCCK40MHz_ = bit(12);
    fortyMHzIntolerant_ = bit(14);
    supportsLSIGTXOPProtectionSupport_ = bit(15);
}

// Counted from the least significant bit of the first byte, bit i of the bitmask is MCS i.
void HalvaneHTCapabilitiesIE::parseSupportedMCSSet() {
    if (!mcsRates_) mcsRates_.emplace();
    if (!supportedMCSSet_) return;
    mcsRates_->reserve(mcsRates_->size() + kUsualMCSCount);
    int firstOfByte = 0;
    for (const std::uint8_t byte : supportedMCSSet_->bytes()) {
        for (unsigned bits = byte; bits != 0; bits &= bits - 1) {
            const int index = firstOfByte + std::countr_zero(bits);
            if (index < kMCSCount) mcsRates_->emplace_back(index);
        }
        firstOfByte += 8;
    }
}

std::string HalvaneHTCapabilitiesIE::description() const {
    using FancyFormatting::formattedHexData;

    std::string text;
    if (rawIE_) {
        appendPrintF(text, "    IE                                : %s\n",
                     formattedHexData(*rawIE_).c_str());
    }
    appendPrintF(text, "    Capabilities                      : 0x%02x\n", capabilities_);
    appendCapabilityLines(text, *this);
    appendPrintF(text, "    AMPDU Parameters                  : 0x%01x\n", paramsAMPDU_);
    appendPrintF(text, "    Supported MCS Set                 : %s\n",
                 formattedHexData(supportedMCSSet_).c_str());
    if (mcsRates_) {
        text += "    Supported MCS Indices             : ";
        for (const Number& index : *mcsRates_) {
            appendPrintF(text, "%s ", index.description().c_str());
        }
        text += '\n';
    }
    appendPrintF(text, "    Extended Capabilities             : 0x%02x\n", extendedCapabilities_);
    appendPrintF(text, "    Transmit Beamforming Capabilities : 0x%04x\n",
                 transmitBeamformingCapabilities_);
    appendPrintF(text, "    ASEL Capabilities                 : 0x%01x\n", aselCapability_);
    return text;
}

}  // namespace halvane
