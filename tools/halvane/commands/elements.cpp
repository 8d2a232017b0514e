// The elements of hexadecimal text, each with its fields.
#include <cstddef>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <stdio.h>
#include <string>
#include <string_view>
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
#include "tools/halvane/output/damage_report.h"
#include "tools/halvane/output/element_json.h"
#include "tools/halvane/output/element_list.h"
#include "tools/halvane/output/element_text.h"
#include "tools/halvane/output/format.h"
#include "tools/halvane/output/json_writer.h"
#include "tools/halvane/output/message.h"
#include "tools/halvane/output/print_records.h"
#include "tools/halvane/output/standard_output.h"
#include "tools/halvane/output/text_style.h"
#include "tools/halvane/output/theme.h"

namespace halvane::tool {

namespace {

struct Typed {
    std::int32_t bytes = 0;
    std::int32_t fields = 0;
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

// The damage of the elements and after them.
std::string verdict(const DamageReport& report, const air::TrailingOctets& trailing) {
    std::string text;
    if (report.count > 0) {
        text = ": " + std::to_string(report.count) + " damaged, the first at octet " +
               std::to_string(report.firstOctet);
    } else if (trailing.empty()) {
        text = ": whole";
    }
    if (trailing.empty()) return text;
    return text + "; then " + octetCount(trailing.octets.size()) + " of damage at octet " +
           std::to_string(trailing.offset);
}

// The elements of one network, and the damage in them.
struct Part {
    Part(air::Octets octets, const std::string& bssid) : list(octets, bssid) {}

    const ElementList list;
    DamageReport report;
};
using Parts = std::deque<Part>;  // parts cannot be moved

// A dump without networks is one part.
Parts partsOf(air::Octets octets, const std::vector<HexPart>& bounds) {
    Parts parts;
    if (bounds.empty()) parts.emplace_back(octets, std::string());
    for (std::size_t i = 0; i < bounds.size(); ++i) {
        const std::size_t start = bounds[i].start;
        const std::size_t end = i + 1 < bounds.size() ? bounds[i + 1].start : octets.size();
        parts.emplace_back(octets.subspan(start, end - start), bounds[i].bssid);
    }
    return parts;
}

// The mark of a damaged line has its colour.
void putMarked(const std::string& lines, const Theme& theme) {
    std::string_view rest = lines;
    while (!rest.empty()) {
        const std::string_view line = rest.substr(0, rest.find('\n') + 1);
        rest.remove_prefix(line.size());
        const bool isMarked = line.starts_with('x');
        if (isMarked) put(theme.painted(line.substr(0, 1), Meaning::Caution));
        put(line.substr(isMarked ? 1 : 0));
    }
}

void printText(Part& part, const ElementWish& wish, const Theme& theme) {
    const ElementList& list = part.list;
    if (!list.bssid().empty()) put("BSS " + list.bssid() + '\n');
    put(theme.painted(elementTitles(), Meaning::Header) + "\n");
    std::size_t count = 0;
    std::size_t octets = 0;
    auto element = list.range().begin();
    for (; element != list.range().end(); ++element) {
        putMarked(elementText(list, *element, wish, part.report), theme);
        ++count;
        octets += element->octets.size();
    }
    const auto trailing = element.rest();
    if (!trailing.empty()) putMarked(trailingText(list, trailing, wish), theme);
    put(std::to_string(count) + (count == 1 ? " element, " : " elements, ") + octetCount(octets) +
        verdict(part.report, trailing) + '\n');
}

// An element; or, where there are any, the octets after the last that make none.
struct Item {
    Part& part;
    air::Element element{};
    air::TrailingOctets trailing{};
};

void writeJSON(JSONWriter& writer, const Item& item) {
    const ElementList& list = item.part.list;
    if (!item.trailing.empty()) return writeTrailing(writer, list, item.trailing);
    writeElement(writer, list, item.element, item.part.report);
}

void addItems(std::vector<Item>& items, Part& part) {
    auto element = part.list.range().begin();
    for (; element != part.list.range().end(); ++element) items.push_back({part, *element, {}});
    const auto trailing = element.rest();
    if (!trailing.empty()) items.push_back({part, {}, trailing});
}

void print(Parts& parts, Format format, const ElementWish& wish, const Theme& theme) {
    std::vector<Item> items;
    for (Part& part : parts) {
        if (format != Format::Text) {
            addItems(items, part);
            continue;
        }
        if (&part != &parts.front()) put("\n");
        printText(part, wish, theme);
    }
    if (format != Format::Text) printJSON(items, format);
}

// Tells of the damage on standard error. Returns whether there is any.
bool complainOfDamage(const Part& part) {
    const std::string& bssid = part.list.bssid();
    const std::string head = "elements: " + (bssid.empty() ? "" : "BSS " + bssid + ": ");
    if (part.report.count > 0) {
        const std::size_t others = part.report.count - 1;
        complain(head + part.report.firstProblem +
                 (others == 0 ? "" : "; " + std::to_string(others) + " more damaged"));
    }
    const auto trailing = part.list.range().trailing();
    if (!trailing.empty()) complain(head + trailingProblem(part.list, trailing));
    return part.report.count > 0 || !trailing.empty();
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
     .longName = "fields",
     .valuePtr = &gTyped.fields,
     .flags = kCLINoValue,
     .shortHelp = "every field of each element, and its clause"},
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
     .longHelp = "0 success; 1 the text cannot be read, or the elements are damaged, or\n"
                 "writing failed; 2 usage error."},
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
    Parts parts = partsOf(octets, typed.frame != 0 ? std::vector<HexPart>() : dump->parts);
    const TextStyle style = textStyleOf(stdout);
    print(parts, *format, {typed.bytes != 0, typed.fields != 0, style.width, style.rules},
          style.theme);
    int status = kExitDone;
    for (const Part& part : parts) {
        if (complainOfDamage(part)) status = kExitFailed;
    }
    return status;
}

}  // namespace halvane::tool
