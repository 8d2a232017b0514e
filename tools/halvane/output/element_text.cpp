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
constexpr std::size_t kOctetsPerLine = 16;

std::string hexOf(air::Octets octets) {
    return ByteBuffer(octets).hex();
}

// The fields of an element as paragraphs: those that stand together in one, each group in one.
class FieldText : public air::FieldSink {
  public:
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
    void beginGroup(std::string_view label) override {
        ++depth_;
        groups_.push_back({depth_, std::string(label) + ": ", {}});
    }
    // The fields after a group belong to the outer one again.
    void endGroup() override {
        --depth_;
        groups_.push_back({depth_, {}, {}});
    }

    std::string lines(std::string_view head) const {
        const std::string& first = groups_.front().fields;
        std::string lines =
            paragraph(std::string(head) + (first.empty() ? "" : ": "), first, kFieldColumn);
        for (auto group = groups_.begin() + 1; group != groups_.end(); ++group) {
            if (group->fields.empty() && group->label.empty()) continue;
            const std::string indent(kFieldColumn + 2 * group->depth, ' ');
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
    };

    void add(std::string_view field) {
        std::string& fields = groups_.back().fields;
        if (!fields.empty()) fields += "; ";
        fields += field;
    }

    std::size_t depth_ = 0;
    std::vector<Group> groups_{{}};
};

std::string octetLines(air::Octets octets) {
    std::string lines;
    for (std::size_t i = 0; i < octets.size(); ++i) {
        if (i % kOctetsPerLine == 0) {
            if (i > 0) lines += '\n';
            lines.append(kFieldColumn, ' ');
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

// The margin: mark, octet, number and length.
std::string margin(char mark, std::size_t offset, const std::string& id, std::size_t length) {
    char text[64];
    std::snprintf(text, sizeof text, "%c%4zu %-7s %4zu ", mark, offset, id.c_str(), length);
    return text;
}

std::string damageText(const air::Element& element, const DescribedElement& described,
                       const air::ElementDamage& damage) {
    const std::size_t octet = element.offsetOfBody(described.offsetOf(damage));
    return paragraph(margin('x', octet, "", damage.remaining),
                     "the element ends inside the field that begins here", kFieldColumn);
}

}  // namespace

std::string octetCount(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " octet" : " octets");
}

std::string elementTitles() {
    return "OCTET ID      LEN\n";
}

std::string elementText(const air::Element& element, bool hasOctets) {
    const std::string head = margin(' ', element.offset, idText(element.id), element.body.size()) +
                             air::elementName(element);
    const DescribedElement described(element);
    FieldText fields;
    std::optional<air::ElementDamage> damage;
    if (described.hasFields()) damage = described.describe(fields);
    std::string text = fields.lines(head);
    if (hasOctets || !described.hasFields() || damage) text += octetLines(element.body);
    if (damage) text += damageText(element, described, *damage);
    return text;
}

std::string elementNames(air::ElementRange elements) {
    std::string text;
    for (const air::Element& element : elements) {
        text += "    @" + std::to_string(element.offset) + ' ' + air::elementName(element) + ": " +
                hexOf(element.body) + '\n';
    }
    return text;
}

std::string trailingText(const air::TrailingOctets& trailing) {
    return paragraph(margin('x', trailing.offset, "", trailing.octets.size()),
                     trailingProblem(trailing), kFieldColumn) +
           octetLines(trailing.octets);
}

std::string trailingProblem(const air::TrailingOctets& trailing) {
    const auto length = trailing.missingLength();
    if (!length) return "one octet is left, which makes no element";
    const std::size_t left = trailing.octets.size() - 2;
    return "octet " + std::to_string(trailing.offset + 1) + ": the element ends " +
           octetCount(*length - left) + " behind the end";
}

}  // namespace halvane::tool
