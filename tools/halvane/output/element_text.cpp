#include "tools/halvane/output/element_text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_info.h"
#include "halvane/air/field_sink.h"
#include "halvane/base/byte_buffer.h"

#include "tools/halvane/output/described_element.h"
#include "tools/halvane/output/element_summary.h"
#include "tools/halvane/output/paragraph.h"

namespace halvane::tool {

namespace {

constexpr std::size_t kFieldColumn = 20;
constexpr std::size_t kOctetColumn = 18;
constexpr std::size_t kNestedIndent = 4;  // of each list within another
constexpr std::size_t kOctetCells = 3;    // of an octet in a row of them

std::string hexOf(air::Octets octets) {
    return ByteBuffer(octets).hex();
}

// In capitals.
std::string shownHex(air::Octets octets) {
    std::string text = hexOf(octets);
    std::ranges::transform(text, text.begin(), [](char digit) {
        return digit >= 'a' && digit <= 'f' ? static_cast<char>(digit - 'a' + 'A') : digit;
    });
    return text;
}

// What an element's lines depend on, besides its list.
struct TextWish : ElementWish {
    DamageReport& report;
};

std::size_t fieldColumn(const ElementList& list) {
    return kFieldColumn + kNestedIndent * list.depth();
}

std::size_t octetColumn(const ElementList& list) {
    return kOctetColumn + kNestedIndent * list.depth();
}

// The lines of the elements that a field holds.
std::string listText(const ElementList& list, const TextWish& wish);

// The fields of an element as paragraphs: those that stand together in one, each group in one.
class FieldText : public air::FieldSink {
  public:
    // `head` is the number of octets of the body before the fields.
    FieldText(const ElementList& list, const air::Element& element, std::size_t head,
              const TextWish& wish)
        : list_(list), element_(element), head_(head), wish_(wish) {}

    void flag(const air::FieldPlace&, std::string_view label, bool value) override {
        if (value) add(label);
    }
    void number(const air::FieldPlace&, std::string_view label, std::int64_t value,
                const air::NumberForm& form) override {
        std::string text = std::string(label) + ' ' + std::to_string(value);
        if (!form.unit.empty()) text.append(1, ' ').append(form.unit);
        const auto name = form.nameOf(static_cast<std::uint32_t>(value));
        if (!name.empty()) text.append(" (").append(name).append(1, ')');
        add(text);
    }
    void text(const air::FieldPlace&, std::string_view label, std::string_view value) override {
        add(std::string(label).append(1, ' ').append(value));
    }
    void octets(const air::FieldPlace&, std::string_view label, air::Octets value) override {
        add(std::string(label) + ' ' + shownHex(value));
    }
    bool elements(std::string_view label, const air::ElementOctets& value) override {
        if (!list_.mayHoldLists()) return false;
        const air::Octets fixed = value.octets.first(value.fixedSize);
        if (!fixed.empty()) add(std::string(label) + " begins with " + shownHex(fixed));
        const ElementList nested(list_, element_, head_, value);
        groups_.push_back({depth_, {}, {}, listText(nested, wish_)});
        groups_.push_back({depth_, {}, {}, {}});
        return true;
    }
    void beginGroup(std::string_view label) override {
        ++depth_;
        groups_.push_back({depth_, std::string(label) + ": ", {}, {}});
    }
    // The fields after a group belong to the outer one again.
    void endGroup() override {
        --depth_;
        groups_.push_back({depth_, {}, {}, {}});
    }

    std::string lines(std::string_view head) const {
        const std::size_t column = fieldColumn(list_);
        const std::string& first = groups_.front().fields;
        std::string lines =
            paragraph(std::string(head) + (first.empty() ? "" : ": "), first, column, wish_.width);
        for (auto group = groups_.begin() + 1; group != groups_.end(); ++group) {
            lines += group->elements;
            if (group->fields.empty() && group->label.empty()) continue;
            const std::string indent(column + 2 * group->depth, ' ');
            const std::string_view fields =
                group->fields.empty() ? std::string_view("-") : group->fields;
            lines += paragraph(indent + group->label, fields, indent.size() + 2, wish_.width);
        }
        return lines;
    }

