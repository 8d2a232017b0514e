#include "tools/halvane/output/unicode.h"

#include <utf8proc.h>

#include "tools/halvane/output/ambiguous_width.h"

namespace halvane::tool {

namespace {

const utf8proc_property_t& propertiesOf(char32_t character) {
    return *utf8proc_get_property(static_cast<utf8proc_int32_t>(character));
}

bool isConjoiningJamo(const utf8proc_property_t& properties) {
    return properties.boundclass == UTF8PROC_BOUNDCLASS_V ||
           properties.boundclass == UTF8PROC_BOUNDCLASS_T;
}

}  // namespace

bool isVisible(char32_t character) {
    const utf8proc_property_t& properties = propertiesOf(character);
    if (properties.ignorable) return false;
    switch (properties.category) {
        case UTF8PROC_CATEGORY_CN:
        case UTF8PROC_CATEGORY_CC:
        case UTF8PROC_CATEGORY_CF:
        case UTF8PROC_CATEGORY_CS:
        case UTF8PROC_CATEGORY_CO:
        case UTF8PROC_CATEGORY_ZL:
        case UTF8PROC_CATEGORY_ZP:
            return false;
        default:
            return true;
    }
}

bool isCombining(char32_t character) {
    const utf8proc_property_t& properties = propertiesOf(character);
    return properties.category == UTF8PROC_CATEGORY_MN ||
           properties.category == UTF8PROC_CATEGORY_ME || isConjoiningJamo(properties);
}

bool isBlank(char32_t character) {
    constexpr char32_t kBraillePatternBlank = 0x2800;
    return character == kBraillePatternBlank ||
           propertiesOf(character).category == UTF8PROC_CATEGORY_ZS;
}

unsigned cellsOf(char32_t character, AmbiguousWidth ambiguous) {
    if (character >= ' ' && character < 0x7F) return 1;
    const utf8proc_property_t& properties = propertiesOf(character);
    if (isCombining(character) || properties.category == UTF8PROC_CATEGORY_CF) return 0;
    if (properties.category == UTF8PROC_CATEGORY_MC) return 1;
    if (ambiguous == AmbiguousWidth::Two && isOfAmbiguousWidth(character)) return 2;
    return static_cast<unsigned>(utf8proc_charwidth(static_cast<utf8proc_int32_t>(character)));
}

bool isRightToLeft(char32_t character) {
    const utf8proc_property_t& properties = propertiesOf(character);
    return properties.bidi_class == UTF8PROC_BIDI_CLASS_R ||
           properties.bidi_class == UTF8PROC_BIDI_CLASS_AL;
}

bool isPictograph(char32_t character) {
    return propertiesOf(character).boundclass == UTF8PROC_BOUNDCLASS_EXTENDED_PICTOGRAPHIC;
}

bool isEmojiModifier(char32_t character) {
    return character >= 0x1F3FB && character <= 0x1F3FF;
}

bool isRegionalIndicator(char32_t character) {
    return character >= 0x1F1E6 && character <= 0x1F1FF;
}

bool GraphemeBreaks::beginsCluster(char32_t character) {
    const bool isBreak = isFirst_ || utf8proc_grapheme_break_stateful(
                                         static_cast<utf8proc_int32_t>(previous_),
                                         static_cast<utf8proc_int32_t>(character), &state_);
    isFirst_ = false;
    previous_ = character;
    return isBreak;
}

}  // namespace halvane::tool
