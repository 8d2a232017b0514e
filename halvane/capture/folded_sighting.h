// The sightings of one BSS, folded into one.
#ifndef HALVANE_CAPTURE_FOLDED_SIGHTING_H
#define HALVANE_CAPTURE_FOLDED_SIGHTING_H

#include <cstdint>
#include <memory>
#include <optional>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"
#include "halvane/base/number.h"
#include "halvane/capture/beacon_frame.h"
#include "halvane/capture/frame_record.h"
#include "halvane/capture/radio_header.h"

namespace halvane::capture {

// Keeps only the data from which the record of a BSS is made, because a record takes many times the
// bytes of its frame.
//
// An object can be moved but not copied. Threads: as for a standard container.
class HALVANE_EXPORT FoldedSighting {
  public:
    // Begins with the first sighting.
    explicit FoldedSighting(const Sighting& sighting);
    // Moves every member.
    FoldedSighting(FoldedSighting&&) noexcept;
    // Moves every member.
    FoldedSighting& operator=(FoldedSighting&&) noexcept;
    ~FoldedSighting();

    // Merges a later sighting of the same address as HalvaneMAC::mergeEntries() merges records. A
    // channel from the radio header alone never replaces one that the BSS stated. The elements of a
    // whole frame replace those of a cut one, as if the cut frame had had none, and those of a cut
    // frame never replace those of a whole one.
    void fold(const Sighting& sighting);

    // Merges what was folded of later sightings of the same address. The result is that of folding
    // these one by one.
    void fold(FoldedSighting&& later);

    // Merges a later frame of the same address, as fold(sightingOf(beacon, radio)) does, but
    // decodes no record. Returns false and merges nothing if the elements of the frame may replace
    // those that are kept, because these are cut or hide the SSID.
    bool foldNumbers(const BeaconFrame& beacon, const RadioInfo& radio);

    // Creates the record again: of its time stamps only firstAdded() is that of the first sighting.
    Sighting sighting() const;

    // The address that all its sightings have.
    const ByteBuffer& mac() const { return mac_; }

  private:
    struct Elements;

    // What each frame tells anew.
    struct Values {
        explicit Values(const Sighting& sighting);
        void update(const Values& later);
        // The same with those of sightingOf(beacon, radio), which are stored one by one: a copy of
        // what was just written takes longer.
        HALVANE_HIDDEN void update(const BeaconFrame& beacon, const RadioInfo& radio);
        // Whether a later channel replaces the one that is known.
        HALVANE_HIDDEN bool mayReplaceChannel(bool isLaterOfRadio) const;

        std::optional<Number> channel, noise, RSSI, beaconInterval, radioChannel;
        std::optional<int> radioFrequency;
        std::uint16_t capabilities;
        bool isChannelOfRadio;
        std::uint64_t frames;
    };

    ByteBuffer mac_;
    std::uint64_t firstAdded_;
    std::unique_ptr<Elements> elements_;
    std::unique_ptr<Elements> revealing_;  // later elements that revealed the SSID
    Values values_;
    bool hasSSID_;
    bool isCut_;  // the elements are those of a cut frame, since no whole one was seen
};

}  // namespace halvane::capture

#endif
