// Colours by what they mean, and when there are any. Colour repeats what a word says, and red is
// danger alone.
//
// Free functions and plain values; any thread may call them.
#ifndef TOOLS_HALVANE_OUTPUT_THEME_H
#define TOOLS_HALVANE_OUTPUT_THEME_H

#include <string>
#include <string_view>

#include "tools/halvane/output/shown_text.h"
#include "tools/halvane/output/surroundings.h"

namespace halvane::tool {

enum class Meaning {
    Plain,
    Danger,
    Caution,
    Good,
    StrongSignal,
    FairSignal,
    FaintBar,   // the bar of a signal whose number is plain
    Current,    // connected, or new
    Secondary,  // lost, or the tool's own words beside those of others
    Header,
};

// The meaning of a signal's number, and of its bar.
Meaning meaningOfSignal(int dBm);
Meaning meaningOfBar(int dBm);

enum class Palette { None, Colors16, Colors256 };

enum class ColorChoice { Auto, Always, Never };

// Auto means colours on a terminal, unless NO_COLOR has a value or TERM is empty or "dumb". TERM
// and COLORTERM decide between 16 and 256 colours.
Palette paletteFor(ColorChoice choice, const Surroundings& surroundings);

class Theme {
  public:
    // No colour, and no terminal.
    Theme() = default;
    Theme(Palette palette, bool isTerminal) : palette_(palette), isTerminal_(isTerminal) {}
    Theme(ColorChoice choice, const Surroundings& surroundings)
        : Theme(paletteFor(choice, surroundings), surroundings.isTerminal) {}

    // Returns the text between a sequence that sets the colour and one that ends it; the text alone
    // if it is empty or has no colour. Blanks at its ends stay outside.
    std::string painted(std::string_view text, Meaning meaning) const;

    // The same, with what the tool added to the text in the colour of secondary things. On a
    // terminal a text from right to left stands between isolates (U+2068 and U+2069).
    std::string painted(const ShownText& text, Meaning meaning) const;

    // Whether a cell may be placed by its number. Cursor movement counts as colour.
    bool movesCursor() const { return isTerminal_ && palette_ != Palette::None; }

  private:
    Palette palette_ = Palette::None;
    bool isTerminal_ = false;
};

}  // namespace halvane::tool

#endif
