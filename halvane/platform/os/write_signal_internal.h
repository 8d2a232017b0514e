// Writing where an error comes with a signal, which ends a program that does nothing about it:
// SIGPIPE of a pipe or socket whose reader has gone, SIGXFSZ of a file that has reached the size
// that the process may give one (RLIMIT_FSIZE).
#ifndef HALVANE_PLATFORM_OS_WRITE_SIGNAL_INTERNAL_H
#define HALVANE_PLATFORM_OS_WRITE_SIGNAL_INTERNAL_H

#include <csignal>

namespace halvane {

// Whether a write to the descriptor can raise one of the signals.
bool canRaiseWriteSignal(int descriptor);

// The same of a regular file.
bool isFileSizeLimited();

// While one lives, what raises these signals is an error of the calling thread's writes, and not
// the end of the program. What the program does about the signals stays as it is, and so does one
// that was waiting before.
class WriteSignalBlock {
  public:
    WriteSignalBlock();
    ~WriteSignalBlock();
    WriteSignalBlock(const WriteSignalBlock&) = delete;
    WriteSignalBlock& operator=(const WriteSignalBlock&) = delete;

    // After a write that failed with the error, an errno value: takes the signal back that it has
    // raised, SIGPIPE for EPIPE and SIGXFSZ for EFBIG. Another's that has come meanwhile stays.
    void takeBackSignal(int error);

  private:
    sigset_t before_;
    sigset_t own_;  // those that were not waiting before
};

}  // namespace halvane

#endif
