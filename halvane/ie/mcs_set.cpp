#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>

#include "halvane/ie/mcs_set_internal.h"
#include "halvane/ie/mcs_tables_internal.h"

namespace halvane {

namespace {

using mcs_tables::Table;

constexpr unsigned kGroupSize = 8;

// A table, and which of its groups of eight rates ascend. In those the highest index is the best.
struct RateTable {
    constexpr explicit RateTable(const Table& table) : rates(table) {
        for (std::size_t i = 0; i < rates.size(); ++i) {
            if (i % kGroupSize != 0 && rates[i] < rates[i - 1]) ascends[i / kGroupSize] = false;
        }
    }

    // The best rate of the group that begins at `first`. Bit i stands for its MCS i.
    double bestOf(unsigned first, unsigned group) const {
        const auto rateOf = [&](int bit) { return rates[first + static_cast<unsigned>(bit)]; };
        if (ascends[first / kGroupSize]) return rateOf(static_cast<int>(std::bit_width(group)) - 1);
        double best = 0;
        for (unsigned bits = group; bits != 0; bits &= bits - 1) {
            best = std::max(best, rateOf(std::countr_zero(bits)));
        }
        return best;
    }

    Table rates;
    std::array<bool, 10> ascends = {true, true, true, true, true, true, true, true, true, true};
};

constexpr RateTable kLong20(mcs_tables::kLongGuardInterval20MHz);
constexpr RateTable kShort20(mcs_tables::kShortGuardInterval20MHz);
constexpr RateTable kLong40(mcs_tables::kLongGuardInterval40MHz);
constexpr RateTable kShort40(mcs_tables::kShortGuardInterval40MHz);

const RateTable* tableFor(std::int64_t channelWidth, bool shortGI) {
    if (channelWidth == 20) return shortGI ? &kShort20 : &kLong20;
    if (channelWidth == 40) return shortGI ? &kShort40 : &kLong40;
    return nullptr;
}

double bestOf(const RateTable& table, unsigned first, std::uint64_t bits) {
    constexpr unsigned kGroup = (1u << kGroupSize) - 1;
    double best = 0;
    for (; bits != 0; bits >>= kGroupSize, first += kGroupSize) {
        const unsigned group = bits & kGroup;
        if (group != 0) best = std::max(best, table.bestOf(first, group));
    }
    return best;
}

}  // namespace

Number bestRateOfMCSSet(const std::optional<ByteBuffer>& set, std::int64_t channelWidth,
                        bool shortGI) {
    const RateTable* const table = tableFor(channelWidth, shortGI);
    if (table == nullptr || !set) return 0;
    const MCSBits bits(*set);
    const double best = std::max(bestOf(*table, 0, bits.low), bestOf(*table, 64, bits.high));
    // Without any rate the result is the integer 0, not the real one.
    return best > 0 ? Number(best) : Number(0);
}

}  // namespace halvane
