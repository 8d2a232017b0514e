// Wi-Fi Protected Setup attributes of any bytes: what is filed was in the buffer.
#include <cstddef>
#include <cstdint>
#include <span>

#include "halvane/base/byte_buffer.h"
#include "halvane/ie/wps_tlvs.h"

#include "fuzz/require.h"

using halvane::ByteBuffer;
using halvane::HalvaneWPSTLVs;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ByteBuffer bytes(std::span(data, size));
    const auto tlvs = HalvaneWPSTLVs::initWithData(bytes);
    REQUIRE(tlvs.rawTLVs() == bytes);
    REQUIRE(!tlvs.vendorExtensions());
    if (const auto& name = tlvs.deviceName()) REQUIRE(name->size() <= 32 && name->size() < size);
    if (const auto& types = tlvs.deviceTypes()) REQUIRE(types->size() <= size / 8);
    REQUIRE(tlvs.description().size() <= 16384 + 64 * size);
    return 0;
}
