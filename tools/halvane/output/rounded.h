// Rounds numbers for people.
#ifndef TOOLS_HALVANE_OUTPUT_ROUNDED_H
#define TOOLS_HALVANE_OUTPUT_ROUNDED_H

namespace halvane::tool {

// The nearest whole number; a half goes away from zero. As std::lround(), for which alone every
// command would load libm.
// REQUIRES: a long holds the result.
constexpr long rounded(double number) {
    const long whole = static_cast<long>(number);
    const double rest = number - static_cast<double>(whole);
    return whole + (rest >= 0.5 ? 1 : 0) - (rest <= -0.5 ? 1 : 0);
}

}  // namespace halvane::tool

#endif
