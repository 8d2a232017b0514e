#include "halvane/air/supported_operating_classes.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr ValueName kDelimiter[] = {{0, "delimiter"}};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.number("Current Operating Class", element.currentClass);
    codec.listToEnd(element.classes, [&](auto& item) {
        codec.number("Operating Class", item, {.names = kDelimiter});
    });
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(SupportedOperatingClasses, kLayout)

}  // namespace halvane::air
