// Builders of capture files.
#ifndef TOOLS_MAKE_SAMPLES_CAPTURE_FILE_H
#define TOOLS_MAKE_SAMPLES_CAPTURE_FILE_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "tools/make_samples/bytes.h"

namespace halvane::samples {

// https://www.tcpdump.org/linktypes.html
enum class LinkType : std::uint16_t {
    IEEE80211 = 105,
    Prism = 119,
    Radiotap = 127,
    AVS = 163,
    PPI = 192,
};

struct Packet {
    Bytes bytes;
    std::size_t notKept = 0;  // bytes on the air after those that the capture kept
};

// Time stamps are of a fixed day, one beacon interval apart.
Bytes pcapFile(LinkType linkType, Order order, const std::vector<Packet>& packets);
Bytes pcapngFile(LinkType linkType, Order order, const std::vector<Packet>& packets);

}  // namespace halvane::samples

#endif
