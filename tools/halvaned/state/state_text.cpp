#include "tools/halvaned/state/state_text.h"

#include <algorithm>
#include <optional>
#include <span>
#include <string.h>
#include <utility>
#include <vector>

#include "halvane/base/number.h"
#include "halvane/base/property_list_value.h"
#include "halvane/base/skeleton_internal.h"
#include "halvane/model/bss_config.h"
#include "halvane/platform/plist/xml_property_list.h"
#include "halvane/platform/plist/xml_property_list_reader.h"
#include "halvane/service/hosting_rules_internal.h"

#include "tools/halvane/input/interface_facts.h"

namespace halvane::hosting {

namespace {

constexpr const char* kVersion = "Version";
constexpr const char* kInterfaces = "Interfaces";
constexpr const char* kConfigurations = "Configurations";
constexpr const char* kRole = "Role";
constexpr const char* kEnabled = "Enabled";
constexpr const char* kStarted = "Started";
constexpr const char* kFileKeys[] = {kVersion, kInterfaces};
constexpr const char* kInterfaceKeys[] = {kConfigurations, kRole, kEnabled, kStarted};

template <typename Content>
using Read = Result<Content, std::string>;

Unexpected<std::string> refuse(const std::string& place, const std::string& problem) {
    return Unexpected(place + problem);
}

// The value of a key, or why there is none of this kind.
template <typename Kind>
Read<const Kind*> valueOf(const PropertyListDictionary& dictionary, const char* key,
                          const std::string& place, const char* kind) {
    const auto* value = dictionary.find(key);
    if (value == nullptr) return refuse(place, std::string(key) + " is missing");
    const auto* held = value->as<Kind>();
    if (held == nullptr) return refuse(place, std::string(key) + " is no " + kind);
    return held;
}

std::optional<std::string> unknownKey(const PropertyListDictionary& dictionary,
                                      std::span<const char* const> known) {
    for (const auto& [key, value] : dictionary) {
        if (std::ranges::find(known, std::string_view(key)) == known.end()) return key;
    }
    return std::nullopt;
}

Read<std::vector<HalvaneBSSConfig>> configurationsIn(const PropertyListArray& array,
                                                     const std::string& place) {
    std::vector<HalvaneBSSConfig> configurations;
    configurations.reserve(array.size());
    for (const PropertyListValue& item : array) {
        const std::string element =
            place + "Configurations: element " + std::to_string(configurations.size() + 1);
        const auto* skeleton = item.as<PropertyListDictionary>();
        if (skeleton == nullptr) return refuse(element, " is no dictionary");
        configurations.push_back(HalvaneBSSConfig::initWithSkeletonRepresentation(*skeleton));
        if (!hasUsableSSID(configurations.back())) {
            return refuse(element, " has no SSID of 1 to 32 bytes");
        }
    }
    return configurations;
}

Read<InterfaceState> interfaceIn(const PropertyListDictionary& dictionary,
                                 const std::string& place) {
    if (const auto key = unknownKey(dictionary, kInterfaceKeys)) {
        return refuse(place, "there is no key " + *key);
    }
    const auto array = valueOf<PropertyListArray>(dictionary, kConfigurations, place, "array");
    if (!array) return Unexpected(array.error());
    const auto isEnabled = valueOf<bool>(dictionary, kEnabled, place, "boolean");
    if (!isEnabled) return Unexpected(isEnabled.error());
    const auto isStarted = valueOf<bool>(dictionary, kStarted, place, "boolean");
    if (!isStarted) return Unexpected(isStarted.error());
    InterfaceState interface;
    interface.isEnabled = **isEnabled;
    interface.isStarted = **isStarted;
    if (dictionary.find(kRole) != nullptr) {
        const auto role = valueOf<std::string>(dictionary, kRole, place, "string");
        if (!role) return Unexpected(role.error());
        interface.role = **role;
    }
    auto configurations = configurationsIn(**array, place);
    if (!configurations) return Unexpected(configurations.error());
    interface.configurations = *std::move(configurations);
    return interface;
}

Read<void> checkVersion(const PropertyListDictionary& file) {
    const auto version = valueOf<Number>(file, kVersion, "", "integer");
    if (!version) return Unexpected(version.error());
    if (**version == Number(kStateVersion)) return {};
    return Unexpected("it has version " + (*version)->description() + ", and this daemon reads " +
                      std::to_string(kStateVersion));
}

Read<DaemonState> stateIn(const PropertyListDictionary& file) {
    // A later version may have other keys.
    if (auto checked = checkVersion(file); !checked) return Unexpected(checked.error());
    if (const auto key = unknownKey(file, kFileKeys)) return refuse("", "there is no key " + *key);
    const auto interfaces = valueOf<PropertyListDictionary>(file, kInterfaces, "", "dictionary");
    if (!interfaces) return Unexpected(interfaces.error());
    DaemonState state;
    for (const auto& [name, value] : **interfaces) {
        const std::string place = "Interfaces: " + name + ": ";
        if (!tool::isInterfaceName(name)) return refuse(place, "no interface has this name");
        const auto* dictionary = value.as<PropertyListDictionary>();
        if (dictionary == nullptr) return refuse(place, "it is no dictionary");
        auto interface = interfaceIn(*dictionary, place);
        if (!interface) return Unexpected(interface.error());
        state.interfaces.emplace(name, *std::move(interface));
    }
    return state;
}

PropertyListDictionary dictionaryOf(const InterfaceState& interface) {
    PropertyListDictionary dictionary;
    dictionary.set(kConfigurations, skeleton::skeletonsOf(interface.configurations));
    skeleton::setIfPresent(dictionary, kRole, interface.role);
    dictionary.set(kEnabled, interface.isEnabled);
    dictionary.set(kStarted, interface.isStarted);
    return dictionary;
}

// What stateFromText() would refuse.
std::optional<std::string> problemOf(const DaemonState& state) {
    for (const auto& [name, interface] : state.interfaces) {
        if (!tool::isInterfaceName(name)) return "no interface has the name " + name;
        if (!std::ranges::all_of(interface.configurations, hasUsableSSID)) {
            return "a configuration of " + name + " has no SSID of 1 to 32 bytes";
        }
    }
    return std::nullopt;
}

}  // namespace

Result<DaemonState, std::string> stateFromText(std::string_view xml) {
    if (xml.size() > kLargestState) {
        return Unexpected("it has more than " + std::to_string(kLargestState) + " bytes");
    }
    const auto value = propertyListFromXml(xml);
    if (!value) {
        return Unexpected("byte " + std::to_string(value.error().offset) +
                          ": it is no property list: " + std::string(value.error().reason));
    }
    const auto* file = value->as<PropertyListDictionary>();
    if (file == nullptr) return Unexpected(std::string("it is no dictionary"));
    return stateIn(*file);
}

Result<std::string, std::string> textOf(const DaemonState& state) {
    if (auto problem = problemOf(state)) return Unexpected(std::move(*problem));
    PropertyListDictionary interfaces;
    for (const auto& [name, interface] : state.interfaces) {
        interfaces.set(name, dictionaryOf(interface));
    }
    PropertyListDictionary file;
    file.set(kVersion, kStateVersion);
    file.set(kInterfaces, std::move(interfaces));
    auto xml = xmlPropertyList(std::move(file));
    if (!xml) return Unexpected("it holds " + std::string(xml.error().reason));
    std::string& text = *xml;
    if (text.size() > kLargestState) {
        ::explicit_bzero(text.data(), text.size());
        return Unexpected("it would have more than " + std::to_string(kLargestState) + " bytes");
    }
    return std::move(text);
}

}  // namespace halvane::hosting
