#include "tools/halvane/output/element_list.h"

#include <utility>

#include "halvane/air/element_id.h"
#include "halvane/air/he_capabilities.h"

namespace halvane::tool {

namespace {

std::optional<air::HePhyCapabilities> heIn(air::ElementRange elements) {
    for (const air::Element& element : elements) {
        if (element.id != air::ElementId::HeCapabilities) continue;
        if (const auto he = air::HeCapabilities::decode(element.body)) return he->phy;
    }
    return std::nullopt;
}

}  // namespace

ElementList::ElementList(air::Octets buffer, std::string bssid)
    : octets_(buffer), bssid_(std::move(bssid)), he_(heIn(range())) {}

ElementList::ElementList(const ElementList& outer, const air::Element& holder, std::size_t head,
                         const air::ElementOctets& field)
    : octets_(field.elements()),
      place_(Place{outer, holder, head, field}),
      depth_(outer.depth_ + 1),
      he_(heIn(range())) {
    if (!he_) he_ = outer.he_;
}

std::size_t ElementList::offsetOf(std::size_t index) const {
    if (!place_) return index;
    const std::size_t inBody =
        place_->head + place_->field.offsetOf(place_->field.fixedSize + index);
    return place_->outer.offsetOf(place_->holder.offsetOfBody(inBody));
}

}  // namespace halvane::tool
