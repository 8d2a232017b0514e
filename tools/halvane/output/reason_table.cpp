#include "tools/halvane/output/reason_table.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "tools/halvane/output/shown_text.h"

namespace halvane::tool {

namespace {

constexpr std::size_t kUsualValue = 22;
constexpr std::size_t kWideValue = 30;
constexpr std::size_t kWideFrom = 120;
constexpr std::size_t kColumnsFrom = 60;
// Less than this is left for no column of text: lines get wider than the terminal instead.
constexpr std::size_t kLeastText = 8;

// A line of cells, with blanks only where something follows them.
class Line {
  public:
    explicit Line(const Theme& theme) : theme_(theme) {}

    void putAt(std::size_t column, const ShownText& text, Meaning meaning) {
        if (text.isEmpty()) return;
        text_.append(column > cells_ ? column - cells_ : 0, ' ');
        cells_ = std::max(column, cells_) + text.cells();
        text_ += theme_.painted(text, meaning);
    }
    std::string take() { return std::move(text_ += '\n'); }

  private:
    const Theme& theme_;
    std::string text_;
    std::size_t cells_ = 0;
};

std::size_t roomFrom(std::size_t column, const TextStyle& style) {
    return std::max(style.width, column + kLeastText) - column;
}

ShownText lineOf(const std::vector<ShownText>& lines, std::size_t index) {
    return index < lines.size() ? lines[index] : ShownText();
}

std::string besideOneAnother(const ReasonRow& row, const TextStyle& style) {
    const bool isWide = style.width >= kWideFrom;
    const std::size_t valueCells = isWide ? kWideValue : kUsualValue;
    const std::size_t reasonColumn = kValueColumn + valueCells + 1;
    std::vector<TextPart> parts = row.value;
    for (TextPart& part : parts) part.beginsLine = part.beginsLine || (row.isTall && !isWide);
    const auto values = wrapped(parts, valueCells);
    const auto reasons = wrapped(row.because, roomFrom(reasonColumn, style));
    std::string text;
    for (std::size_t i = 0; i < std::max({values.size(), reasons.size(), std::size_t{1}}); ++i) {
        Line line(style.theme);
        if (i == 0) line.putAt(0, ownText(row.what, {}), Meaning::Plain);
        line.putAt(kValueColumn, lineOf(values, i), row.meaning);
        line.putAt(reasonColumn, lineOf(reasons, i), Meaning::Plain);
        text += line.take();
    }
    return text;
}

std::string belowOneAnother(const ReasonRow& row, const TextStyle& style) {
    constexpr std::size_t kReasonIndent = 2;
    std::string text;
    const auto add = [&](std::size_t column, const std::vector<TextPart>& parts, Meaning meaning) {
        for (const ShownText& part : wrapped(parts, roomFrom(column, style))) {
            Line line(style.theme);
            if (text.empty()) line.putAt(0, ownText(row.what, {}), Meaning::Plain);
            line.putAt(column, part, meaning);
            text += line.take();
        }
    };
    add(kValueColumn, row.value, row.meaning);
    add(kReasonIndent, row.because, Meaning::Plain);
    return text;
}

}  // namespace

std::string reasonLines(const std::vector<ReasonRow>& rows, const TextStyle& style) {
    std::string text;
    for (const ReasonRow& row : rows) {
        text +=
            style.width < kColumnsFrom ? belowOneAnother(row, style) : besideOneAnother(row, style);
    }
    return text;
}

std::string hangingLines(const ShownText& head, Meaning headMeaning,
                         const std::vector<TextPart>& parts, Meaning meaning,
                         const TextStyle& style) {
    std::string text;
    for (const ShownText& part : wrapped(parts, roomFrom(head.cells(), style))) {
        Line line(style.theme);
        if (text.empty()) line.putAt(0, head, headMeaning);
        line.putAt(head.cells(), part, meaning);
        text += line.take();
    }
    return text;
}

}  // namespace halvane::tool
