// The newest samples of a link, and the average of their transmit rates.
//
// A value type, used by one thread at a time.
#ifndef HALVANE_IE_LINK_QUALITY_HISTORY_H
#define HALVANE_IE_LINK_QUALITY_HISTORY_H

#include <cstddef>
#include <vector>

#include "halvane/base/export.h"
#include "halvane/ie/link_quality.h"

namespace halvane {

class HALVANE_EXPORT HalvaneLinkQualityHistory {
  public:
    static constexpr std::size_t kMaxSamples = 256;

    std::size_t size() const { return ring_.size(); }
    bool empty() const { return ring_.empty(); }

    // Oldest first. REQUIRES: index < size()
    const HalvaneLinkQuality& operator[](std::size_t index) const {
        return ring_[(oldest_ + index) % ring_.size()];
    }
    // REQUIRES: !empty()
    const HalvaneLinkQuality& front() const { return (*this)[0]; }
    const HalvaneLinkQuality& back() const { return (*this)[size() - 1]; }

    // Adds a sample no older than the ones there are. The oldest goes where they would be more than
    // kMaxSamples.
    void add(const HalvaneLinkQuality& sample);

    // Mbit/s, over the samples of the 30 seconds up to the newest: their rates are added from the
    // newest to the oldest.
    // REQUIRES: !empty()
    double averageRate() const;

  private:
    void count(const HalvaneLinkQuality& sample);
    void uncountOldest();

    std::vector<HalvaneLinkQuality> ring_;
    std::size_t oldest_ = 0;   // in the ring, once that is full
    std::size_t counted_ = 0;  // the newest samples, of the last 30 seconds
    std::size_t uneven_ = 0;   // those of them whose rates are not in the sum
    double sum_ = 0;           // of the others' rates, without any rounding
};

}  // namespace halvane

#endif
