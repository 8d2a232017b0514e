// Any dictionary as the skeleton of each record: a record that was read can be written, and reads
// back the same, also through XML.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <type_traits>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/property_list_value.h"
#include "halvane/ie/mac.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/client.h"
#include "halvane/model/device.h"
#include "halvane/model/interface.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/plist/xml_property_list.h"
#include "halvane/platform/plist/xml_property_list_reader.h"
#include "halvane/regulatory/channel.h"
#include "halvane/regulatory/country.h"
#include "halvane/regulatory/sku.h"

#include "fuzz/byte_source.h"
#include "fuzz/property_list_source.h"
#include "fuzz/require.h"

using namespace halvane;

namespace {

template <typename Record>
PropertyListDictionary writtenBack(const PropertyListDictionary& skeleton) {
    const auto record = Record::initWithSkeletonRepresentation(skeleton);
    if constexpr (std::is_same_v<decltype(record), const std::optional<Record>>) {
        if (!record) return {};
        REQUIRE(record->description().size() <= 1048576);
        return record->skeletonRepresentation();
    } else {
        REQUIRE(record.description().size() <= 1048576);
        return record.skeletonRepresentation();
    }
}

template <typename Record>
void check(const PropertyListDictionary& skeleton) {
    const auto once = writtenBack<Record>(skeleton);
    // Compares texts, because a NaN is equal to nothing.
    const auto xml = xmlPropertyList(once);
    REQUIRE(xmlPropertyList(writtenBack<Record>(once)) == xml);
    if (!xml) return;  // a text that no XML holds
    const auto read = propertyListFromXml(*xml);
    REQUIRE(read.has_value());
    const PropertyListDictionary* again = read->template as<PropertyListDictionary>();
    REQUIRE(again != nullptr);
    REQUIRE(xmlPropertyList(writtenBack<Record>(*again)) == xml);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::ByteSource source(data, size);
    const auto skeleton = fuzzing::dictionaryFrom(source, 4);
    check<HalvaneMAC>(skeleton);
    check<HalvaneClient>(skeleton);
    check<HalvaneDevice>(skeleton);
    check<HalvaneInterface>(skeleton);
    check<HalvaneBSSConfig>(skeleton);
    check<HalvaneChannel>(skeleton);
    check<HalvaneCountry>(skeleton);
    check<HalvaneSKU>(skeleton);
    REQUIRE(IPCMessage(skeleton).description().has_value() == !skeleton.empty());
    return 0;
}
