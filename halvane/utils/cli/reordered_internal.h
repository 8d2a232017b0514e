// The argument vector to come where operands are reordered: what was set aside, then what is left.
#ifndef HALVANE_UTILS_CLI_REORDERED_INTERNAL_H
#define HALVANE_UTILS_CLI_REORDERED_INTERNAL_H

#include <cstddef>
#include <cstdlib>
#include <memory>

namespace halvane::cli {

class Reordered {
  public:
    // False where there is no memory for it.
    bool setAside(char* operand);

    // Puts it in place of gArgV. False where there is no memory for it, and nothing has changed.
    // Frees the vectors that were put there before, but for those that a CLIParse() around this one
    // may still use.
    bool install();

  private:
    struct Free {
        void operator()(char** array) const { std::free(array); }
    };

    bool reserveOneMore();

    std::unique_ptr<char*[], Free> vector_;
    std::size_t count_ = 1;  // with a place in front, for the vector before this one
    std::size_t capacity_ = 0;
};

}  // namespace halvane::cli

#endif
