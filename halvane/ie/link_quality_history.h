// The newest samples of a link, and the average of their transmit rates.
//
// A value type, used by one thread at a time.
#ifndef HALVANE_IE_LINK_QUALITY_HISTORY_H
#define HALVANE_IE_LINK_QUALITY_HISTORY_H

#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

#include "halvane/base/export.h"
#include "halvane/ie/link_quality.h"

namespace halvane {

class HALVANE_EXPORT HalvaneLinkQualityHistory {
  public:
    static constexpr std::size_t kMaxSamples = 256;  // older samples are dropped

    class Iterator;  // bidirectional, of constant samples

    HalvaneLinkQualityHistory() = default;
    HalvaneLinkQualityHistory(const HalvaneLinkQualityHistory&) = default;
    HalvaneLinkQualityHistory& operator=(const HalvaneLinkQualityHistory&) = default;
    // A moved-from history is empty.
    HalvaneLinkQualityHistory(HalvaneLinkQualityHistory&& other) noexcept { exchange(other); }
    HalvaneLinkQualityHistory& operator=(HalvaneLinkQualityHistory&& other) noexcept {
        HalvaneLinkQualityHistory taken(std::move(other));
        exchange(taken);
        return *this;
    }
    ~HalvaneLinkQualityHistory() = default;

    std::size_t size() const { return ring_.size(); }
    bool empty() const { return ring_.empty(); }

    // Samples are indexed from the oldest on.
    // REQUIRES: index < size()
    const HalvaneLinkQuality& operator[](std::size_t index) const {
        return ring_[(oldest_ + index) % ring_.size()];
    }
    // REQUIRES: !empty()
    const HalvaneLinkQuality& front() const { return (*this)[0]; }
    const HalvaneLinkQuality& back() const { return (*this)[size() - 1]; }

    // Iterates from the oldest on. Valid until the history is next changed.
    Iterator begin() const;
    Iterator end() const;

    // Adds a sample, which must not be older than the existing ones. If there are more than
    // kMaxSamples, the oldest one is removed.
    void add(const HalvaneLinkQuality& sample);

    // The average in Mbit/s over the samples of the last 30 seconds before the newest one, itself
    // included. Their rates are added from the newest to the oldest.
    // REQUIRES: !empty()
    double averageRate() const;

  private:
    void count(const HalvaneLinkQuality& sample);
    void uncountOldest();

    void exchange(HalvaneLinkQualityHistory& other) noexcept {
        std::swap(ring_, other.ring_);
        std::swap(oldest_, other.oldest_);
        std::swap(counted_, other.counted_);
        std::swap(uneven_, other.uneven_);
        std::swap(sum_, other.sum_);
    }

    std::vector<HalvaneLinkQuality> ring_;
    std::size_t oldest_ = 0;   // its index in the ring, once that is full
    std::size_t counted_ = 0;  // the number of newest samples within 30 seconds
    std::size_t uneven_ = 0;   // how many of those have rates outside the sum
    double sum_ = 0;           // the exact sum of the other samples' rates
};

// A bidirectional iterator over the samples, the oldest first.
class HalvaneLinkQualityHistory::Iterator {
  public:
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = HalvaneLinkQuality;
    using difference_type = std::ptrdiff_t;
    using pointer = const HalvaneLinkQuality*;
    using reference = const HalvaneLinkQuality&;

    Iterator() = default;

    reference operator*() const { return (*history_)[index_]; }
    pointer operator->() const { return &**this; }
    Iterator& operator++() {
        ++index_;
        return *this;
    }
    Iterator operator++(int) { return std::exchange(*this, Iterator(history_, index_ + 1)); }
    Iterator& operator--() {
        --index_;
        return *this;
    }
    Iterator operator--(int) { return std::exchange(*this, Iterator(history_, index_ - 1)); }

    friend bool operator==(const Iterator& a, const Iterator& b) = default;

  private:
    friend class HalvaneLinkQualityHistory;
    Iterator(const HalvaneLinkQualityHistory* history, std::size_t index)
        : history_(history), index_(index) {}

    const HalvaneLinkQualityHistory* history_ = nullptr;
    std::size_t index_ = 0;
};

inline HalvaneLinkQualityHistory::Iterator HalvaneLinkQualityHistory::begin() const {
    return {this, 0};
}
inline HalvaneLinkQualityHistory::Iterator HalvaneLinkQualityHistory::end() const {
    return {this, size()};
}

}  // namespace halvane

#endif
