// The damage in the elements of a buffer: how much there is, and the first of it.
#ifndef TOOLS_HALVANE_OUTPUT_DAMAGE_REPORT_H
#define TOOLS_HALVANE_OUTPUT_DAMAGE_REPORT_H

#include <cstddef>
#include <string>
#include <utility>

namespace halvane::tool {

struct DamageReport {
    std::size_t count = 0;
    std::size_t firstOctet = 0;  // in the buffer
    std::string firstProblem{};  // as a message

    void note(std::size_t octet, std::string problem) {
        if (count++ > 0) return;
        firstOctet = octet;
        firstProblem = std::move(problem);
    }
};

}  // namespace halvane::tool

#endif
