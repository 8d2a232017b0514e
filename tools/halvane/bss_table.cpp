#include "tools/halvane/bss_table.h"

namespace halvane::tool {

void BSSTable::add(const HalvaneMAC& record) {
    const auto [entry, isNew] = indexOfAddress_.emplace(record.mac().hex(), records_.size());
    if (isNew) {
        records_.push_back(record);
    } else {
        records_[entry->second].mergeEntries(record);
    }
}

}  // namespace halvane::tool
