// One time-stamped sample of a link. It stores, it does not judge.
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
    // A sample taken now: the signal level in dBm and the transmit rate in Mbit/s.
    static HalvaneLinkQuality initWithRSSI_withTxRate(const Number& rssi, const Number& txRate);

    // Microseconds of system up-time, unsigned.
    const Number& timestamp() const { return timestamp_; }

    // dBm, real: the whole part of what was given.
    const Number& rssi() const { return rssi_; }

    // Mbit/s, real.
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
