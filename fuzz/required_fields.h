// Holds what every decoder of elements keeps: the fields that it tells lie in the body and leave no
// octet out, and what decodes is encoded with the same octets.
#ifndef FUZZ_REQUIRED_FIELDS_H
#define FUZZ_REQUIRED_FIELDS_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_decoder.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_info.h"
#include "halvane/air/field_sink.h"

#include "fuzz/require.h"

namespace halvane::fuzz {

class RequiredFields : public air::FieldSink {
  public:
    explicit RequiredFields(std::size_t size) : size_(size) {}

    void flag(const air::FieldPlace& place, std::string_view label, bool) override {
        require(place, label);
    }
    void number(const air::FieldPlace& place, std::string_view label, std::int64_t,
                const air::NumberForm&) override {
        require(place, label);
    }
    void text(const air::FieldPlace& place, std::string_view label, std::string_view) override {
        require(place, label);
    }
    void octets(const air::FieldPlace& place, std::string_view label, air::Octets value) override {
        require(place, label);
        REQUIRE(value.size() == place.size);
    }
    void beginGroup(std::string_view label) override {
        REQUIRE(!label.empty());
        ++depth_;
    }
    void endGroup() override { --depth_; }

    std::size_t told() const { return told_; }
    int depth() const { return depth_; }

  private:
    void require(const air::FieldPlace& place, std::string_view label) {
        REQUIRE(!label.empty());
        REQUIRE(place.offset <= told_ && place.size <= size_ - place.offset);
        told_ = std::max(told_, place.offset + place.size);
    }

    const std::size_t size_;
    std::size_t told_ = 0;
    int depth_ = 0;
};

inline void requireDecoder(const air::ElementDecoder& decoder, air::Octets body) {
    RequiredFields fields(body.size());
    const auto damage = decoder.describe(body, fields);
    const auto rebuilt = decoder.rebuild(body);
    REQUIRE(rebuilt.has_value() != damage.has_value());
    REQUIRE(fields.depth() == 0);
    if (damage) {
        REQUIRE(damage->offset <= body.size() && damage->remaining <= body.size() - damage->offset);
    } else {
        REQUIRE(fields.told() == body.size());
        REQUIRE(std::ranges::equal(*rebuilt, body));
    }
}

// Does nothing for an element without a decoder.
inline void requireElement(air::ElementId id, air::Octets body) {
    if (id == air::ElementId::Vendor) {
        const auto* const info = air::vendorElementInfo(body);
        if (info == nullptr || info->decoder.describe == nullptr) return;
        requireDecoder(info->decoder, body.subspan(4));
    } else if (const auto* const info = air::elementInfo(id)) {
        if (info->decoder.describe == nullptr) return;
        requireDecoder(info->decoder, body);
    }
}

}  // namespace halvane::fuzz

#endif
