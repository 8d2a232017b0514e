#include "tools/halvane/output/property_list_output.h"

#include <array>
#include <cstdint>
#include <optional>
#include <utility>

#include "halvane/platform/plist/xml_property_list.h"

#include "tools/halvane/output/standard_output.h"

namespace halvane::tool {

std::optional<std::string> propertyListText(const PropertyListValue& value) {
    auto xml = xmlPropertyList(value);
    if (xml) return *std::move(xml);
    const auto& [refused, character] = xml.error();
    std::string reason = "no property list holds " + std::string(refused);
    if (character) reason += ", " + codePointName(*character);
    noteLostOutput(std::move(reason));
    return std::nullopt;
}

void putPropertyList(const PropertyListValue& value, std::FILE* stream) {
    if (const auto xml = propertyListText(value)) put(*xml, stream);
}

std::string codePointName(char32_t character) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "U+%04X", static_cast<std::uint32_t>(character));
    return text.data();
}

}  // namespace halvane::tool
