// Networks as comma-separated values (RFC 4180), with a line feed alone at the end of each line.
#ifndef TOOLS_HALVANE_NETWORKS_NETWORK_CSV_H
#define TOOLS_HALVANE_NETWORKS_NETWORK_CSV_H

#include <cstdio>
#include <span>

#include "tools/halvane/networks/network_columns.h"
#include "tools/halvane/survey/network.h"

namespace halvane::tool {

// A line with the names of the columns, then one for each network. Units are in no cell. What is
// absent is empty. Texts are escaped as in JSON output; `ssidHex`, behind `ssid`, has the octets.
// Without columns all are printed.
void printCSV(std::span<const Network> networks, std::span<const NetworkColumn* const> columns,
              const CellSurroundings& surroundings, std::FILE* stream);

}  // namespace halvane::tool

#endif
