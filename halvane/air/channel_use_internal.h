// How the channel of a BSS is derived (IEEE 802.11-2020, 11.15.2, 11.38.1; 802.11ax, 26.17.2;
// 802.11be, 35.15.1).
#ifndef HALVANE_AIR_CHANNEL_USE_INTERNAL_H
#define HALVANE_AIR_CHANNEL_USE_INTERNAL_H

#include <optional>

#include "halvane/air/channel.h"
#include "halvane/air/channel_use.h"
#include "halvane/air/ds_parameter_set.h"
#include "halvane/air/eht_operation.h"
#include "halvane/air/element_index_internal.h"
#include "halvane/air/he_operation.h"
#include "halvane/air/ht_operation.h"
#include "halvane/air/vht_operation.h"
#include "halvane/air/width_claim.h"

namespace halvane::air {

// The elements that tell of the channel; absent where missing or damaged.
struct OperationElements {
    explicit OperationElements(const ElementIndex& index)
        : ds(index.decode<DsParameterSet>()),
          ht(index.decode<HtOperation>()),
          vht(index.decode<VhtOperation>()),
          he(index.decode<HeOperation>()),
          eht(index.decode<EhtOperation>()) {}

    std::optional<DsParameterSet> ds;
    std::optional<HtOperation> ht;
    std::optional<VhtOperation> vht;
    std::optional<HeOperation> he;
    std::optional<EhtOperation> eht;
};

ChannelUse channelUseOf(const ElementIndex& index, const OperationElements& operation,
                        std::optional<int> radioFrequency);

// As widthClaimsOf() for elements.
WidthClaims widthClaimsOf(const ElementIndex& index, const OperationElements& operation, Band band);

// The widths that single generations tell; absent where they tell none, or a reserved one.
std::optional<int> htWidthOf(const OperationElements& operation);
std::optional<int> vhtWidthOf(const OperationElements& operation);
std::optional<int> heWidthOf(const OperationElements& operation);
std::optional<int> ehtWidthOf(const OperationElements& operation);

}  // namespace halvane::air

#endif
