// What Unicode says of a character and of its place on a terminal. Other files ask here, and not
// the library that knows the tables.
//
// Free functions without state; any thread may call them.
#ifndef TOOLS_HALVANE_OUTPUT_UNICODE_H
#define TOOLS_HALVANE_OUTPUT_UNICODE_H

#include <cstdint>

namespace halvane::tool {

// How many cells the characters take whose East Asian Width is ambiguous (A). Terminals for
// Chinese, Japanese and Korean may give them two.
enum class AmbiguousWidth { One, Two };

// Whether the character is seen, or takes its place as a blank. False for controls, format
// characters, characters that are ignored by default, line and paragraph separators, and code
// points that are private, unassigned or no characters at all.
bool isVisible(char32_t character);

// Whether the character joins the one before and takes no cell of its own: combining marks that
// take no space, and the vowels and final consonants of decomposed Hangul.
bool isCombining(char32_t character);

// Whether the character leaves its cells empty: the blank, the other space separators and the
// Braille pattern without a dot.
bool isBlank(char32_t character);

// Returns 0, 1 or 2, by East Asian Width: wide and full-width characters take two cells, combining
// and format characters none. A mark that takes space (general category Mc) takes one.
unsigned cellsOf(char32_t character, AmbiguousWidth ambiguous);

// Whether the character is a letter that is written from right to left (bidirectional class R or
// AL).
bool isRightToLeft(char32_t character);

// Characters that make sequences of emoji.
inline constexpr char32_t kZeroWidthJoiner = 0x200D;
inline constexpr char32_t kEmojiPresentation = 0xFE0F;  // variation selector 16
inline constexpr char32_t kEnclosingKeycap = 0x20E3;
bool isPictograph(char32_t character);
bool isEmojiModifier(char32_t character);      // a colour of the skin
bool isRegionalIndicator(char32_t character);  // half of a flag

// Finds where a text may be cut (Unicode Standard Annex #29, extended grapheme clusters).
class GraphemeBreaks {
  public:
    // Takes the next character of the text. Returns whether a cluster begins with it, as one does
    // with the first.
    bool beginsCluster(char32_t character);

    // The next character is the first of a text.
    void restart() { *this = {}; }

  private:
    bool isFirst_ = true;
    char32_t previous_ = 0;
    std::int32_t state_ = 0;
};

}  // namespace halvane::tool

#endif
