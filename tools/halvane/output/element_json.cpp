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
#include "tools/halvane/output/element_text.h"

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
        begin(place, label);
        writer_.boolean(value);
        writer_.endObject();
    }
    void number(const air::FieldPlace& place, std::string_view label, std::int64_t value,
                const air::NumberForm& form) override {
        begin(place, label);
        writer_.integer(value);
        const auto name = form.nameOf(static_cast<std::uint32_t>(value));
        if (!name.empty()) {
            writer_.key("meaning");
            writer_.string(name);
        }
        if (!form.unit.empty()) {
            writer_.key("unit");
            writer_.string(form.unit);
        }
        writer_.endObject();
    }
    void text(const air::FieldPlace& place, std::string_view label,
              std::string_view value) override {
        begin(place, label);
        writer_.string(value);
        writer_.endObject();
    }
    void octets(const air::FieldPlace& place, std::string_view label, air::Octets value) override {
        begin(place, label);
        writer_.hexString(value);
        writer_.endObject();
    }
    bool elements(std::string_view label, const air::ElementOctets& value) override {
        if (!list_.mayHoldLists()) return false;
        const std::size_t end = value.offsetOf(value.octets.size());
        begin({value.offset, end - value.offset}, label);
        writer_.hexString(value.octets);
        writer_.key("elements");
        writeList(writer_, ElementList(list_, element_, head_, value), report_);
        writer_.endObject();
        return true;
    }
    void beginGroup(std::string_view label) override {
        writer_.beginObject();
        writer_.key("name");
        writer_.string(label);
        writer_.key("fields");
        writer_.beginArray();
    }
    void endGroup() override {
        writer_.endArray();
        writer_.endObject();
    }

  private:
    void begin(const air::FieldPlace& place, std::string_view label) {
        writer_.beginObject();
        writer_.key("name");
        writer_.string(label);
        writer_.key("offset");
        writer_.integer(place.offset);
        writer_.key("size");
        writer_.integer(place.size);
        if (place.bitCount != 0) {
            writer_.key("bit");
            writer_.integer(place.firstBit);
            writer_.key("bits");
            writer_.integer(place.bitCount);
        }
        writer_.key("value");
    }

    JSONWriter& writer_;
    const ElementList& list_;
    const air::Element& element_;
    const std::size_t head_;
    DamageReport& report_;
};

void writeOctets(JSONWriter& writer, std::size_t offset, air::Octets octets) {
    writer.key("offset");
    writer.integer(offset);
    writer.key("bytes");
    writer.hexString(octets);
}

void writeBssid(JSONWriter& writer, const ElementList& list) {
    if (list.bssid().empty()) return;
    writer.key("bssid");
    writer.string(list.bssid());
}

// `offset` is that in the buffer.
void writeHead(JSONWriter& writer, const air::Element& element, std::size_t offset) {
    writer.key("id");
    writer.integer(air::idOctetOf(element.id));
    if (const auto extension = air::extensionOf(element.id)) {
        writer.key("extension");
        writer.integer(*extension);
    }
    writer.key("name");
    const std::string_view name = air::knownElementName(element);
    writer.string(name.empty() ? std::string_view(air::elementName(element)) : name);
    writeOctets(writer, offset, element.body);
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

void writeElements(JSONWriter& writer, air::ElementRange elements) {
    writer.beginArray();
    auto iterator = elements.begin();
    for (; iterator != elements.end(); ++iterator) {
        writer.beginObject();
        writeHead(writer, *iterator, iterator->offset);
        writer.endObject();
    }
    const auto trailing = iterator.rest();
    if (!trailing.empty()) {
        writer.beginObject();
        writeOctets(writer, trailing.offset, trailing.octets);
        writer.endObject();
    }
    writer.endArray();
}

void writeTrailing(JSONWriter& writer, const ElementList& list,
                   const air::TrailingOctets& trailing) {
    writer.beginObject();
    writeBssid(writer, list);
    writeOctets(writer, list.offsetOf(trailing.offset), trailing.octets);
    writer.endObject();
}

void writeElement(JSONWriter& writer, const ElementList& list, const air::Element& element,
                  DamageReport& report) {
    writer.beginObject();
    writeBssid(writer, list);
    writeHead(writer, element, list.offsetOf(element.offset));
    const DescribedElement described(list, element);
    if (!described.clause().empty()) {
        writer.key("clause");
        writer.string(described.clause());
    }
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
