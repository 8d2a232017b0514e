#include "tools/halvane/output/element_json.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_decoder.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_info.h"
#include "halvane/air/field_sink.h"

#include "tools/halvane/output/described_element.h"
#include "tools/halvane/output/element_properties.h"
#include "tools/halvane/output/element_text.h"
#include "tools/halvane/output/json_record.h"
#include "tools/halvane/output/property_table.h"

namespace halvane::tool {

namespace {

// Writes the elements that a field holds.
void writeList(JSONWriter& writer, const ElementList& list, DamageReport& report);

class FieldJSON : public air::FieldSink {
  public:
    // `head` is the number of octets of the body before the fields.
    FieldJSON(JSONWriter& writer, const ElementList& list, const air::Element& element,
              std::size_t head, DamageReport& report)
        : writer_(writer), list_(list), element_(element), head_(head), report_(report) {}

    void flag(const air::FieldPlace& place, std::string_view label, bool value) override {
        write({.name = label, .place = place, .value = value});
    }
    void number(const air::FieldPlace& place, std::string_view label, std::int64_t value,
                const air::NumberForm& form) override {
        write({.name = label,
               .place = place,
               .value = value,
               .meaning = form.nameOf(static_cast<std::uint32_t>(value)),
               .unit = form.unit});
    }
    void text(const air::FieldPlace& place, std::string_view label,
              std::string_view value) override {
        write({.name = label, .place = place, .value = value});
    }
    void octets(const air::FieldPlace& place, std::string_view label, air::Octets value) override {
        write({.name = label, .place = place, .value = HexOctets{value}});
    }
    bool elements(std::string_view label, const air::ElementOctets& value) override {
        if (!list_.mayHoldLists()) return false;
        const std::size_t end = value.offsetOf(value.octets.size());
        writer_.beginObject();
        writeMembers(writer_, ToldField{.name = label,
                                        .place = air::FieldPlace{value.offset, end - value.offset},
                                        .value = HexOctets{value.octets}});
        writer_.key("elements");
        writeList(writer_, ElementList(list_, element_, head_, value), report_);
        writer_.endObject();
        return true;
    }
    void beginGroup(std::string_view label) override {
        writer_.beginObject();
        writeMembers(writer_, ToldField{.name = label});
        writer_.key("fields");
        writer_.beginArray();
    }
    void endGroup() override {
        writer_.endArray();
        writer_.endObject();
    }

  private:
    void write(const ToldField& field) { writeObject(writer_, field); }

    JSONWriter& writer_;
    const ElementList& list_;
    const air::Element& element_;
    const std::size_t head_;
    DamageReport& report_;
};

// `offset` is that in the buffer. `name` keeps the name of an element that has none.
ListedElement listed(const air::Element& element, std::size_t offset, std::string& name) {
    std::string_view known = air::knownElementName(element);
    if (known.empty()) known = name = air::elementName(element);
    return {.id = element.id, .name = known, .offset = offset, .body = element.body};
}

void writeList(JSONWriter& writer, const ElementList& list, DamageReport& report) {
    writer.beginArray();
    auto element = list.range().begin();
    for (; element != list.range().end(); ++element) {
        writeElement(writer, list, *element, report);
    }
    const auto trailing = element.rest();
    if (!trailing.empty()) {
        report.note(list.offsetOf(trailing.offset), trailingProblem(list, trailing));
        writeTrailing(writer, list, trailing);
    }
    writer.endArray();
}

}  // namespace

std::optional<std::size_t> writeElements(JSONWriter& writer, air::ElementRange elements,
                                         std::optional<std::size_t> sought) {
    std::optional<std::size_t> digits;
    writer.beginArray();
    std::string name;
    auto iterator = elements.begin();
    for (; iterator != elements.end(); ++iterator) {
        writeObject(writer, listed(*iterator, iterator->offset, name));
        // The octets are the last property, so its quote is the last one.
        if (iterator->offset == sought) {
            digits = writer.text().rfind('"') - 2 * iterator->body.size();
        }
    }
    const auto trailing = iterator.rest();
    if (!trailing.empty()) {
        writeObject(writer, ListedElement{.offset = trailing.offset, .body = trailing.octets});
    }
    writer.endArray();
    return digits;
}

void writeValue(JSONWriter& writer, const ListedElements& elements) {
    writeElements(writer, elements.range);
}

void writeTrailing(JSONWriter& writer, const ElementList& list,
                   const air::TrailingOctets& trailing) {
    DecodedElement octets;
    octets.offset = list.offsetOf(trailing.offset);
    octets.body = trailing.octets;
    octets.bssid = list.bssid();
    writeObject(writer, octets);
}

void writeElement(JSONWriter& writer, const ElementList& list, const air::Element& element,
                  DamageReport& report) {
    const DescribedElement described(list, element);
    std::string name;
    const DecodedElement head{listed(element, list.offsetOf(element.offset), name), list.bssid(),
                              described.clause()};
    writer.beginObject();
    writeMembers(writer, head);
    if (described.hasFields()) {
        writer.key("fields");
        writer.beginArray();
        FieldJSON fields(writer, list, element, described.headSize(), report);
        const auto damage = described.describe(fields);
        writer.endArray();
        if (damage) {
            writer.key("damage");
            writer.integer(described.offsetOf(*damage));
            const std::size_t octet = described.octetOf(*damage);
            report.note(octet, elementProblem(octet, element));
        }
    }
    writer.endObject();
}

}  // namespace halvane::tool
