// The rows of a channel map, in order of insertion. The process has one; see HalvaneChannel.
//
// Threads: any, at any time; a lookup sees the rows that were added before it.
#ifndef HALVANE_REGULATORY_CHANNEL_MAP_INTERNAL_H
#define HALVANE_REGULATORY_CHANNEL_MAP_INTERNAL_H

#include <optional>
#include <shared_mutex>
#include <vector>

namespace halvane {

class ChannelMap {
  public:
    // Builds the 42 standard rows unless the map exists already.
    void build();

    // Appends a row; an extension channel of 0 is none. Dropped while the map does not exist.
    void add(unsigned channel, unsigned frequency, unsigned extensionChannel);

    // Each builds the map first, then takes the first row that matches.
    unsigned numberForFrequency(unsigned frequency);
    unsigned frequencyForNumber(unsigned channel);
    unsigned extensionForNumber(unsigned channel);

  private:
    struct Row {
        unsigned channel;
        unsigned frequency;  // MHz
        unsigned extension;  // 0 for none
    };

    std::shared_mutex mutex_;
    std::optional<std::vector<Row>> rows_;
};

}  // namespace halvane

#endif
