#include "tools/halvaned-sim/world_file.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/mac_address.h"
#include "halvane/base/result.h"
#include "halvane/base/skeleton_internal.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/client.h"
#include "halvane/model/device.h"
#include "halvane/model/interface.h"
#include "halvane/platform/plist/xml_property_list.h"
#include "halvane/platform/plist/xml_property_list_reader.h"
#include "halvane/service/hosting_rules_internal.h"

#include "tools/halvaned-sim/record_check.h"

namespace halvane::sim {

namespace {

constexpr const char* kDevices = "Devices";
constexpr const char* kInterfaces = "Interfaces";
constexpr const char* kDisabled = "Disabled";
constexpr const char* kConfigs = "Configs";
constexpr const char* kStations = "Stations";
constexpr const char* kKeys[] = {kDevices, kInterfaces, kDisabled, kConfigs, kStations};

// The value is not null.
template <typename Kind>
Read<const Kind*> held(const PropertyListValue& value, const Place& place, const char* kind) {
    const Kind* const found = value.as<Kind>();
    if (found == nullptr) return refuse(place, "is not " + std::string(kind));
    return found;
}

Read<const PropertyListArray*> arrayIn(const PropertyListValue& value, const Place& place) {
    return held<PropertyListArray>(value, place, "an array");
}

Read<const PropertyListDictionary*> dictionaryIn(const PropertyListValue& value,
                                                 const Place& place) {
    return held<PropertyListDictionary>(value, place, "a dictionary");
}

// A record can be built from every dictionary that the check accepts, so there is one for each
// element.
template <typename Record>
Read<std::vector<Record>> recordsIn(const PropertyListValue& value, const Place& place,
                                    RecordCheck check) {
    auto array = arrayIn(value, place);
    if (!array) return reasonOf(std::move(array));
    for (std::size_t i = 0; i < (*array)->size(); ++i) {
        auto checked = check((**array)[i], place.element(i));
        if (!checked) return reasonOf(std::move(checked));
    }
    return skeleton::recordsOf<Record>(**array);
}

// The values that a list has seen of a key that identifies its records.
template <typename Value>
class Distinct {
  public:
    Distinct(const Place& place, const char* key) : place_(place), key_(key) {}

    Checked add(const Value& value) {
        if (!values_.insert(value).second) return refuse("another has the same");
        ++index_;
        return {};
    }

    Unexpected<std::string> refuse(const std::string& problem) const {
        const Place element = place_.element(index_);
        return sim::refuse(element.at(key_), problem);
    }

  private:
    const Place place_;
    const char* const key_;
    std::size_t index_ = 0;
    std::set<Value> values_;
};

// Returns the result of `use` for the value of the key; success if there is none.
template <typename Use>
Checked withValueOf(const PropertyListDictionary& file, const char* key, Use use) {
    const auto* value = file.find(key);
    return value != nullptr ? use(*value) : Checked();
}

// Reads a world piece by piece; everything else refers to the interfaces, which come first.
class Reader {
  public:
    explicit Reader(const PropertyListDictionary& file) : file_(file) {}

    Read<World> read() {
        using Step = Checked (Reader::*)();
        constexpr Step kSteps[] = {
            &Reader::refuseUnknownKeys, &Reader::readInterfaces, &Reader::readDevices,
            &Reader::readDisabled,      &Reader::readConfigs,    &Reader::readStations,
            &Reader::takeConfigs,       &Reader::checkStations,  &Reader::checkSizeOfStations,
        };
        for (const Step step : kSteps) {
            auto checked = (this->*step)();
            if (!checked) return reasonOf(std::move(checked));
        }
        return World(std::move(devices_), std::move(interfaces_));
    }

  private:
    Checked refuseUnknownKeys() {
        for (const auto& [key, value] : file_) {
            if (std::find(std::begin(kKeys), std::end(kKeys), key) == std::end(kKeys)) {
                return refuse(Place(key), "there is no such key");
            }
        }
        return {};
    }

    Checked readInterfaces() {
        const auto* value = file_.find(kInterfaces);
        const Place interfaces(kInterfaces);
        if (value == nullptr) return refuse(interfaces, "is missing");
        auto records = recordsIn<HalvaneInterface>(*value, interfaces, checkInterface);
        if (!records) return reasonOf(std::move(records));
        Distinct<std::string> names(interfaces, "InterfaceName");
        for (auto& record : *records) {
            if (auto added = names.add(*record.ifName()); !added) return added;
            indexOfName_.emplace(*record.ifName(), interfaces_.size());
            interfaces_.push_back({.record = std::move(record)});
        }
        configs_.resize(interfaces_.size());
        return {};
    }

    Checked readDevices() {
        return withValueOf(file_, kDevices, [&](const PropertyListValue& value) -> Checked {
            auto devices = recordsIn<HalvaneDevice>(value, Place(kDevices), checkDevice);
            if (!devices) return reasonOf(std::move(devices));
            devices_ = *std::move(devices);
            return {};
        });
    }

    Read<std::size_t> indexOf(const std::string& name, const Place& place) const {
        const auto found = indexOfName_.find(name);
        if (found == indexOfName_.end()) return refuse(place, "there is no interface " + name);
        return found->second;
    }

