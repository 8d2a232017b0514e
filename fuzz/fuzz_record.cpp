// A BSS record of any element bytes: the walk loses no byte, the record survives its skeleton, and
// a later sighting and measurements change only what they may.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"
#include "halvane/base/property_list_value.h"
#include "halvane/ie/link_quality.h"
#include "halvane/ie/link_quality_history.h"
#include "halvane/ie/mac.h"

#include "fuzz/require.h"
#include "tests/support/capability_bits.h"

using halvane::ByteBuffer;
using halvane::HalvaneMAC;
using halvane::Number;

namespace {

void checkMerge(HalvaneMAC record, const ByteBuffer& bytes) {
    auto other = HalvaneMAC::initWithMAC(record.mac());
    other.setInformationElements(bytes.slice(bytes.size() / 2));
    other.setCapabilityField(0x0421);
    other.setRSSI(-40);
    const auto before = record.SSID();
    const auto elements = record.ieBuffer();
    record.mergeEntries(other);
    REQUIRE(record.SSID() == (before ? before : other.SSID()));
    REQUIRE(!before || record.ieBuffer() == elements);
    REQUIRE(record.RSSI() == Number(-40) && record.capabilities() == 0x0421);
    const auto stranger = HalvaneMAC::initWithMAC({1, 2, 3, 4, 5, 6});
    const auto merged = record;
    record.mergeEntries(stranger);
    REQUIRE(record == merged);
}

void checkMeasurements(HalvaneMAC record, const std::uint8_t* data, std::size_t size) {
    for (std::size_t i = 0; i < std::min<std::size_t>(size, 300); ++i) {
        record.updateLinkQuality_withTxRate(-int{data[i]}, data[i]);
    }
    const std::size_t samples = std::min<std::size_t>(size, 256);
    const auto history = record.linkQualityHistory();
    REQUIRE(history.size() == samples);
    REQUIRE(record.averageRate().has_value() == (samples > 0));
    if (samples > 0) {
        const auto& last = history.back();
        const std::uint8_t sample = data[std::min<std::size_t>(size, 300) - 1];
        REQUIRE(last.rssi() == Number(-int{sample}) && last.txRate() == Number(sample));
        REQUIRE(!last.description().empty());
    }
    record.determineMaximumClientRate(54);
    REQUIRE(record.maxClientRate() == std::min(Number(54), record.maxPHYRate().value_or(54)));
}

// Each bit is the property that it is listed for.
void checkCapabilities(HalvaneMAC record, std::uint16_t field) {
    record.setCapabilityField(field);
    for (const auto& [bit, isSet] : halvane::testing::kCapabilityBits) {
        REQUIRE((record.*isSet)() == ((field >> bit & 1) != 0));
    }
    REQUIRE(!record.doesSupportSecurityOpen() || !record.isPrivacy());
    REQUIRE(!record.doesSupportSecurityWEP() || record.isPrivacy());
    REQUIRE(record.doesSupportSecurityWPS() == record.wpsIE().has_value());
    const bool isWPA =
        record.doesSupportSecurityWPAPersonal() || record.doesSupportSecurityWPAEnterprise();
    REQUIRE(!isWPA || record.rsn() || record.wpa());
}

}  // namespace

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
    checkMerge(record, bytes);
    checkMeasurements(record, data, size);
    const unsigned field = size > 1 ? data[0] * 256u + data[1] : 0u;
    checkCapabilities(record, static_cast<std::uint16_t>(field));
    return 0;
}
