// The properties of elements, of their fields, and of what a record tells of them.
//
// Keys are stable, because programs read them.
#ifndef TOOLS_HALVANE_OUTPUT_ELEMENT_PROPERTIES_H
#define TOOLS_HALVANE_OUTPUT_ELEMENT_PROPERTIES_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/bss_profile.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_range.h"
#include "halvane/air/field_sink.h"
#include "halvane/air/finding.h"

#include "tools/halvane/output/air_properties.h"
#include "tools/halvane/output/property_table.h"

namespace halvane::tool {

inline std::optional<std::string_view> textIfAny(std::string_view text) {
    return text.empty() ? std::nullopt : std::optional(text);
}

// --- Elements ---

// An element; or octets that make none, which have neither number nor name. Borrows its texts.
struct ListedElement {
    std::optional<air::ElementId> id{};
    std::string_view name{};
    std::size_t offset = 0;  // in the buffer
    air::Octets body{};
};

template <>
inline constexpr std::string_view kTableName<ListedElement> = "element";
template <>
inline constexpr auto kProperties<ListedElement> = std::tuple{
    Property{"id",
             [](const ListedElement& element) {
                 return element.id ? std::optional<int>(air::idOctetOf(*element.id)) : std::nullopt;
             }},
    Property{"extension",
             [](const ListedElement& element) -> std::optional<int> {
                 if (!element.id) return std::nullopt;
                 const auto extension = air::extensionOf(*element.id);
                 return extension ? std::optional<int>(*extension) : std::nullopt;
             }},
    Property{"name", [](const ListedElement& element) { return textIfAny(element.name); }},
    Property{"offset", [](const ListedElement& element) { return element.offset; }},
    Property{"bytes", [](const ListedElement& element) { return HexOctets{element.body}; }},
};

// A field, or a group of fields, which has neither place nor value.
struct ToldField {
    std::string_view name{};
    std::optional<air::FieldPlace> place{};
    std::optional<ScalarValue> value{};
    std::string_view meaning{};
    std::string_view unit{};
};

// An element with its fields.
struct DecodedElement : ListedElement {
    std::string_view bssid{};
    std::string_view clause{};
};

template <typename Read>
constexpr auto readPlace(Read read) {
    return [read](const ToldField& field) -> std::optional<std::size_t> {
        return field.place ? std::optional<std::size_t>(read(*field.place)) : std::nullopt;
    };
}

// Absent for a field that fills its octets.
template <typename Read>
constexpr auto readBits(Read read) {
    return [read](const ToldField& field) -> std::optional<int> {
        if (!field.place || field.place->bitCount == 0) return std::nullopt;
        return read(*field.place);
    };
}

template <>
inline constexpr std::string_view kTableName<ToldField> = "field";
template <>
inline constexpr auto kProperties<ToldField> = std::tuple{
    Property{"name", [](const ToldField& field) { return field.name; }},
    Property{"offset", readPlace([](const air::FieldPlace& place) { return place.offset; })},
    Property{"size", readPlace([](const air::FieldPlace& place) { return place.size; })},
    Property{"bit", readBits([](const air::FieldPlace& place) { return int{place.firstBit}; })},
    Property{"bits", readBits([](const air::FieldPlace& place) { return int{place.bitCount}; })},
    Property{
        "value",
        [](const ToldField& field) -> const std::optional<ScalarValue>& { return field.value; }},
    Property{"meaning", [](const ToldField& field) { return textIfAny(field.meaning); }},
    Property{"unit", [](const ToldField& field) { return textIfAny(field.unit); }},
    Property{"fields",
             [](const ToldField&) { return Streamed<std::optional<std::vector<ToldField>>>(); }},
    Property{
        "elements",
        [](const ToldField&) { return Streamed<std::optional<std::vector<DecodedElement>>>(); }},
};

template <>
inline constexpr std::string_view kTableName<DecodedElement> = "decodedElement";
template <>
inline constexpr auto kProperties<DecodedElement> = std::tuple_cat(
    std::tuple{
        Property{"bssid", [](const DecodedElement& element) { return textIfAny(element.bssid); }},
    },
    kProperties<ListedElement>,
    std::tuple{
        Property{"clause", [](const DecodedElement& element) { return textIfAny(element.clause); }},
        Property{"fields",
                 [](const DecodedElement&) {
                     return Streamed<std::optional<std::vector<ToldField>>>();
                 }},
        Property{"damage",
                 [](const DecodedElement&) { return Streamed<std::optional<std::size_t>>(); }},
    });

// --- What follows a record that has elements ---

struct ListedElements {
    air::ElementRange range;
};
template <>
struct KindOf<ListedElements> : std::integral_constant<PropertyKind, PropertyKind::Array> {};
template <>
struct ItemOf<ListedElements> {
    using Item = ListedElement;
};

struct RecordAir {
    const air::BssProfile& profile;
    air::ElementRange elements;
};
template <>
inline constexpr std::string_view kTableName<RecordAir> = "sections";
template <>
inline constexpr auto kProperties<RecordAir> = std::tuple{
    Property{"air",
             [](const RecordAir& record) -> const air::BssProfile& { return record.profile; }},
    Property{"elements", [](const RecordAir& record) { return ListedElements{record.elements}; }},
    Property{"findings",
             [](const RecordAir& record) -> const std::vector<air::Finding>& {
                 return record.profile.findings;
             }},
};

}  // namespace halvane::tool

#endif
