// Each decoder alone: the first octet chooses it, the rest is the body.
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "halvane/air/element_decoder.h"
#include "halvane/air/element_info.h"

#include "fuzz/required_fields.h"

using namespace halvane::air;

namespace {

std::vector<ElementDecoder> allDecoders() {
    std::vector<ElementDecoder> decoders;
    for (const ElementInfo& info : elementInfos()) {
        if (info.decoder.describe != nullptr) decoders.push_back(info.decoder);
    }
    for (const VendorElementInfo& info : vendorElementInfos()) {
        if (info.decoder.describe != nullptr) decoders.push_back(info.decoder);
    }
    return decoders;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::vector<ElementDecoder> decoders = allDecoders();
    if (size == 0) return 0;
    halvane::fuzz::requireDecoder(decoders[data[0] % decoders.size()],
                                  std::span(data, size).subspan(1));
    return 0;
}
