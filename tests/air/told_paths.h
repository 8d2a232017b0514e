// What describe() tells, a line for each field: "Group/Label=value".
#ifndef TESTS_AIR_TOLD_PATHS_H
#define TESTS_AIR_TOLD_PATHS_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/field_sink.h"
#include "halvane/base/byte_buffer.h"

namespace halvane::testing {

// Numbers are decimal even if they have a name, octets are hexadecimal, flags are 0 or 1.
class ToldPaths : public air::FieldSink {
  public:
    std::vector<std::string> lines_;

    void flag(const air::FieldPlace&, std::string_view label, bool value) override {
        add(label, value ? "1" : "0");
    }
    void number(const air::FieldPlace&, std::string_view label, std::int64_t value,
                const air::NumberForm&) override {
        add(label, std::to_string(value));
    }
    void text(const air::FieldPlace&, std::string_view label, std::string_view value) override {
        add(label, value);
    }
    void octets(const air::FieldPlace&, std::string_view label, air::Octets value) override {
        add(label, ByteBuffer(value).hex());
    }
    void beginGroup(std::string_view label) override {
        ends_.push_back(path_.size());
        path_.append(label).append("/");
    }
    void endGroup() override {
        path_.resize(ends_.back());
        ends_.pop_back();
    }

  private:
    void add(std::string_view label, std::string_view value) {
        lines_.push_back(path_ + std::string(label) + "=" + std::string(value));
    }

    std::string path_;
    std::vector<std::size_t> ends_;
};

}  // namespace halvane::testing

#endif
