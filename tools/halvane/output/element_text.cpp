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
#include "tools/halvane/output/paragraph.h"

namespace halvane::tool {

namespace {

constexpr std::size_t kFieldColumn = 20;
constexpr std::size_t kNestedIndent = 4;  // of each list within another
constexpr std::size_t kOctetsPerLine = 16;

std::string hexOf(air::Octets octets) {
    return ByteBuffer(octets).hex();
}

// What an element's lines depend on, besides its list.
struct TextWish {
    bool hasOctets;
    DamageReport& report;
};

std::size_t fieldColumn(const ElementList& list) {
    return kFieldColumn + kNestedIndent * list.depth();
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
        add(std::string(label) + ' ' + hexOf(value));
    }
    bool elements(std::string_view label, const air::ElementOctets& value) override {
        if (!list_.mayHoldLists()) return false;
        const air::Octets fixed = value.octets.first(value.fixedSize);
        if (!fixed.empty()) add(std::string(label) + " begins with " + hexOf(fixed));
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
            paragraph(std::string(head) + (first.empty() ? "" : ": "), first, column);
        for (auto group = groups_.begin() + 1; group != groups_.end(); ++group) {
            lines += group->elements;
            if (group->fields.empty() && group->label.empty()) continue;
            const std::string indent(column + 2 * group->depth, ' ');
            const std::string_view fields =
                group->fields.empty() ? std::string_view("-") : group->fields;
            lines += paragraph(indent + group->label, fields, indent.size() + 2);
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

std::string octetLines(air::Octets octets, std::size_t column) {
    std::string lines;
    for (std::size_t i = 0; i < octets.size(); ++i) {
        if (i % kOctetsPerLine == 0) {
            if (i > 0) lines += '\n';
            lines.append(column, ' ');
        } else {
            lines += ' ';
        }
        lines += hexOf(octets.subspan(i, 1));
    }
    if (!octets.empty()) lines += '\n';
    return lines;
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
    std::snprintf(text, sizeof text, "%c%4zu %*s%-7s %4zu ", mark, octet,
                  static_cast<int>(kNestedIndent * list.depth()), "", id.c_str(), length);
    return text;
}

std::string damageText(const ElementList& list, std::size_t octet,
                       const air::ElementDamage& damage) {
    return paragraph(margin(list, 'x', octet, "", damage.remaining),
                     "the element ends inside the field that begins here", fieldColumn(list));
}

std::string textOf(const ElementList& list, const air::Element& element, const TextWish& wish) {
    const std::size_t octet = list.offsetOf(element.offset);
    const DescribedElement described(list, element);
    std::string head = margin(list, ' ', octet, idText(element.id), element.body.size()) +
                       air::elementName(element);
    if (!described.clause().empty()) head.append(" (").append(described.clause()).append(")");
    FieldText fields(list, element, described.headSize(), wish);
    std::optional<air::ElementDamage> damage;
    if (described.hasFields()) damage = described.describe(fields);
    std::string text = fields.lines(head);
    if (wish.hasOctets || !described.hasFields() || damage) {
        text += octetLines(element.body, fieldColumn(list));
    }
    if (!damage) return text;
    const std::size_t place = described.octetOf(*damage);
    wish.report.note(place, elementProblem(place, element));
    return text += damageText(list, place, *damage);
}

std::string listText(const ElementList& list, const TextWish& wish) {
    std::string text;
    auto element = list.range().begin();
    for (; element != list.range().end(); ++element) text += textOf(list, *element, wish);
    const auto trailing = element.rest();
    if (trailing.empty()) return text;
    wish.report.note(list.offsetOf(trailing.offset), trailingProblem(list, trailing));
    return text += trailingText(list, trailing);
}

}  // namespace

std::string octetCount(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " octet" : " octets");
}

std::string elementTitles() {
    return "OCTET ID      LEN\n";
}

std::string elementText(const ElementList& list, const air::Element& element, bool hasOctets,
                        DamageReport& report) {
    return textOf(list, element, {hasOctets, report});
}

std::string elementNames(air::ElementRange elements) {
    std::string text;
    for (const air::Element& element : elements) {
        text += "    @" + std::to_string(element.offset) + ' ' + air::elementName(element) + ": " +
                hexOf(element.body) + '\n';
    }
    return text;
}

std::string trailingText(const ElementList& list, const air::TrailingOctets& trailing) {
    const std::size_t octet = list.offsetOf(trailing.offset);
    return paragraph(margin(list, 'x', octet, "", trailing.octets.size()),
                     trailingProblem(list, trailing), fieldColumn(list)) +
           octetLines(trailing.octets, fieldColumn(list));
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
