#include "tools/halvane/config/config_file.h"

#include <utility>

#include "halvane/base/property_list_value.h"
#include "halvane/platform/plist/xml_property_list_reader.h"

#include "tools/halvane/input/hex_input.h"
#include "tools/halvane/output/message.h"

namespace halvane::tool {

namespace {

// Adds the configuration of a dictionary, or those of an array of dictionaries. Returns whether the
// value is such a one.
bool append(std::vector<HalvaneBSSConfig>& configurations, const PropertyListValue& value) {
    if (const auto* skeleton = value.as<PropertyListDictionary>()) {
        configurations.push_back(HalvaneBSSConfig::initWithSkeletonRepresentation(*skeleton));
        return true;
    }
    const auto* list = value.as<PropertyListArray>();
    if (list == nullptr) return false;
    for (const PropertyListValue& item : *list) {
        if (item.as<PropertyListDictionary>() == nullptr) return false;
        append(configurations, item);
    }
    return true;
}

}  // namespace

Result<std::vector<HalvaneBSSConfig>, std::string> readConfigurations(const std::string& path) {
    const auto text = readTextFile(path, "too long for a configuration");
    if (!text) return Unexpected(text.error());
    const auto value = propertyListFromXml(*text);
    if (!value) {
        return Unexpected(inputName(path) + ": no XML property list: at octet " +
                          std::to_string(value.error().offset) + ": " +
                          std::string(value.error().reason));
    }
    std::vector<HalvaneBSSConfig> configurations;
    if (!append(configurations, *value)) {
        return Unexpected(inputName(path) + ": no configuration, and no array of them");
    }
    return configurations;
}

}  // namespace halvane::tool
