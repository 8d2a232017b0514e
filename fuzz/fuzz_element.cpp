// Each decoder alone, with bodies that need no header: the first two octets are the number of the
// element, the rest is its body.
#include <cstddef>
#include <cstdint>
#include <span>

#include "halvane/air/element_decoder.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_info.h"

#include "fuzz/required_fields.h"

using namespace halvane::air;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const auto id = static_cast<ElementId>((data[0] | data[1] << 8) % 512);
    Octets body = std::span(data, size).subspan(2);
    if (id == ElementId::Vendor) {
        const auto* const info = vendorElementInfo(body);
        if (info == nullptr || info->decoder.describe == nullptr) return 0;
        halvane::fuzz::requireDecoder(info->decoder, body.subspan(4));
    } else if (const auto* const info = elementInfo(id)) {
        if (info->decoder.describe == nullptr) return 0;
        halvane::fuzz::requireDecoder(info->decoder, body);
    }
    return 0;
}
