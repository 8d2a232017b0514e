// The style sheet and the script of the page, from the files of assets/.
#ifndef TOOLS_HALVANE_REPORT_REPORT_ASSETS_H
#define TOOLS_HALVANE_REPORT_REPORT_ASSETS_H

#include <string_view>

namespace halvane::tool {

std::string_view reportStyle();
std::string_view reportScript();

}  // namespace halvane::tool

#endif
