// What describe() tells of an element: each field with its path, its place and its value.
#ifndef TESTS_JUDGE_TOLD_VALUES_H
#define TESTS_JUDGE_TOLD_VALUES_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/field_sink.h"

namespace halvane::testing {

struct ToldValue {
    std::string path;  // the groups' labels and the field's, with '/' between them
    std::size_t firstBit = 0;
    std::size_t bitCount = 0;
    std::optional<std::int64_t> number{};  // absent for text and octets, which the octets tell
};

class ToldValues : public air::FieldSink {
  public:
    // `start` octets of the body stand before the part that is told.
    explicit ToldValues(std::size_t start) : start_(start) {}

    std::vector<ToldValue> values_;

    void flag(const air::FieldPlace& place, std::string_view label, bool value) override {
        add(place, label, value ? 1 : 0);
    }
    void number(const air::FieldPlace& place, std::string_view label, std::int64_t value,
                const air::NumberForm&) override {
        add(place, label, value);
    }
    void text(const air::FieldPlace& place, std::string_view label, std::string_view) override {
        add(place, label, std::nullopt);
    }
    void octets(const air::FieldPlace& place, std::string_view label, air::Octets) override {
        add(place, label, std::nullopt);
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
    void add(const air::FieldPlace& place, std::string_view label,
             std::optional<std::int64_t> number) {
        ToldValue value{path_ + std::string(label), 8 * (start_ + place.offset) + place.firstBit,
                        place.bitCount != 0 ? place.bitCount : 8 * place.size, number};
        values_.push_back(std::move(value));
    }

    const std::size_t start_;
    std::string path_;
    std::vector<std::size_t> ends_;
};

}  // namespace halvane::testing

#endif
