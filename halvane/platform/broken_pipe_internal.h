// Writing to a pipe or socket whose reader may have gone.
#ifndef HALVANE_PLATFORM_BROKEN_PIPE_INTERNAL_H
#define HALVANE_PLATFORM_BROKEN_PIPE_INTERNAL_H

#include <csignal>

namespace halvane {

// Whether a write to the descriptor can raise SIGPIPE.
bool canBreakAsPipe(int descriptor);

// While one lives, a reader that has gone is an error of the calling thread's writes, and not the
// end of the program. What the program does about SIGPIPE stays as it is, and so does a SIGPIPE
// that was waiting before.
class BrokenPipeSignalBlock {
  public:
    BrokenPipeSignalBlock();
    ~BrokenPipeSignalBlock();
    BrokenPipeSignalBlock(const BrokenPipeSignalBlock&) = delete;
    BrokenPipeSignalBlock& operator=(const BrokenPipeSignalBlock&) = delete;

    // After a write that failed: takes the signal back that it has raised.
    void takeBackSignal();

  private:
    sigset_t before_;
    bool wasPending_ = false;
};

}  // namespace halvane

#endif
