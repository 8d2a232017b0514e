#include "halvane/utils/convert/statistics.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <vector>

namespace {

using Values = std::vector<double>;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kMax = std::numeric_limits<double>::max();
const double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(EuclideanDistance, IsTheRootOfTheSumOfSquares) {
    const Values a = {1, 2, 3};
    const Values b = {1, 5, 7};
    EXPECT_EQ(EuclideanDistance(a.data(), b.data(), 3), 5);
    EXPECT_EQ(EuclideanDistance(a.data(), b.data(), 2), 3);
    EXPECT_EQ(EuclideanDistance(a.data(), b.data(), 1), 0);
    EXPECT_EQ(EuclideanDistance(a.data(), a.data(), 3), 0);
    EXPECT_EQ(EuclideanDistance(nullptr, nullptr, 0), 0);
}

double pearson(const Values& a, const Values& b) {
    return PearsonCorrelation(a.data(), b.data(), a.size());
}

TEST(PearsonCorrelation, MeasuresLinearDependence) {
    EXPECT_DOUBLE_EQ(pearson({1, 2, 3}, {10, 20, 30}), 1);
    EXPECT_DOUBLE_EQ(pearson({1, 2, 3}, {-1, -2, -3}), -1);
    EXPECT_DOUBLE_EQ(pearson({1, 2, 3, 4}, {1, -1, -1, 1}), 0);
    // 7 / sqrt(10 * 6.8): deviations -2 -1 0 1 2 and -1.2 -0.2 -1.2 0.8 1.8
    EXPECT_NEAR(pearson({1, 2, 3, 4, 5}, {1, 2, 1, 3, 4}), 0.8488746876271654, 1e-15);
}

TEST(PearsonCorrelation, KeepsItsDigitsFarFromZero) {
    EXPECT_NEAR(pearson({1e9 + 1, 1e9 + 2, 1e9 + 3, 1e9 + 4, 1e9 + 5}, {1, 2, 1, 3, 4}),
                0.8488746876271654, 1e-12);
}

TEST(PearsonCorrelation, IsZeroWhereUndefined) {
    EXPECT_EQ(PearsonCorrelation(nullptr, nullptr, 0), 0);
    EXPECT_EQ(pearson({1}, {2}), 0);
    EXPECT_EQ(pearson({1, 1, 1}, {1, 2, 3}), 0);
    EXPECT_EQ(pearson({1, 2, 3}, {7, 7, 7}), 0);
    EXPECT_TRUE(std::isnan(pearson({1, 2, kNaN}, {1, 2, 3})));
}

TEST(PearsonCorrelation, IsZeroForEqualNumbersWithARoundedMean) {
    const std::vector<double> tenths(10, 0.1);
    const std::vector<double> others(10, -0.7);
    EXPECT_EQ(PearsonCorrelation(tenths.data(), tenths.data(), 10), 0);
    EXPECT_EQ(PearsonCorrelation(tenths.data(), others.data(), 3), 0);
}

TEST(PearsonCorrelation, TakesNumbersOfAnySize) {
    const double counts[] = {1, 2, 3};
    for (const double unit : {1e200, 1e-200, 1e-310, kMax / 4}) {
        const double values[] = {unit, 2 * unit, 3 * unit};
        EXPECT_NEAR(PearsonCorrelation(values, counts, 3), 1, 1e-12) << unit;
    }
    const double extremes[] = {kMax, kMax, 0};
    EXPECT_NEAR(PearsonCorrelation(extremes, counts, 3), -std::sqrt(0.75), 1e-12);
    const double infinite[] = {1, 2, INFINITY};
    EXPECT_TRUE(std::isnan(PearsonCorrelation(infinite, counts, 3)));
}

TEST(EuclideanDistance, TakesDifferencesOfAnySize) {
    const double zero[] = {0, 0};
    for (const double unit : {1e200, 1e-200, 1e-310}) {
        const double values[] = {3 * unit, 4 * unit};
        EXPECT_NEAR(EuclideanDistance(values, zero, 2) / unit, 5, 1e-12) << unit;
    }
}

TEST(PearsonCorrelation, StaysWithinItsRange) {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> any(-1, 1);
    for (int i = 0; i < 2000; ++i) {
        Values a(2 + random() % 5);
        Values b;
        for (double& value : a) value = any(random);
        for (const double value : a) b.push_back(value * 3.7 - 0.1);
        ASSERT_LE(pearson(a, b), 1);
        ASSERT_GT(pearson(a, b), 1 - 1e-9);
    }
}

double median(const Values& values) {
    const Values before = values;
    const double result = TorbenMedian(values.data(), values.size());
    EXPECT_TRUE(std::ranges::equal(values, before, [](double a, double b) {
        return a == b || (std::isnan(a) && std::isnan(b));
    }));
    return result;
}

TEST(TorbenMedian, IsTheLowerMiddleValue) {
    EXPECT_EQ(median({3, 1, 2}), 2);
    EXPECT_EQ(median({4, 1, 3, 2}), 2);
    EXPECT_EQ(median({5}), 5);
    EXPECT_EQ(median({2, 1}), 1);
    EXPECT_EQ(median({7, 7, 7, 7}), 7);
    EXPECT_EQ(median({1, 1, 1, 9}), 1);
    EXPECT_EQ(median({-5, 100, 0}), 0);
    EXPECT_EQ(TorbenMedian(nullptr, 0), 0);
}

TEST(TorbenMedian, EndsOnAnyValues) {
    EXPECT_EQ(median({kInfinity, 1, -kInfinity}), 1);
    EXPECT_EQ(median({kInfinity, kInfinity, kInfinity, 1}), kInfinity);
    EXPECT_EQ(median({-kInfinity, -kInfinity, 1}), -kInfinity);
    EXPECT_EQ(median({kInfinity, -kInfinity}), -kInfinity);
    EXPECT_EQ(median({kInfinity}), kInfinity);
    EXPECT_EQ(median({kMax, -kMax, kMax}), kMax);
    EXPECT_EQ(median({kMax, kMax, kInfinity}), kMax);
    EXPECT_EQ(median({5e-324, 0, 1e-323}), 5e-324);
    EXPECT_TRUE(std::isnan(median({1, kNaN, 3})));
}

TEST(TorbenMedian, AgreesWithOrderingTheValues) {
    std::mt19937 random(2);
    for (int i = 0; i < 20000; ++i) {
        Values values(1 + random() % 30);
        const auto range = 1 + random() % 40;
        for (double& value : values) {
            value = static_cast<double>(random() % range) - 10;
            if (random() % 10 == 0)
                value = std::ldexp(value, static_cast<int>(random() % 2000) - 1000);
            if (random() % 30 == 0) value = random() % 2 == 0 ? kInfinity : -kInfinity;
        }
        Values ordered = values;
        std::ranges::sort(ordered);
        ASSERT_EQ(median(values), ordered[(ordered.size() - 1) / 2]);
    }
}

TEST(TranslateValue, MapsLinearly) {
    EXPECT_EQ(TranslateValue(5, 0, 10, 0, 100), 50);
    EXPECT_EQ(TranslateValue(0, 0, 10, -1, 1), -1);
    EXPECT_EQ(TranslateValue(10, 0, 10, -1, 1), 1);
    EXPECT_EQ(TranslateValue(20, 0, 10, -1, 1), 3);
    EXPECT_EQ(TranslateValue(-75, -100, -50, 0, 100), 50);
    EXPECT_EQ(TranslateValue(2, 0, 10, 100, 0), 80);
    EXPECT_EQ(TranslateValue(2, 1, 1, 0, 10), kInfinity);
    EXPECT_TRUE(std::isnan(TranslateValue(1, 1, 1, 0, 10)));
}

}  // namespace
