#include <cstdlib>

#include "halvane/utils/cli/parser_internal.h"
#include "halvane/utils/cli/reordered_internal.h"

namespace halvane::cli {

namespace {

constexpr std::size_t kLeastCapacity = 8;

}  // namespace

bool Reordered::setAside(char* operand) {
    if (!reserveOneMore()) return false;
    vector_[count_++] = operand;
    return true;
}

bool Reordered::install() {
    for (int index = gArgI; char* const argument = argumentAt(index); ++index) {
        if (!setAside(argument)) return false;
    }
    if (!reserveOneMore()) return false;
    vector_[count_] = nullptr;
    freeVectors(gState.outerVector);
    vector_[0] = reinterpret_cast<char*>(gState.newestVector);
    gState.newestVector = gState.innerVector = vector_.release();
    gArgV = gState.newestVector + 1;
    gArgC = static_cast<int>(count_ - 1);
    gArgI = 0;
    return true;
}

bool Reordered::reserveOneMore() {
    if (count_ < capacity_) return true;
    const std::size_t capacity = 2 * capacity_ + kLeastCapacity;
    void* const grown = std::realloc(vector_.get(), capacity * sizeof(char*));
    if (grown == nullptr) return false;
    static_cast<void>(vector_.release());
    vector_.reset(static_cast<char**>(grown));
    capacity_ = capacity;
    return true;
}

}  // namespace halvane::cli
