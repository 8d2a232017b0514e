// A BSS record of any element bytes: the walk loses no byte, and the record survives its skeleton.
#include <cstddef>
#include <cstdint>
#include <span>

#include "halvane/base/byte_buffer.h"
#include "halvane/ie/mac.h"

#include "fuzz/require.h"

using halvane::ByteBuffer;
using halvane::HalvaneMAC;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ByteBuffer bytes(std::span(data, size));
    auto record = HalvaneMAC::initWithMAC({0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E});
    record.setCapabilityField(0x0411);
    record.setInformationElements(bytes);

    std::size_t total = record.invalidIEs() ? record.invalidIEs()->size() : 0;
    for (const ByteBuffer& element : record.IEs()) total += element.size();
    REQUIRE(total == size % 65536);
    REQUIRE(record.ieBuffer() == bytes);

    const auto skeleton = record.skeletonRepresentation();
    const auto back = HalvaneMAC::initWithSkeletonRepresentation(skeleton);
    REQUIRE(back.skeletonRepresentation() == skeleton);
    REQUIRE(back.SSID() == record.SSID());
    REQUIRE(back.supportedRates() == record.supportedRates());
    REQUIRE(back.securityFriendlyName() == record.securityFriendlyName());

    // Every byte is printed a bounded number of times, whatever the elements say.
    REQUIRE(record.description().size() <= 16384 + 64 * size);
    return 0;
}
