// Writes whose failure raises a signal that by default ends the program: SIGPIPE for a pipe or
// socket without a reader, SIGXFSZ for a file at the largest size that the process may write
// (RLIMIT_FSIZE).
#ifndef HALVANE_PLATFORM_OS_WRITE_SIGNAL_INTERNAL_H
#define HALVANE_PLATFORM_OS_WRITE_SIGNAL_INTERNAL_H

#include <csignal>

namespace halvane {

// Whether a write to the descriptor can raise one of these signals.
bool canRaiseWriteSignal(int descriptor);

// The same for any regular file.
bool isFileSizeLimited();

// While an object lives, writes of the calling thread fail with an error instead of ending the
// program. The program's handling of the signals stays unchanged, and so does a signal that was
// already pending.
class WriteSignalBlock {
  public:
    WriteSignalBlock();
    ~WriteSignalBlock();
    WriteSignalBlock(const WriteSignalBlock&) = delete;
    WriteSignalBlock& operator=(const WriteSignalBlock&) = delete;

    // To be called after a write that failed with `error`, an errno value. Removes the pending
    // signal that the write raised, SIGPIPE for EPIPE and SIGXFSZ for EFBIG. A signal from
    // elsewhere that came meanwhile stays.
    void takeBackSignal(int error);

  private:
    sigset_t before_;
    sigset_t own_;  // the signals that were not pending before
};

}  // namespace halvane

#endif
