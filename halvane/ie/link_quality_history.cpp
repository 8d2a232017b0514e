#include "halvane/ie/link_quality_history.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace halvane {

namespace {

constexpr std::uint64_t kAveragingPeriod = 30'000'000;  // microseconds

// Returns whether sums of such rates, as many as the history holds, are exact. Their order does not
// matter then.
bool isEven(double rate) {
    constexpr double kLargest = 4294967296;
    constexpr double kSteps = 1024;
    return std::abs(rate) <= kLargest && std::trunc(rate * kSteps) == rate * kSteps;
}

}  // namespace

void HalvaneLinkQualityHistory::add(const HalvaneLinkQuality& sample) {
    if (size() < kMaxSamples) {
        ring_.push_back(sample);
    } else {
        if (counted_ == size()) uncountOldest();
        ring_[oldest_] = sample;
        oldest_ = (oldest_ + 1) % size();
    }
    count(sample);
    const std::uint64_t newest = sample.timestamp().uint64();
    while (newest - (*this)[size() - counted_].timestamp().uint64() >= kAveragingPeriod) {
        uncountOldest();
    }
}

void HalvaneLinkQualityHistory::count(const HalvaneLinkQuality& sample) {
    ++counted_;
    const double rate = sample.txRate().real();
    if (isEven(rate)) {
        sum_ += rate;
    } else {
        ++uneven_;
    }
}

void HalvaneLinkQualityHistory::uncountOldest() {
    const double rate = (*this)[size() - counted_].txRate().real();
    --counted_;
    if (isEven(rate)) {
        sum_ -= rate;
    } else {
        --uneven_;
    }
}

// Inexact sums depend on the order.
double HalvaneLinkQualityHistory::averageRate() const {
    double sum = sum_;
    if (uneven_ > 0) {
        sum = 0;
        for (std::size_t age = 0; age < counted_; ++age) {
            sum += (*this)[size() - 1 - age].txRate().real();
        }
    }
    return sum / static_cast<double>(counted_);
}

}  // namespace halvane
