#include "halvane/air/element_index_internal.h"
#include "halvane/air/element_info.h"
#include "halvane/air/whole_element_internal.h"

namespace halvane::air {

bool isWhole(const Element& element) {
    if (element.id == ElementId::Ssid) return true;  // one field, which may be too long
    if (element.id == ElementId::Vendor) {
        const auto* const info = vendorElementInfo(element.body);
        if (info == nullptr || info->decoder.isWhole == nullptr) return true;
        return info->decoder.isWhole(ElementIndex::vendorBody(element));
    }
    const auto* const info = elementInfo(element.id);
    return info == nullptr || info->decoder.isWhole == nullptr ||
           info->decoder.isWhole(element.body);
}

}  // namespace halvane::air
