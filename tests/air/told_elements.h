// A sink that takes the fields that hold elements, and lists them.
#ifndef TESTS_AIR_TOLD_ELEMENTS_H
#define TESTS_AIR_TOLD_ELEMENTS_H

#include <cstdint>
#include <string>
#include <string_view>

#include "halvane/air/field_sink.h"
#include "halvane/base/byte_buffer.h"

namespace halvane::testing {

class ToldElements : public air::FieldSink {
  public:
    // "Label @offset fixed|elements" for each field, each with its line feed.
    std::string list;
    std::string otherLabels;  // of fields of octets that are not taken

    void flag(const air::FieldPlace&, std::string_view, bool) override {}
    void number(const air::FieldPlace&, std::string_view, std::int64_t,
                const air::NumberForm&) override {}
    void text(const air::FieldPlace&, std::string_view, std::string_view) override {}
    void octets(const air::FieldPlace&, std::string_view label, air::Octets) override {
        otherLabels.append(label).append(";");
    }
    bool elements(std::string_view label, const air::ElementOctets& value) override {
        list.append(label).append(" @").append(std::to_string(value.offset)).append(" ");
        list += ByteBuffer(value.octets.first(value.fixedSize)).hex() + '|';
        list += ByteBuffer(value.elements()).hex() + '\n';
        return true;
    }
    void beginGroup(std::string_view) override {}
    void endGroup() override {}
};

}  // namespace halvane::testing

#endif
