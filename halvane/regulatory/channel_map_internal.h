// The rows of a channel map, in order of insertion. The process has one map; see HalvaneChannel.
//
// The standard rows are constants: looking them up neither allocates, nor locks, nor fails. Added
// rows have a separate index, which is created with the first of them.
//
// Threads: any thread may make any call at any time. A lookup sees all rows that were added before
// it.
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

    // Builds the 42 standard rows unless the map exists.
    void build() {
        if (!exists_) exists_ = true;
    }

    // Appends a row. An extension channel of 0 means none. The row is dropped if the map does not
    // exist. If memory runs out, std::bad_alloc is thrown and the map is unchanged.
    void add(unsigned channel, unsigned frequency, unsigned extensionChannel);

    // Each lookup first builds the map, and then uses the first matching row.
    unsigned numberForFrequency(unsigned frequency);
    unsigned frequencyForNumber(unsigned channel);
    unsigned extensionForNumber(unsigned channel);

  private:
    class AddedRows;

    AddedRows& addedRows();

    std::atomic<bool> exists_ = false;
    std::atomic<AddedRows*> added_ = nullptr;  // null while there are no added rows
};

}  // namespace halvane

#endif
