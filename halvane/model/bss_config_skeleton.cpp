#include <cstdint>
#include <optional>
#include <type_traits>
#include <utility>

#include "halvane/base/number.h"
#include "halvane/base/skeleton_internal.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/bss_config_table_internal.h"

namespace halvane {

namespace {

// Reads a field from `key`. A missing key gives the value of an empty object.
template <typename Field>
void read(Field& field, const PropertyListDictionary& skeleton, const char* key) {
    if constexpr (std::is_same_v<Field, bool>) {
        field = skeleton::boolFor(skeleton, key);
    } else if constexpr (std::is_same_v<Field, std::int64_t>) {
        field = skeleton::int64For(skeleton, key);
    } else {
        field = skeleton::valueFor<typename Field::value_type>(skeleton, key);
    }
}
void read(std::optional<bool>& field, const PropertyListDictionary& skeleton, const char* key) {
    if (const auto number = skeleton::numberFor(skeleton, key)) field = *number != Number(0);
}
void read(std::optional<HalvaneManagementFrameProtection>& field,
          const PropertyListDictionary& skeleton, const char* key) {
    const auto number = skeleton::numberFor(skeleton, key);
    if (number) field = static_cast<HalvaneManagementFrameProtection>(number->int64());
}

template <typename Value>
void write(PropertyListDictionary& skeleton, const char* key, const Value& value) {
    if constexpr (std::is_enum_v<Value>) {
        skeleton.set(key, std::int64_t{value});
    } else {
        skeleton.set(key, value);
    }
}
template <typename Value>
void write(PropertyListDictionary& skeleton, const char* key, const std::optional<Value>& value) {
    if (value) write(skeleton, key, *value);
}

}  // namespace

HalvaneBSSConfig HalvaneBSSConfig::initWithSkeletonRepresentation(
    const PropertyListDictionary& skeleton) {
    Fields fields;
#define HALVANE_BSS_GIVEN(type, getter, key) read(fields.getter, skeleton, key);
#define HALVANE_BSS_VALUE(getter, setter, key, value) read(fields.getter, skeleton, key);
#define HALVANE_BSS_NAME(getter, setter, key) read(fields.getter, skeleton, key);
    HALVANE_BSS_CONFIG_FIELDS(HALVANE_BSS_GIVEN, HALVANE_BSS_VALUE, HALVANE_BSS_VALUE,
                              HALVANE_BSS_NAME)
#undef HALVANE_BSS_GIVEN
#undef HALVANE_BSS_VALUE
#undef HALVANE_BSS_NAME
    HalvaneBSSConfig configuration;
    if (fields != *configuration.fields_) configuration.fields_.change() = std::move(fields);
    return configuration;
}

PropertyListDictionary HalvaneBSSConfig::skeletonRepresentation() const {
    PropertyListDictionary skeleton;
#define HALVANE_BSS_GIVEN(type, getter, key) write(skeleton, key, getter());
#define HALVANE_BSS_VALUE(getter, setter, key, value) write(skeleton, key, getter());
#define HALVANE_BSS_NAME(getter, setter, key) write(skeleton, key, getter());
    HALVANE_BSS_CONFIG_FIELDS(HALVANE_BSS_GIVEN, HALVANE_BSS_VALUE, HALVANE_BSS_VALUE,
                              HALVANE_BSS_NAME)
#undef HALVANE_BSS_GIVEN
#undef HALVANE_BSS_VALUE
#undef HALVANE_BSS_NAME
    return skeleton;
}

}  // namespace halvane
