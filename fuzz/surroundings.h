// What a target may touch: a folder of its own, and nothing else of the machine.
#ifndef FUZZ_SURROUNDINGS_H
#define FUZZ_SURROUNDINGS_H

#include <string>

namespace halvane::fuzzing {

// The folder, which goes when the process ends well.
const std::string& privateFolder();

// Standard output and standard error thrown away while one lives. What sanitizers report is not.
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
