#include "halvane/utils/statistics.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <span>

namespace {

using Values = std::span<const double>;

double meanOf(Values values) {
    return std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
}

// How the values lie to a guess, with the neighbours of the guess among them.
struct Split {
    std::size_t below = 0;
    std::size_t equal = 0;
    std::size_t above = 0;
    double nextBelow;
    double nextAbove;
};

Split splitAt(Values values, double guess, double min, double max) {
    Split split{.nextBelow = min, .nextAbove = max};
    for (const double value : values) {
        if (value < guess) {
            ++split.below;
            split.nextBelow = std::max(split.nextBelow, value);
        } else if (value > guess) {
            ++split.above;
            split.nextAbove = std::min(split.nextAbove, value);
        } else {
            ++split.equal;
        }
    }
    return split;
}

// Between the two, and finite where one of them is.
double middleOf(double min, double max) {
    if (min == max) return min;
    constexpr double kMax = std::numeric_limits<double>::max();
    return std::midpoint(std::max(min, -kMax), std::min(max, kMax));
}

}  // namespace

double EuclideanDistance(const double* a, const double* b, std::size_t n) {
    double sum = 0;
    for (std::size_t i = 0; i < n; ++i) sum += (a[i] - b[i]) * (a[i] - b[i]);
    return std::sqrt(sum);
}

// In two passes: sums of products less products of sums would lose the digits that matter.
double PearsonCorrelation(const double* a, const double* b, std::size_t n) {
    if (n < 2) return 0;
    const double meanA = meanOf({a, n});
    const double meanB = meanOf({b, n});
    double squaresA = 0;
    double squaresB = 0;
    double products = 0;
    for (std::size_t i = 0; i < n; ++i) {
        const double fromMeanA = a[i] - meanA;
        const double fromMeanB = b[i] - meanB;
        squaresA += fromMeanA * fromMeanA;
        squaresB += fromMeanB * fromMeanB;
        products += fromMeanA * fromMeanB;
    }
    if (squaresA == 0 || squaresB == 0) return 0;
    // One root each, since the product of the squares may be beyond a double.
    return std::clamp(products / std::sqrt(squaresA) / std::sqrt(squaresB), -1.0, 1.0);
}

// Halves the range that the median is in, and narrows it to values that occur: each turn leaves out
// one value at least.
double TorbenMedian(const double* data, std::size_t n) {
    if (n == 0) return 0;
    const Values values(data, n);
    if (std::ranges::any_of(values, [](double value) { return std::isnan(value); })) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    auto [min, max] = std::ranges::minmax(values);
    const std::size_t half = n / 2 + n % 2;
    while (true) {
        const double guess = middleOf(min, max);
        const Split split = splitAt(values, guess, min, max);
        if (split.below <= half && split.above <= half) {
            if (split.below >= half) return split.nextBelow;
            return split.below + split.equal >= half ? guess : split.nextAbove;
        }
        if (split.below > split.above) {
            max = split.nextBelow;
        } else {
            min = split.nextAbove;
        }
    }
}

double TranslateValue(double x, double inMin, double inMax, double outMin, double outMax) {
    return (outMax - outMin) * ((x - inMin) / (inMax - inMin)) + outMin;
}
