// What the name of a network would read that is not in UTF-8.
#ifndef TOOLS_HALVANE_OUTPUT_GUESSED_NAME_H
#define TOOLS_HALVANE_OUTPUT_GUESSED_NAME_H

#include <optional>
#include <string>
#include <string_view>

namespace halvane::tool {

// Returns the name in UTF-8, as GB18030 would read it, the character set of names from China that
// are not in UTF-8. Only a likely guess counts: the name is no UTF-8, all octets above ASCII come
// in pairs of GB 2312, and every character is visible. Absent also where the system does not know
// that character set. Any thread may call it.
std::optional<std::string> nameInGB18030(std::string_view octets);

}  // namespace halvane::tool

#endif
