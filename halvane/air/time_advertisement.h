// Time Advertisement (IEEE 802.11-2020, 9.4.2.60): the time of day, by the sender's clock.
#ifndef HALVANE_AIR_TIME_ADVERTISEMENT_H
#define HALVANE_AIR_TIME_ADVERTISEMENT_H

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"

namespace halvane::air {

// UTC less the TSF, in nanoseconds: a number of ten octets, the least significant first, in two's
// complement.
struct TimeOffset {
    std::array<std::uint8_t, 10> octets{};

    friend constexpr bool operator==(const TimeOffset&, const TimeOffset&) = default;
};

// A time of day of Coordinated Universal Time, as the sender has it.
struct UtcTime {
    std::uint16_t year = 0;
    std::uint8_t month = 0;
    std::uint8_t day = 0;
    std::uint8_t hours = 0;
    std::uint8_t minutes = 0;
    std::uint8_t seconds = 0;
    std::uint16_t milliseconds = 0;
    std::uint8_t reserved = 0;

    friend constexpr bool operator==(const UtcTime&, const UtcTime&) = default;
};

struct HALVANE_EXPORT TimeAdvertisement {
    static constexpr ElementId kId = ElementId::TimeAdvertisement;

    std::uint8_t capabilities = 0;
    std::optional<TimeOffset> offset{};    // if the capabilities are 1
    std::optional<UtcTime> utc{};          // if they are 2: when the TSF was 0
    std::optional<std::uint64_t> error{};  // of either: the standard deviation in ns, below 2^40
    std::optional<std::uint8_t> updateCounter{};  // of utc: counts changes of value and error
    ByteBuffer rest{};

    static std::optional<TimeAdvertisement> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const TimeAdvertisement&, const TimeAdvertisement&) = default;
};

}  // namespace halvane::air

#endif
