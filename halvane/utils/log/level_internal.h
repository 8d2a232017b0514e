// The name of a level, for the header of a message.
#ifndef HALVANE_UTILS_LOG_LEVEL_INTERNAL_H
#define HALVANE_UTILS_LOG_LEVEL_INTERNAL_H

#include <array>
#include <cstdint>
#include <string_view>

#include "halvane/utils/log/level.h"

namespace halvane::logging {

using LevelText = std::array<char, kLogLevelStringSize>;

// Returns the text of __LogCategory_LevelToString. It is in `text`, unless it is a constant.
std::string_view levelName(std::uint32_t level, LevelText& text);

}  // namespace halvane::logging

#endif
