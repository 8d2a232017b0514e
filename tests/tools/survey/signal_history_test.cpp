#include "tools/halvane/survey/signal_history.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <utility>
#include <vector>

using halvane::tool::SignalHistory;

namespace {

constexpr std::int64_t kSlot = SignalHistory::kFinestSlot;

using Frames = std::vector<std::pair<std::int64_t, int>>;

SignalHistory historyOf(const Frames& frames) {
    SignalHistory history;
    for (const auto& [time, signal] : frames) history.add(time, signal);
    return history;
}

void expectEqual(const SignalHistory& left, const SignalHistory& right) {
    EXPECT_EQ(left.slotLength(), right.slotLength());
    ASSERT_EQ(left.slots().size(), right.slots().size());
    for (std::size_t i = 0; i < left.slots().size(); ++i) {
        const auto& one = left.slots()[i];
        const auto& other = right.slots()[i];
        EXPECT_EQ(one.index, other.index);
        EXPECT_EQ(one.sum, other.sum);
        EXPECT_EQ(one.count, other.count);
        EXPECT_EQ(one.least, other.least);
        EXPECT_EQ(one.greatest, other.greatest);
    }
}

// Frames of no order over a long and uneven time.
Frames manyFrames(std::size_t count) {
    Frames frames;
    std::uint64_t state = 1;
    for (std::size_t i = 0; i < count; ++i) {
        state = state * 6364136223846793005u + 1442695040888963407u;
        const auto time = static_cast<std::int64_t>(state >> 24);
        frames.emplace_back(time, -static_cast<int>(state >> 33 & 0x7F));
    }
    return frames;
}

TEST(SignalHistory, KeepsWhatASlotHeard) {
    const auto history = historyOf({{0, -40}, {kSlot - 1, -50}, {kSlot, -60}, {5 * kSlot, -70}});
    EXPECT_EQ(history.slotLength(), kSlot);
    ASSERT_EQ(history.slots().size(), 3u);
    EXPECT_EQ(history.slots()[0].index, 0);
    EXPECT_EQ(history.slots()[0].count, 2u);
    EXPECT_EQ(history.slots()[0].least, -50);
    EXPECT_EQ(history.slots()[0].greatest, -40);
    EXPECT_DOUBLE_EQ(history.slots()[0].mean(), -45);
    EXPECT_EQ(history.slots()[2].index, 5);
}

TEST(SignalHistory, BelievesNoSignalAboveZero) {
    const auto history = historyOf({{0, 1}, {0, 0}, {0, -200}});
    ASSERT_EQ(history.slots().size(), 1u);
    EXPECT_EQ(history.slots()[0].count, 2u);
    EXPECT_EQ(history.slots()[0].greatest, 0);
    EXPECT_EQ(history.slots()[0].least, -127);
}

TEST(SignalHistory, DoublesSlotsBeforeItHasTooMany) {
    SignalHistory history;
    for (std::size_t i = 0; i < SignalHistory::kMostSlots; ++i) {
        history.add(static_cast<std::int64_t>(i) * kSlot, -50);
    }
    EXPECT_EQ(history.slotLength(), kSlot);
    EXPECT_EQ(history.slots().size(), SignalHistory::kMostSlots);
    history.add(static_cast<std::int64_t>(SignalHistory::kMostSlots) * kSlot, -60);
    EXPECT_EQ(history.slotLength(), 2 * kSlot);
    EXPECT_EQ(history.slots().size(), SignalHistory::kMostSlots / 2 + 1);
    EXPECT_EQ(history.slots()[0].count, 2u);
}

TEST(SignalHistory, KeepsSlotsFineAcrossALongPause) {
    const std::int64_t years = 1'000'000'000 * kSlot;
    const auto history = historyOf({{0, -40}, {kSlot, -41}, {years, -50}, {years + kSlot, -51}});
    EXPECT_EQ(history.slotLength(), kSlot);
    EXPECT_EQ(history.slots().size(), 4u);
}

TEST(SignalHistory, DoesNotDependOnTheOrder) {
    Frames frames = manyFrames(1000);
    const auto history = historyOf(frames);
    EXPECT_GT(history.slotLength(), kSlot);
    std::ranges::reverse(frames);
    expectEqual(historyOf(frames), history);
    std::ranges::sort(frames);
    expectEqual(historyOf(frames), history);
}

TEST(SignalHistory, OfTwoIsThatOfAllFrames) {
    const Frames frames = manyFrames(1000);
    for (const std::ptrdiff_t cut : {0, 1, 10, 500, 999, 1000}) {
        auto first = historyOf(Frames(frames.begin(), frames.begin() + cut));
        first.add(historyOf(Frames(frames.begin() + cut, frames.end())));
        expectEqual(first, historyOf(frames));
    }
}

TEST(SignalHistory, StandsTimesOfAnyKind) {
    using Limits = std::numeric_limits<std::int64_t>;
    SignalHistory history;
    for (std::int64_t i = -500; i < 500; ++i) history.add(i * (Limits::max() / 500), -50);
    history.add(Limits::min(), -50);
    history.add(Limits::max(), -50);
    EXPECT_LE(history.slots().size(), SignalHistory::kMostSlots);
    EXPECT_TRUE(std::ranges::is_sorted(history.slots(), {}, &SignalHistory::Slot::index));
}

TEST(SignalHistory, CountsTimesBefore1970Downwards) {
    const auto history = historyOf({{-1, -50}, {-kSlot, -50}, {-kSlot - 1, -50}});
    ASSERT_EQ(history.slots().size(), 2u);
    EXPECT_EQ(history.slots()[0].index, -2);
    EXPECT_EQ(history.slots()[1].index, -1);
}

}  // namespace
