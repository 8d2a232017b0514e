#include "tools/halvaned-sim/world_file.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/skeleton_internal.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/client.h"
#include "halvane/model/device.h"
#include "halvane/model/interface.h"
#include "halvane/platform/xml_property_list.h"
#include "halvane/platform/xml_property_list_reader.h"

#include "tools/halvaned-sim/record_check.h"

namespace halvane::sim {

namespace {

constexpr const char* kDevices = "Devices";
constexpr const char* kInterfaces = "Interfaces";
constexpr const char* kDisabled = "Disabled";
constexpr const char* kConfigs = "Configs";
constexpr const char* kStations = "Stations";
constexpr const char* kKeys[] = {kDevices, kInterfaces, kDisabled, kConfigs, kStations};

constexpr std::size_t kAddressLength = 6;

template <typename Kind>
const Kind& held(const PropertyListValue& value, const std::string& place, const char* kind) {
    const Kind* const found = value.as<Kind>();
    if (found == nullptr) refuse(place, std::string("is no ") + kind);
    return *found;
}

const PropertyListArray& arrayIn(const PropertyListValue& value, const std::string& place) {
    return held<PropertyListArray>(value, place, "array");
}

const PropertyListDictionary& dictionaryIn(const PropertyListValue& value,
                                           const std::string& place) {
    return held<PropertyListDictionary>(value, place, "dictionary");
}

// What the check takes is what a record can be built from, so that there is one for each element.
template <typename Record>
std::vector<Record> recordsIn(const PropertyListValue& value, const std::string& place,
                              RecordCheck check) {
    const PropertyListArray& array = arrayIn(value, place);
    for (std::size_t i = 0; i < array.size(); ++i) check(array[i], elementOf(place, i));
    return skeleton::recordsOf<Record>(array);
}

// What a list has seen of a key by which its records are told apart.
class Distinct {
  public:
    Distinct(std::string place, const char* key) : place_(std::move(place)), key_(key) {}

    void add(const std::string& value) {
        if (!values_.insert(value).second) refuse("another has the same");
        ++index_;
    }

    [[noreturn]] void refuse(const std::string& problem) const {
        sim::refuse(elementOf(place_, index_) + ": " + key_, problem);
    }

  private:
    const std::string place_;
    const char* const key_;
    std::size_t index_ = 0;
    std::set<std::string> values_;
};

// Calls `use` with the value of the key where there is one.
template <typename Use>
void withValueOf(const PropertyListDictionary& file, const char* key, Use use) {
    if (const auto* value = file.find(key)) use(*value);
}

std::string listPlace(const char* key, const std::string& interface) {
    return std::string(key) + ": " + interface;
}

// Reads a world piece by piece; everything else refers to the interfaces, which come first.
class Reader {
  public:
    explicit Reader(const PropertyListDictionary& file) : file_(file) {}

    World read() {
        refuseUnknownKeys();
        readInterfaces();
        withValueOf(file_, kDevices, [&](const PropertyListValue& value) {
            devices_ = recordsIn<HalvaneDevice>(value, kDevices, checkDevice);
        });
        withValueOf(file_, kDisabled, [&](const PropertyListValue& value) { disable(value); });
        readLists(kConfigs, &SimulatedInterface::configs, checkConfig);
        readLists(kStations, &SimulatedInterface::stations, checkClient);
        checkConfigs();
        checkStations();
        checkSizeOfStations();
        return World(std::move(devices_), std::move(interfaces_));
    }

  private:
    void refuseUnknownKeys() const {
        for (const auto& [key, value] : file_) {
            if (std::find(std::begin(kKeys), std::end(kKeys), key) == std::end(kKeys)) {
                refuse(key, "there is no such key");
            }
        }
    }

    void readInterfaces() {
        const auto* value = file_.find(kInterfaces);
        if (value == nullptr) refuse(kInterfaces, "is missing");
        Distinct names(kInterfaces, "InterfaceName");
        for (auto& record : recordsIn<HalvaneInterface>(*value, kInterfaces, checkInterface)) {
            names.add(*record.ifName());
            indexOfName_.emplace(*record.ifName(), interfaces_.size());
            interfaces_.push_back({.record = std::move(record)});
        }
    }

    SimulatedInterface& named(const std::string& name, const std::string& place) {
        const auto found = indexOfName_.find(name);
        if (found != indexOfName_.end()) return interfaces_[found->second];
        refuse(place, "there is no interface " + name);
    }

    void disable(const PropertyListValue& value) {
        const PropertyListArray& names = arrayIn(value, kDisabled);
        for (std::size_t i = 0; i < names.size(); ++i) {
            const std::string place = elementOf(kDisabled, i);
            named(held<std::string>(names[i], place, "string"), place).isEnabled = false;
        }
    }

    template <typename Record>
    void readLists(const char* key, std::vector<Record> SimulatedInterface::*list,
                   RecordCheck check) {
        withValueOf(file_, key, [&](const PropertyListValue& value) {
            for (const auto& [name, records] : dictionaryIn(value, key)) {
                named(name, key).*list = recordsIn<Record>(records, listPlace(key, name), check);
            }
        });
    }

    void checkConfigs() const {
        for (const SimulatedInterface& interface : interfaces_) {
            Distinct names(listPlace(kConfigs, interface.name()), "SSID");
            for (const HalvaneBSSConfig& config : interface.configs) {
                if (!isUsable(config)) names.refuse("has not 1 to 32 bytes");
                names.add(config.ssid()->hex());
            }
        }
    }

    void checkStations() const {
        for (const SimulatedInterface& interface : interfaces_) {
            Distinct addresses(listPlace(kStations, interface.name()), "MAC");
            for (const HalvaneClient& station : interface.stations) {
                if (station.mac().size() != kAddressLength) addresses.refuse("has not 6 bytes");
                addresses.add(station.mac().hex());
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
            refuse(kStations, "they are longer than " + std::to_string(kLargestStationsInRange) +
                                  " bytes as one property list");
        }
    }

    const PropertyListDictionary& file_;
    std::vector<HalvaneDevice> devices_;
    std::vector<SimulatedInterface> interfaces_;
    std::map<std::string, std::size_t> indexOfName_;
};

}  // namespace

World worldFromPropertyList(const PropertyListValue& value) {
    return Reader(dictionaryIn(value, "the whole")).read();
}

World worldFromText(std::string_view xml) {
    std::optional<XmlPropertyListError> error;
    const auto value = propertyListFromXml(xml, &error);
    if (!value) {
        refuse("byte " + std::to_string(error->offset),
               "is no property list: " + std::string(error->reason));
    }
    // XML 1.1 has characters that no reply could hold.
    if (!xmlPropertyList(*value))
        refuse("the whole", "holds characters that XML 1.0 does not have");
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
