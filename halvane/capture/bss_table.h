// The BSSs that were seen, one record each, in the order of their first sightings.
//
// Between sightings the table keeps of each BSS only what its record is made of, because a record
// takes many times the bytes of its frame.
//
// Movable, not copyable. Used by one thread at a time.
#ifndef HALVANE_CAPTURE_BSS_TABLE_H
#define HALVANE_CAPTURE_BSS_TABLE_H

#include <cstddef>
#include <memory>

#include "halvane/base/export.h"
#include "halvane/capture/frame_record.h"

namespace halvane::capture {

class HALVANE_EXPORT BSSTable {
  public:
    // Takes no memory before the first sighting. A moved-from table is empty.
    BSSTable() noexcept;
    BSSTable(BSSTable&& other) noexcept;
    BSSTable& operator=(BSSTable&& other) noexcept;
    ~BSSTable();

    // Adds a sighting, or folds it into those of the same address as HalvaneMAC::mergeEntries()
    // folds records. A channel that only the radio tells never replaces one that the BSS told.
    // Takes time in proportion to the logarithm of size(). If memory runs out, a new address is
    // not added.
    void add(const Sighting& sighting);

    // How many addresses there are.
    std::size_t size() const;
    bool empty() const { return size() == 0; }

    // The BSS that was first seen as number `index`, counted from 0. The record is made anew at
    // each call: of its stamps, only firstAdded() is that of the first sighting.
    // REQUIRES: index < size().
    Sighting at(std::size_t index) const;

  private:
    class Entries;
    std::unique_ptr<Entries> entries_;  // null while there are none
};

}  // namespace halvane::capture

#endif
