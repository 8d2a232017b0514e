#include "halvane/utils/text/natural_order.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "halvane/base/ascii_internal.h"
#include "halvane/utils/text/cursor_internal.h"
#include "halvane/utils/text/ignore_case_internal.h"

namespace {

using halvane::orderOf;
using halvane::TextCursor;

// A run of digits: the number of leading zeros, and the digits after them. If all digits are zeros,
// the last one counts as the number.
struct Number {
    std::size_t zeros;
    std::string_view digits;
};

Number takeNumber(TextCursor& text) {
    const char* const start = text.position();
    while (halvane::isDigit(text.peek())) text.skip(1);
    const std::string_view run(start, static_cast<std::size_t>(text.position() - start));
    const std::size_t zeros = std::min(run.find_first_not_of('0'), run.size() - 1);
    return {zeros, run.substr(zeros)};
}

int compareNumbers(const Number& a, const Number& b) {
    if (const int order = orderOf(a.digits.size(), b.digits.size()); order != 0) return order;
    if (const int order = orderOf(a.digits.compare(b.digits), 0); order != 0) return order;
    return orderOf(a.zeros, b.zeros);
}

}  // namespace

int TextCompareNatural(const char* a, std::size_t aLength, const char* b, std::size_t bLength,
                       bool caseSensitive) {
    TextCursor first(a, aLength);
    TextCursor second(b, bLength);
    const auto compareCharacters =
        caseSensitive ? halvane::orderOfBytes : halvane::orderIgnoringCase;
    // The texts are equal so far, so both are before a run of digits, or neither is inside one.
    while (!first.atEnd() && !second.atEnd()) {
        int order = 0;
        if (halvane::isDigit(first.peek()) && halvane::isDigit(second.peek())) {
            const Number number = takeNumber(first);
            order = compareNumbers(number, takeNumber(second));
        } else {
            order = compareCharacters(first.peek(), second.peek());
            first.skip(1);
            second.skip(1);
        }
        if (order != 0) return order;
    }
    return orderOf(!first.atEnd(), !second.atEnd());
}
