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
#include "halvane/base/skeleton_internal.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/client.h"
#include "halvane/model/device.h"
#include "halvane/model/interface.h"
#include "halvane/platform/plist/xml_property_list.h"
#include "halvane/platform/plist/xml_property_list_reader.h"

#include "tools/halvaned-sim/record_check.h"

namespace halvane::sim {

namespace {

constexpr const char* kDevices = "Devices";
constexpr const char* kInterfaces = "Interfaces";
constexpr const char* kDisabled = "Disabled";
constexpr const char* kConfigs = "Configs";
constexpr const char* kStations = "Stations";
constexpr const char* kKeys[] = {kDevices, kInterfaces, kDisabled, kConfigs, kStations};

template <typename Kind>
const Kind& held(const PropertyListValue& value, const Place& place, const char* kind) {
    const Kind* const found = value.as<Kind>();
    if (found == nullptr) refuse(place, std::string("is no ") + kind);
    return *found;
}

const PropertyListArray& arrayIn(const PropertyListValue& value, const Place& place) {
    return held<PropertyListArray>(value, place, "array");
}

const PropertyListDictionary& dictionaryIn(const PropertyListValue& value, const Place& place) {
    return held<PropertyListDictionary>(value, place, "dictionary");
}

// A record can be built from every dictionary that the check accepts, so there is one for each
// element.
template <typename Record>
std::vector<Record> recordsIn(const PropertyListValue& value, const Place& place,
                              RecordCheck check) {
    const PropertyListArray& array = arrayIn(value, place);
    for (std::size_t i = 0; i < array.size(); ++i) check(array[i], place.element(i));
    return skeleton::recordsOf<Record>(array);
}

// The values that a list has seen of a key that identifies its records.
template <typename Value>
class Distinct {
  public:
    Distinct(const Place& place, const char* key) : place_(place), key_(key) {}

    void add(const Value& value) {
        if (!values_.insert(value).second) refuse("another has the same");
        ++index_;
    }

    [[noreturn]] void refuse(const std::string& problem) const {
        const Place element = place_.element(index_);
        sim::refuse(element.at(key_), problem);
    }

  private:
    const Place place_;
    const char* const key_;
    std::size_t index_ = 0;
    std::set<Value> values_;
};

// Calls `use` with the value of the key if there is one.
template <typename Use>
void withValueOf(const PropertyListDictionary& file, const char* key, Use use) {
    if (const auto* value = file.find(key)) use(*value);
}

// Reads a world piece by piece; everything else refers to the interfaces, which come first.
class Reader {
  public:
    explicit Reader(const PropertyListDictionary& file) : file_(file) {}

    World read() {
        refuseUnknownKeys();
        readInterfaces();
        withValueOf(file_, kDevices, [&](const PropertyListValue& value) {
            devices_ = recordsIn<HalvaneDevice>(value, Place(kDevices), checkDevice);
        });
        withValueOf(file_, kDisabled, [&](const PropertyListValue& value) { disable(value); });
        readLists<HalvaneBSSConfig>(kConfigs, checkConfig,
                                    [&](std::size_t index) { return &configs_[index]; });
        readLists<HalvaneClient>(kStations, checkClient,
                                 [&](std::size_t index) { return &interfaces_[index].stations; });
        takeConfigs();
        checkStations();
        checkSizeOfStations();
        return World(std::move(devices_), std::move(interfaces_));
    }

  private:
    void refuseUnknownKeys() const {
        for (const auto& [key, value] : file_) {
            if (std::find(std::begin(kKeys), std::end(kKeys), key) == std::end(kKeys)) {
                refuse(Place(key), "there is no such key");
            }
        }
    }

    void readInterfaces() {
        const auto* value = file_.find(kInterfaces);
        const Place interfaces(kInterfaces);
        if (value == nullptr) refuse(interfaces, "is missing");
        Distinct<std::string> names(interfaces, "InterfaceName");
        for (auto& record : recordsIn<HalvaneInterface>(*value, interfaces, checkInterface)) {
            names.add(*record.ifName());
            indexOfName_.emplace(*record.ifName(), interfaces_.size());
            interfaces_.push_back({.record = std::move(record)});
        }
        configs_.resize(interfaces_.size());
    }

    std::size_t indexOf(const std::string& name, const Place& place) const {
        const auto found = indexOfName_.find(name);
        if (found != indexOfName_.end()) return found->second;
        refuse(place, "there is no interface " + name);
    }

    void disable(const PropertyListValue& value) {
        const Place disabled(kDisabled);
        const PropertyListArray& names = arrayIn(value, disabled);
        for (std::size_t i = 0; i < names.size(); ++i) {
            const Place place = disabled.element(i);
            interfaces_[indexOf(held<std::string>(names[i], place, "string"), place)].isEnabled =
                false;
        }
    }

    // `listOf` returns the list for the records of an interface.
    template <typename Record, typename ListOf>
    void readLists(const char* key, RecordCheck check, ListOf listOf) {
        const Place lists(key);
        withValueOf(file_, key, [&](const PropertyListValue& value) {
            for (const auto& [name, records] : dictionaryIn(value, lists)) {
                const std::size_t index = indexOf(name, lists);
                *listOf(index) = recordsIn<Record>(records, lists.at(name), check);
            }
        });
    }

    void takeConfigs() {
        const Place lists(kConfigs);
        for (std::size_t i = 0; i < interfaces_.size(); ++i) {
            Distinct<ByteBuffer> names(lists.at(interfaces_[i].name()), "SSID");
            for (const HalvaneBSSConfig& config : configs_[i]) {
                if (!isUsable(config)) names.refuse("has not 1 to 32 bytes");
                names.add(*config.ssid());
                interfaces_[i].configs.put(config);
            }
        }
    }

    void checkStations() const {
        const Place lists(kStations);
        for (const SimulatedInterface& interface : interfaces_) {
            Distinct<ByteBuffer> addresses(lists.at(interface.name()), "MAC");
            for (const HalvaneClient& station : interface.stations) {
                if (station.mac().size() != MacAddress::kSize) addresses.refuse("has not 6 bytes");
                addresses.add(station.mac());
            }
        }
    }

    void checkSizeOfStations() const {
        PropertyListArray stations;
        for (const SimulatedInterface& interface : interfaces_) {
            for (PropertyListValue& station : skeleton::skeletonsOf(interface.stations)) {
                stations.push_back(std::move(station));
            }
        }
        const auto text = xmlPropertyList(std::move(stations));
        if (text && text->size() > kLargestStationsInRange) {
            refuse(Place(kStations), "they are longer than " +
                                         std::to_string(kLargestStationsInRange) +
                                         " bytes as one property list");
        }
    }

    const PropertyListDictionary& file_;
    std::vector<HalvaneDevice> devices_;
    std::vector<SimulatedInterface> interfaces_;
    std::vector<std::vector<HalvaneBSSConfig>> configs_;  // by interface
    std::map<std::string, std::size_t> indexOfName_;
};

}  // namespace

World worldFromPropertyList(const PropertyListValue& value) {
    return Reader(dictionaryIn(value, Place("the whole"))).read();
}

World worldFromText(std::string_view xml) {
    const auto value = propertyListFromXml(xml);
    if (!value) {
        const std::string byte = "byte " + std::to_string(value.error().offset);
        refuse(Place(byte), "is no property list: " + std::string(value.error().reason));
    }
    // XML 1.1 has characters that no reply could hold.
    if (!xmlPropertyList(*value))
        refuse(Place("the whole"), "holds characters that XML 1.0 does not have");
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
