// Writes JSON (RFC 8259) straight into a buffer. The buffer grows once to the necessary size, and
// is then reused.
//
// There are two layouts: one line without blanks, and one line for each member and item, indented
// by two columns per level. An empty object or array is "{}" or "[]" in both.
//
// Threads: one writer is used by one thread at a time.
#ifndef TOOLS_HALVANE_OUTPUT_JSON_WRITER_H
#define TOOLS_HALVANE_OUTPUT_JSON_WRITER_H

#include <algorithm>
#include <charconv>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

#include "halvane/base/number.h"

#include "tools/halvane/output/json_key.h"

namespace halvane::tool {

// Text of this size, in bytes, is worth a separate write.
inline constexpr std::size_t kJSONBatchSize = std::size_t{60} * 1024;

class JSONWriter {
  public:
    enum class Layout { OneLine, Indented };

    explicit JSONWriter(Layout layout = Layout::OneLine) : layout_(layout) {}

    // The text since the last clear(). Valid until the writer changes.
    std::string_view text() const { return {buffer_.get(), size_}; }

    // Drops the text and keeps its memory. Open objects and arrays stay open.
    void clear() { size_ = 0; }

    // Each container holds members or items until it is ended.
    void beginObject() { begin('{'); }
    void endObject() { end('}'); }
    void beginArray() { begin('['); }
    void endArray() { end(']'); }

    // Begins a member. REQUIRES: an object is open, and one value follows.
    void key(JSONKey key) {
        separate(key.text.size() + 4);
        put('"');
        putRoomed(key.text);
        put('"');
        put(':');
        if (layout_ == Layout::Indented) put(' ');
        isAfterKey_ = true;
    }

    // The same with a name that is not known before, and is escaped.
    void name(std::string_view text) {
        string(text);
        makeRoom(2);
        put(':');
        if (layout_ == Layout::Indented) put(' ');
        isAfterKey_ = true;
    }

    // Writes a value: that of a member, the next item of an array, or the whole document.
    void null() { literal("null"); }
    void boolean(bool value) { literal(value ? "true" : "false"); }
    void integer(std::integral auto value) {
        beforeValue(kMostDigits);
        size_ = static_cast<std::size_t>(
            std::to_chars(buffer_.get() + size_, buffer_.get() + capacity_, value).ptr -
            buffer_.get());
    }

    // Writes the shortest digits that read back equal: with a fraction from 0.0001 up to below
    // 1e15, otherwise with an exponent. Writes null for a number that is not finite, because JSON
    // has none.
    void real(double value);

    // Writes an integer if the value is one that 64 bits can hold, whatever type holds it.
    void number(const Number& value);

    // Escapes only what JSON requires. Each octet that belongs to no UTF-8 character becomes
    // U+FFFD.
    void string(std::string_view text);

    // Lower-case digits.
    void hexString(std::span<const std::uint8_t> bytes);

    // "02:1A:2B:3C:4D:5E": the first six bytes, or fewer if there are fewer.
    void addressString(std::span<const std::uint8_t> address);

    // Writes received octets as escapedText() shows them.
    void shownString(std::span<const std::uint8_t> octets);

    // Appends text unchanged, between or around documents.
    void verbatim(std::string_view text) {
        makeRoom(text.size() + 1);
        putRoomed(text);
    }
    void newline() { verbatim("\n"); }

  private:
    static constexpr std::size_t kMostDigits = 20;  // of 64 bits, with a sign

    void makeRoom(std::size_t count) {
        if (capacity_ - size_ < count) grow(count);
    }
    void grow(std::size_t count);

    // REQUIRES: there is room.
    void put(char character) { buffer_[size_++] = character; }
    void putRoomed(std::string_view text) {
        std::copy_n(text.data(), text.size(), buffer_.get() + size_);
        size_ += text.size();
    }

    // Writes the separator before a member or an item, and leaves room for `count` characters after
    // it.
    void separate(std::size_t count) {
        makeRoom(count + 2 + kIndent * depth_);
        if (depth_ == 0) return;
        if (!isFirst_) put(',');
        isFirst_ = false;
        if (layout_ == Layout::Indented) breakLine();
    }
    void beforeValue(std::size_t count) {
        if (isAfterKey_) {
            isAfterKey_ = false;
            makeRoom(count);
        } else {
            separate(count);
        }
    }
    void breakLine() {
        put('\n');
        std::fill_n(buffer_.get() + size_, kIndent * depth_, ' ');
        size_ += kIndent * depth_;
    }

    void begin(char bracket) {
        beforeValue(1);
        put(bracket);
        isFirst_ = true;
        ++depth_;
    }
    void end(char bracket) {
        --depth_;
        makeRoom(2 + kIndent * depth_);
        if (!isFirst_ && layout_ == Layout::Indented) breakLine();
        isFirst_ = false;
        put(bracket);
    }
    void literal(std::string_view text) {
        beforeValue(text.size());
        putRoomed(text);
    }
    bool putTenths(double value);
    void putCharacters(std::string_view text);
    // Writes the escape for the start of `text`, and returns the number of octets that it replaces.
    std::size_t putSpecial(std::string_view text);
    void putEscaped(char character);

    static constexpr std::size_t kIndent = 2;  // columns

    Layout layout_;
    std::unique_ptr<char[]> buffer_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
    std::size_t depth_ = 0;
    bool isFirst_ = true;  // the innermost container is empty so far
    bool isAfterKey_ = false;
};

}  // namespace halvane::tool

#endif
