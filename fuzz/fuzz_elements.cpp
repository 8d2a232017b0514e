// A walk over elements of any bytes: it passes every octet once, and every element decodes or is
// told damaged.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_info.h"
#include "halvane/air/element_range.h"

#include "fuzz/require.h"
#include "fuzz/required_fields.h"

using namespace halvane::air;

namespace {

// `passed` are the octets up to the element's end. Its body ends there, or before an empty
// fragment.
void requireEnd(const Element& element, Octets passed) {
    const std::size_t end = element.offsetOfBody(element.body.size());
    if (end == passed.size()) return;
    constexpr std::array<std::uint8_t, 2> kEmptyFragment = {idOctetOf(ElementId::Fragment), 0};
    REQUIRE(element.isFragmented() && std::ranges::equal(passed.subspan(end), kEmptyFragment));
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
        requireEnd(*element, std::span(data, passed));
        for (std::size_t i = 0; i < element->body.size(); ++i) {
            REQUIRE(data[element->offsetOfBody(i)] == element->body[i]);
        }
        REQUIRE(!elementName(*element).empty());
        halvane::fuzz::requireElement(element->id, element->body);
    }
    REQUIRE(element.rest().offset == passed);
    REQUIRE(element.rest().octets.size() == size - passed);
    return 0;
}
