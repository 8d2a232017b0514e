// Any control string, and messages under its settings: levels and patterns agree with naive code,
// and a category writes exactly what its level admits. The input may name files, which lie in the
// target's own folder, and functions, which are the target's own.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <initializer_list>
#include <string>
#include <string_view>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/property_list_value.h"
#include "halvane/base/status.h"
#include "halvane/utils/log.h"
#include "halvane/utils/log/pattern_internal.h"
#include "halvane/utils/printf.h"

#include "fuzz/byte_source.h"
#include "fuzz/require.h"
#include "fuzz/surroundings.h"

using namespace halvane;

HALVANE_LOG_CATEGORY(FuzzFirst, kLogLevelInfo, kLogHeaderCategory, nullptr);
HALVANE_LOG_CATEGORY(Fuzz_Second, kLogLevelOff, kLogHeaderTime | kLogHeaderPID, nullptr);

namespace {

std::size_t received = 0;

void receive(const LogMessage* message, const char*, std::size_t length, void*) {
    REQUIRE(message->category != nullptr && length > 0);
    received += length;
}

void replaceAll(std::string& text, std::string_view from, const std::string& to) {
    for (auto place = text.find(from); place != std::string::npos;
         place = text.find(from, place + to.size())) {
        text.replace(place, from.size(), to);
    }
}

// Keeps paths within the folder, and replaces every function by the target's own.
std::string tamed(std::string text) {
    std::erase(text, '/');
    std::erase(text, '\0');
    for (auto place = text.find("func="); place != std::string::npos;
         place = text.find("func=", place + 1)) {
        const auto end = std::min(text.find_first_of(",;", place), text.size());
        text.erase(place + 5, end - place - 5);
    }
    char function[32];
    SNPrintF(function, sizeof(function), "func=%p", reinterpret_cast<const void*>(&receive));
    replaceAll(text, "func=", function);
    const std::string folder = fuzzing::privateFolder() + "/";
    replaceAll(text, "path=", "path=" + folder);
    replaceAll(text, "backup=", "backup=" + folder);
    return text;
}

// Whether the pattern matches from here on. Tries every way.
bool matchesHere(std::string_view pattern, std::string_view name) {
    if (pattern.empty()) return true;
    if (pattern == "$") return name.empty();
    const bool isRepeated = pattern.size() > 1 && pattern[1] == '*';
    const bool takes = !name.empty() && (pattern[0] == '.' || pattern[0] == name[0]);
    if (!isRepeated) return takes && matchesHere(pattern.substr(1), name.substr(1));
    return matchesHere(pattern.substr(2), name) || (takes && matchesHere(pattern, name.substr(1)));
}

bool matches(std::string_view pattern, std::string_view name) {
    if (pattern.starts_with('^')) return matchesHere(pattern.substr(1), name);
    for (std::size_t i = 0; i <= name.size(); ++i) {
        if (matchesHere(pattern, name.substr(i))) return true;
    }
    return false;
}

void checkPattern(std::string_view pattern) {
    if (pattern.size() > 12) return;  // trying every way takes long
    for (const char* name : {"WiFi", "WiFiXPC", "aaab", ""}) {
        REQUIRE(logging::__LogCategory_match(pattern, name) == matches(pattern, name));
    }
}

void checkLevel(fuzzing::ByteSource source) {
    const std::uint32_t level = source.byte();
    char name[kLogLevelStringSize];
    REQUIRE(__LogCategory_StringToLevel(__LogCategory_LevelToString(level, name)) ==
            static_cast<std::int32_t>(level));
    REQUIRE(__LogCategory_StringToLevel(source.restText().c_str()) >= -1);
}

void logSomething() {
    for (LogCategory* category : {&gLogCategory_FuzzFirst, &gLogCategory_Fuzz_Second}) {
        for (const std::uint32_t level :
             {std::uint32_t{kLogLevelChatty}, std::uint32_t{kLogLevelError | kLogFlagFunction},
              std::uint32_t{kLogLevelMax | kLogFlagRaw}}) {
            const std::size_t before = received;
            REQUIRE(LogIsEnabled(category, level) ==
                    (static_cast<std::int32_t>(level & kLogLevelMask) >= category->level));
            const int count =
                LogPrintF(category, "void fuzz::logSomething(int)", level, "%s %d\n", "text", 5);
            REQUIRE(count >= 0);
            const std::size_t written = received - before;
            REQUIRE(written == 0 || written == static_cast<std::size_t>(count));
        }
    }
}

void checkReport() {
    char* report = nullptr;
    REQUIRE(LogUtils_Show(&report) == kStatusOK && report != nullptr);
    std::free(report);
}

void forgetAll(const std::string& control) {
    LogUtils_Finalize();
    if (control.find_first_of("+?") != std::string::npos ||
        control.find("file") != std::string::npos) {
        for (const auto& entry : std::filesystem::directory_iterator(fuzzing::privateFolder())) {
            std::filesystem::remove_all(entry.path());
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzzing::ByteSource source(data, size);
    checkLevel(source);
    checkPattern(source.restText());
    const std::string control = tamed(source.restText());
    {
        const fuzzing::QuietStreams quiet;
        logSomething();
        // Applies line by line, so that settings meet others.
        std::size_t start = 0;
        while (start <= control.size()) {
            const std::size_t end = std::min(control.find('\n', start), control.size());
            const std::string line = control.substr(start, end - start);
            const PropertyListValue value = line;
            if (end % 2 == 0) LogControl(line.c_str());
            if (end % 2 != 0) LogControlCF(&value);
            start = end + 1;
        }
        logSomething();
        checkReport();
        LogUtils_Show(nullptr);
        LogControl(nullptr);
        forgetAll(control);
    }
    return 0;
}
