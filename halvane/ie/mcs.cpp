#include "halvane/ie/mcs.h"

#include <algorithm>

#include "halvane/base/shared_instance_internal.h"
#include "halvane/ie/mcs_tables_internal.h"

namespace halvane {

namespace {

std::vector<Number> numbersOf(const mcs_tables::Table& table) {
    return std::vector<Number>(table.begin(), table.end());
}

}  // namespace

std::atomic<const HalvaneMCS*> gWiFiMCS = nullptr;

HalvaneMCS::HalvaneMCS() {
    setupLongGuardInterval20MHz();
    setupShortGuardInterval20MHz();
    setupLongGuardInterval40MHz();
    setupShortGuardInterval40MHz();
}

const HalvaneMCS& HalvaneMCS::sharedSystem() {
    return sharedInstance(gWiFiMCS);
}

void HalvaneMCS::setupLongGuardInterval20MHz() {
    longGuardInterval20MHz_ = numbersOf(mcs_tables::kLongGuardInterval20MHz);
}

void HalvaneMCS::setupShortGuardInterval20MHz() {
    shortGuardInterval20MHz_ = numbersOf(mcs_tables::kShortGuardInterval20MHz);
}

void HalvaneMCS::setupLongGuardInterval40MHz() {
    longGuardInterval40MHz_ = numbersOf(mcs_tables::kLongGuardInterval40MHz);
}

void HalvaneMCS::setupShortGuardInterval40MHz() {
    shortGuardInterval40MHz_ = numbersOf(mcs_tables::kShortGuardInterval40MHz);
}

const std::vector<Number>* HalvaneMCS::tableFor(std::int64_t channelWidth, bool shortGI) const {
    if (channelWidth == 20) return shortGI ? &shortGuardInterval20MHz_ : &longGuardInterval20MHz_;
    if (channelWidth == 40) return shortGI ? &shortGuardInterval40MHz_ : &longGuardInterval40MHz_;
    return nullptr;
}

Number HalvaneMCS::rateForMCSSet_withChannelWidth_shortGI(const std::vector<Number>& set,
                                                          std::int64_t channelWidth,
                                                          bool shortGI) const {
    const auto* table = tableFor(channelWidth, shortGI);
    if (table == nullptr) return 0;
    double best = 0;
    for (const Number& entry : set) {
        const auto index = static_cast<std::uint64_t>(entry.int64());
        if (index < table->size()) best = std::max(best, (*table)[index].real());
    }
    // Without any rate the result is the integer 0, not the real one.
    return best > 0 ? Number(best) : Number(0);
}

}  // namespace halvane
