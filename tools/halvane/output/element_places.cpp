#include "tools/halvane/output/element_places.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "halvane/air/element_info.h"
#include "halvane/air/inheritance.h"

namespace halvane::tool {

namespace {

struct ShortName {
    air::ElementId id;
    std::string_view name;
};
// Names that are too long for a reason.
constexpr ShortName kShortNames[] = {
    {air::ElementId::SupportedRates, "Supported Rates"},
    {air::ElementId::DsParameterSet, "DS Parameter Set"},
    {air::ElementId::RmEnabledCapabilities, "RM Enabled"},
    {air::ElementId::Rsnx, "RSNX"},
};

std::string nameOf(air::ElementId id) {
    const auto* const row = std::ranges::find(kShortNames, id, &ShortName::id);
    if (row != std::end(kShortNames)) return std::string(row->name);
    const auto* const info = air::elementInfo(id);
    return std::string(info != nullptr ? info->name : "element");
}

}  // namespace

ElementPlaces::ElementPlaces(air::Octets elements, std::size_t start)
    : elements_(air::elementsIn(elements)), start_(start) {}

const air::Element* ElementPlaces::find(air::ElementId id) const {
    const auto found = std::ranges::find(elements_, id, &air::Element::id);
    return found != elements_.end() ? &*found : nullptr;
}

const air::Element* ElementPlaces::elementAt(std::size_t offset) const {
    const auto found = std::ranges::find(elements_, offset, &air::Element::offset);
    return found != elements_.end() ? &*found : nullptr;
}

std::string ElementPlaces::at(std::size_t offset) const {
    return "@" + std::to_string(start_ + offset);
}

std::string ElementPlaces::of(const air::Source& source) const {
    if (source.origin != air::Origin::Element) return std::string(air::originName(source.origin));
    std::string name = nameOf(source.id);
    if (source.id == air::ElementId::Vendor) {
        const air::Element* const element = elementAt(source.offset);
        name = element != nullptr ? air::elementName(*element) : "vendor";
    }
    return name + ' ' + at(source.offset);
}

std::string ElementPlaces::of(air::ElementId id) const {
    const air::Element* const element = find(id);
    return nameOf(id) + (element != nullptr ? ' ' + at(element->offset) : "");
}

std::string ElementPlaces::of(const air::Sources& sources) const {
    std::string text;
    for (const air::Source& source : sources) {
        if (!text.empty()) text += ", ";
        text += of(source);
    }
    return text;
}

std::string ElementPlaces::inBody(air::ElementId id, std::size_t inBody) const {
    return nameOf(id) + ' ' + at(find(id)->offsetOfBody(inBody));
}

}  // namespace halvane::tool
