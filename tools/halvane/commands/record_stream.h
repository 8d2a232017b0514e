// The records of networks on standard output, as they are heard.
//
// For one thread.
#ifndef TOOLS_HALVANE_COMMANDS_RECORD_STREAM_H
#define TOOLS_HALVANE_COMMANDS_RECORD_STREAM_H

#include <cstddef>
#include <map>

#include "halvane/base/mac_address.h"

#include "tools/halvane/networks/network_filter.h"
#include "tools/halvane/output/json_writer.h"
#include "tools/halvane/survey/survey.h"

namespace halvane::tool {

class RecordStream {
  public:
    // Prints the record of a network that passes, as one line of JSON: as it is first heard, and
    // once its elements or its capabilities are others.
    void note(const Survey& survey, const MacAddress& address, const NetworkFilter& filter);

  private:
    JSONWriter writer_{JSONWriter::Layout::OneLine};
    std::map<MacAddress, std::size_t> printed_;  // a hash of what was printed last
};

}  // namespace halvane::tool

#endif
