#include "halvane/capture/bss_table.h"

#include <deque>
#include <map>

#include "halvane/base/byte_buffer.h"
#include "halvane/capture/folded_sighting.h"
#include "halvane/ie/mac.h"

namespace halvane::capture {

class HALVANE_HIDDEN BSSTable::Entries {
  public:
    void add(const Sighting& sighting) {
        const ByteBuffer& address = sighting.record.mac();
        const auto known = indexOfAddress_.find(address);
        if (known != indexOfAddress_.end()) return entries_[known->second].fold(sighting);
        // If memory runs out, neither entry is added.
        const auto added = indexOfAddress_.emplace(address, entries_.size()).first;
        try {
            entries_.emplace_back(sighting);
        } catch (...) {
            indexOfAddress_.erase(added);
            throw;
        }
    }

    std::size_t size() const { return entries_.size(); }
    Sighting at(std::size_t index) const { return entries_[index].sighting(); }

  private:
    std::deque<FoldedSighting> entries_;
    // Keyed by octets, since a record from a skeleton may have any number of them.
    std::map<ByteBuffer, std::size_t> indexOfAddress_;
};

BSSTable::BSSTable() noexcept = default;
BSSTable::BSSTable(BSSTable&& other) noexcept = default;
BSSTable& BSSTable::operator=(BSSTable&& other) noexcept = default;
BSSTable::~BSSTable() = default;

void BSSTable::add(const Sighting& sighting) {
    if (!entries_) entries_ = std::make_unique<Entries>();
    entries_->add(sighting);
}

std::size_t BSSTable::size() const {
    return entries_ ? entries_->size() : 0;
}

Sighting BSSTable::at(std::size_t index) const {
    return entries_->at(index);
}

}  // namespace halvane::capture
