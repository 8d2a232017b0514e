// The BSSs that were seen, with one record each, in the order of their first sightings.
//
// Between sightings the table keeps only the data from which the record of each BSS is made,
// because a record takes many times the bytes of its frame.
//
// A table can be moved but not copied. Threads: only one thread at a time may use a table.
#ifndef HALVANE_CAPTURE_BSS_TABLE_H
#define HALVANE_CAPTURE_BSS_TABLE_H

#include <cstddef>
#include <memory>

#include "halvane/base/export.h"
#include "halvane/capture/frame_record.h"

namespace halvane::capture {

class HALVANE_EXPORT BSSTable {
  public:
    // Allocates nothing before the first sighting. A moved-from table is empty.
    BSSTable() noexcept;
    BSSTable(BSSTable&& other) noexcept;
    BSSTable& operator=(BSSTable&& other) noexcept;
    ~BSSTable();

    // Adds a sighting, or merges it with those of the same address as HalvaneMAC::mergeEntries()
    // merges records. A channel from the radio header alone never replaces one that the BSS stated,
    // and the elements of a cut frame never those of a whole one, which replace them.
    // The time is proportional to the logarithm of size(). If memory runs out, a new address is not
    // added.
    void add(const Sighting& sighting);

    // The number of addresses.
    std::size_t size() const;
    bool empty() const { return size() == 0; }

    // Returns the BSS that was first seen as number `index`, counted from 0. Each call creates the
    // record again: of its time stamps only firstAdded() is that of the first sighting.
    // REQUIRES: index < size().
    Sighting at(std::size_t index) const;

  private:
    class Entries;
    std::unique_ptr<Entries> entries_;  // null before the first sighting
};

}  // namespace halvane::capture

#endif
