// Elements by name and place: "RSN @136".
#ifndef TOOLS_HALVANE_OUTPUT_ELEMENT_PLACES_H
#define TOOLS_HALVANE_OUTPUT_ELEMENT_PLACES_H

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_range.h"
#include "halvane/air/source.h"

namespace halvane::tool {

class ElementPlaces {
  public:
    // Borrows the elements. The first stands at the octet `start` of what places count in.
    ElementPlaces(air::Octets elements, std::size_t start);

    // The first element with the number; null if there is none.
    const air::Element* find(air::ElementId id) const;
    // What it decodes to; absent if it is missing or damaged.
    template <typename T>
    std::optional<T> decode() const {
        const auto* const element = find(T::kId);
        return element != nullptr ? T::decode(element->body) : std::nullopt;
    }

    // "RSN @136", "WPA @43", "radio". Places in a profile of Multiple BSSID are right too.
    std::string of(const air::Source& source) const;
    std::string of(air::ElementId id) const;
    // Several with a comma between them.
    std::string of(const air::Sources& sources) const;
    // "RSN @160": the octet `inBody` of the body of the first element with the number.
    // REQUIRES: there is one.
    std::string inBody(air::ElementId id, std::size_t inBody) const;

    // "@136": the octet `offset` of the elements.
    std::string at(std::size_t offset) const;

    // The element that begins there; null if none does.
    const air::Element* elementAt(std::size_t offset) const;

  private:
    std::vector<air::Element> elements_;
    std::size_t start_;
};

}  // namespace halvane::tool

#endif
