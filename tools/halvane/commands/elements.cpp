// The elements of hexadecimal text, each with its fields.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_range.h"
#include "halvane/base/result.h"
#include "halvane/capture/beacon_frame.h"
#include "halvane/utils/cli.h"

#include "tools/halvane/commands/command.h"
#include "tools/halvane/input/hex_dump.h"
#include "tools/halvane/input/hex_input.h"
#include "tools/halvane/options/argument.h"
#include "tools/halvane/options/format_option.h"
#include "tools/halvane/output/element_json.h"
#include "tools/halvane/output/element_text.h"
#include "tools/halvane/output/format.h"
#include "tools/halvane/output/json_writer.h"
#include "tools/halvane/output/message.h"
#include "tools/halvane/output/print_records.h"
#include "tools/halvane/output/standard_output.h"

namespace halvane::tool {

namespace {

struct Typed {
    std::int32_t bytes = 0;
    std::int32_t frame = 0;
};
Typed gTyped;

// An argument that names no file is the text itself.
Result<HexDump, std::string> readArgument(const std::string& argument) {
    std::error_code error;
    const bool isFile = argument == "-" || std::filesystem::exists(argument, error);
    if (!isFile) {
        auto dump = readHexDump(argument);
        if (!dump) {
            return Unexpected("'" + argument + "' is neither a file nor hexadecimal text (" +
                              dump.error() + ")");
        }
        if (dump->octets.empty()) return Unexpected("the text is empty");
        return dump;
    }
    const auto text = readTextFile(argument);
    if (!text) return Unexpected(text.error());
    auto dump = readHexDump(*text);
    if (!dump) return Unexpected(inputName(argument) + ": " + dump.error());
    if (dump->octets.empty()) return Unexpected(inputName(argument) + ": empty");
    return dump;
}

// "read as 'xxd': 7 lines, 112 octets", where that is not plain.
void tellFormat(const HexDump& dump) {
    if (dump.format.empty()) return;
    complain("elements: read as '" + std::string(dump.format) + "': " + std::to_string(dump.lines) +
             (dump.lines == 1 ? " line, " : " lines, ") + octetCount(dump.octets.size()));
}

void printText(air::ElementRange elements, bool hasOctets) {
    put(elementTitles());
    std::size_t count = 0;
    std::size_t octets = 0;
    auto element = elements.begin();
    for (; element != elements.end(); ++element) {
        put(elementText(*element, hasOctets));
        ++count;
        octets += element->octets.size();
    }
    const auto trailing = element.rest();
    if (!trailing.empty()) put(trailingText(trailing));
    put(std::to_string(count) + (count == 1 ? " element, " : " elements, ") + octetCount(octets) +
        (trailing.empty() ? ": whole\n"
                          : "; then " + octetCount(trailing.octets.size()) +
                                " of damage at octet " + std::to_string(trailing.offset) + '\n'));
}

// An element; or, where there are any, the octets after the last that make none.
struct Item {
    air::Element element{};
    air::TrailingOctets trailing{};
};

void writeJSON(JSONWriter& writer, const Item& item) {
    if (!item.trailing.empty()) return writeTrailing(writer, item.trailing);
    writeElement(writer, item.element);
}

void print(air::ElementRange elements, Format format, bool hasOctets) {
    if (format == Format::Text) return printText(elements, hasOctets);
    std::vector<Item> all;
    auto element = elements.begin();
    for (; element != elements.end(); ++element) all.push_back({*element, {}});
    const auto trailing = element.rest();
    if (!trailing.empty()) all.push_back({{}, trailing});
    printJSON(all, format);
}

}  // namespace

CLIOption gElementsOptions[] = {
    formatOption("json: one document; jsonl: one line per element.",
                 "text (default), json or jsonl"),
    {.type = kCLIBoolean,
     .longName = "bytes",
     .valuePtr = &gTyped.bytes,
     .flags = kCLINoValue,
     .shortHelp = "the octets of each element too"},
    {.type = kCLIBoolean,
     .longName = "frame",
     .valuePtr = &gTyped.frame,
     .flags = kCLINoValue,
     .shortHelp = "the text is a whole beacon or probe response"},
    {.type = kCLIArgument,
     .longName = "HEX|FILE",
     .shortHelp = "hexadecimal text, or a file of it; '-' is standard input"},
    {.type = kCLISection,
     .shortHelp = "EXIT STATUS",
     .longHelp = "0 success; 1 the text cannot be read, or the elements are damaged, or writing\n"
                 "failed; 2 usage error."},
    {.type = kCLIEnd},
};

int elementsCommand() {
    const std::vector<std::string> arguments = takeArguments();
    const Typed typed = std::exchange(gTyped, {});
    const auto format = takeFormat();
    if (!format) return refuse("elements", format.error());
    if (*format == Format::PropertyList) {
        return refuse("elements", "--format is text, json or jsonl here");
    }
    if (arguments.size() != 1) return refuse("elements", "give one HEX or FILE");
    const auto dump = readArgument(arguments.front());
    if (!dump) {
        complain("elements: " + dump.error());
        return kExitFailed;
    }
    tellFormat(*dump);
    air::Octets octets = dump->octets;
    if (typed.frame != 0) {
        const auto frame = capture::parseBeaconFrame(octets);
        if (!frame) {
            complain("elements: no beacon and no probe response");
            return kExitFailed;
        }
        octets = frame->elements;
    }
    const air::ElementRange elements(octets);
    print(elements, *format, typed.bytes != 0);
    const auto trailing = elements.trailing();
    if (!trailing.empty()) complain("elements: " + trailingProblem(trailing));
    return trailing.empty() ? kExitDone : kExitFailed;
}

}  // namespace halvane::tool
