// Any text as an XML property list: a value that was read can be written, and reads back equal.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "halvane/platform/plist/xml_property_list.h"
#include "halvane/platform/plist/xml_property_list_reader.h"

#include "fuzz/require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    std::optional<halvane::XmlPropertyListError> error;
    const auto value = halvane::propertyListFromXml(text, &error);
    REQUIRE(value.has_value() != error.has_value());
    if (error) {
        REQUIRE(error->offset <= size);
        REQUIRE(!error->reason.empty());
        return 0;
    }

    std::optional<halvane::XmlPropertyListRefusal> refusal;
    const auto written = halvane::xmlPropertyList(*value, &refusal);
    REQUIRE(written.has_value() != refusal.has_value());
    if (refusal) {
        // XML 1.1 has characters that XML 1.0, the written form, does not have.
        REQUIRE(refusal->character.has_value() && *refusal->character < 0x20);
        return 0;
    }
    const auto again = halvane::propertyListFromXml(*written);
    REQUIRE(again.has_value());
    // Compares texts, because a NaN is equal to nothing.
    REQUIRE(halvane::xmlPropertyList(*again) == written);
    return 0;
}
