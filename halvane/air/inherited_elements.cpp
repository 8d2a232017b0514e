#include <algorithm>

#include "halvane/air/element_id.h"
#include "halvane/air/inherited_elements_internal.h"
#include "halvane/air/profile_links_internal.h"
#include "halvane/air/whole_element_internal.h"

namespace halvane::air {

InheritedElements::InheritedElements(std::span<const Element> sender)
    : sender_(sender.begin(), std::min(sender.size(), kMaxInheritedElements)) {
    for (const Element& element : sender_) {
        if (!isWhole(element)) damagedOffsets_.push_back(element.offset);
    }
}

Neighbors InheritedElements::neighborsOf(const BssElements& network, const ElementIndex& index) {
    const Element* const report = index.find(ElementId::ReducedNeighborReport);
    if (report == nullptr) return {};
    if (!network.isInherited(*report)) return neighborsIn(index);
    if (!neighbors_) neighbors_ = neighborsIn(ElementIndex(sender_));
    return *neighbors_;
}

}  // namespace halvane::air
