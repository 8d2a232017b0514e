// AP Channel Report (IEEE 802.11-2020, 9.4.2.35): the channels of an operating class on which
// access points are likely to be found.
#ifndef HALVANE_AIR_AP_CHANNEL_REPORT_H
#define HALVANE_AIR_AP_CHANNEL_REPORT_H

#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/base/export.h"
#include "halvane/base/inline_list.h"

namespace halvane::air {

struct HALVANE_EXPORT ApChannelReport {
    static constexpr ElementId kId = ElementId::ApChannelReport;

    std::uint8_t operatingClass = 0;
    InlineList<std::uint8_t, 254> channels{};  // channel numbers of the class

    static std::optional<ApChannelReport> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const ApChannelReport&, const ApChannelReport&) = default;
};

}  // namespace halvane::air

#endif