  private:
    struct Group {
        std::size_t depth;
        std::string label;
        std::string fields;
        std::string elements;  // their lines; then there is nothing else
    };

    void add(std::string_view field) {
        std::string& fields = groups_.back().fields;
        if (!fields.empty()) fields += "; ";
        fields += field;
    }

    const ElementList& list_;
    const air::Element& element_;
    const std::size_t head_;
    const TextWish& wish_;
    std::size_t depth_ = 0;
    std::vector<Group> groups_{{}};
};

// Where octets stand.
struct OctetRows {
    std::size_t column;
    std::size_t count;  // of the octets of a row
};

// Sixteen stand in a row, or half of them as often as the width asks for it, but never below four.
OctetRows octetRows(const ElementList& list, const ElementWish& wish) {
    constexpr std::size_t kMost = 16;
    constexpr std::size_t kLeast = 4;
    OctetRows rows{octetColumn(list), kMost};
    while (rows.count > kLeast && rows.column + kOctetCells * rows.count - 1 > wish.width) {
        rows.count /= 2;
    }
    return rows;
}

std::string octetLines(air::Octets octets, const OctetRows& rows) {
    std::string lines;
    for (std::size_t i = 0; i < octets.size(); i += rows.count) {
        const std::size_t count = std::min(rows.count, octets.size() - i);
        lines.append(rows.column, ' ');
        for (std::size_t k = 0; k < count; ++k) {
            if (k > 0) lines += ' ';
            lines += shownHex(octets.subspan(i + k, 1));
        }
        lines += '\n';
    }
    return lines;
}

// The same with a caret below the octet `index`, or behind the last one, and a note beside it.
std::string markedOctets(air::Octets octets, const OctetRows& rows, std::size_t index,
                         const std::string& note) {
    const std::size_t last = octets.empty() ? 0 : (octets.size() - 1) / rows.count;
    const std::size_t line = std::min(index / rows.count, last);
    const std::size_t end = std::min((line + 1) * rows.count, octets.size());
    const std::size_t place = kOctetCells * (std::min(index, end) - line * rows.count);
    return octetLines(octets.first(end), rows) + std::string(rows.column + place, ' ') + "^^ " +
           note + '\n' + octetLines(octets.subspan(end), rows);
}

std::string idText(air::ElementId id) {
    std::string text = std::to_string(air::idOctetOf(id));
    if (const auto extension = air::extensionOf(id)) text += '/' + std::to_string(*extension);
    return text;
}

// The margin: mark, octet in the buffer, and, as deep as the list, number and length.
std::string margin(const ElementList& list, char mark, std::size_t octet, const std::string& id,
                   std::size_t length) {
    char text[96];
    std::snprintf(text, sizeof text, "%c%4zu %*s%-7s %3zu ", mark, octet,
                  static_cast<int>(kNestedIndent * list.depth()), "", id.c_str(), length);
    return text;
}

// The same without number and length.
std::string bareMargin(const ElementList& list, std::size_t octet) {
    char text[32];
    std::snprintf(text, sizeof text, "x%4zu", octet);
    std::string margin = text;
    margin.resize(std::max(octetColumn(list), margin.size() + 1), ' ');
    return margin;
}

// `index` is that of the damage in the element's octets.
std::string damageText(const ElementList& list, const air::Element& element, std::size_t octet,
                       std::size_t index, const TextWish& wish) {
    return paragraph(bareMargin(list, octet), "the element ends inside the field that begins here",
                     fieldColumn(list), wish.width) +
           markedOctets(element.octets, octetRows(list, wish), index,
                        "octet " + std::to_string(octet));
}

std::string summaryLines(const ElementList& list, const std::string& head,
                         const ElementSummary& summary, const TextWish& wish) {
    const std::size_t column = fieldColumn(list);
    std::string text =
        paragraph(head + (summary.text.empty() ? "" : ": "), summary.text, column, wish.width);
    for (const std::string& line : summary.lines) {
        text += paragraph(std::string(column, ' '), line, column + 2, wish.width);
    }
    return text;
}

std::string textOf(const ElementList& list, const air::Element& element, const TextWish& wish) {
    const std::size_t octet = list.offsetOf(element.offset);
    const DescribedElement described(list, element);
    std::string head =
        margin(list, ' ', octet, idText(element.id), element.body.size()) + elementHeading(element);
    const auto summary = wish.hasFields ? std::nullopt : elementSummary(list, element, wish.rules);
    if (summary) {
        return summaryLines(list, head, *summary, wish) +
               (wish.hasOctets ? octetLines(element.body, octetRows(list, wish)) : "");
    }
    const bool hasClause = wish.hasFields && !described.clause().empty();
    if (hasClause) head.append(" (").append(described.clause()).append(")");
    FieldText fields(list, element, described.headSize(), wish);
    std::optional<air::ElementDamage> damage;
    if (described.hasFields()) damage = described.describe(fields);
    std::string text = fields.lines(head);
    if (!damage) {
        const bool areOctetsShown = wish.hasOctets || !described.hasFields();
        return areOctetsShown ? text + octetLines(element.body, octetRows(list, wish)) : text;
    }
    const std::size_t place = described.octetOf(*damage);
    wish.report.note(place, elementProblem(place, element));
    const std::size_t index = element.offsetOfBody(described.offsetOf(*damage)) - element.offset;
    return text += damageText(list, element, place, index, wish);
}

constexpr std::size_t kElementHead = 2;  // ID and length

std::string listText(const ElementList& list, const TextWish& wish) {
    std::string text;
    auto element = list.range().begin();
    for (; element != list.range().end(); ++element) text += textOf(list, *element, wish);
    const auto trailing = element.rest();
    if (trailing.empty()) return text;
    wish.report.note(list.offsetOf(trailing.offset), trailingProblem(list, trailing));
    return text += trailingText(list, trailing, wish);
}

}  // namespace

std::string octetCount(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " octet" : " octets");
}

