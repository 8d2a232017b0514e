#include "tools/halvane/output/glyphs.h"

namespace halvane::tool {

namespace {

// U+258F to U+2588: from one eighth to the whole cell.
constexpr const char* kEighths[] = {"\u258F", "\u258E", "\u258D", "\u258C",
                                    "\u258B", "\u258A", "\u2589", "\u2588"};
// U+2581 to U+2588.
constexpr const char* kLevels[] = {"\u2581", "\u2582", "\u2583", "\u2584",
                                   "\u2585", "\u2586", "\u2587", "\u2588"};
// The Linux console's font has halves alone.
constexpr const char* kHalves[] = {"\u258C", "\u2588"};
constexpr const char* kLowHalves[] = {"\u2584", "\u2588"};
constexpr const char* kASCIIWhole[] = {"#"};
constexpr const char* kASCIILevels[] = {"_", ".", "-", "=", "*", "#"};

constexpr const char* kUpwardsArrow = "\u2191";
constexpr const char* kDownwardsArrow = "\u2193";

constexpr Glyphs kUTF8Glyphs = {kEighths,        "",       kLevels,    kUpwardsArrow,
                                kDownwardsArrow, "\u2026", "2\u00D780"};
constexpr Glyphs kLinuxConsoleGlyphs = {kHalves,         "",  kLowHalves, kUpwardsArrow,
                                        kDownwardsArrow, "~", "2x80"};
constexpr Glyphs kASCIIGlyphs = {kASCIIWhole, ".", kASCIILevels, "^", "v", "~", "2x80"};

bool isASCIIAlone(const Surroundings& surroundings, const TextWishes& wishes) {
    return wishes.isASCII || !surroundings.isUTF8;
}

}  // namespace

const Glyphs& glyphsOf(GlyphSet set) {
    switch (set) {
        case GlyphSet::UTF8:
            return kUTF8Glyphs;
        case GlyphSet::LinuxConsole:
            return kLinuxConsoleGlyphs;
        case GlyphSet::ASCII:
            break;
    }
    return kASCIIGlyphs;
}

GlyphSet glyphSetFor(const Surroundings& surroundings, const TextWishes& wishes) {
    if (isASCIIAlone(surroundings, wishes)) return GlyphSet::ASCII;
    if (wishes.ambiguous == AmbiguousWidth::Two) return GlyphSet::ASCII;
    return surroundings.term == "linux" ? GlyphSet::LinuxConsole : GlyphSet::UTF8;
}

TextRules textRulesFor(const Surroundings& surroundings, const TextWishes& wishes) {
    return {.isASCII = isASCIIAlone(surroundings, wishes), .ambiguous = wishes.ambiguous};
}

}  // namespace halvane::tool
