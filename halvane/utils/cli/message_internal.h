// A text for a stream, written in one piece, so that an unbuffered stream makes one write.
#ifndef HALVANE_UTILS_CLI_MESSAGE_INTERNAL_H
#define HALVANE_UTILS_CLI_MESSAGE_INTERNAL_H

#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

#include "halvane/utils/printf.h"

namespace halvane::cli {

class Message {
  public:
    // A null stream discards the text; add() still measures it.
    explicit Message(std::FILE* stream = stderr) : stream_(stream) {}
    Message(const Message&) = delete;
    Message& operator=(const Message&) = delete;
    ~Message() { write(); }

    // Returns the length of what it appends.
    template <typename... Arguments>
    int add(const char* format, Arguments... arguments) {
        return CPrintF(take, this, format, arguments...);
    }
    int addList(const char* format, std::va_list arguments) {
        return VCPrintF(take, this, format, arguments);
    }

    // Writes the text collected so far.
    void write();

  private:
    static std::int32_t take(const char* text, std::size_t length, void* message) noexcept;

    void append(const char* text, std::size_t length);

    std::FILE* stream_;
    std::string text_;
};

// Writes a message of one format.
template <typename... Arguments>
void say(const char* format, Arguments... arguments) {
    Message().add(format, arguments...);
}

}  // namespace halvane::cli

#endif
