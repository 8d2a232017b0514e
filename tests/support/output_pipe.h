// A pipe that a program writes to and the test reads.
#ifndef TESTS_SUPPORT_OUTPUT_PIPE_H
#define TESTS_SUPPORT_OUTPUT_PIPE_H

#include <array>
#include <fcntl.h>
#include <stdexcept>
#include <string>
#include <unistd.h>

namespace halvane::testing {

class OutputPipe {
  public:
    OutputPipe() {
        if (::pipe2(ends_.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    }
    OutputPipe(const OutputPipe&) = delete;
    OutputPipe& operator=(const OutputPipe&) = delete;
    ~OutputPipe() {
        closeReader();
        closeWriter();
    }

    int reader() const { return ends_[0]; }
    int writer() const { return ends_[1]; }

    void closeReader() { close(ends_[0]); }

    // Closes the test's own end for writing. The stream then ends with the programs that write to
    // it.
    void closeWriter() { close(ends_[1]); }

    // Waits for the next line, and returns it with its newline. At the end of the stream it returns
    // the rest, and then nothing.
    std::string readLine() const {
        std::string line;
        char byte = 0;
        while (byte != '\n' && ::read(reader(), &byte, 1) == 1) line += byte;
        return line;
    }

  private:
    static void close(int& end) {
        if (end >= 0) ::close(end);
        end = -1;
    }

    std::array<int, 2> ends_{-1, -1};
};

}  // namespace halvane::testing

#endif
