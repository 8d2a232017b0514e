#include "halvane/utils/log/level.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <optional>
#include <string_view>
#include <system_error>

#include "halvane/utils/printf.h"

namespace {

struct LevelName {
    std::int32_t level;
    const char* name;
};

// Ascending.
constexpr LevelName kLogLevelToStringTable[] = {
    {kLogLevelAll, "all"},       {kLogLevelMin, "min"},
    {kLogLevelChatty, "chatty"}, {kLogLevelVerbose, "verbose"},
    {kLogLevelTrace, "trace"},   {kLogLevelInfo, "info"},
    {kLogLevelNotice, "notice"}, {kLogLevelWarning, "warning"},
    {kLogLevelAssert, "assert"}, {kLogLevelRequire, "require"},
    {kLogLevelError, "error"},   {kLogLevelCritical, "critical"},
    {kLogLevelAlert, "alert"},   {kLogLevelEmergency, "emergency"},
    {kLogLevelTragic, "tragic"}, {kLogLevelMax, "max"},
    {kLogLevelOff, "off"},
};

// Returns the first of the nearest rows. The rows ascend, so the distances fall up to the nearest
// row and then rise.
const LevelName& nearestLevel(std::int32_t level) {
    const LevelName* nearest = std::begin(kLogLevelToStringTable);
    for (const LevelName& row : kLogLevelToStringTable) {
        if (std::abs(level - row.level) > std::abs(level - nearest->level)) break;
        if (std::abs(level - row.level) < std::abs(level - nearest->level)) nearest = &row;
    }
    return *nearest;
}

constexpr std::int32_t kInvalid = -1;

bool isLetter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

// Reads all of `text` as a decimal number; 0 if it is empty.
std::optional<std::int64_t> numberOf(std::string_view text) {
    std::uint32_t number = 0;
    if (text.empty()) return 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end) return std::nullopt;
    return number;
}

// Reads "", "+", "+5" or "-5".
std::optional<std::int64_t> offsetOf(std::string_view text) {
    if (text.empty()) return 0;
    const char sign = text.front();
    if (sign != '+' && sign != '-') return std::nullopt;
    const auto distance = numberOf(text.substr(1));
    return distance && sign == '-' ? -*distance : distance;
}

std::optional<std::int64_t> levelOf(std::string_view text) {
    const auto lettersEnd = std::ranges::find_if_not(text, isLetter);
    const std::string_view letters(text.begin(), lettersEnd);
    if (letters.empty()) return numberOf(text);
    const auto row =
        std::ranges::find_if(kLogLevelToStringTable, [letters](const LevelName& known) {
            return std::string_view(known.name).starts_with(letters);
        });
    const auto offset = offsetOf(text.substr(letters.size()));
    if (row == std::end(kLogLevelToStringTable) || !offset) return std::nullopt;
    return row->level + *offset;
}

}  // namespace

extern "C" char* __LogCategory_LevelToString(std::uint32_t level, char* buffer) {
    const auto wanted = static_cast<std::int32_t>(level & kLogLevelMask);
    const LevelName& nearest = nearestLevel(wanted);
    const std::int32_t distance = wanted - nearest.level;
    if (distance == 0) {
        const std::string_view name = nearest.name;
        buffer[name.copy(buffer, name.size())] = '\0';
        return buffer;
    }
    SNPrintF(buffer, kLogLevelStringSize, distance > 0 ? "%s+%u" : "%s-%u", nearest.name,
             std::abs(distance));
    return buffer;
}

extern "C" std::int32_t __LogCategory_StringToLevel(const char* text) {
    const auto level = levelOf(text);
    if (!level || *level < 0 || *level > std::numeric_limits<std::int32_t>::max()) return kInvalid;
    return static_cast<std::int32_t>(*level);
}
