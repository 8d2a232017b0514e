#include "halvane/platform/plist/preferences.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <memory>
#include <new>
#include <pwd.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "halvane/base/ascii_internal.h"
#include "halvane/base/property_list_value.h"
#include "halvane/platform/os/file_internal.h"
#include "halvane/platform/os/process_internal.h"
#include "halvane/platform/plist/xml_property_list.h"
#include "halvane/platform/plist/xml_property_list_reader.h"

namespace halvane {

namespace {

// Returns the home folder from the user database; empty if there is none.
std::string homeFolderOfUser() {
    std::vector<char> texts(1024);
    passwd entry{};
    passwd* found = nullptr;
    for (;;) {
        const int error = ::getpwuid_r(::geteuid(), &entry, texts.data(), texts.size(), &found);
        if (error == ERANGE) {
            texts.resize(2 * texts.size());
        } else if (error != EINTR) {
            break;
        }
    }
    return found != nullptr && found->pw_dir != nullptr ? found->pw_dir : "";
}

// Returns an empty path if there is none.
std::string preferencesFolder() {
    const auto absolutePathIn = [](const char* variable) -> std::string {
        const char* const value = ::secure_getenv(variable);
        return value != nullptr && *value == '/' ? value : "";
    };
    if (const auto folder = absolutePathIn("XDG_CONFIG_HOME"); !folder.empty()) {
        return folder + "/halvane";
    }
    auto home = absolutePathIn("HOME");
    if (home.empty()) home = homeFolderOfUser();
    return home.starts_with('/') ? home + "/.config/halvane" : "";
}

// Turns `application` into a file name without suffix that cannot lead to another folder.
std::string fileNameOf(std::string_view application) {
    std::string name;
    for (const char c : application) {
        const bool isPlain = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
                             (c >= '0' && c <= '9') || c == '_' || c == '-' ||
                             (c == '.' && !name.empty());
        if (isPlain) {
            name += c;
            continue;
        }
        name += '%';
        appendHexOctet(name, static_cast<unsigned char>(c), kUpperHexDigits);
    }
    return name;
}

// Returns the path of an application's file; empty if there is none.
std::string preferencesPath(std::string_view application) {
    const auto folder = preferencesFolder();
    const auto name = fileNameOf(application.empty() ? programName() : application);
    constexpr std::string_view kSuffix = ".plist";
    const std::size_t longest = name.size() + kSuffix.size() + kLongestFileSuffix.size();
    if (folder.empty() || name.empty() || longest > NAME_MAX) return {};
    return (folder + "/").append(name).append(kSuffix);
}

// Returns the target of a link at `path`, otherwise `path`: a link is followed, not replaced.
std::string linkTarget(const std::string& path) {
    struct Free {
        void operator()(char* text) const { std::free(text); }
    };
    const std::unique_ptr<char, Free> target(::realpath(path.c_str(), nullptr));
    return target ? std::string(target.get()) : path;
}

// The contents of a preferences file.
struct Contents {
    HalvaneStatus status = kStatusOK;
    int error = 0;  // the errno of a failure, if one tells the reason
    bool isDamaged = false;
    PropertyListDictionary values;
};

Contents load(const std::string& path) {
    Contents contents;
    const FileText file = readFile(path, kPreferencesFileLimit);
    contents.status = file.status;
    contents.error = file.error;
    if (file.status != kStatusOK || !file.isThere) return contents;
    contents.isDamaged = true;
    if (file.isTooLong) return contents;
    auto root = propertyListFromXml(file.text);
    auto* const values = root ? root->as<PropertyListDictionary>() : nullptr;
    if (values == nullptr) return contents;
    contents.isDamaged = false;
    contents.values = std::move(*values);
    return contents;
}

// Like load(), but sets a damaged file aside, which then counts as missing.
// REQUIRES: the file's lock is held.
Contents loadAndMend(const std::string& path, PreferenceResult& result) {
    Contents contents = load(path);
    if (!contents.isDamaged) return contents;
    contents.isDamaged = false;
    auto aside = setFileAside(path);
    if (aside) {
        result.setAside = *std::move(aside);
    } else {
        contents.status = aside.error();
    }
    return contents;
}

void noteFailure(const std::string& path, int error, PreferenceResult& result) {
    if (result.status == kStatusOK || error == 0) return;
    result.path = path;
    result.error = error;
}

std::string lockPath(const std::string& path) {
    return path + ".lock";
}

void read(const std::string& path, std::string_view key, PreferenceResult& result) {
    Contents contents = load(path);
    if (contents.isDamaged) {
        // Another process may have repaired it meanwhile.
        const FileLock lock(lockPath(path));
        contents.status = lock.status();
        contents.error = lock.error();
        if (lock.status() == kStatusOK) contents = loadAndMend(path, result);
    }
    result.status = contents.status;
    noteFailure(path, contents.error, result);
    const auto* value = contents.values.find(key);
    const auto* text = value != nullptr ? value->as<std::string>() : nullptr;
    if (text != nullptr) result.value = *text;
}

// Returns whether the value of `key` has changed.
bool change(PropertyListDictionary& values, std::string_view key,
            std::optional<std::string_view> value) {
    if (!value) return values.erase(key);
    const auto* old = values.find(key);
    if (old != nullptr && *old == PropertyListValue(*value)) return false;
    values.set(std::string(key), *value);
    return true;
}

bool isThere(const std::string& path) {
    return ::access(path.c_str(), F_OK) == 0 || (errno != ENOENT && errno != ENOTDIR);
}

bool canBeWritten(std::string_view key, std::string_view value) {
    PropertyListDictionary entry;
    entry.set(std::string(key), value);
    return xmlPropertyList(std::move(entry)).has_value();
}

void write(const std::string& path, std::string_view key, std::optional<std::string_view> value,
           PreferenceResult& result) {
    const FileLock lock(lockPath(path));
    result.status = lock.status();
    noteFailure(path, lock.error(), result);
    if (result.status != kStatusOK) return;
    Contents contents = loadAndMend(path, result);
    result.status = contents.status;
    noteFailure(path, contents.error, result);
    if (result.status != kStatusOK || !change(contents.values, key, value)) return;

    const auto xml = xmlPropertyList(std::move(contents.values));
    if (!xml) {
        result.status = kStatusConversionFailed;
    } else if (xml->size() > kPreferencesFileLimit) {
        result.status = kStatusNoRoom;  // a longer file would count as damaged
    } else {
        result.status = replaceFile(path, *xml);
    }
}

}  // namespace

PreferenceResult readPreference(std::string_view application, std::string_view key) {
    PreferenceResult result;
    try {
        const auto path = preferencesPath(application);
        if (path.empty()) {
            result.status = kStatusBadPath;
        } else {
            read(linkTarget(path), key, result);
        }
    } catch (const std::bad_alloc&) {
        result.status = kStatusNoMemory;
    }
    return result;
}

PreferenceResult writePreference(std::string_view application, std::string_view key,
                                 std::optional<std::string_view> value) {
    PreferenceResult result;
    try {
        const auto path = preferencesPath(application);
        if (path.empty()) {
            result.status = kStatusBadPath;
        } else if (value && !canBeWritten(key, *value)) {
            result.status = kStatusConversionFailed;
        } else if (value || isThere(path)) {
            result.status = makeFolders(folderOf(path), kPrivateFolderMode);
            if (result.status == kStatusOK) write(linkTarget(path), key, value, result);
        }
    } catch (const std::bad_alloc&) {
        result.status = kStatusNoMemory;
    }
    return result;
}

}  // namespace halvane
