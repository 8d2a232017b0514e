#include "tools/halvaned/settings/settings_file.h"

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <map>
#include <optional>
#include <span>
#include <system_error>
#include <utility>
#include <vector>

#include "halvane/base/similar_word_internal.h"
#include "halvane/base/status.h"
#include "halvane/platform/os/file_internal.h"

#include "tools/halvaned/driver.h"
#include "tools/halvaned/settings/setting_keys.h"

namespace halvane::hosting {

namespace {

using Checked = Result<void, std::string>;

constexpr std::string_view kBlanks = " \t\r";

std::string_view trimmed(std::string_view text) {
    const std::size_t from = std::min(text.find_first_not_of(kBlanks), text.size());
    text.remove_prefix(from);
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

bool isControl(char c) {
    const auto octet = static_cast<unsigned char>(c);
    return (octet < ' ' && c != '\t') || octet == 0x7F;
}

std::string unknownKey(std::string_view name) {
    std::vector<std::string_view> names;
    for (const SettingKey& key : settingKeys()) names.push_back(key.name);
    std::string text = "there is no key '" + std::string(name) + "'";
    if (const auto similar = similarWord(name, names)) {
        return text + "; did you mean '" + std::string(*similar) + "'?";
    }
    text += "; the keys are";
    for (const std::string_view known : names) {
        text.append(known == names.front() ? " " : ", ").append(known);
    }
    return text;
}

// Reads the lines one by one.
class Reader {
  public:
    explicit Reader(const std::string& file) : file_(file) {}

    Result<Settings, std::string> read(std::string_view text) {
        while (!text.empty()) {
            ++line_;
            const std::size_t end = std::min(text.find('\n'), text.size());
            if (auto checked = readLine(trimmed(text.substr(0, end))); !checked) {
                return Unexpected(std::move(checked).error());
            }
            text.remove_prefix(std::min(end + 1, text.size()));
        }
        if (auto problem = contradiction()) return Unexpected(file_ + ": " + *problem);
        return settings_;
    }

  private:
    Checked refuse(const std::string& problem) const {
        return Unexpected(file_ + ":" + std::to_string(line_) + ": " + problem);
    }

    Checked readLine(std::string_view line) {
        if (line.empty() || line.front() == '#') return {};
        if (std::ranges::any_of(line, isControl)) return refuse("it has a control character");
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos) {
            return refuse("it has no '=': a line is 'key = value', or a comment after '#'");
        }
        return readValue(trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
    }

    Checked readValue(std::string_view name, std::string_view value) {
        const auto keys = settingKeys();
        const auto key = std::ranges::find(keys, name, &SettingKey::name);
        if (key == keys.end()) return refuse(unknownKey(name));
        const auto [place, isFirst] = lines_.try_emplace(key->name, line_);
        if (!isFirst) {
            return refuse(std::string(name) + " is in line " + std::to_string(place->second) +
                          " already");
        }
        if (key->read(value, settings_)) return {};
        return refuse(std::string(name) + " has to be " + std::string(key->allowed));
    }

    // Values that are allowed, but not together.
    std::optional<std::string> contradiction() const {
        if (settings_.driver == Driver::Wired && settings_.interfaces.empty()) {
            return "the driver wired needs interfaces";
        }
        if (settings_.radiusServer && !settings_.radiusSecretFile) {
            return "radius-server needs radius-secret-file";
        }
        if (settings_.radiusServer && settings_.eapUserFile) {
            return "radius-server and eap-user-file exclude each other: one server authenticates";
        }
        return std::nullopt;
    }

    const std::string& file_;
    std::size_t line_ = 0;
    Settings settings_{};
    std::map<std::string_view, std::size_t> lines_{};  // of the keys
};

std::string fault(const std::string& path, int error) {
    return path + ": " + std::generic_category().message(error);
}

}  // namespace

Result<Settings, std::string> settingsFromText(std::string_view text, const std::string& file) {
    return Reader(file).read(text);
}

Result<Settings, std::string> readSettings(const std::string& path, IfMissing ifMissing) {
    const FileText file = readFile(path, kLargestSettingsFile);
    if (file.status != kStatusOK) {
        if (file.error != 0) return Unexpected(fault(path, file.error));
        return Unexpected(path + ": " + HalvaneStatusText(file.status));
    }
    if (!file.isThere) {
        if (ifMissing == IfMissing::Fail) return Unexpected(fault(path, ENOENT));
        return Settings();
    }
    if (file.isTooLong) {
        return Unexpected(path + ": it has more than " + std::to_string(kLargestSettingsFile) +
                          " bytes");
    }
    return settingsFromText(file.text, path);
}

}  // namespace halvane::hosting
