#include "halvane/ie/channel_tuple.h"

#include <span>

#include "halvane/base/byte_cursor.h"
#include "halvane/utils/printf/std_string_internal.h"

namespace halvane {

HalvaneChannelTuple HalvaneChannelTuple::initWithTuple_withLength(const std::uint8_t* tuple,
                                                                  std::size_t length) {
    HalvaneChannelTuple object;
    ByteCursor cursor(std::span(tuple, length));
    object.firstChannel_ = cursor.u8().value_or(0);
    object.numChannels_ = cursor.u8().value_or(0);
    object.maxTxPower_ = cursor.u8().value_or(0);
    return object;
}

std::string HalvaneChannelTuple::description() const {
    return stringPrintF("First Channel <%d>, Num Channels  <%d>, Max Tx Power <%d>", firstChannel_,
                        numChannels_, maxTxPower_);
}

}  // namespace halvane
