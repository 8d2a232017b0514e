// Any text as a register of makers, and any name: a list finds only names of its text, its entries
// are never more than its lines, and a short name keeps its bounds.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "halvane/base/mac_address.h"

#include "fuzz/byte_source.h"
#include "fuzz/require.h"
#include "tools/halvane/input/maker_list.h"
#include "tools/halvane/output/maker_name.h"

using halvane::MacAddress;
using halvane::fuzzing::ByteSource;
using namespace halvane::tool;

namespace {

void checkName(std::string_view name, std::size_t cells) {
    const std::string text = shortMakerName(name, cells);
    REQUIRE(text.size() <= name.size());
    REQUIRE(text.find_first_of("()[],;\t\r\n") == std::string::npos);
    REQUIRE(!text.starts_with(' ') && !text.ends_with(' '));
    REQUIRE(shortMakerName(name, cells + 1).starts_with(text.substr(0, text.find(' '))));
    REQUIRE(makerKey(text).size() == text.size());
}

void checkList(const std::string& text, const MacAddress& address) {
    MakerList list;
    list.add(text);
    const auto lines = std::ranges::count(text, '\n') + 1;
    REQUIRE(list.size() <= static_cast<std::size_t>(lines));
    const auto name = list.find(address);
    REQUIRE(!name || (!name->empty() && text.find(*name) != std::string::npos));
    REQUIRE(!list.cell(address).empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ByteSource source(data, size);
    MacAddress::Octets octets{};
    for (std::uint8_t& octet : octets) octet = source.byte();
    const std::size_t cells = source.below(20);
    const std::string text = source.restText();
    checkName(text, cells);
    checkList(text, MacAddress(octets));
    return 0;
}
