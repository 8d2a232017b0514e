// Names of makers, shortened for a column.
//
// Free functions without state; any thread may call them.
#ifndef TOOLS_HALVANE_OUTPUT_MAKER_NAME_H
#define TOOLS_HALVANE_OUTPUT_MAKER_NAME_H

#include <cstddef>
#include <string>
#include <string_view>

namespace halvane::tool {

// The widest cell of a maker's column.
inline constexpr std::size_t kMakerCells = 16;

// Returns what people call the maker that a register names `name`: without brackets, without the
// legal forms at the end (Inc, Co., Ltd, GmbH ...) and without a town at the start (Beijing,
// Shenzhen ...), and of that as many whole words as fit into `cells` characters. The first word is
// always there, even if it does not fit. A name in capitals alone gets small letters after the
// first of each word: "Mercury" from "MERCURY CORPORATION", "Tp-Link" from "TP-LINK TECHNOLOGIES
// CO.,LTD.". Words without a vowel are abbreviations and stay ("LG"), as does a whole name of up to
// three letters ("IGT"). Empty only if `name` has no words.
std::string shortMakerName(std::string_view name, std::size_t cells = kMakerCells);

// Returns a text that is equal for names that count as one maker: they differ in the case of ASCII
// letters alone.
std::string makerKey(std::string_view shortName);

}  // namespace halvane::tool

#endif
