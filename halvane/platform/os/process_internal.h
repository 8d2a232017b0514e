// The process that the library runs in.
#ifndef HALVANE_PLATFORM_OS_PROCESS_INTERNAL_H
#define HALVANE_PLATFORM_OS_PROCESS_INTERNAL_H

#include <string>
#include <unistd.h>

namespace halvane {

// The name that the program was started by, without its folder.
std::string programName();

// Remembers the process that created the object. A child made by fork() has none of its threads,
// and finds its locks in the state of that moment.
class HomeProcess {
  public:
    // Whether the calling process is that process.
    bool isCurrent() const { return ::getpid() == process_; }

  private:
    pid_t process_ = ::getpid();
};

}  // namespace halvane

#endif
