// The second half of EHT Capabilities: Supported EHT-MCS And NSS Set and EHT PPE Thresholds
// (802.11be-2024, 9.4.2.313.4 and 9.4.2.313.5).
#ifndef HALVANE_AIR_EHT_MCS_SETS_H
#define HALVANE_AIR_EHT_MCS_SETS_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/eht_phy_capabilities.h"
#include "halvane/air/he_phy_capabilities.h"
#include "halvane/air/ppe_thresholds.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"

namespace halvane::air {

// Who sends an EHT Capabilities element. A 20 MHz-only map comes from no access point.
enum class EhtSender : std::uint8_t { AccessPoint, Station };

// The most streams for each range of MCS. `Ranges` is 4 for a station that knows 20 MHz alone
// (MCS 0-7, 8-9, 10-11, 12-13), otherwise 3 (0-9, 10-11, 12-13).
template <std::size_t Ranges>
struct EhtMcsMap {
    BitOctets<Ranges> fields{};

    // Streams at an MCS of 0 to 13; 0 if the MCS is not supported.
    constexpr int rxStreams(int mcs) const { return streams(mcs, 0); }
    constexpr int txStreams(int mcs) const { return streams(mcs, 4); }
    // The same of any MCS.
    constexpr int rxStreams() const { return most(0); }
    constexpr int txStreams() const { return most(4); }
    // Absent if not even MCS 0 is supported with `streams`.
    constexpr std::optional<int> highestRxMcs(int streams) const {
        for (int mcs = 13; mcs >= 0; --mcs) {
            if (rxStreams(mcs) >= streams) return mcs;
        }
        return std::nullopt;
    }

    friend constexpr bool operator==(const EhtMcsMap&, const EhtMcsMap&) = default;

  private:
    constexpr int streams(int mcs, std::size_t nibble) const {
        constexpr int kFirstRange = 14 - 2 * static_cast<int>(Ranges);  // 6 or 8
        const int range = mcs < kFirstRange + 2 ? 0 : (mcs - kFirstRange) / 2;
        return static_cast<int>(fields.bits(8 * static_cast<std::size_t>(range) + nibble, 4));
    }
    constexpr int most(std::size_t nibble) const {
        int result = 0;
        for (std::size_t i = 0; i < Ranges; ++i) {
            const int value = static_cast<int>(fields.bits(8 * i + nibble, 4));
            result = value > result ? value : result;
        }
        return result;
    }
};

// Which maps there are follows from the widths of the sender, so that decoding takes its HE
// Capabilities and the first half of its EHT Capabilities.
struct HALVANE_EXPORT EhtMcsSets {
    std::optional<EhtMcsMap<4>> only20{};  // then there is no other map
    std::optional<EhtMcsMap<3>> upTo80{};
    std::optional<EhtMcsMap<3>> at160{};
    std::optional<EhtMcsMap<3>> at320{};
    std::optional<EhtPpeThresholds> ppe{};
    ByteBuffer rest{};

    // `octets` are those of EhtCapabilities::sets.
    static std::optional<EhtMcsSets> decode(Octets octets, const EhtPhyCapabilities& eht,
                                            const HePhyCapabilities& he, EhtSender sender);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const EhtMcsSets&, const EhtMcsSets&) = default;
};

}  // namespace halvane::air

#endif
