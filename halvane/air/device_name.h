// Elements in which makers of access points tell the name that the administrator gave one. No
// standard defines them; the layouts are known from the field.
#ifndef HALVANE_AIR_DEVICE_NAME_H
#define HALVANE_AIR_DEVICE_NAME_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"
#include "halvane/base/oui.h"

namespace halvane::air {

// Element ID 133, of Cisco Compatible Extensions.
struct HALVANE_EXPORT CcxDeviceName {
    static constexpr ElementId kId = ElementId::CcxDeviceName;
    static constexpr std::size_t kNameSize = 16;  // octets

    std::array<std::uint8_t, 10> head{};    // what they mean is not known
    ByteBuffer paddedName{};                // of kNameSize octets, NUL at the end
    std::optional<std::uint8_t> clients{};  // associated stations
    ByteBuffer rest{};

    // Without the padding. Its encoding is not checked. Valid as long as `paddedName` is unchanged.
    std::string_view name() const {
        return paddedName.text().substr(0, paddedName.text().find('\0'));
    }

    static std::optional<CcxDeviceName> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const CcxDeviceName&, const CcxDeviceName&) = default;
};

// 00-40-96, type 47.
struct HALVANE_EXPORT AironetDeviceName {
    static constexpr OUI kOui = {0x00, 0x40, 0x96};
    static constexpr std::uint8_t kType = 47;

    ByteBuffer name{};  // its encoding is not checked

    static std::optional<AironetDeviceName> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const AironetDeviceName&, const AironetDeviceName&) = default;
};

// 00-0B-86, type 1. Subtypes other than kNameSubtype are of another kind.
struct HALVANE_EXPORT ArubaDeviceName {
    static constexpr OUI kOui = {0x00, 0x0B, 0x86};
    static constexpr std::uint8_t kType = 1;
    static constexpr std::uint8_t kNameSubtype = 3;  // an element with a name

    std::uint8_t subtype = kNameSubtype;     // kNameSubtype for a name
    std::optional<std::uint8_t> reserved{};  // before a name
    std::optional<ByteBuffer> name{};        // absent unless the subtype has one
    ByteBuffer rest{};

    static std::optional<ArubaDeviceName> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const ArubaDeviceName&, const ArubaDeviceName&) = default;
};

// 5C-5B-35, type 1.
struct HALVANE_EXPORT MistDeviceName {
    static constexpr OUI kOui = {0x5C, 0x5B, 0x35};
    static constexpr std::uint8_t kType = 1;

    ByteBuffer name{};  // its encoding is not checked

    static std::optional<MistDeviceName> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const MistDeviceName&, const MistDeviceName&) = default;
};

}  // namespace halvane::air

#endif
