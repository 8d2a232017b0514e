#include "halvane/air/device_name.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr auto kCcxLayout = [](auto& codec, auto& element) {
    codec.octets("Unknown", element.head);
    codec.text("Name", element.paddedName, CcxDeviceName::kNameSize);
    codec.ifMore(element.clients, [&](auto& value) { codec.number("Associated Clients", value); });
    codec.rest(element.rest);
};

constexpr auto kNameLayout = [](auto& codec, auto& element) { codec.text("Name", element.name); };

constexpr auto kArubaLayout = [](auto& codec, auto& element) {
    codec.number("Subtype", element.subtype);
    const bool isName = element.subtype == ArubaDeviceName::kNameSubtype;
    codec.when(isName, element.reserved, [&](auto& value) { codec.number("Reserved", value); });
    codec.when(isName, element.name, [&](auto& name) { codec.text("Name", name); });
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(CcxDeviceName, kCcxLayout)
HALVANE_AIR_DEFINE_ELEMENT(AironetDeviceName, kNameLayout)
HALVANE_AIR_DEFINE_ELEMENT(ArubaDeviceName, kArubaLayout)
HALVANE_AIR_DEFINE_ELEMENT(MistDeviceName, kNameLayout)

}  // namespace halvane::air
