#include "halvane/utils/text/split.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <utility>

#include "halvane/base/ascii_internal.h"
#include "halvane/utils/text/byte_set_internal.h"
#include "halvane/utils/text/cursor_internal.h"

namespace {

using halvane::ByteSet;
using std::string_view;

template <typename Value>
void store(Value* destination, Value value) {
    if (destination != nullptr) *destination = value;
}

string_view between(const char* text, const char* end) {
    return {text, static_cast<std::size_t>(end - text)};
}

// Returns the start of `text` up to a byte of `ends`. It checks one byte after the other: a search
// for each separator would read the rest of the text for every piece.
string_view pieceBefore(string_view text, const ByteSet& ends) {
    const auto isEnd = [&](char byte) { return ends.contains(byte); };
    return {text.begin(), std::ranges::find_if(text, isEnd)};
}

// The same, but ignores bytes with a backslash before them.
string_view unescapedBefore(string_view text, const ByteSet& ends) {
    std::size_t size = 0;
    while (size < text.size() && !ends.contains(text[size])) {
        size += text[size] == '\\' && size + 1 < text.size() ? 2 : 1;
    }
    return text.substr(0, size);
}

// Appends nodes to a list, and frees the list unless it is handed over.
class ListBuilder {
  public:
    ListBuilder() = default;
    ListBuilder(const ListBuilder&) = delete;
    ListBuilder& operator=(const ListBuilder&) = delete;
    ~ListBuilder() { StringListFree(first_); }

    // Returns false if memory runs out.
    bool append(string_view text) {
        auto* const node = static_cast<StringList*>(std::calloc(1, sizeof(StringList)));
        if (node == nullptr) return false;
        *end_ = node;
        end_ = &node->next;
        node->text = static_cast<char*>(std::malloc(text.size() + 1));
        if (node->text == nullptr) return false;
        node->text[text.copy(node->text, text.size())] = '\0';
        return true;
    }

    StringList* handOver() { return std::exchange(first_, nullptr); }

  private:
    StringList* first_ = nullptr;
    StringList** end_ = &first_;
};

}  // namespace

bool ParseLine(const char* text, const char* end, std::size_t* length, const char** next) {
    constexpr ByteSet kLineEnds("\r\n");
    if (text == end) return false;
    const string_view rest = between(text, end);
    const std::size_t size = pieceBefore(rest, kLineEnds).size();
    const std::size_t endSize = rest.substr(size).starts_with("\r\n") ? 2 : 1;
    store(length, size);
    store(next, text + std::min(size + endSize, rest.size()));
    return true;
}

bool TextSep(const char* text, const char* end, const char* separators, std::size_t* length,
             const char** next) {
    if (text == end) return false;
    const string_view rest = between(text, end);
    const std::size_t size = pieceBefore(rest, ByteSet(separators)).size();
    store(length, size);
    store(next, text + std::min(size + 1, rest.size()));
    return true;
}

bool ParseCommaSeparatedNameValuePair(const char* text, const char* end, const char** name,
                                      std::size_t* nameLength, const char** value,
                                      std::size_t* valueLength, const char** next) {
    constexpr ByteSet kItemEnd(",");
    constexpr ByteSet kNameEnd("=,");
    text = std::find_if_not(text, end, halvane::isSpace);
    if (text == end) return false;
    const string_view rest = between(text, end);
    const string_view item = unescapedBefore(rest, kItemEnd);
    const string_view key = unescapedBefore(item, kNameEnd);
    const bool hasValue = key.size() < item.size();
    store(name, text);
    store(nameLength, key.size());
    store(value, hasValue ? text + key.size() + 1 : static_cast<const char*>(nullptr));
    store(valueLength, hasValue ? item.size() - key.size() - 1 : 0);
    store(next, text + std::min(item.size() + 1, rest.size()));
    return true;
}

HalvaneStatus SplitText(const char* text, std::size_t length, const char* separators,
                        StringList** list) {
    const ByteSet ends(separators);
    ListBuilder pieces;
    for (string_view rest = halvane::textOf(text, length); !rest.empty();) {
        const string_view piece = pieceBefore(rest, ends);
        if (!pieces.append(piece)) return kStatusNoMemory;
        rest.remove_prefix(std::min(piece.size() + 1, rest.size()));
    }
    *list = pieces.handOver();
    return kStatusOK;
}
