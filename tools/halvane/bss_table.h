// The BSSs of a capture, one record each, in order of first sighting.
#ifndef TOOLS_HALVANE_BSS_TABLE_H
#define TOOLS_HALVANE_BSS_TABLE_H

#include <string>
#include <unordered_map>
#include <vector>

#include "halvane/ie/mac.h"

namespace halvane::tool {

class BSSTable {
  public:
    // Adds a record, or folds it into the one of the same BSSID.
    void add(const HalvaneMAC& record);

    const std::vector<HalvaneMAC>& records() const { return records_; }

  private:
    std::vector<HalvaneMAC> records_;
    std::unordered_map<std::string, std::size_t> indexOfAddress_;
};

}  // namespace halvane::tool

#endif
