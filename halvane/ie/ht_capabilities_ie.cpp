#include "halvane/ie/ht_capabilities_ie.h"

#include <bit>

#include "halvane/base/byte_cursor.h"
#include "halvane/base/element_id.h"
#include "halvane/ie/fancy_formatting.h"
#include "halvane/ie/mcs_set_internal.h"
#include "halvane/utils/printf/std_string_internal.h"

namespace halvane {

namespace {

constexpr std::size_t kElementSize = 28;
constexpr std::size_t kMCSSetSize = 16;

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
    return initWithIE(ie, 0, ie.size());
}

HalvaneHTCapabilitiesIE HalvaneHTCapabilitiesIE::initWithIE(const ByteBuffer& elements,
                                                            std::size_t offset, std::size_t size) {
    HalvaneHTCapabilitiesIE object;
    object.rawIE_.emplace(elements, offset, size);
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
    if (isMCSSetAwaited_) appendMCSSet();
    supportedMCSSet_.emplace(*rawIE_, cursor.position(), kMCSSetSize);
    cursor.skip(kMCSSetSize);
    isMCSSetAwaited_ = true;
    extendedCapabilities_ = *cursor.u16le();
    transmitBeamformingCapabilities_ = *cursor.u32le();
    aselCapability_ = *cursor.u8();
}

void HalvaneHTCapabilitiesIE::parseCapabilities() {
    areCapabilitiesParsed_ = true;
}

void HalvaneHTCapabilitiesIE::parseSupportedMCSSet() {
    if (isMCSSetAwaited_) appendMCSSet();
    appendMCSSet();
}

void HalvaneHTCapabilitiesIE::appendMCSSet() const {
    if (!mcsRates_) mcsRates_.emplace();
    if (supportedMCSSet_) {
        const MCSBits set(*supportedMCSSet_);
        const int count = std::popcount(set.low) + std::popcount(set.high);
        mcsRates_->reserve(mcsRates_->size() + static_cast<std::size_t>(count));
        const auto append = [this](int first, std::uint64_t bits) {
            for (; bits != 0; bits &= bits - 1) {
                mcsRates_->emplace_back(first + std::countr_zero(bits));
            }
        };
        append(0, set.low);
        append(64, set.high);
    }
    isMCSSetAwaited_ = false;
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
    if (mcsRates()) {
        text += "    Supported MCS Indices             : ";
        for (const Number& index : *mcsRates()) {
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
