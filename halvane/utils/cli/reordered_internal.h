// Builds the argument vector for reordered operands: first the operands set aside, then the rest.
#ifndef HALVANE_UTILS_CLI_REORDERED_INTERNAL_H
#define HALVANE_UTILS_CLI_REORDERED_INTERNAL_H

#include <cstddef>
#include <cstdlib>
#include <memory>

namespace halvane::cli {

class Reordered {
  public:
    // Returns false if memory runs out.
    bool setAside(char* operand);

    // Replaces gArgV by the vector. Returns false, without a change, if memory runs out. Frees the
    // vectors installed before, except those that an outer CLIParse() may still use.
    bool install();

  private:
    struct Free {
        void operator()(char** array) const { std::free(array); }
    };

    bool reserveOneMore();

    std::unique_ptr<char*[], Free> vector_;
    std::size_t count_ = 1;  // including a first place for the vector before this one
    std::size_t capacity_ = 0;
};

}  // namespace halvane::cli

#endif
