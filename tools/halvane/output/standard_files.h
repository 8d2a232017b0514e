// Standard input, output and error of a program that was started without them.
#ifndef TOOLS_HALVANE_OUTPUT_STANDARD_FILES_H
#define TOOLS_HALVANE_OUTPUT_STANDARD_FILES_H

namespace halvane::tool {

// Opens what is closed of descriptors 0 to 2, so that no file or socket of the program's takes
// their number and what is printed goes astray. To use them fails as before, with EBADF.
// REQUIRES: called before anything else is opened.
void openStandardFiles() noexcept;

}  // namespace halvane::tool

#endif
