// The elements that hold for a BSS, by their numbers.
//
// It allocates nothing, whatever the elements are: each number has one place, that of its first
// element. Threads must not share an index, since it remembers what it has decoded.
#ifndef HALVANE_AIR_ELEMENT_INDEX_INTERNAL_H
#define HALVANE_AIR_ELEMENT_INDEX_INTERNAL_H

#include <algorithm>
#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

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

class ElementIndex {
  public:
    // Borrows the elements.
    explicit ElementIndex(std::span<const Element> elements)
        : ElementIndex(elements, elements.size(), {}) {}
    // The same for a BSS that inherits the elements from the number `ownCount` on. Of these all are
    // whole but those with an offset in `damagedOffsets`, which are ascending and borrowed.
    ElementIndex(std::span<const Element> elements, std::size_t ownCount,
                 std::span<const std::size_t> damagedOffsets);

    // The first element of the number or the kind; null if there is none.
    const Element* find(ElementId id) const {
        return elementAt(places_[static_cast<std::size_t>(id)]);
    }
    const Element* find(VendorKind kind) const {
        return elementAt(vendors_[static_cast<std::size_t>(kind)]);
    }
    bool has(ElementId id) const { return find(id) != nullptr; }
    bool has(VendorKind kind) const { return find(kind) != nullptr; }

    // What the first element decodes to; absent if it is missing or damaged.
    template <typename T>
    std::optional<T> decode() const {
        const auto* const element = find(T::kId);
        return element != nullptr ? decode<T>(*element, element->body) : std::nullopt;
    }
    template <typename T>
    std::optional<T> decode(VendorKind kind) const {
        const auto* const element = find(kind);
        return element != nullptr ? decode<T>(*element, vendorBody(*element)) : std::nullopt;
    }
    // What one of elements() decodes to.
    template <typename T>
    std::optional<T> decode(const Element& element) const {
        return decode<T>(element, element.body);
    }

    // Whether the BSS has one of elements() of its own, instead of inheriting it.
    bool isOwn(const Element& element) const { return numberOf(element) < ownCount_; }

    // Whether decode() has found one of elements() whole, or the sender has, so that nobody decodes
    // it once more to know. It is false for some that are whole.
    bool isKnownWhole(const Element& element) const {
        const std::size_t number = numberOf(element);
        if (number >= ownCount_) {
            return !std::ranges::binary_search(damagedOffsets_, element.offset);
        }
        return number < kRemembered && wholes_[number];
    }
    void rememberWhole(const Element& element) const {
        const std::size_t number = numberOf(element);
        if (number < kRemembered) wholes_.set(number);
    }

    // The offset is 0 for an element that is missing.
    Source sourceOf(ElementId id) const { return sourceOf(id, find(id)); }
    Source sourceOf(VendorKind kind) const { return sourceOf(ElementId::Vendor, find(kind)); }

    std::span<const Element> elements() const { return elements_; }

    // The body of a vendor element after OUI and type.
    static Octets vendorBody(const Element& element);

  private:
    using Place = std::uint32_t;                    // the index plus 1; 0: missing
    static constexpr std::size_t kRemembered = 64;  // no usual frame has more elements

    template <typename T>
    std::optional<T> decode(const Element& element, Octets body) const {
        auto decoded = T::decode(body);
        if (decoded) rememberWhole(element);
        return decoded;
    }

    void add(const Element& element, Place place);
    std::size_t numberOf(const Element& element) const {
        return static_cast<std::size_t>(&element - elements_.data());
    }
    const Element* elementAt(Place place) const {
        return place == 0 ? nullptr : &elements_[place - 1];
    }
    static Source sourceOf(ElementId id, const Element* element) {
        return {Origin::Element, id,
                static_cast<std::uint32_t>(element != nullptr ? element->offset : 0)};
    }

    std::span<const Element> elements_;
    std::size_t ownCount_;
    std::span<const std::size_t> damagedOffsets_;
    std::array<Place, 512> places_{};
    std::array<Place, kVendorKindCount> vendors_{};
    mutable std::bitset<kRemembered> wholes_{};
};

}  // namespace halvane::air

#endif
