#include "halvane/air/non_inheritance.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.template counted<std::uint8_t>("Length of Element ID List", element.ids,
                                         [&](auto& id) { codec.number("Element ID", id); });
    codec.ifMore(element.extensionIds, [&](auto& ids) {
        codec.template counted<std::uint8_t>(
            "Length of Element ID Extension List", ids,
            [&](auto& id) { codec.number("Element ID Extension", id); });
    });
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(NonInheritance, kLayout)

bool NonInheritance::contains(ElementId id) const {
    const auto extension = extensionOf(id);
    if (!extension) return id != ElementId::ExtensionMissing && ids.contains(idOctetOf(id));
    return extensionIds && extensionIds->contains(*extension);
}

}  // namespace halvane::air
