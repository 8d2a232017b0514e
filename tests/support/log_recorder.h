// An output "callback" that records its messages.
#ifndef TESTS_SUPPORT_LOG_RECORDER_H
#define TESTS_SUPPORT_LOG_RECORDER_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "halvane/utils/log.h"
#include "halvane/utils/printf.h"

namespace halvane::testing {

// Receives the pieces of the output "callback".
class LogRecorder {
  public:
    // The value of an "output" setting that names this recorder.
    std::string spec() const {
        char text[100];
        SNPrintF(text, sizeof(text), "callback;func=%p;arg=%p",
                 reinterpret_cast<const void*>(&LogRecorder::record), this);
        return text;
    }

    std::string text() const {
        std::string all;
        for (const std::string& piece : pieces) all += piece;
        return all;
    }

    // Returns the text so far, and clears it.
    std::string take() {
        const std::string all = text();
        pieces.clear();
        levels.clear();
        return all;
    }

    std::vector<std::string> pieces;
    std::vector<std::uint32_t> levels;
    std::string function;  // of the last piece

  private:
    static void record(const LogMessage* message, const char* text, std::size_t length, void* arg) {
        auto* const recorder = static_cast<LogRecorder*>(arg);
        recorder->pieces.emplace_back(text, length);
        recorder->levels.push_back(message->level);
        recorder->function = message->function;
    }
};

}  // namespace halvane::testing

#endif
