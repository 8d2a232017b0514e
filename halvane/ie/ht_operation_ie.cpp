#include "halvane/ie/ht_operation_ie.h"

#include "halvane/base/byte_cursor.h"
#include "halvane/base/describe.h"
#include "halvane/base/element_id.h"
#include "halvane/ie/fancy_formatting.h"
#include "halvane/utils/printf/std_string_internal.h"

namespace halvane {

namespace {

constexpr std::size_t kElementSize = 24;
constexpr std::size_t kMCSSetSize = 16;

}  // namespace

HalvaneHTOperationIE HalvaneHTOperationIE::initWithIE(const ByteBuffer& ie) {
    return initWithIE(ie, 0, ie.size());
}

HalvaneHTOperationIE HalvaneHTOperationIE::initWithIE(const ByteBuffer& elements,
                                                      std::size_t offset, std::size_t size) {
    HalvaneHTOperationIE object;
    object.rawIE_.emplace(elements, offset, size);
    object.isValid_ = true;
    object.parseIE();
    return object;
}

void HalvaneHTOperationIE::parseIE() {
    if (!rawIE_ || rawIE_->size() != kElementSize) {
        isValid_ = false;
        return;
    }
    ByteCursor cursor(*rawIE_);
    cursor.skip(kElementHeaderSize);
    primaryChannel_ = *cursor.u8();
    capabilities1_ = *cursor.u8();
    parseCapabilities1();
    capabilities2_ = *cursor.u16le();
    capabilities3_ = *cursor.u16le();
    basicMCSSet_.emplace(*rawIE_, cursor.position(), kMCSSetSize);
}

void HalvaneHTOperationIE::parseCapabilities1() {
    secondaryChannelOffset_ = capabilities1_ & 3;
    staChannelWidth_ = (capabilities1_ & 1u << 2) != 0 ? 40 : 20;
    supportsRIFS_ = (capabilities1_ & 1u << 3) != 0;
}

std::optional<std::string> HalvaneHTOperationIE::stringValueForSecondaryChannelOffset(
    std::int64_t offset) {
    switch (offset) {
        case 0:
            return "Not Present";
        case 1:
            return "Above Primary";
        case 3:
            return "Below Primary";
        default:
            return std::nullopt;
    }
}

std::string HalvaneHTOperationIE::description() const {
    using FancyFormatting::formattedHexData;

    std::string text;
    if (rawIE_) {
        appendPrintF(text, "    IE                                : %s\n",
                     formattedHexData(*rawIE_).c_str());
    }
    appendPrintF(text, "    Primary Channel                   : %lld\n",
                 static_cast<long long>(primaryChannel_));
    appendPrintF(text, "    Capabilities 1                    : 0x%01x\n", capabilities1_);
    appendPrintF(text, "    Secondary Channel Offset          : %s\n",
                 describe(stringValueForSecondaryChannelOffset(secondaryChannelOffset_)).c_str());
    appendPrintF(text, "    Channel Width                     : %lld MHz\n",
                 static_cast<long long>(staChannelWidth_));
    appendPrintF(text, "    Capabilities 2                    : 0x%02x\n", capabilities2_);
    appendPrintF(text, "    Capabilities 3                    : 0x%02x\n", capabilities3_);
    appendPrintF(text, "    Basic MCS Set                     : %s\n",
                 formattedHexData(basicMCSSet_).c_str());
    return text;
}

}  // namespace halvane
