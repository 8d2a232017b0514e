// Prints the countries that the library knows: all of them, or those of a SKU.
#include <algorithm>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "halvane/regulatory/country.h"
#include "halvane/regulatory/sku.h"
#include "halvane/utils/cli.h"
#include "halvane/utils/text/compare.h"

#include "tools/halvane/commands/command.h"
#include "tools/halvane/options/argument.h"
#include "tools/halvane/options/format_option.h"
#include "tools/halvane/output/format.h"
#include "tools/halvane/output/message.h"
#include "tools/halvane/output/print_records.h"
#include "tools/halvane/output/regulatory_json.h"

namespace halvane::tool {

namespace {

const char* gSKU = nullptr;

bool isNamed(const HalvaneSKU& sku, const std::string& name) {
    const auto isSame = [&name](const std::optional<std::string>& known) {
        return known && strnicmpx(known->data(), known->size(), name.c_str()) == 0;
    };
    return isSame(sku.shortName()) || isSame(sku.friendlyName());
}

UsageError noSKU(const std::string& name, const std::vector<HalvaneSKU>& known) {
    std::string text = "no SKU '" + name + "'; there are ";
    std::vector<std::string_view> names;
    for (const HalvaneSKU& sku : known) {
        if (&sku != &known.front()) text += ", ";
        text += sku.shortName().value_or("-");
        for (const auto* own : {&sku.shortName(), &sku.friendlyName()}) {
            if (*own) names.emplace_back(**own);
        }
    }
    return withSuggestion({std::move(text)}, "--sku=", name, names);
}

void printTable(const std::vector<HalvaneSKU>& skus) {
    std::puts("ISO  Number  SKU     Name");
    for (const HalvaneSKU& sku : skus) {
        for (const HalvaneCountry& country : sku.countries()) {
            std::printf("%-3s  %6lld  %-6s  %s\n", country.isoName().value_or("-").c_str(),
                        static_cast<long long>(country.isoCode()),
                        sku.shortName().value_or("-").c_str(),
                        country.friendlyName().value_or("-").c_str());
        }
    }
}

void print(const std::vector<HalvaneSKU>& skus, Format format) {
    if (format == Format::Text) return printTable(skus);
    std::vector<HalvaneCountry> countries;
    for (const HalvaneSKU& sku : skus) {
        countries.insert(countries.end(), sku.countries().begin(), sku.countries().end());
    }
    printRecords(countries, format,
                 [](const HalvaneCountry& country) { return country.skeletonRepresentation(); });
}

}  // namespace

CLIOption gCountriesOptions[] = {
    formatOption("json, plist: one document; jsonl: one line per country.\n"
                 "All include the channels of each country."),
    {.type = kCLIString,
     .longName = "sku",
     .valuePtr = &gSKU,
     .argName = "NAME",
     .flags = kCLIBareName,
     .shortHelp = "only the countries of this SKU (short or long name)"},
    {.type = kCLISection,
     .shortHelp = "EXIT STATUS",
     .longHelp = "0 success; 1 there is no such SKU, or writing failed; 2 usage error."},
    {.type = kCLIEnd},
};

int countriesCommand() {
    const char* const name = std::exchange(gSKU, nullptr);
    const std::vector<std::string> arguments = takeArguments();
    const auto format = takeFormat();
    if (!format) return refuse("countries", format.error());
    if (!arguments.empty()) {
        return refuse("countries", "takes no argument ('" + arguments[0] + "')");
    }
    auto skus = HalvaneSKU::createDefaultSKUList();
    if (name != nullptr) {
        const auto found = std::ranges::find_if(
            skus, [name](const HalvaneSKU& sku) { return isNamed(sku, name); });
        if (found == skus.end()) {
            const UsageError error = noSKU(name, skus);
            complain("countries: " + error.message, error.hint);
            return kExitFailed;
        }
        skus = {std::move(*found)};
    }
    print(skus, *format);
    return kExitDone;
}

}  // namespace halvane::tool
