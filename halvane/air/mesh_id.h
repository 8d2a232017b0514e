// Mesh ID (IEEE 802.11-2020, 9.4.2.98): the name of a mesh, which is no SSID.
#ifndef HALVANE_AIR_MESH_ID_H
#define HALVANE_AIR_MESH_ID_H

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

namespace halvane::air {

struct HALVANE_EXPORT MeshId {
    static constexpr ElementId kId = ElementId::MeshId;
    static constexpr std::size_t kMaxSize = 32;

    ByteBuffer name{};  // empty: the wildcard. More than kMaxSize octets are no valid name.

    static std::optional<MeshId> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const MeshId&, const MeshId&) = default;
};

}  // namespace halvane::air

#endif
