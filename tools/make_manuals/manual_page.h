// Manual pages, as scdoc reads them.
#ifndef TOOLS_MAKE_MANUALS_MANUAL_PAGE_H
#define TOOLS_MAKE_MANUALS_MANUAL_PAGE_H

#include <string>
#include <string_view>
#include <vector>

#include "tools/halvane/completion/program_outline.h"

namespace halvane::tool {

// A part of a page: its title, and scdoc text that ends in a newline.
struct ManualSection {
    std::string title;
    std::string text;
};
using ManualSections = std::vector<ManualSection>;

// The sections of `text`, which begin with lines "# TITLE". What comes before the first is dropped.
ManualSections sectionsIn(std::string_view text);

// The sections that an option table tells. `command` is the program or one of its commands.
ManualSections sectionsOf(const ProgramOutline& outline, const OutlinedCommand& command);

// The page. Sections that both have are joined, the generated text first, and all stand in the
// usual order of manuals.
std::string manualPage(std::string_view name, std::string_view section, ManualSections generated,
                       const ManualSections& prose);

// Text that shows itself.
std::string plainText(std::string_view text);

// Lines that are kept as they are.
std::string literalText(std::string_view lines);

}  // namespace halvane::tool

#endif
