// The SKUs that the library knows.
#include <cstdio>
#include <string>
#include <vector>

#include "halvane/regulatory/sku.h"
#include "halvane/utils/cli.h"

#include "tools/halvane/commands/command.h"
#include "tools/halvane/options/argument.h"
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
    formatOption(
        "json, plist: one document; jsonl: a line a SKU; each with the countries and their\n"
        "channels."),
    {.type = kCLISection,
     .shortHelp = "EXIT STATUS",
     .longHelp = "0 done; 1 the output could not be written; 2 usage."},
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
