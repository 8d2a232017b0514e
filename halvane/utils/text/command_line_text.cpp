#include "halvane/utils/text/command_line_text.h"

#include <climits>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "halvane/base/ascii_internal.h"
#include "halvane/utils/text/byte_set_internal.h"
#include "halvane/utils/text/cursor_internal.h"
#include "halvane/utils/text/quoted_text_internal.h"

namespace halvane {

namespace {

// The pointers of a vector. A pointer to the bytes of all arguments is stored before the first one,
// so that it can be found whatever happens to the others.
class ArgumentVector {
  public:
    ArgumentVector() = default;
    ArgumentVector(const ArgumentVector&) = delete;
    ArgumentVector& operator=(const ArgumentVector&) = delete;
    ~ArgumentVector() {
        if (pointers_ == nullptr) return;
        std::free(pointers_[0]);
        std::free(pointers_);
    }

    // Appends a pointer. Returns false if memory runs out.
    bool append(char* pointer) {
        if (used_ == room_ && !grow()) return false;
        pointers_[used_++] = pointer;
        return true;
    }

    // Returns the pointers for the caller.
    char** handOver() { return std::exchange(pointers_, nullptr) + 1; }

  private:
    static constexpr std::size_t kFirstRoom = 1 + 16;

    bool grow() {
        const std::size_t room = room_ == 0 ? kFirstRoom : 2 * room_;
        void* const grown = std::realloc(pointers_, room * sizeof(char*));
        if (grown == nullptr) return false;
        pointers_ = static_cast<char**>(grown);
        room_ = room;
        return true;
    }

    char** pointers_ = nullptr;
    std::size_t used_ = 0;
    std::size_t room_ = 0;
};

// Skips white space and continued lines.
void skipToArgument(TextCursor& text) {
    text.skipSpace();
    while (isContinuedLine(text)) {
        text.skip(2);
        text.skipSpace();
    }
}

HalvaneStatus parseCommandLine(const char* text, int* count, char*** vector) {
    constexpr ByteSet kWhiteSpace(isSpace);
    if (text == nullptr) return kStatusUnsupported;
    const std::size_t length = std::strlen(text);
    // An argument is never longer than its written form. The byte that ended it makes room for its
    // NUL.
    auto* bytes = static_cast<char*>(std::malloc(length + 1));
    if (bytes == nullptr) return kStatusNoMemory;
    ArgumentVector arguments;
    if (!arguments.append(bytes)) {
        std::free(bytes);
        return kStatusNoMemory;
    }
    TextCursor cursor(text, length);
    int found = 0;
    for (skipToArgument(cursor); !cursor.atEnd(); skipToArgument(cursor)) {
        if (found == INT_MAX || !arguments.append(bytes)) return kStatusNoMemory;
        ++found;
        TokenBuffer token(bytes, cursor.remaining());
        takeQuotedToken(cursor, kWhiteSpace, token);
        bytes[token.total()] = '\0';
        bytes += token.total() + 1;
    }
    if (!arguments.append(nullptr)) return kStatusNoMemory;
    *count = found;
    *vector = arguments.handOver();
    return kStatusOK;
}

}  // namespace

}  // namespace halvane

HalvaneStatus ParseCommandLineIntoArgV(const char* text, int* count, char*** vector) {
    return halvane::parseCommandLine(text, count, vector);
}

void FreeCommandLineArgV(char** vector) {
    if (vector == nullptr) return;
    std::free(vector[-1]);
    std::free(vector - 1);
}
