#include "halvane/ie/mcs.h"

#include <array>
#include <cstdlib>
#include <gtest/gtest.h>
#include <iterator>
#include <numeric>
#include <thread>
#include <utility>
#include <vector>

using halvane::gWiFiMCS;
using halvane::HalvaneMCS;
using halvane::Number;

namespace {

// One row of the standard's tables: bits per subcarrier of each stream, and the coding rate.
struct Modulation {
    std::vector<int> bitsPerStream;
    int rateNumerator;
    int rateDenominator;
};

constexpr int BPSK = 1, QPSK = 2, QAM16 = 4, QAM64 = 6;

// MCS 0 to 7 on `streams` spatial streams.
std::vector<Modulation> equalModulations(std::size_t streams) {
    const auto on = [streams](int bits) { return std::vector<int>(streams, bits); };
    return {{on(BPSK), 1, 2},  {on(QPSK), 1, 2},  {on(QPSK), 3, 4},  {on(QAM16), 1, 2},
            {on(QAM16), 3, 4}, {on(QAM64), 2, 3}, {on(QAM64), 3, 4}, {on(QAM64), 5, 6}};
}

// MCS 33 to 76: IEEE 802.11-2012, tables 20-38 to 20-43.
std::vector<Modulation> unequalModulations() {
    const std::vector<std::vector<std::vector<int>>> streams = {
        {{QAM16, QPSK}, {QAM64, QPSK}, {QAM64, QAM16}},
        {{QAM16, QPSK, QPSK},
         {QAM16, QAM16, QPSK},
         {QAM64, QPSK, QPSK},
         {QAM64, QAM16, QPSK},
         {QAM64, QAM16, QAM16},
         {QAM64, QAM64, QPSK},
         {QAM64, QAM64, QAM16}},
        {{QAM16, QPSK, QPSK, QPSK},
         {QAM16, QAM16, QPSK, QPSK},
         {QAM16, QAM16, QAM16, QPSK},
         {QAM64, QPSK, QPSK, QPSK},
         {QAM64, QAM16, QPSK, QPSK},
         {QAM64, QAM16, QAM16, QPSK},
         {QAM64, QAM16, QAM16, QAM16},
         {QAM64, QAM64, QPSK, QPSK},
         {QAM64, QAM64, QAM16, QPSK},
         {QAM64, QAM64, QAM16, QAM16},
         {QAM64, QAM64, QAM64, QPSK},
         {QAM64, QAM64, QAM64, QAM16}},
    };
    std::vector<Modulation> rows;
    for (const auto& group : streams) {
        for (const auto& bits : group) rows.push_back({bits, 1, 2});
        for (const auto& bits : group) rows.push_back({bits, 3, 4});
    }
    return rows;
}

// 13 (20 MHz) or 27 (40 MHz) times the sum of bits times coding rate. The short guard interval
// multiplies by 10/9 and rounds to one decimal. The formula uses integers, so that no rounding
// error stays hidden.
double rateOf(const Modulation& row, int factor, bool shortGI) {
    const int bits = std::accumulate(row.bitsPerStream.begin(), row.bitsPerStream.end(), 0);
    const int numerator = 10 * factor * bits * row.rateNumerator * (shortGI ? 10 : 1);
    const int denominator = row.rateDenominator * (shortGI ? 9 : 1);
    const int tenths = (2 * numerator + denominator) / (2 * denominator);
    return tenths / 10.0;
}

struct TableCase {
    const char* name;
    const std::vector<Number>& (HalvaneMCS::*table)() const;
    int factor;
    bool shortGI;
    double mcs32;
};

const TableCase kTables[] = {
    {"20 MHz, long", &HalvaneMCS::longGuardInterval20MHz, 13, false, 0},
    {"20 MHz, short", &HalvaneMCS::shortGuardInterval20MHz, 13, true, 0},
    {"40 MHz, long", &HalvaneMCS::longGuardInterval40MHz, 27, false, 6.0},
    {"40 MHz, short", &HalvaneMCS::shortGuardInterval40MHz, 27, true, 6.7},
};

std::vector<Number> range(int first, int last) {
    std::vector<Number> set;
    for (int index = first; index <= last; ++index) set.emplace_back(index);
    return set;
}

Number rate(const std::vector<Number>& set, std::int64_t width, bool shortGI) {
    return HalvaneMCS().rateForMCSSet_withChannelWidth_shortGI(set, width, shortGI);
}

TEST(MCSTables, FollowTheRuleForEqualModulation) {
    const HalvaneMCS mcs;
    for (const TableCase& row : kTables) {
        const auto& table = (mcs.*row.table)();
        ASSERT_EQ(table.size(), 77u);
        for (std::size_t index = 0; index < 32; ++index) {
            const auto modulation = equalModulations(index / 8 + 1)[index % 8];
            const bool isDeparture = index == 21 && row.factor == 27 && row.shortGI;
            const double expected =
                isDeparture ? 260.0 : rateOf(modulation, row.factor, row.shortGI);
            EXPECT_EQ(table[index], Number(expected)) << row.name << " MCS " << index;
        }
    }
}

TEST(MCSTables, FollowTheRuleForUnequalModulation) {
    const HalvaneMCS mcs;
    const auto modulations = unequalModulations();
    ASSERT_EQ(modulations.size(), 44u);
    for (const TableCase& row : kTables) {
        for (std::size_t i = 0; i < modulations.size(); ++i) {
            EXPECT_EQ((mcs.*row.table)()[33 + i],
                      Number(rateOf(modulations[i], row.factor, row.shortGI)))
                << row.name << " MCS " << 33 + i;
        }
    }
}

TEST(MCSTables, HoldMCS32At40MHzOnly) {
    const HalvaneMCS mcs;
    for (const TableCase& row : kTables) {
        EXPECT_EQ((mcs.*row.table)()[32], Number(row.mcs32)) << row.name;
    }
}

// Rows as the standard prints them, in the order of kTables.
TEST(MCSTables, HoldTheStandardsTellingRows) {
    const HalvaneMCS mcs;
    const std::pair<std::size_t, std::array<double, 4>> rows[] = {
        {0, {6.5, 7.2, 13.5, 15.0}},        {7, {65.0, 72.2, 135.0, 150.0}},
        {15, {130.0, 144.4, 270.0, 300.0}}, {21, {156.0, 173.3, 324.0, 260.0}},
        {23, {195.0, 216.7, 405.0, 450.0}}, {31, {260.0, 288.9, 540.0, 600.0}},
        {33, {39.0, 43.3, 81.0, 90.0}},     {76, {214.5, 238.3, 445.5, 495.0}},
    };
    for (const auto& [index, rates] : rows) {
        for (std::size_t table = 0; table < std::size(kTables); ++table) {
            EXPECT_EQ((mcs.*kTables[table].table)()[index], Number(rates[table])) << index;
        }
    }
}

TEST(MCS, AnswersTheHighestRateOfASet) {
    EXPECT_EQ(rate(range(0, 15), 40, true), Number(300.0));
    EXPECT_EQ(rate(range(0, 15), 20, false), Number(130.0));
    EXPECT_EQ(rate(range(0, 15), 20, true), Number(144.4));
    EXPECT_EQ(rate(range(0, 15), 40, false), Number(270.0));
    EXPECT_EQ(rate(range(16, 23), 40, true), Number(450.0));
    EXPECT_EQ(rate({21}, 40, true), Number(260.0));
    EXPECT_EQ(rate({7, 0, 3}, 20, false), Number(65.0));
}

TEST(MCS, AnswersTheIntegerZeroForNothing) {
    for (const Number& zero :
         {rate({}, 20, false), rate(range(0, 76), 80, true), rate(range(0, 76), 0, false),
          rate({32}, 20, false), rate({32}, 20, true)}) {
        EXPECT_EQ(zero, Number(0));
        EXPECT_TRUE(zero.isSigned());
    }
    EXPECT_EQ(rate({32}, 40, false), Number(6.0));
}

TEST(MCS, PassesOverIndicesOutsideItsTables) {
    EXPECT_EQ(rate({-1, 77, 1000, INT64_MIN, UINT64_MAX, 1e300}, 20, false), Number(0));
    EXPECT_EQ(rate({77, 3, -1}, 20, false), Number(26.0));
    EXPECT_EQ(rate({3.9}, 20, false), Number(26.0));
}

TEST(MCSTables, AreMadeAnewBySettingThemUp) {
    HalvaneMCS mcs;
    mcs.setupLongGuardInterval20MHz();
    mcs.setupShortGuardInterval20MHz();
    mcs.setupLongGuardInterval40MHz();
    mcs.setupShortGuardInterval40MHz();
    for (const TableCase& row : kTables) EXPECT_EQ((mcs.*row.table)().size(), 77u) << row.name;
}

// Runs in its own process, because any other test may have used the shared instance.
TEST(MCSDeathTest, IsSharedFromFirstUseOn) {
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            const bool wasEmpty = gWiFiMCS.load() == nullptr;
            const bool isShared = &HalvaneMCS::sharedSystem() == gWiFiMCS.load();
            std::exit(wasEmpty && isShared ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST(MCS, IsSharedByAllThreads) {
    std::array<const HalvaneMCS*, 8> seen{};
    std::vector<std::thread> threads;
    for (auto& slot : seen) threads.emplace_back([&slot] { slot = &HalvaneMCS::sharedSystem(); });
    for (auto& thread : threads) thread.join();
    for (const auto* shared : seen) EXPECT_EQ(shared, gWiFiMCS.load());
    ASSERT_NE(gWiFiMCS.load(), nullptr);
    EXPECT_EQ(gWiFiMCS.load()->longGuardInterval20MHz()[0], Number(6.5));
}

}  // namespace
