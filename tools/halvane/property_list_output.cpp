#include "tools/halvane/property_list_output.h"

#include <array>
#include <cstdint>
#include <optional>

#include "halvane/platform/xml_property_list.h"

#include "tools/halvane/standard_output.h"

namespace halvane::tool {

void putPropertyList(const PropertyListValue& value, std::FILE* stream) {
    std::optional<XmlPropertyListRefusal> refusal;
    if (const auto xml = xmlPropertyList(value, &refusal)) return put(*xml, stream);
    std::string reason = "no property list holds " + std::string(refusal->reason);
    if (refusal->character) reason += ", " + codePointName(*refusal->character);
    noteLostOutput(std::move(reason));
}

std::string codePointName(char32_t character) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "U+%04X", static_cast<std::uint32_t>(character));
    return text.data();
}

}  // namespace halvane::tool
