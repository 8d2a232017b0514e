// Files of preferences, which any program of the user may have written.
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "halvane/base/status.h"
#include "halvane/platform/plist/preferences.h"

#include "bench/foreign_bytes.h"
#include "bench/growth.h"

namespace bench {

namespace {

constexpr const char* kApplication = "bench";

// A folder of preferences with the file `text`. It is removed with its object.
class PreferencesFolder {
  public:
    explicit PreferencesFolder(const std::string& text) {
        path_ = (std::filesystem::temp_directory_path() / "halvane-bench-XXXXXX").string();
        if (::mkdtemp(path_.data()) == nullptr) std::abort();
        std::filesystem::create_directory(path_ + "/halvane");
        std::ofstream file(path_ + "/halvane/" + kApplication + ".plist", std::ios::binary);
        if (!(file << text).flush()) std::abort();
    }
    PreferencesFolder(PreferencesFolder&& other) noexcept : path_(std::exchange(other.path_, {})) {}
    PreferencesFolder(const PreferencesFolder&) = delete;
    ~PreferencesFolder() {
        std::error_code ignored;
        if (!path_.empty()) std::filesystem::remove_all(path_, ignored);
    }

    // Valid for the duration of a call.
    template <typename Call>
    bool during(Call call) const {
        const char* const before = std::getenv("XDG_CONFIG_HOME");
        const std::string kept = before != nullptr ? before : "";
        ::setenv("XDG_CONFIG_HOME", path_.c_str(), 1);
        const bool result = call();
        ::setenv("XDG_CONFIG_HOME", kept.c_str(), 1);
        return result;
    }

  private:
    std::string path_;
};

std::string manyKeys(std::size_t count) {
    std::string xml = "<plist><dict><key>key</key><string>value</string>";
    for (std::size_t i = 0; i < count; ++i) {
        xml += "<key>" + std::to_string(i) + "</key><string>value</string>";
    }
    return xml + "</dict></plist>";
}

std::string longValue(std::size_t size) {
    return enclosed("<plist><dict><key>key</key><string>", "&lt;", size,
                    "</string></dict></plist>");
}

void addFile(const char* row, std::string (*make)(std::size_t), bool (*use)()) {
    addGrowth(
        row, 65536, [make](std::size_t n) { return PreferencesFolder(make(n)); },
        [use](const PreferencesFolder& folder) { return folder.during(use); });
}

bool readKey() {
    return halvane::readPreference(kApplication, "key").value.has_value();
}

// A different value each time, so that the file is written.
bool writeKey() {
    static std::size_t count = 0;
    const std::string value = std::to_string(++count);
    return halvane::writePreference(kApplication, "key", std::string_view(value)).status ==
           kStatusOK;
}

}  // namespace

void addPreferenceRows() {
    addFile("preferences: a value among many", manyKeys, readKey);
    addFile("preferences: a long value", longValue, readKey);
    addFile("preferences: written among many", manyKeys, writeKey);
}

}  // namespace bench
