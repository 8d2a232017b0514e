// An element with the decoder that tells its fields, whether the standard or a vendor defines it.
#ifndef TOOLS_HALVANE_OUTPUT_DESCRIBED_ELEMENT_H
#define TOOLS_HALVANE_OUTPUT_DESCRIBED_ELEMENT_H

#include <cstddef>
#include <optional>
#include <string_view>

#include "halvane/air/eht_capabilities.h"
#include "halvane/air/eht_mcs_sets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_decoder.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_info.h"
#include "halvane/air/element_range.h"
#include "halvane/air/field_sink.h"
#include "halvane/air/he_phy_capabilities.h"

#include "tools/halvane/output/element_list.h"

namespace halvane::tool {

class DescribedElement {
  public:
    // Borrows the list and its element.
    DescribedElement(const ElementList& list, const air::Element& element)
        : list_(list), element_(element) {
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

    // Tells the fields, with places from the start of the decoded part on. Which fields EHT
    // Capabilities have follows from the HE Capabilities beside them.
    // REQUIRES: hasFields().
    std::optional<air::ElementDamage> describe(air::FieldSink& sink) const {
        const air::HePhyCapabilities* const he = list_.he();
        if (element_.id == air::EhtCapabilities::kId && he != nullptr) {
            return air::EhtCapabilities::describe(element_.body, sink, *he,
                                                  air::EhtSender::AccessPoint);
        }
        return decoder_->describe(element_.body.subspan(head_), sink);
    }

    // The octets of the body before the decoded part.
    std::size_t headSize() const { return head_; }

    // Where in the body the damage begins.
    std::size_t offsetOf(const air::ElementDamage& damage) const { return head_ + damage.offset; }
    // The same in the buffer.
    std::size_t octetOf(const air::ElementDamage& damage) const {
        return list_.offsetOf(element_.offsetOfBody(offsetOf(damage)));
    }

  private:
    static constexpr std::size_t kVendorHead = 4;  // OUI and type

    void take(const air::ElementDecoder& decoder, std::string_view clause, std::size_t head) {
        if (decoder.describe != nullptr) decoder_ = &decoder;
        clause_ = clause;
        head_ = head;
    }

    const ElementList& list_;
    const air::Element& element_;
    const air::ElementDecoder* decoder_ = nullptr;
    std::string_view clause_{};
    std::size_t head_ = 0;
};

}  // namespace halvane::tool

#endif
