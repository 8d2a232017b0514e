#include "tools/halvane/output/theme.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace halvane::tool {

namespace {

// Parameters of "select graphic rendition" (ECMA-48, 8.3.117); empty for no colour.
struct Row {
    Meaning meaning;
    std::string_view of16;
    std::string_view of256;
};

constexpr auto kColors = std::to_array<Row>({
    {Meaning::Plain, "", ""},
    {Meaning::Danger, "1;31", "1;38;5;196"},
    {Meaning::Caution, "33", "38;5;130"},
    {Meaning::Good, "32", "38;5;30"},
    {Meaning::StrongSignal, "1;36", "1;38;5;32"},
    {Meaning::FairSignal, "36", "38;5;32"},
    {Meaning::FaintBar, "2", "38;5;243"},
    {Meaning::Current, "1;32", "1;38;5;30"},
    {Meaning::Secondary, "2", "38;5;243"},
    {Meaning::Header, "1", "1"},
});

std::string_view colorOf(Meaning meaning, Palette palette) {
    if (palette == Palette::None) return {};
    const auto row = std::ranges::find(kColors, meaning, &Row::meaning);
    if (row == kColors.end()) return {};
    return palette == Palette::Colors16 ? row->of16 : row->of256;
}

constexpr int kStrong = -55;  // dBm and above
constexpr int kFair = -67;    // dBm and above
constexpr int kWeak = -78;    // dBm and above

constexpr std::string_view kFirstStrongIsolate = "\u2068";
constexpr std::string_view kPopDirectionalIsolate = "\u2069";

}  // namespace

Meaning meaningOfSignal(int dBm) {
    if (dBm >= kStrong) return Meaning::StrongSignal;
    return dBm >= kFair ? Meaning::FairSignal : Meaning::Plain;
}

Meaning meaningOfBar(int dBm) {
    return dBm < kWeak ? Meaning::FaintBar : meaningOfSignal(dBm);
}

Palette paletteFor(ColorChoice choice, const Surroundings& surroundings) {
    if (choice == ColorChoice::Never) return Palette::None;
    const bool isCapable = surroundings.isTerminal && surroundings.noColor.empty() &&
                           !surroundings.term.empty() && surroundings.term != "dumb";
    if (choice == ColorChoice::Auto && !isCapable) return Palette::None;
    const bool has256 = surroundings.term.find("256color") != std::string::npos ||
                        surroundings.colorTerm == "truecolor" || surroundings.colorTerm == "24bit";
    return has256 ? Palette::Colors256 : Palette::Colors16;
}

std::string Theme::painted(std::string_view text, Meaning meaning) const {
    const std::string_view color = colorOf(meaning, palette_);
    const std::size_t first = text.find_first_not_of(' ');
    if (color.empty() || first == std::string_view::npos) return std::string(text);
    const std::size_t end = text.find_last_not_of(' ') + 1;

    std::string painted(text.substr(0, first));
    painted.append("\x1B[").append(color).append("m");
    painted.append(text.substr(first, end - first)).append("\x1B[m");
    painted.append(text.substr(end));
    return painted;
}

std::string Theme::painted(const ShownText& text, Meaning meaning) const {
    const bool isIsolated = isTerminal_ && text.isRightToLeft();
    std::string result(isIsolated ? kFirstStrongIsolate : "");
    std::string_view rest = text.octets();
    auto unit = text.units().begin();
    while (unit != text.units().end()) {
        const bool isAdded = unit->isAdded;
        std::size_t size = 0;
        for (; unit != text.units().end() && unit->isAdded == isAdded; ++unit) size += unit->size;
        result += painted(rest.substr(0, size), isAdded ? Meaning::Secondary : meaning);
        rest.remove_prefix(size);
    }
    return result.append(isIsolated ? kPopDirectionalIsolate : "");
}

}  // namespace halvane::tool
