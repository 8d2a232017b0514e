// How the four access categories contend for the medium (IEEE 802.11-2020, 9.4.2.28): the parts
// that EDCA Parameter Set, MU EDCA Parameter Set and WMM share.
//
// Plain values. Threads: as for an integer.
#ifndef HALVANE_AIR_ACCESS_CATEGORY_H
#define HALVANE_AIR_ACCESS_CATEGORY_H

#include <cstdint>

#include "halvane/air/bit_octets.h"

namespace halvane::air {

// An access category by its number (ACI).
enum class AccessCategoryIndex : std::uint8_t {
    BestEffort = 0,
    Background = 1,
    Video = 2,
    Voice = 3
};

// The ACI/AIFSN field.
struct AccessPriority {
    BitOctets<1> fields{};

    constexpr int aifsn() const { return static_cast<int>(fields.bits(0, 4)); }  // slots
    constexpr bool isAdmissionMandatory() const { return fields.bit(4); }
    constexpr AccessCategoryIndex category() const {
        return static_cast<AccessCategoryIndex>(fields.bits(5, 2));
    }

    friend constexpr bool operator==(const AccessPriority&, const AccessPriority&) = default;
};

// The ECWmin/ECWmax field.
struct ContentionWindow {
    BitOctets<1> fields{};

    constexpr int min() const { return (1 << fields.bits(0, 4)) - 1; }  // slots
    constexpr int max() const { return (1 << fields.bits(4, 4)) - 1; }  // slots

    friend constexpr bool operator==(const ContentionWindow&, const ContentionWindow&) = default;
};

// What EDCA Parameter Set and WMM tell of an access category.
struct EdcaRecord {
    AccessPriority priority{};
    ContentionWindow window{};
    std::uint16_t txopLimit = 0;  // in units of 32 us; 0: one frame

    friend constexpr bool operator==(const EdcaRecord&, const EdcaRecord&) = default;
};

// The QoS Info field that an access point sends (9.4.1.17).
struct ApQosInfo {
    BitOctets<1> fields{};

    // Changes with the parameters.
    constexpr int updateCount() const { return static_cast<int>(fields.bits(0, 4)); }
    constexpr bool isQAckSupported() const { return fields.bit(4); }
    constexpr bool isQueueRequestSupported() const { return fields.bit(5); }
    constexpr bool isTxopRequestSupported() const { return fields.bit(6); }

    friend constexpr bool operator==(const ApQosInfo&, const ApQosInfo&) = default;
};

}  // namespace halvane::air

#endif
