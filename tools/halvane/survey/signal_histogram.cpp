#include "tools/halvane/survey/signal_histogram.h"

#include <algorithm>

namespace halvane::tool {

void SignalHistogram::add(int dBm) {
    if (dBm > kMost) {
        ++implausibleCount_;
        return;
    }
    const int signal = std::max(dBm, kLeast);
    ++counts_[static_cast<std::size_t>(signal - kLeast)];
    ++count_;
    sum_ += signal;
}

void SignalHistogram::add(const SignalHistogram& other) {
    for (std::size_t i = 0; i < kSteps; ++i) counts_[i] += other.counts_[i];
    count_ += other.count_;
    implausibleCount_ += other.implausibleCount_;
    sum_ += other.sum_;
}

std::optional<int> SignalHistogram::signalOf(std::uint64_t rank) const {
    std::uint64_t below = 0;
    for (std::size_t i = 0; i < kSteps; ++i) {
        below += counts_[i];
        if (rank < below) return kLeast + static_cast<int>(i);
    }
    return std::nullopt;
}

std::optional<int> SignalHistogram::median() const {
    return count_ == 0 ? std::nullopt : signalOf(count_ / 2);
}

std::optional<int> SignalHistogram::least() const {
    return signalOf(0);
}

std::optional<int> SignalHistogram::greatest() const {
    return count_ == 0 ? std::nullopt : signalOf(count_ - 1);
}

std::optional<double> SignalHistogram::mean() const {
    if (count_ == 0) return std::nullopt;
    return static_cast<double>(sum_) / static_cast<double>(count_);
}

}  // namespace halvane::tool
