// How texts for people are laid out and drawn.
#ifndef TOOLS_HALVANE_OUTPUT_TEXT_STYLE_H
#define TOOLS_HALVANE_OUTPUT_TEXT_STYLE_H

#include <cstddef>
#include <cstdio>

#include "tools/halvane/output/glyphs.h"
#include "tools/halvane/output/shown_text.h"
#include "tools/halvane/output/surroundings.h"
#include "tools/halvane/output/theme.h"

namespace halvane::tool {

struct TextStyle {
    static constexpr std::size_t kUsualWidth = 80;

    std::size_t width = kUsualWidth;  // cells of a line
    Theme theme{};
    TextRules rules{};
    GlyphSet glyphs = GlyphSet::ASCII;
};

// Texts are wrapped and not cut, so they have the usual width where the surroundings tell none.
inline TextStyle textStyleFor(const Surroundings& surroundings,
                              ColorChoice color = ColorChoice::Auto,
                              const TextWishes& wishes = {}) {
    return {.width = surroundings.columns.value_or(TextStyle::kUsualWidth),
            .theme = Theme(color, surroundings),
            .rules = textRulesFor(surroundings, wishes),
            .glyphs = glyphSetFor(surroundings, wishes)};
}

inline TextStyle textStyleOf(std::FILE* stream) {
    return textStyleFor(surroundingsOf(stream));
}

}  // namespace halvane::tool

#endif
