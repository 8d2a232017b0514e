// Writes the output of commands, and keeps the reason if some of it is lost.
//
// The reason of a failed write is overwritten by later calls, so these functions note it at once.
// Output lost by the standard library's own functions is detected at the end.
//
// Threads: one thread at a time may call these functions.
#ifndef TOOLS_HALVANE_OUTPUT_STANDARD_OUTPUT_H
#define TOOLS_HALVANE_OUTPUT_STANDARD_OUTPUT_H

#include <cstdio>
#include <string>
#include <string_view>

namespace halvane::tool {

// Writes text to standard output, or to a stream that replaces it.
void put(std::string_view text, std::FILE* stream = stdout) noexcept;

// Writes text at once, without a buffer and without a lock. The program can therefore end even if a
// reader is slow. Returns false if the text was lost.
// REQUIRES: no other function has written output.
bool putAtOnce(std::string_view text) noexcept;

// Notes that output was lost, with an errno or another reason. The first reason counts.
void noteLostOutput(int error) noexcept;
void noteLostOutput(std::string reason) noexcept;

// Flushes standard output. Returns false if anything was lost, now or before.
bool flushOutput() noexcept;

// Whether output was lost because its reader, at the other end of a pipe, has closed it.
// REQUIRES: flushOutput() returned false.
bool isReaderGone() noexcept;

// The reason of the loss.
// REQUIRES: flushOutput() returned false.
std::string lostOutputReason();

}  // namespace halvane::tool

#endif
