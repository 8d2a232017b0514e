// What commands print, and why some of it did not get there.
//
// The reason of a failed write is gone when the command has done something else, so that it is
// noted at once. What is printed by the standard library's own functions is found missing at the
// end.
//
// Threads: used by one at a time.
#ifndef TOOLS_HALVANE_OUTPUT_STANDARD_OUTPUT_H
#define TOOLS_HALVANE_OUTPUT_STANDARD_OUTPUT_H

#include <cstdio>
#include <string>
#include <string_view>

namespace halvane::tool {

// Puts text on standard output, or on a stream that stands for it.
void put(std::string_view text, std::FILE* stream = stdout) noexcept;

// The same at once, through no buffer and behind no lock, so that the program can end whoever is
// slow to read. False where it was lost.
// REQUIRES: nothing was put otherwise.
bool putAtOnce(std::string_view text) noexcept;

// Notes that something could not be put, for a reason of errno's or another one. The first reason
// counts.
void noteLostOutput(int error) noexcept;
void noteLostOutput(std::string reason) noexcept;

// Writes what standard output still holds. False where anything was lost, now or before.
bool flushOutput() noexcept;

// Why.
// REQUIRES: flushOutput() answered false.
std::string lostOutputReason();

}  // namespace halvane::tool

#endif
