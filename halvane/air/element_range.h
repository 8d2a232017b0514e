// Walks over the elements of a frame (IEEE 802.11-2020, 9.4.2.1 and 10.28.11).
//
//     for (const Element& element : ElementRange(frame.elements)) use(element.id, element.body);
//
// The walk ends at the first element that does not fit; the octets from there on are the trailing
// octets. An element of 255 octets and the Fragment elements that follow it at once are one
// element, whose body is joined. A Fragment element elsewhere is an element of its own.
//
// Nothing is allocated unless fragments are joined. Any thread may use its own range.
#ifndef HALVANE_AIR_ELEMENT_RANGE_H
#define HALVANE_AIR_ELEMENT_RANGE_H

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_id.h"
#include "halvane/base/byte_cursor.h"
#include "halvane/base/export.h"

namespace halvane::air {

// A copy may outlive the range but not the range's octets.
class HALVANE_EXPORT Element {
  public:
    ElementId id = ElementId::Ssid;
    Octets body{};           // after the ID, the length and the extension
    std::size_t offset = 0;  // of the ID, from the range's first octet
    Octets octets{};         // the whole element as it was sent, with the headers of all fragments

    bool isFragmented() const { return joined_ != nullptr; }

    // Returns where in the range the octet number `index` of the body stands. The body's end is
    // the octet after its last.
    std::size_t offsetOfBody(std::size_t index) const;

  private:
    friend class ElementIterator;
    std::shared_ptr<const std::uint8_t[]> joined_;  // holds the body of a fragmented element
};

// The octets that make no element.
struct TrailingOctets {
    std::size_t offset = 0;
    Octets octets{};

    bool empty() const { return octets.empty(); }
    // The number of the element; absent if there is none. An extension that is cut reads as
    // missing.
    std::optional<ElementId> id() const {
        ByteCursor cursor(octets);
        const auto number = cursor.u8();
        if (!number) return std::nullopt;
        if (*number != kExtendedElementId) return static_cast<ElementId>(*number);
        cursor.skip(1);  // the length
        const auto extension = cursor.u8();
        return extension ? extensionElement(*extension) : ElementId::ExtensionMissing;
    }
    // The length that the element would have needed after its header; absent if even the header is
    // cut.
    std::optional<std::uint8_t> missingLength() const {
        if (octets.size() < 2) return std::nullopt;
        return octets[1];
    }
};

// An input iterator. It compares with std::default_sentinel.
class HALVANE_EXPORT ElementIterator {
  public:
    using value_type = Element;
    using difference_type = std::ptrdiff_t;

    ElementIterator() = default;
    // Begins with the element at the octet `start`. Past the last octet there is none.
    explicit ElementIterator(Octets octets, std::size_t start = 0) : next_(octets) {
        isAtEnd_ = !next_.skip(start);
        if (!isAtEnd_) read();
    }

    const Element& operator*() const { return element_; }
    const Element* operator->() const { return &element_; }
    ElementIterator& operator++() {
        read();
        return *this;
    }
    void operator++(int) { ++*this; }
    friend bool operator==(const ElementIterator& iterator, std::default_sentinel_t) {
        return iterator.isAtEnd_;
    }

    // The octets after the current element; at the end, the trailing octets.
    TrailingOctets rest() const {
        ByteCursor left = next_;
        return {left.position(), left.rest()};
    }

  private:
    void read();
    void join();
    void takeExtension();

    ByteCursor next_{Octets()};  // after the current element
    bool isAtEnd_ = true;
    Element element_;
};

class ElementRange {
  public:
    // The range borrows the octets.
    explicit ElementRange(Octets octets) : octets_(octets) {}

    ElementIterator begin() const { return ElementIterator(octets_); }
    std::default_sentinel_t end() const { return {}; }

    // Walks over all elements.
    TrailingOctets trailing() const {
        auto iterator = begin();
        while (iterator != end()) ++iterator;
        return iterator.rest();
    }

  private:
    Octets octets_;
};

}  // namespace halvane::air

#endif
