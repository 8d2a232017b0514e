// The rows of a channel map, in order of insertion. The process has one; see HalvaneChannel.
//
// The standard rows are constants: to look them up neither allocates, nor locks, nor fails. Rows
// that are added stand in an index of their own, which is made with the first of them.
//
// Threads: any, at any time; a lookup sees the rows that were added before it.
#ifndef HALVANE_REGULATORY_CHANNEL_MAP_INTERNAL_H
#define HALVANE_REGULATORY_CHANNEL_MAP_INTERNAL_H

#include <atomic>

namespace halvane {

class ChannelMap {
  public:
    constexpr ChannelMap() = default;
    ChannelMap(const ChannelMap&) = delete;
    ChannelMap& operator=(const ChannelMap&) = delete;
    ~ChannelMap();

    // Builds the 42 standard rows unless the map exists already.
    void build() {
        if (!exists_) exists_ = true;
    }

    // Appends a row; an extension channel of 0 is none. Dropped while the map does not exist. Where
    // there is no memory for the row, the map stays as it was and std::bad_alloc is thrown.
    void add(unsigned channel, unsigned frequency, unsigned extensionChannel);

    // Each builds the map first, then takes the first row that matches.
    unsigned numberForFrequency(unsigned frequency);
    unsigned frequencyForNumber(unsigned channel);
    unsigned extensionForNumber(unsigned channel);

  private:
    class AddedRows;

    AddedRows& addedRows();

    std::atomic<bool> exists_ = false;
    std::atomic<AddedRows*> added_ = nullptr;  // null while there are none
};

}  // namespace halvane

#endif
