// A preferences file of any bytes: it is read, or set aside with its bytes. Values that are written
// afterwards are in the file.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

#include "halvane/base/property_list_value.h"
#include "halvane/base/status.h"
#include "halvane/platform/plist/preferences.h"
#include "halvane/platform/plist/xml_property_list_reader.h"

#include "fuzz/byte_source.h"
#include "fuzz/require.h"
#include "fuzz/surroundings.h"

namespace {

std::string readAll(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void check(const std::string& content, const std::string& key, const std::string& value) {
    const auto list = halvane::propertyListFromXml(content);
    const auto* entries = list ? list->as<halvane::PropertyListDictionary>() : nullptr;
    const auto* there = entries != nullptr ? entries->find(key) : nullptr;
    const auto* expected = there != nullptr ? there->as<std::string>() : nullptr;
    const auto read = halvane::readPreference("fuzz", key);
    REQUIRE(read.status == kStatusOK);
    REQUIRE(read.value.has_value() == (expected != nullptr));
    REQUIRE(expected == nullptr || *read.value == *expected);
    REQUIRE(read.setAside.empty() == (entries != nullptr));
    if (!read.setAside.empty()) REQUIRE(readAll(read.setAside) == content);

    const auto written = halvane::writePreference("fuzz", key, value);
    REQUIRE(written.status == kStatusOK || written.status == kStatusConversionFailed);
    if (written.status != kStatusOK) return;
    REQUIRE(halvane::readPreference("fuzz", key).value == value);
    REQUIRE(halvane::writePreference("fuzz", key, std::nullopt).status == kStatusOK);
    REQUIRE(!halvane::readPreference("fuzz", key).value);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    halvane::fuzzing::ByteSource source(data, size);
    const std::string key = source.text(20);
    const std::string value = source.text(20);
    const std::string content = source.restText();
    const std::string folder = halvane::fuzzing::privateFolder() + "/halvane";
    std::filesystem::create_directory(folder);
    std::ofstream(folder + "/fuzz.plist", std::ios::binary) << content;
    check(content, key, value);
    std::filesystem::remove_all(folder);
    return 0;
}
