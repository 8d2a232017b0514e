// What describe() tells, as one line of text.
#ifndef TESTS_AIR_TOLD_FIELDS_H
#define TESTS_AIR_TOLD_FIELDS_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "halvane/air/field_sink.h"
#include "halvane/base/byte_buffer.h"

namespace halvane::testing {

// "Label=value;" for each field, "Label{...}" for each group. A number with a name is told by name.
class ToldFields : public air::FieldSink {
  public:
    std::string text_;
    std::size_t end_ = 0;  // the end of the field that ends last

    void flag(const air::FieldPlace& place, std::string_view label, bool value) override {
        add(place, label, value ? "1" : "0");
    }
    void number(const air::FieldPlace& place, std::string_view label, std::int64_t value,
                const air::NumberForm& form) override {
        const auto name = form.nameOf(static_cast<std::uint32_t>(value));
        add(place, label, name.empty() ? std::to_string(value) : std::string(name));
    }
    void text(const air::FieldPlace& place, std::string_view label,
              std::string_view value) override {
        add(place, label, value);
    }
    void octets(const air::FieldPlace& place, std::string_view label, air::Octets value) override {
        add(place, label, ByteBuffer(value).hex());
    }
    void beginGroup(std::string_view label) override { text_.append(label).append("{"); }
    void endGroup() override { text_ += "}"; }

  private:
    void add(const air::FieldPlace& place, std::string_view label, std::string_view value) {
        text_.append(label).append("=").append(value).append(";");
        end_ = std::max(end_, place.offset + place.size);
    }
};

}  // namespace halvane::testing

#endif
