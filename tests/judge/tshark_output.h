// What tshark says of the elements of captured frames.
//
// Plain functions; a test calls them from one thread.
#ifndef TESTS_JUDGE_TSHARK_OUTPUT_H
#define TESTS_JUDGE_TSHARK_OUTPUT_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace halvane::testing {

// A field at its place within the element's body, which begins after the ID, the length and the
// extension.
struct TsharkField {
    std::string name;
    std::size_t firstBit = 0;  // from the body's first octet, the least significant bit first
    std::size_t bitCount = 0;
    bool isPartOfOctets = false;
    std::string show;   // for people
    std::string value;  // hexadecimal
    std::string text;   // the whole line
};

struct TsharkElement {
    std::size_t offset = 0;  // of the ID, from the frame's first element
    std::size_t size = 0;    // octets, with ID and length
    std::vector<TsharkField> fields{};
    std::vector<TsharkElement> inner{};  // elements within this one
};

struct TsharkFrame {
    bool isMalformed = false;  // tshark gave the frame up
    std::string capabilities;  // of the Capability Information field, as "0x0431"
    std::string beaconInterval;
    std::vector<TsharkElement> elements{};
};

// The first line of `tshark --version`; absent where tshark is not installed.
std::optional<std::string> tsharkVersion();

// Runs tshark over the frames of the capture file that have these numbers, which begin at 1.
std::map<std::uint64_t, TsharkFrame> readByTshark(const std::string& path,
                                                  const std::set<std::uint64_t>& numbers);

}  // namespace halvane::testing

#endif
