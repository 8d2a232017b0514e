// What the countries of several networks say about each other.
//
// A pure function; any thread may call it.
#ifndef TOOLS_HALVANE_SURVEY_COUNTRY_FINDINGS_H
#define TOOLS_HALVANE_SURVEY_COUNTRY_FINDINGS_H

#include <span>

#include "tools/halvane/survey/network.h"

namespace halvane::tool {

// Adds the finding CountryDiffers to each network whose country is another one than that of most:
// of more than half of the networks that tell a country of two letters. Without such a majority
// nobody can say who is wrong.
void findOtherCountries(std::span<Network> networks);

}  // namespace halvane::tool

#endif
