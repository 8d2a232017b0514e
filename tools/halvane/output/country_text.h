// What a Country element says of its environment, in words.
#ifndef TOOLS_HALVANE_OUTPUT_COUNTRY_TEXT_H
#define TOOLS_HALVANE_OUTPUT_COUNTRY_TEXT_H

#include <string>

#include "halvane/air/country.h"

namespace halvane::tool {

// "indoor and outdoor", "global table (E-4)".
std::string environmentText(const air::Country& country);

}  // namespace halvane::tool

#endif
