// Octets as people paste them: hexadecimal text, with or without columns of offsets and letters.
#ifndef TOOLS_HALVANE_INPUT_HEX_DUMP_H
#define TOOLS_HALVANE_INPUT_HEX_DUMP_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/base/result.h"

namespace halvane::tool {

// The octets of one of several networks, up to the next part.
struct HexPart {
    std::string bssid;  // in capitals; empty for octets before the first
    std::size_t start;

    friend bool operator==(const HexPart&, const HexPart&) = default;
};

struct HexDump {
    std::vector<std::uint8_t> octets;
    std::string_view format;  // "tcpdump -x", "xxd", "hexdump", "od", "iw -u"; empty for plain text
    std::size_t lines = 0;    // that hold octets
    std::vector<HexPart> parts{};  // of a scan, each with octets; empty for text without BSSs
};

// Reads the output of tcpdump -x or -X, xxd, hexdump -C, od -tx1, a packet viewer's copy, the
// elements that iw -u prints undecoded, and plain text: pairs of digits that blanks, ':', '-', ','
// or "0x" and "\x" may separate, or an array of C. A byte order mark may stand before the text.
//
// A column of offsets is no data; each offset must be the number of octets before it. Letters
// beside octets tell whether a program turned the octets of each group round, as xxd -e does; that
// is an error. An error says what is wrong in which line.
Result<HexDump, std::string> readHexDump(std::string_view text);

}  // namespace halvane::tool

#endif
