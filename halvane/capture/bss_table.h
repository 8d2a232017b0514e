// The BSSs of a capture, one record each, in order of first sighting.
//
// Between sightings a BSS is kept as what its record is made of, for a record takes many times the
// bytes of its frame.
#ifndef HALVANE_CAPTURE_BSS_TABLE_H
#define HALVANE_CAPTURE_BSS_TABLE_H

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <optional>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"
#include "halvane/base/number.h"
#include "halvane/capture/frame_record.h"
#include "halvane/ie/mac.h"

namespace halvane::capture {

class HALVANE_EXPORT BSSTable {
  public:
    // Adds a sighting, or folds it into those of the same BSSID, as mergeEntries() folds records.
    // But a channel that only the radio tells takes no place of one that the BSS told itself.
    void add(const Sighting& sighting);

    std::size_t size() const { return entries_.size(); }

    // The record is made anew: of its stamps, firstAdded() alone is that of the first sighting.
    // REQUIRES: index < size().
    Sighting at(std::size_t index) const { return entries_[index].sighting(); }

  private:
    // What a record derives depends on the capability field that it had when its elements came:
    // the field of the same frame.
    struct Elements {
        explicit Elements(const HalvaneMAC& record)
            : bytes(record.ieBuffer()), capabilities(record.capabilities()) {}

        void putInto(HalvaneMAC& record) const;

        std::optional<ByteBuffer> bytes;
        std::uint16_t capabilities;
    };

    class Entry {
      public:
        explicit Entry(const Sighting& sighting);

        void fold(const Sighting& sighting);
        Sighting sighting() const;

      private:
        ByteBuffer mac_;
        std::uint64_t firstAdded_;
        Elements elements_;
        std::unique_ptr<Elements> revealing_;  // those that came later and told the SSID
        std::optional<Number> channel_, noise_, RSSI_, beaconInterval_, radioChannel_;
        std::uint16_t capabilities_;
        bool isChannelOfRadio_;
        bool hasSSID_;
    };

    std::deque<Entry> entries_;
    std::map<ByteBuffer, std::size_t> indexOfAddress_;
};

}  // namespace halvane::capture

#endif
