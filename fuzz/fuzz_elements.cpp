// A walk over elements of any bytes: it passes every octet once, and every element decodes or is
// told damaged.
#include <cstddef>
#include <cstdint>
#include <span>

#include "halvane/air/element_decoder.h"
#include "halvane/air/element_info.h"
#include "halvane/air/element_range.h"

#include "fuzz/require.h"
#include "fuzz/required_fields.h"

using namespace halvane::air;

namespace {

void check(const Element& element) {
    REQUIRE(!elementName(element).empty());
    if (element.id == ElementId::Vendor) {
        const auto* const info = vendorElementInfo(element.body);
        if (info == nullptr || info->decoder.describe == nullptr) return;
        halvane::fuzz::requireDecoder(info->decoder, element.body.subspan(4));
    } else if (const auto* const info = elementInfo(element.id)) {
        if (info->decoder.describe == nullptr) return;
        halvane::fuzz::requireDecoder(info->decoder, element.body);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ElementRange elements(std::span(data, size));
    std::size_t passed = 0;
    auto element = elements.begin();
    for (; element != elements.end(); ++element) {
        REQUIRE(element->offset == passed);
        passed += element->octets.size();
        REQUIRE(passed <= size);
        REQUIRE(element->offsetOfBody(element->body.size()) == passed);
        for (std::size_t i = 0; i < element->body.size(); ++i) {
            REQUIRE(data[element->offsetOfBody(i)] == element->body[i]);
        }
        check(*element);
    }
    REQUIRE(element.rest().offset == passed);
    REQUIRE(element.rest().octets.size() == size - passed);
    return 0;
}
