// The best data rate of a set of HT MCS indices in the form of an element.
#ifndef HALVANE_IE_MCS_SET_INTERNAL_H
#define HALVANE_IE_MCS_SET_INTERNAL_H

#include <bit>
#include <cstdint>
#include <optional>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/byte_cursor.h"
#include "halvane/base/number.h"

namespace halvane {

// The bits of a Supported MCS Set field. Counted from the least significant bit of the first byte,
// bit i is MCS i; those above 76 are left out.
struct MCSBits {
    explicit MCSBits(const ByteBuffer& set) {
        constexpr unsigned kLastBitOfHigh = 76 - 64;
        ByteCursor cursor(set);
        low = cursor.u64le().value_or(0);
        high = cursor.u64le().value_or(0) & ((2u << kLastBitOfHigh) - 1);
    }

    std::uint64_t low;
    std::uint64_t high;
};

// What HalvaneMCS::rateForMCSSet_withChannelWidth_shortGI() returns for the indices of the field.
Number bestRateOfMCSSet(const std::optional<ByteBuffer>& set, std::int64_t channelWidth,
                        bool shortGI);

}  // namespace halvane

#endif
