// Isolates a target: it may use its own folder, and nothing else of the machine.
#ifndef FUZZ_SURROUNDINGS_H
#define FUZZ_SURROUNDINGS_H

#include <string>

namespace halvane::fuzzing {

// The folder. It is removed when the process ends normally.
const std::string& privateFolder();

// Discards standard output and standard error while one lives, but not the reports of sanitizers.
class QuietStreams {
  public:
    QuietStreams();
    QuietStreams(const QuietStreams&) = delete;
    QuietStreams& operator=(const QuietStreams&) = delete;
    ~QuietStreams();

  private:
    int output_;
    int errors_;
};

}  // namespace halvane::fuzzing

#endif
