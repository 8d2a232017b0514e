// The makers of devices, by their addresses: the public registers of the IEEE, as Debian's package
// ieee-data installs them.
//
// A list does not change; any thread may read it.
#ifndef TOOLS_HALVANE_INPUT_MAKER_LIST_H
#define TOOLS_HALVANE_INPUT_MAKER_LIST_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/base/mac_address.h"

#include "tools/halvane/output/maker_name.h"

namespace halvane::tool {

class MakerList {
  public:
    // Reads oui.txt, mam.txt, oui36.txt and iab.txt of `folder`. A missing or unreadable register
    // is an empty one, and lines that are no entries are passed over.
    static MakerList read(const std::filesystem::path& folder);

    // The list of this machine, read by the first call: of the folder that HALVANE_IEEE_DATA names,
    // else of /usr/share/ieee-data.
    static const MakerList& ofSystem();

    // Adds the entries of a register's text. Of several for one range, the first counts.
    void add(std::string_view text);

    // Returns the name under which the range of the address, the smallest if there are several, is
    // registered. Absent if it is not, if the range is divided among makers of which none has this
    // part, and for an address that is local or of a group, which no register has. The text is
    // valid as long as the list.
    std::optional<std::string_view> find(const MacAddress& address) const;

    // Returns the cell of a table: shortMakerName(), "(local)" for a locally administered address,
    // "(group)" for one of a group, "-" if the list has no name.
    std::string cell(const MacAddress& address, std::size_t cells = kMakerCells) const;

    // The number of ranges.
    std::size_t size() const;

  private:
    struct Entry {
        std::uint64_t prefix = 0;  // the upper bits of the address
        std::uint32_t nameStart = 0;
        std::uint32_t nameSize = 0;
    };
    struct Register {
        int bits = 0;
        std::vector<Entry> entries{};  // by prefix
    };

    void parse(std::string_view text);
    void addRange(std::uint64_t first, std::uint64_t last, std::string_view name);
    void sort();

    std::array<Register, 3> registers_ = {Register{36}, Register{28}, Register{24}};
    std::string names_;
};

}  // namespace halvane::tool

#endif
