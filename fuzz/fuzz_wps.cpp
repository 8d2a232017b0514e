// Wi-Fi Protected Setup: any bytes as attributes, as an element, as the value of each attribute and
// as a device type; every filed value was in the buffer. Also any number as a PIN.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"
#include "halvane/ie/wps.h"
#include "halvane/ie/wps_attributes.h"
#include "halvane/ie/wps_device_type.h"
#include "halvane/ie/wps_ie.h"
#include "halvane/ie/wps_tlvs.h"

#include "fuzz/byte_source.h"
#include "fuzz/require.h"

using namespace halvane;

namespace {

using Bytes = std::span<const std::uint8_t>;

// The walk, byte by byte: whether it ends exactly on the last byte.
bool isWalkedWhole(Bytes bytes) {
    while (bytes.size() >= 4) {
        const std::size_t length = bytes[2] * std::size_t{256} + bytes[3];
        if (length > bytes.size() - 4) return false;
        bytes = bytes.subspan(4 + length);
    }
    return bytes.empty();
}

void checkAttributes(const ByteBuffer& bytes) {
    const auto tlvs = HalvaneWPSTLVs::initWithData(bytes);
    REQUIRE(tlvs.rawTLVs() == bytes);
    REQUIRE(!tlvs.vendorExtensions());
    REQUIRE(tlvs.isValid() || !isWalkedWhole(bytes.bytes()));
    if (const auto& name = tlvs.deviceName()) {
        REQUIRE(name->size() <= 32 && name->size() < bytes.size());
    }
    if (const auto& types = tlvs.deviceTypes()) REQUIRE(types->size() <= bytes.size() / 8);
    REQUIRE(tlvs.description().size() <= 16384 + 64 * bytes.size());
    auto again = tlvs;
    again.parseTLVs();
    REQUIRE(again.deviceName() == tlvs.deviceName());
}

void checkElement(const ByteBuffer& bytes) {
    const auto element = HalvaneWPSIE::initWithIE(bytes);
    REQUIRE(element.tlvs().has_value() == (bytes.size() > 6));
    REQUIRE(!element.tlvs() || element.tlvs()->rawTLVs() == bytes.slice(6));
    REQUIRE(element.description().size() <= 16384 + 64 * bytes.size());
}

// Each attribute's own parser with the same value.
void checkParsers(const ByteBuffer& bytes) {
    HalvaneWPSTLVs tlvs;
    const Bytes value = bytes.bytes();
#define HALVANE_FUZZ_PARSER(name) \
    tlvs.parseDataElement##name##_withLength(value.data(), value.size());
#define HALVANE_WPS_PROPERTY(type, name, kind, shortest, longest, property, setter, label) \
    HALVANE_FUZZ_PARSER(name)                                                              \
    HALVANE_FUZZ_ROUND_TRIP(property, setter)
#define HALVANE_FUZZ_ROUND_TRIP(property, setter)          \
    {                                                      \
        auto copy = tlvs;                                  \
        copy.setter(std::nullopt);                         \
        REQUIRE(!copy.property());                         \
        copy.setter(tlvs.property());                      \
        REQUIRE(copy.description() == tlvs.description()); \
    }
#define HALVANE_WPS_PARSER_ONLY(type, name, kind, shortest, longest, property) \
    HALVANE_FUZZ_PARSER(name)
#include "halvane/ie/wps_attribute_list.h"
#undef HALVANE_FUZZ_ROUND_TRIP
#undef HALVANE_FUZZ_PARSER
}

void checkDeviceType(const ByteBuffer& bytes) {
    auto type = HalvaneWPSDeviceType::initWithDeviceType(bytes.slice(0, 8));
    REQUIRE(!type.isValid() || bytes.size() >= 8);
    if (bytes.size() >= 8) {
        REQUIRE(type.categoryID() == bytes.bytes()[0] * 256u + bytes.bytes()[1]);
        REQUIRE(type.subCategoryID() == bytes.bytes()[6] * 256u + bytes.bytes()[7]);
    }
    REQUIRE(!type.description().empty());
    type.parseDeviceTypeTessic();
    type.parseDeviceTypeWFA();
    REQUIRE(!HalvaneWPSDeviceType::initWithDeviceType(bytes).isValid() || bytes.size() == 8);
}

void checkPIN(std::uint32_t number) {
    const std::uint32_t digits = number % 100000000;
    unsigned sum = 0;
    std::uint32_t rest = digits / 10;
    for (int i = 0; i < 7; ++i, rest /= 10) sum += rest % 10 * (i % 2 == 0 ? 3 : 1);
    const unsigned checksum = (10 - sum % 10) % 10;
    REQUIRE(HalvaneWPS::computeChecksum(Number(digits)) == checksum);
    REQUIRE(HalvaneWPS::validateChecksum(Number(digits)) == (digits % 10 == checksum));
    REQUIRE(HalvaneWPS::validateChecksum(HalvaneWPS::generatePIN()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ByteBuffer bytes(Bytes(data, size));
    checkAttributes(bytes);
    checkElement(bytes);
    checkParsers(bytes);
    checkDeviceType(bytes);
    checkPIN(fuzzing::ByteSource(data, size).integer<std::uint32_t>());
    return 0;
}
