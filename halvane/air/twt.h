// TWT (IEEE 802.11-2020, 9.4.2.199, with 802.11ax and 802.11be): when stations wake up for each
// other.
#ifndef HALVANE_AIR_TWT_H
#define HALVANE_AIR_TWT_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"
#include "halvane/base/inline_list.h"

namespace halvane::air {

// What the parameters are about.
enum class TwtNegotiation : std::uint8_t {
    Individual = 0,
    NextBeacon = 1,         // the next beacon to wake up for
    BroadcastSchedule = 2,  // what a beacon announces
    BroadcastMembership = 3,
};

// What the sender of the parameters wants.
enum class TwtSetup : std::uint8_t {
    Request = 0,
    Suggest = 1,
    Demand = 2,
    Grouping = 3,
    Accept = 4,
    Alternate = 5,
    Dictate = 6,
    Reject = 7,
};

// The Request Type field, and the times that follow it.
struct TwtParameters {
    BitOctets<2> request{};
    std::uint8_t minWakeDuration = 0;  // 256 us, or TU if Twt::control bit 5 is set
    std::uint16_t wakeIntervalMantissa = 0;

    constexpr bool isRequest() const { return request.bit(0); }
    constexpr TwtSetup setup() const { return static_cast<TwtSetup>(request.bits(1, 3)); }
    constexpr bool isTriggered() const { return request.bit(4); }
    // Whether a station may send before it has been told that the other one is awake.
    constexpr bool isUnannounced() const { return request.bit(6); }
    // From one wake time to the next, in microseconds.
    constexpr std::uint64_t wakeIntervalMicroseconds() const {
        return std::uint64_t{wakeIntervalMantissa} << request.bits(10, 5);
    }

    friend constexpr bool operator==(const TwtParameters&, const TwtParameters&) = default;
};

// The parameters of an agreement between two stations.
struct HALVANE_EXPORT IndividualTwt {
    TwtParameters parameters{};
    std::optional<std::uint64_t> targetWakeTime{};  // TSF, us; unless the setup is Grouping
    ByteBuffer groupAssignment{};                   // if it is: of S1G stations
    std::uint8_t channel = 0;                       // bit k: the k-th channel of the BSS; 0: any
    std::optional<BitOctets<4>> ndpPaging{};
    std::optional<std::uint16_t> links{};  // of an MLD: bit k is link k

    bool isImplicit() const { return parameters.request.bit(5); }
    std::uint8_t flowId() const { return static_cast<std::uint8_t>(parameters.request.bits(7, 3)); }
    bool isProtected() const { return parameters.request.bit(15); }

    friend bool operator==(const IndividualTwt&, const IndividualTwt&) = default;
};

// Restricted TWT: the TIDs for which the time is kept.
struct RestrictedTwtTraffic {
    BitOctets<1> control{};
    std::uint8_t downlinkTids = 0;  // bit k: TID k; counts if the control's bit 0 is set
    std::uint8_t uplinkTids = 0;    // counts if the control's bit 1 is set

    friend constexpr bool operator==(const RestrictedTwtTraffic&,
                                     const RestrictedTwtTraffic&) = default;
};

// The parameters of a schedule for many stations.
struct BroadcastTwt {
    TwtParameters parameters{};
    std::uint16_t targetWakeTime = 0;  // bits 10 to 25 of the TSF
    BitOctets<2> information{};
    std::optional<RestrictedTwtTraffic> restricted{};

    constexpr bool isLast() const { return parameters.request.bit(5); }
    constexpr std::uint8_t recommendation() const {
        return static_cast<std::uint8_t>(parameters.request.bits(7, 3));
    }
    // 0: every station may use the schedule.
    constexpr std::uint8_t id() const { return static_cast<std::uint8_t>(information.bits(3, 5)); }
    // Beacons for which the schedule stays; 255: until it is told otherwise.
    constexpr std::uint8_t persistence() const {
        return static_cast<std::uint8_t>(information.bits(8, 8));
    }

    friend constexpr bool operator==(const BroadcastTwt&, const BroadcastTwt&) = default;
};

struct HALVANE_EXPORT Twt {
    static constexpr ElementId kId = ElementId::Twt;

    static constexpr std::size_t kMaxSchedules = 32;

    BitOctets<1> control{};
    std::optional<IndividualTwt> individual{};  // unless isBroadcast()
    // If isBroadcast(). Only the last has lastParameterSet() set.
    InlineList<BroadcastTwt, kMaxSchedules> broadcast{};
    ByteBuffer rest{};

    TwtNegotiation negotiation() const { return static_cast<TwtNegotiation>(control.bits(2, 2)); }
    bool isBroadcast() const { return control.bit(3); }
    bool isResponderInPsMode() const { return control.bit(1); }
    bool areInformationFramesDisabled() const { return control.bit(4); }

    static std::optional<Twt> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const Twt&, const Twt&) = default;
};

}  // namespace halvane::air

#endif
