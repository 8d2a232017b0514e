// Texts of others (names of networks, makers' texts, file names, the daemon's words) as they are
// shown to people: nothing in them commands the terminal, hides, or passes for words of the tool.
//
// Free functions without state; any thread may call them.
#ifndef TOOLS_HALVANE_OUTPUT_SHOWN_TEXT_H
#define TOOLS_HALVANE_OUTPUT_SHOWN_TEXT_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/base/mac_address.h"

#include "tools/halvane/output/unicode.h"

namespace halvane::tool {

struct TextRules {
    bool isASCII = false;  // no character beyond ASCII
    AmbiguousWidth ambiguous = AmbiguousWidth::One;
};

// A part of a text that stays whole: a character with its combining marks, a sequence of emoji, or
// one escape.
struct TextUnit {
    std::size_t size = 0;        // in octets
    std::size_t cells = 0;       // of a terminal
    bool isAdded = false;        // the tool's own: an escape, a quote, a placeholder
    bool isUnsteady = false;     // terminals disagree on the cells
    bool isRightToLeft = false;  // has a letter of bidirectional class R or AL
};

// A text that is safe to show. It has no control character, and its units make up all of it.
class ShownText {
  public:
    const std::string& octets() const { return octets_; }
    const std::vector<TextUnit>& units() const { return units_; }
    std::size_t cells() const { return cells_; }
    bool isEmpty() const { return octets_.empty(); }

    // Whether what follows on the line has to be placed by number, and not by blanks.
    bool isUnsteady() const { return isUnsteady_; }

    // Whether the text has to be isolated from what stands beside it.
    bool isRightToLeft() const { return isRightToLeft_; }

    // REQUIRES: `octets` has `unit.size` octets.
    void append(std::string_view octets, TextUnit unit);

    // Appends characters that the tool adds. Each is a unit.
    // REQUIRES: `text` is printable ASCII.
    void append(std::string_view text);

    void append(const ShownText& text);

    // Takes blanks (U+0020) from the end.
    void dropTrailingBlanks();

  private:
    std::string octets_;
    std::vector<TextUnit> units_;
    std::size_t cells_ = 0;
    bool isUnsteady_ = false;
    bool isRightToLeft_ = false;
};

// Returns the text of another:
// - valid UTF-8 that is visible stays, and in ASCII mode only the ASCII characters of it
// - ASCII control characters and octets that are no UTF-8 become \xNN, a backslash becomes two
// - all other characters become \u{NNNN}; but U+200D and U+FE0F stay inside of emoji. A combining
//   mark also becomes \u{NNNN} where its base is not shown, or it would join what stands before.
// - a text that begins or ends with a blank, or begins with "(" or a quote, gets quotes around it
ShownText shownText(std::string_view octets, const TextRules& rules);

// Returns the name of a network: "(hidden)" if it is empty, "(hidden, N)" if it is N octets of NUL.
ShownText shownName(std::string_view ssid, const TextRules& rules);

// Returns the name of a mesh, behind "(mesh) ".
ShownText shownMesh(std::string_view meshID, const TextRules& rules);

// Returns what a hidden network has for a name where its address is not shown: "(25:98:6A)".
ShownText shownHidden(const MacAddress& bssid);

// Returns a text of the tool itself, with nothing escaped and nothing added.
// REQUIRES: `text` is UTF-8 and visible.
ShownText ownText(std::string_view text, const TextRules& rules);

}  // namespace halvane::tool

#endif