    Checked readDisabled() {
        return withValueOf(file_, kDisabled, [&](const PropertyListValue& value) -> Checked {
            const Place disabled(kDisabled);
            auto names = arrayIn(value, disabled);
            if (!names) return reasonOf(std::move(names));
            for (std::size_t i = 0; i < (*names)->size(); ++i) {
                auto disabling = disable((**names)[i], disabled.element(i));
                if (!disabling) return disabling;
            }
            return {};
        });
    }

    Checked disable(const PropertyListValue& value, const Place& place) {
        auto name = held<std::string>(value, place, "a string");
        if (!name) return reasonOf(std::move(name));
        auto index = indexOf(**name, place);
        if (!index) return reasonOf(std::move(index));
        interfaces_[*index].isEnabled = false;
        return {};
    }

    Checked readConfigs() {
        return readLists<HalvaneBSSConfig>(kConfigs, checkConfig,
                                           [&](std::size_t index) { return &configs_[index]; });
    }

    Checked readStations() {
        return readLists<HalvaneClient>(kStations, checkClient, [&](std::size_t index) {
            return &interfaces_[index].stations;
        });
    }

    // `listOf` returns the list for the records of an interface.
    template <typename Record, typename ListOf>
    Checked readLists(const char* key, RecordCheck check, ListOf listOf) {
        const Place lists(key);
        return withValueOf(file_, key, [&](const PropertyListValue& value) -> Checked {
            auto byName = dictionaryIn(value, lists);
            if (!byName) return reasonOf(std::move(byName));
            for (const auto& [name, list] : **byName) {
                auto index = indexOf(name, lists);
                if (!index) return reasonOf(std::move(index));
                auto records = recordsIn<Record>(list, lists.at(name), check);
                if (!records) return reasonOf(std::move(records));
                *listOf(*index) = *std::move(records);
            }
            return {};
        });
    }

    Checked takeConfigs() {
        const Place lists(kConfigs);
        for (std::size_t i = 0; i < interfaces_.size(); ++i) {
            Distinct<ByteBuffer> names(lists.at(interfaces_[i].name()), "SSID");
            for (const HalvaneBSSConfig& config : configs_[i]) {
                if (!hasUsableSSID(config)) return names.refuse("does not have 1 to 32 bytes");
                if (auto added = names.add(*config.ssid()); !added) return added;
                interfaces_[i].configs.put(config);
            }
        }
        return {};
    }

    Checked checkStations() {
        const Place lists(kStations);
        for (const SimulatedInterface& interface : interfaces_) {
            Distinct<ByteBuffer> addresses(lists.at(interface.name()), "MAC");
            for (const HalvaneClient& station : interface.stations) {
                const bool isWhole = station.mac().size() == MacAddress::kSize;
                if (!isWhole) return addresses.refuse("does not have 6 bytes");
                if (auto added = addresses.add(station.mac()); !added) return added;
            }
        }
        return {};
    }

    Checked checkSizeOfStations() {
        PropertyListArray stations;
        for (const SimulatedInterface& interface : interfaces_) {
            for (PropertyListValue& station : skeleton::skeletonsOf(interface.stations)) {
                stations.push_back(std::move(station));
            }
        }
        const auto text = xmlPropertyList(std::move(stations));
        if (text && text->size() > kLargestStationsInRange) {
            return refuse(Place(kStations), "they are longer than " +
                                                std::to_string(kLargestStationsInRange) +
                                                " bytes as one property list");
        }
        return {};
    }

    const PropertyListDictionary& file_;
    std::vector<HalvaneDevice> devices_;
    std::vector<SimulatedInterface> interfaces_;
    std::vector<std::vector<HalvaneBSSConfig>> configs_;  // by interface
    std::map<std::string, std::size_t> indexOfName_;
};

}  // namespace

Read<World> worldFromPropertyList(const PropertyListValue& value) {
    auto file = dictionaryIn(value, Place("the whole"));
    if (!file) return reasonOf(std::move(file));
    return Reader(**file).read();
}

Read<World> worldFromText(std::string_view xml) {
    const auto value = propertyListFromXml(xml);
    if (!value) {
        const std::string byte = "byte " + std::to_string(value.error().offset);
        return refuse(Place(byte), "is not a property list: " + std::string(value.error().reason));
    }
    // XML 1.1 has characters that no reply could hold.
    if (!xmlPropertyList(*value)) {
        return refuse(Place("the whole"), "holds characters that XML 1.0 does not have");
    }
    return worldFromPropertyList(*value);
}

PropertyListDictionary propertyListOf(const World& world) {
    PropertyListArray interfaces, disabled;
    PropertyListDictionary configs, stations;
    for (const SimulatedInterface& interface : world.interfaces()) {
        interfaces.emplace_back(interface.record.skeletonRepresentation());
        if (!interface.isEnabled) disabled.emplace_back(interface.name());
        configs.set(interface.name(), skeleton::skeletonsOf(interface.configs));
        stations.set(interface.name(), skeleton::skeletonsOf(interface.stations));
    }
    PropertyListDictionary file;
    file.set(kDevices, skeleton::skeletonsOf(world.devices()));
    file.set(kInterfaces, std::move(interfaces));
    file.set(kDisabled, std::move(disabled));
    file.set(kConfigs, std::move(configs));
    file.set(kStations, std::move(stations));
    return file;
}

}  // namespace halvane::sim
