// One time-stamped sample of a link. It only stores values.
//
// A value type, used by one thread at a time.
#ifndef HALVANE_IE_LINK_QUALITY_H
#define HALVANE_IE_LINK_QUALITY_H

#include <string>

#include "halvane/base/export.h"
#include "halvane/base/number.h"

namespace halvane {

class HALVANE_EXPORT HalvaneLinkQuality {
  public:
    // Creates a sample of the present time: the signal level in dBm and the transmit rate in
    // Mbit/s.
    static HalvaneLinkQuality initWithRSSI_withTxRate(const Number& rssi, const Number& txRate);

    // Microseconds of system up-time, unsigned.
    const Number& timestamp() const { return timestamp_; }

    // In dBm, real: the integer part of the given level.
    const Number& rssi() const { return rssi_; }

    // In Mbit/s, real.
    const Number& txRate() const { return txRate_; }

    // "<timestamp> RSSI <rssi>, Tx Rate <rate>"
    std::string description() const;

  private:
    HalvaneLinkQuality() = default;

    Number timestamp_;
    Number rssi_;
    Number txRate_;
};

}  // namespace halvane

#endif
