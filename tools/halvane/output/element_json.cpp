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

namespace halvane::tool {

namespace {

class FieldJSON : public air::FieldSink {
  public:
    explicit FieldJSON(JSONWriter& writer) : writer_(writer) {}

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
};

void writeHead(JSONWriter& writer, const air::Element& element) {
    writer.key("id");
    writer.integer(air::idOctetOf(element.id));
    if (const auto extension = air::extensionOf(element.id)) {
        writer.key("extension");
        writer.integer(*extension);
    }
    writer.key("name");
    const std::string_view name = air::knownElementName(element);
    writer.string(name.empty() ? std::string_view(air::elementName(element)) : name);
    writer.key("offset");
    writer.integer(element.offset);
    writer.key("bytes");
    writer.hexString(element.body);
}

}  // namespace

void writeElements(JSONWriter& writer, air::ElementRange elements) {
    writer.beginArray();
    auto iterator = elements.begin();
    for (; iterator != elements.end(); ++iterator) {
        writer.beginObject();
        writeHead(writer, *iterator);
        writer.endObject();
    }
    const auto trailing = iterator.rest();
    if (!trailing.empty()) writeTrailing(writer, trailing);
    writer.endArray();
}

void writeTrailing(JSONWriter& writer, const air::TrailingOctets& trailing) {
    writer.beginObject();
    writer.key("offset");
    writer.integer(trailing.offset);
    writer.key("bytes");
    writer.hexString(trailing.octets);
    writer.endObject();
}

void writeElement(JSONWriter& writer, const air::Element& element) {
    writer.beginObject();
    writeHead(writer, element);
    const DescribedElement described(element);
    if (!described.clause().empty()) {
        writer.key("clause");
        writer.string(described.clause());
    }
    if (described.hasFields()) {
        writer.key("fields");
        writer.beginArray();
        FieldJSON fields(writer);
        const auto damage = described.describe(fields);
        writer.endArray();
        if (damage) {
            writer.key("damage");
            writer.integer(described.offsetOf(*damage));
        }
    }
    writer.endObject();
}

}  // namespace halvane::tool
