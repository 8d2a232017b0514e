// What the networks of one beacon inherit from its sender, found once for all of them. Otherwise
// each of up to 255 networks would decode the sender's elements again.
#ifndef HALVANE_AIR_INHERITED_ELEMENTS_INTERNAL_H
#define HALVANE_AIR_INHERITED_ELEMENTS_INTERNAL_H

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "halvane/air/element_index_internal.h"
#include "halvane/air/inheritance.h"
#include "halvane/air/neighbor.h"

namespace halvane::air {

class InheritedElements {
  public:
    // Borrows the sender's elements.
    explicit InheritedElements(std::span<const Element> sender);

    // An index of the elements that hold for a network; it borrows them and this object.
    ElementIndex indexOf(const BssElements& network) const {
        return ElementIndex(network.elements, network.ownCount, damagedOffsets_);
    }
    // The neighbours of a network. Those that are inherited are the same for all networks.
    Neighbors neighborsOf(const BssElements& network, const ElementIndex& index);

  private:
    std::span<const Element> sender_;          // as many as are inherited
    std::vector<std::size_t> damagedOffsets_;  // of elements that are not whole, ascending
    std::optional<Neighbors> neighbors_;
};

}  // namespace halvane::air

#endif
