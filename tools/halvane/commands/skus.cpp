// The SKUs that the library knows.
#include <cstdio>
#include <string>
#include <vector>

#include "halvane/regulatory/sku.h"
#include "halvane/utils/cli.h"

#include "tools/halvane/commands/command.h"
#include "tools/halvane/options/argument.h"
#include "tools/halvane/options/format_option.h"
#include "tools/halvane/output/format.h"
#include "tools/halvane/output/print_records.h"
#include "tools/halvane/output/regulatory_json.h"

namespace halvane::tool {

namespace {

void printTable(const std::vector<HalvaneSKU>& skus) {
    std::puts("Short name  Countries  Name");
    for (const HalvaneSKU& sku : skus) {
        std::printf("%-10s  %9zu  %s\n", sku.shortName().value_or("-").c_str(),
                    sku.countries().size(), sku.friendlyName().value_or("-").c_str());
    }
}

void print(const std::vector<HalvaneSKU>& skus, Format format) {
    if (format == Format::Text) return printTable(skus);
    printRecords(skus, format, [](const HalvaneSKU& sku) { return sku.skeletonRepresentation(); });
}

}  // namespace

CLIOption gSKUsOptions[] = {
    formatOption("json, plist: one document; jsonl: one line per SKU. All include the\n"
                 "countries of each SKU and their channels."),
    {.type = kCLISection,
     .shortHelp = "EXIT STATUS",
     .longHelp = "0 success; 1 writing failed; 2 usage error."},
    {.type = kCLIEnd},
};

int skusCommand() {
    const std::vector<std::string> arguments = takeArguments();
    const auto format = takeFormat();
    if (!format) return refuse("skus", format.error());
    if (!arguments.empty()) return refuse("skus", "takes no argument ('" + arguments[0] + "')");
    print(HalvaneSKU::createDefaultSKUList(), *format);
    return kExitDone;
}

}  // namespace halvane::tool
