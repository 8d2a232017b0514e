#include "halvane/utils/log/level.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <optional>
#include <string_view>
#include <system_error>

#include "halvane/utils/log/level_internal.h"
#include "halvane/utils/printf.h"

namespace {

struct LevelName {
    std::int32_t level;
    std::string_view name;  // with a terminator
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
constexpr std::uint8_t nearestRow(std::int32_t level) {
    const auto distance = [level](const LevelName& row) {
        return level < row.level ? row.level - level : level - row.level;
    };
    const LevelName* nearest = std::begin(kLogLevelToStringTable);
    for (const LevelName& row : kLogLevelToStringTable) {
        if (distance(row) > distance(*nearest)) break;
        if (distance(row) < distance(*nearest)) nearest = &row;
    }
    return static_cast<std::uint8_t>(nearest - std::begin(kLogLevelToStringTable));
}

// The nearest row of each level.
constexpr auto kNearestRows = [] {
    std::array<std::uint8_t, kLogLevelMask + 1> rows{};
    for (std::int32_t level = 0; level <= kLogLevelMask; ++level) {
        rows[static_cast<std::size_t>(level)] = nearestRow(level);
    }
    return rows;
}();

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
    const auto row = std::ranges::find_if(
        kLogLevelToStringTable,
        [letters](const LevelName& known) { return known.name.starts_with(letters); });
    const auto offset = offsetOf(text.substr(letters.size()));
    if (row == std::end(kLogLevelToStringTable) || !offset) return std::nullopt;
    return row->level + *offset;
}

}  // namespace

namespace halvane::logging {

std::string_view levelName(std::uint32_t level, LevelText& text) {
    const std::uint32_t wanted = level & kLogLevelMask;
    const LevelName& nearest = kLogLevelToStringTable[kNearestRows[wanted]];
    const std::int32_t distance = static_cast<std::int32_t>(wanted) - nearest.level;
    if (distance == 0) return nearest.name;
    const int size = SNPrintF(text.data(), text.size(), distance > 0 ? "%s+%u" : "%s-%u",
                              nearest.name.data(), std::abs(distance));
    return {text.data(), static_cast<std::size_t>(size)};
}

}  // namespace halvane::logging

extern "C" char* __LogCategory_LevelToString(std::uint32_t level, char* buffer) {
    halvane::logging::LevelText text;
    const std::string_view name = halvane::logging::levelName(level, text);
    buffer[name.copy(buffer, name.size())] = '\0';
    return buffer;
}

extern "C" std::int32_t __LogCategory_StringToLevel(const char* text) {
    const auto level = levelOf(text);
    if (!level || *level < 0 || *level > std::numeric_limits<std::int32_t>::max()) return kInvalid;
    return static_cast<std::int32_t>(*level);
}
