// The data rates of the HT MCS indices, and the best rate of a set: IEEE 802.11-2012, 20.6.
//
// Rates are real numbers in Mbit/s. Threads: any thread may use one instance, whose tables do not
// change after construction.
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

    // Returns the shared instance. The first call creates it, and it is never destroyed.
    static const HalvaneMCS& sharedSystem();

    // 77 rates each, indexed by MCS. The rate of MCS 32 at 20 MHz, which does not exist, is 0.
    const std::vector<Number>& longGuardInterval20MHz() const { return longGuardInterval20MHz_; }
    const std::vector<Number>& shortGuardInterval20MHz() const { return shortGuardInterval20MHz_; }
    const std::vector<Number>& longGuardInterval40MHz() const { return longGuardInterval40MHz_; }
    const std::vector<Number>& shortGuardInterval40MHz() const { return shortGuardInterval40MHz_; }

    // Returns the highest rate of `set`, a list of MCS indices, at a channel width in MHz, and the
    // first of equal rates. Returns the integer 0 for an empty set and for a width other than 20
    // and 40. Indices outside 0 to 76 are ignored.
    Number rateForMCSSet_withChannelWidth_shortGI(const std::vector<Number>& set,
                                                  std::int64_t channelWidth, bool shortGI) const;

    // Each fills one table. The constructor calls them in this order.
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
