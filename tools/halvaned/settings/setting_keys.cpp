#include "tools/halvaned/settings/setting_keys.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <netinet/in.h>
#include <optional>
#include <sys/socket.h>
#include <system_error>
#include <type_traits>
#include <utility>
#include <vector>

#include "tools/halvane/input/interface_facts.h"
#include "tools/halvaned/driver.h"

namespace halvane::hosting {

namespace {

// A folder's name leaves room for those of control sockets, which have at most 107 octets.
constexpr std::size_t kLongestRuntimeFolder = 64;

using Text = std::string Settings::*;
using OptionalText = std::optional<std::string> Settings::*;
using Count = std::uint32_t Settings::*;

bool isPath(std::string_view value) {
    return value.starts_with('/') && value.size() > 1;
}

template <Text Member>
bool readPath(std::string_view value, Settings& settings) {
    if (!isPath(value)) return false;
    settings.*Member = value;
    return true;
}

bool readRuntimeFolder(std::string_view value, Settings& settings) {
    return value.size() <= kLongestRuntimeFolder &&
           readPath<&Settings::runtimeFolder>(value, settings);
}

template <OptionalText Member>
bool readOptionalPath(std::string_view value, Settings& settings) {
    if (!isPath(value)) return false;
    settings.*Member = value;
    return true;
}

template <Count Member, std::uint32_t Most>
bool readCount(std::string_view value, Settings& settings) {
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
    const bool isNumber = error == std::errc() && end == value.data() + value.size();
    if (!isNumber || number < 1 || number > Most) return false;
    settings.*Member = number;
    return true;
}

bool readDriver(std::string_view value, Settings& settings) {
    const auto driver = driverOf(value);
    if (driver) settings.driver = *driver;
    return driver.has_value();
}

// Names between blanks.
bool readInterfaces(std::string_view value, Settings& settings) {
    constexpr std::string_view kBlanks = " \t";
    std::vector<std::string> names;
    for (std::size_t from = value.find_first_not_of(kBlanks); from != std::string_view::npos;) {
        const std::size_t end = std::min(value.find_first_of(kBlanks, from), value.size());
        names.emplace_back(value.substr(from, end - from));
        const bool isAnother = std::ranges::find(names, names.back()) == names.end() - 1;
        if (!isAnother || !tool::isInterfaceName(names.back())) return false;
        from = value.find_first_not_of(kBlanks, end);
    }
    settings.interfaces = std::move(names);
    return true;
}

bool readCountry(std::string_view value, Settings& settings) {
    const auto isLetter = [](char c) { return c >= 'A' && c <= 'Z'; };
    if (value.size() != 2 || !std::ranges::all_of(value, isLetter)) return false;
    settings.country = value;
    return true;
}

bool readServer(std::string_view value, Settings& settings) {
    const std::string text(value);
    std::array<std::uint8_t, sizeof(in6_addr)> address{};
    const bool isAddress = ::inet_pton(AF_INET, text.c_str(), address.data()) == 1 ||
                           ::inet_pton(AF_INET6, text.c_str(), address.data()) == 1;
    if (isAddress) settings.radiusServer = text;
    return isAddress;
}

std::string writeDriver(const Settings& settings) {
    return std::string(nameOf(settings.driver));
}

std::string writeInterfaces(const Settings& settings) {
    std::string text;
    for (const std::string& name : settings.interfaces) {
        if (!text.empty()) text += ' ';
        text += name;
    }
    return text;
}

template <auto Member>
std::string write(const Settings& settings) {
    const auto& value = settings.*Member;
    using Value = std::remove_cvref_t<decltype(value)>;
    if constexpr (std::is_same_v<Value, std::string>) {
        return value;
    } else if constexpr (std::is_same_v<Value, std::uint32_t>) {
        return std::to_string(value);
    } else {
        return value.value_or("");
    }
}

constexpr std::string_view kPath = "a path that begins with '/'";
constexpr SettingKey kKeys[] = {
    {"driver", "nl80211 or wired", true, readDriver, writeDriver},
    {"interfaces", "names of interfaces with blanks between, each once", true, readInterfaces,
     writeInterfaces},
    {"hostapd", kPath, true, readPath<&Settings::hostapd>, write<&Settings::hostapd>},
    {"runtime-folder", "a path of at most 64 bytes that begins with '/'", true, readRuntimeFolder,
     write<&Settings::runtimeFolder>},
    {"state-file", kPath, true, readPath<&Settings::stateFile>, write<&Settings::stateFile>},
    {"country", "two capital letters, such as DE", false, readCountry, write<&Settings::country>},
    {"stations", "a number from 1 to 2007", false, readCount<&Settings::stations, 2007>,
     write<&Settings::stations>},
    {"configurations", "a number from 1 to 1024", false, readCount<&Settings::configurations, 1024>,
     write<&Settings::configurations>},
    {"subscribers", "a number from 1 to 65535", true, readCount<&Settings::subscribers, 65535>,
     write<&Settings::subscribers>},
    {"radius-server", "an IP address", false, readServer, write<&Settings::radiusServer>},
    {"radius-port", "a number from 1 to 65535", false, readCount<&Settings::radiusPort, 65535>,
     write<&Settings::radiusPort>},
    {"radius-secret-file", kPath, false, readOptionalPath<&Settings::radiusSecretFile>,
     write<&Settings::radiusSecretFile>},
    {"eap-user-file", kPath, false, readOptionalPath<&Settings::eapUserFile>,
     write<&Settings::eapUserFile>},
};

}  // namespace

std::span<const SettingKey> settingKeys() {
    return kKeys;
}

}  // namespace halvane::hosting
