// Each decoder alone, with bodies that need no header: the first two octets are the number of the
// element, the rest is its body.
#include <cstddef>
#include <cstdint>
#include <span>

#include "halvane/air/element_id.h"

#include "fuzz/required_fields.h"

using namespace halvane::air;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const auto id = static_cast<ElementId>((data[0] | data[1] << 8) % 512);
    halvane::fuzz::requireElement(id, std::span(data, size).subspan(2));
    return 0;
}
