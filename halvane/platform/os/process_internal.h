// The process that the library runs in.
#ifndef HALVANE_PLATFORM_OS_PROCESS_INTERNAL_H
#define HALVANE_PLATFORM_OS_PROCESS_INTERNAL_H

#include <atomic>
#include <cstdint>
#include <string>

namespace halvane {

// The name that the program was started by, without its folder.
std::string programName();

// Remembers the process that created the object. A child made by fork() has none of its threads,
// and finds its locks in the state of that moment. A child made by _Fork() or clone(), which run no
// fork handlers, passes for its parent.
//
// Threads: any thread may make any call, and so may any other fork handler in the child, except
// those that were installed before the first object was made.
class HomeProcess {
  public:
    // Throws std::bad_alloc if the system has no room for the fork handler.
    HomeProcess() { watchForks(); }

    // Whether the calling process is that process.
    bool isCurrent() const { return forks_.load(std::memory_order_relaxed) == home_; }

  private:
    static void watchForks();

    // How many forks lie between the process that started the program and this one. No two
    // processes in such a line have the same number, although they can have the same process ID.
    static std::atomic<std::uint32_t> forks_;

    const std::uint32_t home_ = forks_.load(std::memory_order_relaxed);
};

}  // namespace halvane

#endif
