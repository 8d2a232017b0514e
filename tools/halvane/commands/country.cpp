// One country and its channels.
#include "halvane/regulatory/country.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/regulatory/sku.h"
#include "halvane/utils/cli.h"

#include "tools/halvane/commands/command.h"
#include "tools/halvane/options/argument.h"
#include "tools/halvane/options/format_option.h"
#include "tools/halvane/output/channel_table.h"
#include "tools/halvane/output/format.h"
#include "tools/halvane/output/message.h"
#include "tools/halvane/output/print_records.h"
#include "tools/halvane/output/regulatory_json.h"
#include "tools/halvane/output/standard_output.h"

namespace halvane::tool {

namespace {

// Ways to find a country of a SKU. Null if the SKU has no such country.
const HalvaneCountry* findByFriendlyName(const HalvaneSKU& sku, const std::string& text) {
    return sku.findCountryByFriendlyName(text);
}

const HalvaneCountry* findByISOName(const HalvaneSKU& sku, const std::string& text) {
    return sku.findCountryByISOName(text);
}

const HalvaneCountry* findByISONumber(const HalvaneSKU& sku, const std::string& text) {
    const auto number = signedDecimalOf(text);
    const auto found = std::ranges::find_if(sku.countries(), [&](const HalvaneCountry& country) {
        return number == country.isoCode();
    });
    return found != sku.countries().end() ? &*found : nullptr;
}

std::optional<HalvaneCountry> countryOf(const std::string& text) {
    const auto skus = HalvaneSKU::createDefaultSKUList();
    for (const auto find : {findByFriendlyName, findByISOName, findByISONumber}) {
        for (const HalvaneSKU& sku : skus) {
            if (const auto* country = find(sku, text)) return *country;
        }
    }
    return std::nullopt;
}

UsageError noCountry(const std::string& text) {
    const auto skus = HalvaneSKU::createDefaultSKUList();
    std::vector<std::string_view> names;
    for (const HalvaneSKU& sku : skus) {
        for (const HalvaneCountry& country : sku.countries()) {
            for (const auto* name : {&country.friendlyName(), &country.isoName()}) {
                if (*name) names.emplace_back(**name);
            }
        }
    }
    return withSuggestion({"no country '" + text + "' ('halvane countries' lists them)"}, "", text,
                          names);
}

void printTable(const HalvaneCountry& country) {
    put(country.description() + '\n');
    printChannelTable(country.channels());
}

void print(const HalvaneCountry& country, Format format) {
    if (format == Format::Text) return printTable(country);
    printRecord(country, country.skeletonRepresentation(), format);
}

}  // namespace

CLIOption gCountryOptions[] = {
    formatOption("json: an object on several lines; jsonl: an object on one line;\n"
                 "plist: the skeleton."),
    {.type = kCLIArgument,
     .longName = "NAME|ISO",
     .shortHelp = "the name, the ISO name or the ISO number (GB, 826)",
     .longHelp = "To pass a negative number, end the options: halvane country -- -1."},
    {.type = kCLISection,
     .shortHelp = "EXIT STATUS",
     .longHelp = "0 success; 1 there is no such country, or writing failed; 2 usage error."},
    {.type = kCLIEnd},
};

int countryCommand() {
    const std::vector<std::string> arguments = takeArguments();
    const auto format = takeFormat();
    if (!format) return refuse("country", format.error());
    if (arguments.empty()) return refuse("country", "no country to print");
    if (arguments.size() > 1) {
        return refuse("country", "takes one country; quote a name of several words");
    }
    const auto country = countryOf(arguments[0]);
    if (!country) {
        const UsageError error = noCountry(arguments[0]);
        complain("country: " + error.message, error.hint);
        return kExitFailed;
    }
    print(*country, *format);
    return kExitDone;
}

}  // namespace halvane::tool
