// Any text as an XML property list: the quick reader and the careful one agree on it; a value that
// was read can be written, and reads back equal.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "halvane/platform/plist/xml_property_list.h"
#include "halvane/platform/plist/xml_property_list_reader.h"
#include "halvane/platform/plist/xml_property_list_reader_internal.h"

#include "fuzz/require.h"
#include "tests/support/both_plist_readers.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto value = halvane::propertyListFromXml(text);
    const auto careful = halvane::propertyListFromXml(text, halvane::PlainReading::Skipped);
    REQUIRE(halvane::testing::areIdentical(value, careful));
    if (!value) {
        REQUIRE(value.error().offset <= size);
        REQUIRE(!value.error().reason.empty());
        return 0;
    }

    const auto written = halvane::xmlPropertyList(*value);
    if (!written) {
        // XML 1.1 has characters that XML 1.0, the written form, does not have.
        const auto character = written.error().character;
        REQUIRE(character.has_value() && *character < 0x20);
        return 0;
    }
    const auto again = halvane::propertyListFromXml(*written);
    REQUIRE(again.has_value());
    // Compares texts, because a NaN is equal to nothing.
    REQUIRE(halvane::xmlPropertyList(*again) == written);
    return 0;
}
