// The data rate of every HT MCS index, and the best of a set: IEEE 802.11-2012, 20.6.
//
// Rates are real numbers in Mbit/s. Once built the tables are only read: any thread may use one
// instance.
#ifndef HALVANE_IE_MCS_H
#define HALVANE_IE_MCS_H

#include <atomic>
#include <cstdint>
#include <vector>

#include "halvane/base/export.h"
#include "halvane/base/number.h"

namespace halvane {

class HALVANE_EXPORT HalvaneMCS {
  public:
    HalvaneMCS();

    // The instance that the process shares, created by the first call and never destroyed.
    static const HalvaneMCS& sharedSystem();

    // 77 rates each, indexed by MCS. MCS 32 does not exist at 20 MHz: its rate there is 0.
    const std::vector<Number>& longGuardInterval20MHz() const { return longGuardInterval20MHz_; }
    const std::vector<Number>& shortGuardInterval20MHz() const { return shortGuardInterval20MHz_; }
    const std::vector<Number>& longGuardInterval40MHz() const { return longGuardInterval40MHz_; }
    const std::vector<Number>& shortGuardInterval40MHz() const { return shortGuardInterval40MHz_; }

    // The highest rate that `set`, a list of MCS indices, holds at a channel width in MHz; of equal
    // rates the first. The integer 0 for an empty set and for a width other than 20 and 40. An
    // index outside 0 to 76 is passed over.
    Number rateForMCSSet_withChannelWidth_shortGI(const std::vector<Number>& set,
                                                  std::int64_t channelWidth, bool shortGI) const;

    // Fill one table each; the constructor calls them in this order.
    void setupLongGuardInterval20MHz();
    void setupShortGuardInterval20MHz();
    void setupLongGuardInterval40MHz();
    void setupShortGuardInterval40MHz();

  private:
    const std::vector<Number>* tableFor(std::int64_t channelWidth, bool shortGI) const;

    std::vector<Number> longGuardInterval20MHz_;
    std::vector<Number> shortGuardInterval20MHz_;
    std::vector<Number> longGuardInterval40MHz_;
    std::vector<Number> shortGuardInterval40MHz_;
};

// The shared instance; null until sharedSystem() is first called.
extern HALVANE_EXPORT std::atomic<const HalvaneMCS*> gWiFiMCS;

}  // namespace halvane

#endif
