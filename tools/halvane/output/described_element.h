// An element with the decoder that tells its fields, whether the standard or a vendor defines it.
#ifndef TOOLS_HALVANE_OUTPUT_DESCRIBED_ELEMENT_H
#define TOOLS_HALVANE_OUTPUT_DESCRIBED_ELEMENT_H

#include <cstddef>
#include <optional>
#include <string_view>

#include "halvane/air/element_damage.h"
#include "halvane/air/element_decoder.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_info.h"
#include "halvane/air/element_range.h"
#include "halvane/air/field_sink.h"

namespace halvane::tool {

class DescribedElement {
  public:
    // Borrows the element.
    explicit DescribedElement(const air::Element& element) : element_(element) {
        if (element.id == air::ElementId::Vendor) {
            const auto* const info = air::vendorElementInfo(element.body);
            if (info != nullptr) take(info->decoder, info->source, info->type ? kVendorHead : 0);
        } else if (const auto* const info = air::elementInfo(element.id)) {
            take(info->decoder, info->clause, 0);
        }
    }

    bool hasFields() const { return decoder_ != nullptr; }

    // The clause or the document that defines the element; empty if there is none.
    std::string_view clause() const { return clause_; }

    // Tells the fields, with places from the start of the decoded part on.
    // REQUIRES: hasFields().
    std::optional<air::ElementDamage> describe(air::FieldSink& sink) const {
        return decoder_->describe(element_.body.subspan(head_), sink);
    }

    // Where in the body the damage begins.
    std::size_t offsetOf(const air::ElementDamage& damage) const { return head_ + damage.offset; }

  private:
    static constexpr std::size_t kVendorHead = 4;  // OUI and type

    void take(const air::ElementDecoder& decoder, std::string_view clause, std::size_t head) {
        if (decoder.describe != nullptr) decoder_ = &decoder;
        clause_ = clause;
        head_ = head;
    }

    const air::Element& element_;
    const air::ElementDecoder* decoder_ = nullptr;
    std::string_view clause_{};
    std::size_t head_ = 0;
};

}  // namespace halvane::tool

#endif
