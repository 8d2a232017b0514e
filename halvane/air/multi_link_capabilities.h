// What Multi-Link tells of an MLD as a whole (IEEE 802.11be-2024, 9.4.2.312.2.3).
//
// Plain values. Threads: as for an integer.
#ifndef HALVANE_AIR_MULTI_LINK_CAPABILITIES_H
#define HALVANE_AIR_MULTI_LINK_CAPABILITIES_H

#include <cstdint>
#include <optional>

#include "halvane/air/bit_octets.h"

namespace halvane::air {

// How long a station that could not listen on its link waits before it sends there.
struct MediumSynchronizationDelay {
    BitOctets<2> fields{};

    constexpr unsigned durationMicroseconds() const { return 32 * fields.bits(0, 8); }
    // The energy detection threshold in dBm, -72 to -62; absent for a reserved value.
    constexpr std::optional<int> thresholdDbm() const {
        const auto value = static_cast<int>(fields.bits(8, 4));
        return value <= 10 ? std::optional(value - 72) : std::nullopt;
    }
    // The TXOPs that the station may try meanwhile; absent for no limit.
    constexpr std::optional<int> maxTxops() const {
        const auto field = static_cast<int>(fields.bits(12, 4));
        return field < 15 ? std::optional(field + 1) : std::nullopt;
    }

    friend constexpr bool operator==(const MediumSynchronizationDelay&,
                                     const MediumSynchronizationDelay&) = default;
};

// Operation of several links with one radio: EMLSR, or several radios' chains together: EMLMR.
// Delays and the timeout are in microseconds; absent for a reserved value.
struct EmlCapabilities {
    BitOctets<2> fields{};

    constexpr bool isEmlsrSupported() const { return fields.bit(0); }
    constexpr std::optional<int> emlsrPaddingDelay() const {
        return delay(fields.bits(1, 3), 4, 16);
    }
    constexpr std::optional<int> emlsrTransitionDelay() const {
        return delay(fields.bits(4, 3), 5, 8);
    }
    constexpr bool isEmlmrSupported() const { return fields.bit(7); }
    constexpr std::optional<int> emlmrDelay() const { return delay(fields.bits(8, 3), 4, 16); }
    constexpr std::optional<int> transitionTimeout() const {
        return delay(fields.bits(11, 4), 11, 64);
    }

    friend constexpr bool operator==(const EmlCapabilities&, const EmlCapabilities&) = default;

  private:
    // 0, then twice the one before.
    static constexpr std::optional<int> delay(std::uint32_t value, std::uint32_t last, int half) {
        if (value > last) return std::nullopt;
        return value == 0 ? 0 : half << value;
    }
};

// Which mappings of TIDs to links can be negotiated.
enum class TidToLinkNegotiation : std::uint8_t {
    None = 0,
    SameLinks = 1,  // every TID to the same set of links
    Reserved = 2,
    AnyLinks = 3,
};

// MLD Capabilities And Operations.
struct MldCapabilities {
    BitOctets<2> fields{};

    // The links that may transmit or receive at the same time: the field plus 1.
    constexpr int maxSimultaneousLinks() const { return static_cast<int>(fields.bits(0, 4)) + 1; }
    constexpr bool isSrsSupported() const { return fields.bit(4); }
    constexpr TidToLinkNegotiation tidToLinkNegotiation() const {
        return static_cast<TidToLinkNegotiation>(fields.bits(5, 2));
    }
    // Of a non-AP MLD: the distance in MHz of two channels on which it sends and receives at the
    // same time; absent if it does not tell.
    constexpr std::optional<int> frequencySeparationMhz() const {
        const auto value = static_cast<int>(fields.bits(7, 5));
        return value > 0 ? std::optional((value - 1) * 80) : std::nullopt;
    }
    // Of an AP MLD, whose field of that distance says something else: whether it is a mobile AP
    // that cannot send on one link while it receives on another.
    constexpr bool isNstrMobileAp() const { return fields.bit(7); }
    constexpr bool isAarSupported() const { return fields.bit(12); }
    constexpr bool isLinkReconfigurationSupported() const { return fields.bit(13); }
    constexpr bool isAlignedTwtSupported() const { return fields.bit(14); }

    friend constexpr bool operator==(const MldCapabilities&, const MldCapabilities&) = default;
};

// Extended MLD Capabilities And Operations.
struct ExtendedMldCapabilities {
    BitOctets<2> fields{};

    constexpr bool isOperationParameterUpdateSupported() const { return fields.bit(0); }
    // Absent for no recommendation.
    constexpr std::optional<int> recommendedMaxSimultaneousLinks() const {
        const auto value = static_cast<int>(fields.bits(1, 4));
        return value > 0 ? std::optional(value) : std::nullopt;
    }
    constexpr bool isNstrStatusUpdateSupported() const { return fields.bit(5); }
    constexpr bool isEmlsrOnOneLinkSupported() const { return fields.bit(6); }
    constexpr bool isBtmRecommendationForSeveralApsSupported() const { return fields.bit(7); }

    friend constexpr bool operator==(const ExtendedMldCapabilities&,
                                     const ExtendedMldCapabilities&) = default;
};

}  // namespace halvane::air

#endif
