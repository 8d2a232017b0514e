// The process that the library runs in.
#ifndef HALVANE_PLATFORM_PROCESS_INTERNAL_H
#define HALVANE_PLATFORM_PROCESS_INTERNAL_H

#include <string>

namespace halvane {

// The name that the program was started by, without its folder.
std::string programName();

}  // namespace halvane

#endif
