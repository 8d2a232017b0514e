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
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
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
    JSONWriter(const JSONWriter&) = delete;
    JSONWriter& operator=(const JSONWriter&) = delete;
    ~JSONWriter() = default;

    // The text since the last clear(). Valid until the writer changes.
    std::string_view text() const { return {buffer_.get(), size()}; }

    // Drops the text and keeps its memory. Open objects and arrays stay open.
    void clear() { end_ = buffer_.get(); }

    // Each container holds members or items until it is ended.
    void beginObject() { begin('{'); }
    void endObject() { end('}'); }
    void beginArray() { begin('['); }
    void endArray() { end(']'); }

    // Begins a member. REQUIRES: an object is open, and one value follows.
    void key(const JSONKey& key) {
        // The usual way calls nothing, so that it has no registers to save.
        if (layout_ == Layout::Indented || !hasRoom(JSONKey::kRoom + 1)) return keyAnywhere(key);
        char* place = end_;
        if (last_ == Last::Value) *place++ = ',';
        std::memcpy(place, key.member.data(), JSONKey::kRoom);
        end_ = place + key.memberSize;
        last_ = Last::Key;
    }

    // The same with a name that is not known before, and is escaped.
    void name(std::string_view text) {
        string(text);
        makeRoom(2);
        put(':');
        endKey(end_);
    }

    // Writes a value: that of a member, the next item of an array, or the whole document.
    void null() { literal("null"); }
    void boolean(bool value) {
        if (value) {
            literal("true");
        } else {
            literal("false");
        }
    }
    void integer(std::signed_integral auto value) { signedInteger(value); }
    void integer(std::unsigned_integral auto value) { unsignedInteger(value); }

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

    // Appends lower-case digits, likewise.
    void hexDigits(std::span<const std::uint8_t> bytes);

  private:
    // What the next value or member follows.
    enum class Last : std::uint8_t { Key, Bracket, Value };

    std::size_t size() const { return static_cast<std::size_t>(end_ - buffer_.get()); }
    bool hasRoom(std::size_t count) const {
        return static_cast<std::size_t>(limit_ - end_) >= count;
    }
    void makeRoom(std::size_t count) {
        if (!hasRoom(count)) grow(count);
    }
    void grow(std::size_t count);

    // REQUIRES: there is room.
    void put(char character) { *end_++ = character; }
    void putRoomed(std::string_view text) { end_ = std::copy(text.begin(), text.end(), end_); }

    // Each of these takes a place in the buffer that has room, and returns the one after what it
    // writes. The text gets its end once a value: it is in memory, and stores of characters
    // make compilers read it again.
    char* brokenLine(char* place) const {
        *place++ = '\n';
        return std::fill_n(place, kIndent * depth_, ' ');
    }
    // Writes the separator before a member or an item.
    char* separated(char* place) const {
        if (last_ == Last::Value) *place++ = ',';
        return layout_ == Layout::Indented ? brokenLine(place) : place;
    }

    // Returns the end of the text, with room for `count` characters after a separator.
    char* roomFor(std::size_t count) {
        makeRoom(count + 2 + kIndent * depth_);
        return end_;
    }
    // Begins a value. Returns the place for it, which has room for `count` characters.
    char* placeFor(std::size_t count) {
        char* place = roomFor(count);
        if (last_ != Last::Key && depth_ > 0) place = separated(place);
        last_ = Last::Value;
        return place;
    }
    // The same after the first character of the value.
    char* opened(char first, std::size_t count) {
        char* const place = placeFor(count + 1);
        *place = first;
        return place + 1;
    }
    // REQUIRES: there is room for one character.
    void endKey(char* end) {
        if (layout_ == Layout::Indented) *end++ = ' ';
        end_ = end;
        last_ = Last::Key;
    }

    // In any layout, and with or without room.
    void keyAnywhere(const JSONKey& key);
    void begin(char bracket) {
        end_ = opened(bracket, 0);
        last_ = Last::Bracket;
        ++depth_;
    }
    void end(char bracket) {
        --depth_;
        char* place = roomFor(1);
        if (last_ != Last::Bracket && layout_ == Layout::Indented) place = brokenLine(place);
        *place = bracket;
        end_ = place + 1;
        last_ = Last::Value;
    }
    template <std::size_t size>
    void literal(const char (&text)[size]) {
        end_ = std::copy_n(text, size - 1, placeFor(size - 1));
    }
    void signedInteger(std::int64_t value);
    void unsignedInteger(std::uint64_t value);
    bool putWhole(double value);
    bool putTenths(double value);
    // Writes the rest of a string from its first escape on. Returns the place for the closing
    // quote.
    char* putEscapes(char* place, std::string_view text);
    // Writes the escape for the start of `text`, and returns the number of octets that it replaces.
    std::size_t putSpecial(std::string_view text);
    void putEscaped(char character);

    static constexpr std::size_t kIndent = 2;  // columns

    Layout layout_;
    Last last_ = Last::Bracket;
    std::size_t depth_ = 0;
    std::unique_ptr<char[]> buffer_;
    char* end_ = nullptr;    // of the text
    char* limit_ = nullptr;  // of the buffer
};

}  // namespace halvane::tool

#endif
