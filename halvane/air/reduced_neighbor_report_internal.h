// Reads the access points of Reduced Neighbor Report without making lists of them.
#ifndef HALVANE_AIR_REDUCED_NEIGHBOR_REPORT_INTERNAL_H
#define HALVANE_AIR_REDUCED_NEIGHBOR_REPORT_INTERNAL_H

#include <functional>

#include "halvane/air/bit_octets.h"
#include "halvane/air/reduced_neighbor_report.h"

namespace halvane::air {

// `channel` is what is told once for all its access points; its own list of them is empty.
using NeighborUse =
    std::function<void(const NeighborApInformation& channel, const TbttInformation& accessPoint)>;

// Calls `use` with each access point that ReducedNeighborReport::decode() finds.
void forEachNeighbor(Octets body, const NeighborUse& use);

}  // namespace halvane::air

#endif
