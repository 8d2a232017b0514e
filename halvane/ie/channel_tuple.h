// A channel triplet of the Country element: a run of channels and its transmit power limit.
//
// IEEE 802.11-2020, 9.4.2.8: a triplet whose first octet is at most 200 is a channel triplet.
// A value type, used by one thread at a time.
#ifndef HALVANE_IE_CHANNEL_TUPLE_H
#define HALVANE_IE_CHANNEL_TUPLE_H

#include <cstddef>
#include <cstdint>
#include <string>

#include "halvane/base/cxx20.h"
#include "halvane/base/export.h"

namespace halvane {

class HALVANE_EXPORT HalvaneChannelTuple {
  public:
    // All fields 0.
    HalvaneChannelTuple() = default;

    // A triplet has 3 bytes. Bytes after them are ignored; fields that a shorter one lacks stay 0.
    // REQUIRES: `tuple` points to `length` bytes.
    static HalvaneChannelTuple initWithTuple_withLength(const std::uint8_t* tuple,
                                                        std::size_t length);

    std::uint8_t firstChannel() const { return firstChannel_; }

    // The number of channels in the run, the first one included.
    std::uint8_t numChannels() const { return numChannels_; }

    // In dBm, as the element carries it.
    std::uint8_t maxTxPower() const { return maxTxPower_; }

    // One line without a newline.
    std::string description() const;

  private:
    std::uint8_t firstChannel_ = 0;
    std::uint8_t numChannels_ = 0;
    std::uint8_t maxTxPower_ = 0;
};

}  // namespace halvane

#endif
