// Standard input, output and error of a program that was started without them.
#ifndef TOOLS_HALVANE_OUTPUT_STANDARD_FILES_H
#define TOOLS_HALVANE_OUTPUT_STANDARD_FILES_H

namespace halvane::tool {

// Opens those of the descriptors 0 to 2 that are closed. No file or socket of the program can then
// get their number and receive output by mistake. Using them still fails with EBADF.
// REQUIRES: called before anything else is opened.
void openStandardFiles() noexcept;

}  // namespace halvane::tool

#endif
