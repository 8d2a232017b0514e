// The places of the elements of a frame, found in one walk.
//
// It allocates nothing, whatever the frame holds: each number has one place, that of its first
// element.
#ifndef HALVANE_AIR_ELEMENT_INDEX_INTERNAL_H
#define HALVANE_AIR_ELEMENT_INDEX_INTERNAL_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_range.h"
#include "halvane/air/source.h"

namespace halvane::air {

// The vendor elements that a profile is derived from.
enum class VendorKind : std::uint8_t {
    Wpa,
    Wmm,
    Wps,
    P2p,
    Hotspot,
    Osen,
    Mbo,
    OweTransition,
    RsnOverride,
    RsnOverride2,
    RsnxOverride,
};
inline constexpr std::size_t kVendorKindCount = 11;

// An element of the frame. It borrows from the index where the element is fragmented.
struct FoundElement {
    ElementId id = ElementId::Ssid;
    Octets body{};  // of a vendor element: after OUI and type
    Source source{};
};

class ElementIndex {
  public:
    // Borrows the octets.
    explicit ElementIndex(Octets elements);

    bool has(ElementId id) const { return places_[static_cast<std::size_t>(id)] != 0; }
    bool has(VendorKind kind) const { return vendors_[static_cast<std::size_t>(kind)] != 0; }

    // The first element of the number or the kind.
    std::optional<Element> find(ElementId id) const {
        return elementAt(places_[static_cast<std::size_t>(id)]);
    }
    std::optional<Element> find(VendorKind kind) const {
        return elementAt(vendors_[static_cast<std::size_t>(kind)]);
    }

    // What the first element decodes to; absent if it is missing or damaged.
    template <typename T>
    std::optional<T> decode() const {
        const auto element = find(T::kId);
        return element ? T::decode(element->body) : std::nullopt;
    }
    template <typename T>
    std::optional<T> decode(VendorKind kind) const {
        const auto element = find(kind);
        return element ? T::decode(vendorBody(*element)) : std::nullopt;
    }

    Source sourceOf(ElementId id) const {
        return sourceAt(id, places_[static_cast<std::size_t>(id)]);
    }
    Source sourceOf(VendorKind kind) const {
        return sourceAt(ElementId::Vendor, vendors_[static_cast<std::size_t>(kind)]);
    }

    Octets octets() const { return octets_; }
    std::size_t count() const { return count_; }
    const TrailingOctets& trailing() const { return trailing_; }

    // The body of a vendor element after OUI and type.
    static Octets vendorBody(const Element& element);

  private:
    using Place = std::uint32_t;  // the offset plus 1; 0: missing

    void add(const Element& element);
    std::optional<Element> elementAt(Place place) const {
        if (place == 0) return std::nullopt;
        return *ElementIterator(octets_, place - 1);
    }
    static Source sourceAt(ElementId id, Place place) {
        return {Origin::Element, id, static_cast<std::uint16_t>(place == 0 ? 0 : place - 1)};
    }

    Octets octets_;
    std::array<Place, 512> places_{};
    std::array<Place, kVendorKindCount> vendors_{};
    std::size_t count_ = 0;
    TrailingOctets trailing_{};
};

}  // namespace halvane::air

#endif
