// The process that the library runs in.
#ifndef HALVANE_PLATFORM_OS_PROCESS_INTERNAL_H
#define HALVANE_PLATFORM_OS_PROCESS_INTERNAL_H

#include <string>
#include <unistd.h>

namespace halvane {

// The name that the program was started by, without its folder.
std::string programName();

// Remembers the process that made it. A child that fork() made of that one has none of its threads,
// and finds its locks as they happened to be.
class HomeProcess {
  public:
    // Whether the calling process is the one.
    bool isCurrent() const { return ::getpid() == process_; }

  private:
    pid_t process_ = ::getpid();
};

}  // namespace halvane

#endif
