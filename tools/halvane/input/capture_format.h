// Tells a capture from other files by its first octets.
//
// Free functions without state; any thread may call them, each with its own stream.
#ifndef TOOLS_HALVANE_INPUT_CAPTURE_FORMAT_H
#define TOOLS_HALVANE_INPUT_CAPTURE_FORMAT_H

#include <optional>

#include "tools/halvane/input/input_stream.h"

namespace halvane::tool {

enum class CaptureFormat { Pcap, Pcapng };

// Looks at the first four octets, and leaves them unread. Absent if they begin no capture.
std::optional<CaptureFormat> captureFormat(InputStream& stream);

}  // namespace halvane::tool

#endif