std::string elementTitles() {
    return "OCTET ID      LEN";
}

std::string elementText(const ElementList& list, const air::Element& element,
                        const ElementWish& wish, DamageReport& report) {
    return textOf(list, element, {wish, report});
}

std::string elementNames(air::ElementRange elements) {
    std::string text;
    for (const air::Element& element : elements) {
        text += "    @" + std::to_string(element.offset) + ' ' + air::elementName(element) + ": " +
                hexOf(element.body) + '\n';
    }
    return text;
}

std::string trailingText(const ElementList& list, const air::TrailingOctets& trailing,
                         const ElementWish& wish) {
    const std::size_t octet = list.offsetOf(trailing.offset);
    const OctetRows rows = octetRows(list, wish);
    const auto length = trailing.missingLength();
    if (!length) {
        return paragraph(bareMargin(list, octet), trailingProblem(list, trailing),
                         fieldColumn(list), wish.width) +
               markedOctets(trailing.octets, rows, 0, "octet " + std::to_string(octet));
    }
    const air::ElementId id = *trailing.id();
    const std::size_t left = trailing.octets.size() - kElementHead;
    const std::string told = octetCount(*length) + (*length == 1 ? " is" : " are") + " told, " +
                             std::to_string(left) + (left == 1 ? " is" : " are") + " left";
    const auto* const info = air::elementInfo(id);
    const std::string name(info != nullptr ? info->name : "element");
    return paragraph(margin(list, 'x', octet, idText(id), *length) + name + ": ", told,
                     fieldColumn(list), wish.width) +
           markedOctets(trailing.octets, rows, 1,
                        "octet " + std::to_string(list.offsetOf(trailing.offset + 1)) + ": length");
}

std::string trailingProblem(const ElementList& list, const air::TrailingOctets& trailing) {
    const auto length = trailing.missingLength();
    if (!length) return "one octet is left, which makes no element";
    const std::size_t left = trailing.octets.size() - 2;
    return "octet " + std::to_string(list.offsetOf(trailing.offset + 1)) + ": the element ends " +
           octetCount(*length - left) + " behind the end";
}

std::string elementProblem(std::size_t octet, const air::Element& element) {
    return "octet " + std::to_string(octet) + ": the element " + air::elementName(element) +
           " ends inside the field that begins there";
}

}  // namespace halvane::tool
