#include "halvane/utils/natural_order.h"

#include <algorithm>

#include "halvane/utils/ascii_internal.h"
#include "halvane/utils/ignore_case_internal.h"
#include "halvane/utils/text_cursor_internal.h"

namespace {

using halvane::orderOf;

// A run of digits: how many zeros lead, and what they lead to. A run of nothing but zeros keeps
// its last one as the number.
struct Number {
    std::size_t zeros;
    std::string_view digits;
};

Number takeNumber(std::string_view& text) {
    const auto end = std::ranges::find_if_not(text, halvane::isDigit);
    const std::string_view run(text.begin(), end);
    text.remove_prefix(run.size());
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
    std::string_view first = halvane::textOf(a, aLength);
    std::string_view second = halvane::textOf(b, bLength);
    const auto compareCharacters =
        caseSensitive ? halvane::orderOfBytes : halvane::orderIgnoringCase;
    // What was compared so far is equal, so both stand before a run of digits or neither within.
    while (!first.empty() && !second.empty()) {
        int order = 0;
        if (halvane::isDigit(first.front()) && halvane::isDigit(second.front())) {
            const Number number = takeNumber(first);
            order = compareNumbers(number, takeNumber(second));
        } else {
            order = compareCharacters(first.front(), second.front());
            first.remove_prefix(1);
            second.remove_prefix(1);
        }
        if (order != 0) return order;
    }
    return orderOf(first.size(), second.size());
}
