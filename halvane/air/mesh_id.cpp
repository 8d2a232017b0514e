#include "halvane/air/mesh_id.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr auto kLayout = [](auto& codec, auto& element) { codec.text("Mesh ID", element.name); };

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(MeshId, kLayout)

}  // namespace halvane::air
