#include "halvane/utils/convert/statistics.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <numeric>
#include <span>

namespace {

using Values = std::span<const double>;

bool isFinite(Values values) {
    return std::ranges::all_of(values, [](double value) { return std::isfinite(value); });
}

bool isConstant(Values values) {
    return std::ranges::all_of(values, [&](double value) { return value == values.front(); });
}

// Returns the exponent of the power of two just above all magnitudes.
template <typename At>
int exponentOf(std::size_t n, At at) {
    double greatest = 0;
    for (std::size_t i = 0; i < n; ++i) greatest = std::max(greatest, std::abs(at(i)));
    int exponent = 0;
    std::frexp(greatest, &exponent);
    return exponent;
}

// The distance of each value from the mean, in units for which squares and sums fit into a double.
class Deviations {
  public:
    explicit Deviations(Values values)
        : values_(values),
          exponent_(exponentOf(values.size(), [&](std::size_t i) { return values[i]; })) {
        for (std::size_t i = 0; i < values.size(); ++i) mean_ += scaled(i);
        mean_ /= static_cast<double>(values.size());
        spread_ = exponentOf(values.size(), [this](std::size_t i) { return scaled(i) - mean_; });
    }

    double operator[](std::size_t i) const { return std::ldexp(scaled(i) - mean_, -spread_); }

  private:
    double scaled(std::size_t i) const { return std::ldexp(values_[i], -exponent_); }

    Values values_;
    int exponent_;
    double mean_ = 0;
    int spread_ = 0;
};

// The distribution of the values around a guess, and the nearest values on both sides.
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

// Returns a value between both, which is finite if one of them is.
double middleOf(double min, double max) {
    if (min == max) return min;
    constexpr double kMax = std::numeric_limits<double>::max();
    return std::midpoint(std::max(min, -kMax), std::min(max, kMax));
}

}  // namespace

double EuclideanDistance(const double* a, const double* b, std::size_t n) {
    double sum = 0;
    for (std::size_t i = 0; i < n; ++i) sum += (a[i] - b[i]) * (a[i] - b[i]);
    if (std::isnormal(sum)) return std::sqrt(sum);
    // The squares left the range of a double, but the distance may be within it.
    double distance = 0;
    for (std::size_t i = 0; i < n; ++i) distance = std::hypot(distance, a[i] - b[i]);
    return distance;
}

// Uses deviations from the mean: differences of sums of products would lose the significant digits.
double PearsonCorrelation(const double* a, const double* b, std::size_t n) {
    const Values valuesA(a, n);
    const Values valuesB(b, n);
    if (!isFinite(valuesA) || !isFinite(valuesB)) return std::numeric_limits<double>::quiet_NaN();
    if (isConstant(valuesA) || isConstant(valuesB)) return 0;
    const Deviations deviationsA(valuesA);
    const Deviations deviationsB(valuesB);
    double squaresA = 0;
    double squaresB = 0;
    double products = 0;
    for (std::size_t i = 0; i < n; ++i) {
        const double deviationA = deviationsA[i];
        const double deviationB = deviationsB[i];
        squaresA += deviationA * deviationA;
        squaresB += deviationB * deviationB;
        products += deviationA * deviationB;
    }
    return std::clamp(products / std::sqrt(squaresA * squaresB), -1.0, 1.0);
}

// Halves the range that contains the median, and narrows it to existing values. Each pass excludes
// at least one value.
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
