#include <algorithm>
#include <new>

#include "halvane/utils/cli/message_internal.h"

namespace halvane::cli {

void Message::write() {
    if (stream_ != nullptr && !text_.empty()) {
        std::fwrite(text_.data(), 1, text_.size(), stream_);
    }
    text_.clear();
}

// If memory runs out, the text is written in pieces.
void Message::append(const char* text, std::size_t length) {
    if (stream_ == nullptr) return;
    try {
        text_.append(text, length);
    } catch (const std::bad_alloc&) {
        write();
        std::fwrite(text, 1, length, stream_);
    }
}

std::int32_t Message::take(const char* text, std::size_t length, void* message) noexcept {
    static_cast<Message*>(message)->append(text, length);
    return static_cast<std::int32_t>(std::min<std::size_t>(length, INT32_MAX));
}

}  // namespace halvane::cli
