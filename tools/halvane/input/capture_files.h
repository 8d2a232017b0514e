// The capture files that arguments name: each argument is a file, or a folder of them.
//
// A free function without state; any thread may call it.
#ifndef TOOLS_HALVANE_INPUT_CAPTURE_FILES_H
#define TOOLS_HALVANE_INPUT_CAPTURE_FILES_H

#include <span>
#include <string>
#include <vector>

namespace halvane::tool {

struct CaptureFiles {
    std::vector<std::string> paths;   // in the order in which they are to be read
    std::vector<std::string> notes;   // on files that were passed over; one line each
    std::vector<std::string> faults;  // of folders; one line each
};

// Replaces each folder by the captures in it, in the natural order of their names ("walk-2" before
// "walk-10"). Folders in it, files whose names begin with a dot, and what is neither file nor link
// to one do not count. A note counts the files that do not begin as a capture does; a file that
// cannot be read is kept, so that reading it tells why. All other arguments, "-" too, stay as they
// are.
CaptureFiles findCaptureFiles(std::span<const std::string> arguments);

}  // namespace halvane::tool

#endif
