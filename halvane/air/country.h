// Country (IEEE 802.11-2020, 9.4.2.8): the country that a BSS works in, and the power that is
// allowed there.
#ifndef HALVANE_AIR_COUNTRY_H
#define HALVANE_AIR_COUNTRY_H

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"
#include "halvane/base/inline_list.h"

namespace halvane::air {

// Three octets: a run of channels and its power, or an operating class for the runs that follow.
struct CountryTriplet {
    std::uint8_t firstChannel = 0;  // from 201 on, the operating extension identifier
    std::uint8_t channelCount = 0;  // or the operating class
    std::uint8_t power = 0;         // in dBm, or the coverage class

    constexpr bool isOperating() const { return firstChannel >= 201; }
    // Of a run of channels, in dBm.
    constexpr int maxPower() const { return static_cast<std::int8_t>(power); }
    // Of an operating triplet; a coverage class is 3 us of propagation time.
    constexpr std::uint8_t operatingClass() const { return channelCount; }
    constexpr std::uint8_t coverageClass() const { return power; }

    friend constexpr bool operator==(const CountryTriplet&, const CountryTriplet&) = default;
};

struct HALVANE_EXPORT Country {
    static constexpr ElementId kId = ElementId::Country;

    // What the octet after the two letters says (dot11CountryString, annex C).
    enum class Environment : std::uint8_t {
        Any,
        Outdoor,
        Indoor,
        Noncountry,
        OperatingClassTable,  // the octet is the number of a table of annex E
        Unknown,
    };

    std::array<std::uint8_t, 2> countryCode{};  // letters of ISO 3166-1
    std::uint8_t environmentOctet = ' ';
    InlineList<CountryTriplet, 84> triplets{};
    ByteBuffer rest{};  // an octet of padding, if the length would be odd

    // The two letters, which are "XX" for a noncountry; absent if they are no capitals.
    std::optional<std::string> code() const;
    Environment environment() const;
    // The table E-1 to E-5 whose operating classes are used; 4 is the global one. Absent if the
    // octet is none of these numbers.
    std::optional<int> operatingClassTable() const;

    static std::optional<Country> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const Country&, const Country&) = default;
};

}  // namespace halvane::air

#endif
