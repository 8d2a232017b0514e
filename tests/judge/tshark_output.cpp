#include "tests/judge/tshark_output.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <pugixml.hpp>
#include <set>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "tests/support/run_program.h"
#include "tests/support/scoped_environment.h"
#include "tests/support/temporary_folder.h"

namespace halvane::testing {

namespace {

std::optional<std::string> findTshark() {
    const char* const path = std::getenv("PATH");
    std::string_view left = path != nullptr ? path : "";
    while (!left.empty()) {
        const std::size_t end = std::min(left.find(':'), left.size());
        const auto program = std::filesystem::path(left.substr(0, end)) / "tshark";
        std::error_code error;
        if (std::filesystem::exists(program, error)) return program.string();
        left.remove_prefix(std::min(end + 1, left.size()));
    }
    return std::nullopt;
}

bool isElement(pugi::xml_node node) {
    const std::string_view name = node.attribute("name").value();
    return (name == "wlan.tag" || name == "wlan.ext_tag") &&
           node.find_child_by_attribute("name", "wlan.tag.number");
}

// The bits of "..01 1... = Label: value" within their word, the least significant first.
struct Bits {
    std::size_t first = 0;
    std::size_t count = 0;
    std::size_t width = 0;
};

std::optional<Bits> bitsIn(std::string_view line) {
    const std::size_t end = line.find(" = ");
    if (end == std::string_view::npos) return std::nullopt;
    std::string word;
    for (const char sign : line.substr(0, end)) {
        if (sign != ' ') word.insert(word.begin(), sign);
    }
    if (word.find_first_not_of("01.") != std::string::npos) return std::nullopt;
    Bits bits{word.find_first_not_of('.'), 0, word.size()};
    bits.count = word.find_last_not_of('.') - bits.first + 1;
    return bits;
}

// These protocols send the most significant octet first.
bool isBigEndian(std::string_view name) {
    return name.starts_with("wps.") || name.starts_with("wifi_display.") ||
           name.starts_with("wifi_p2p.dev_info.config_methods");
}

TsharkField fieldOf(pugi::xml_node node, std::size_t body) {
    TsharkField field;
    field.name = node.attribute("name").value();
    field.show = node.attribute("show").value();
    field.value = node.attribute("value").value();
    field.text = node.attribute("showname").value();
    const std::size_t start = 8 * (node.attribute("pos").as_uint() - body);
    const std::size_t octets = node.attribute("size").as_uint();
    field.firstBit = start;
    field.bitCount = 8 * octets;
    const auto bits = bitsIn(field.text);
    if (!bits || !node.attribute("unmaskedvalue")) return field;
    field.isPartOfOctets = true;
    field.bitCount = bits->count;
    field.firstBit = start + bits->first;
    if (bits->width > 8 && isBigEndian(field.name)) {
        const std::size_t octet = octets - 1 - bits->first / 8;
        field.firstBit = start + 8 * octet + bits->first % 8;
    }
    return field;
}

TsharkElement elementOf(pugi::xml_node node, std::size_t base);

void collect(pugi::xml_node parent, std::size_t base, std::size_t body, TsharkElement& element) {
    for (const pugi::xml_node node : parent.children("field")) {
        if (isElement(node)) {
            element.inner.push_back(elementOf(node, base));
            continue;
        }
        if (*node.attribute("name").value() != '\0') {
            element.fields.push_back(fieldOf(node, body));
        }
        collect(node, base, body, element);
    }
}

TsharkElement elementOf(pugi::xml_node node, std::size_t base) {
    const std::size_t position = node.attribute("pos").as_uint();
    const bool isExtended = node.find_child_by_attribute("name", "wlan.ext_tag.number");
    TsharkElement element{position - base, node.attribute("size").as_uint(), {}, {}};
    collect(node, base, position + (isExtended ? 3 : 2), element);
    return element;
}

std::string shown(pugi::xml_node parent, const char* name) {
    return parent.find_child_by_attribute("name", name).attribute("show").value();
}

TsharkFrame frameOf(pugi::xml_node packet) {
    TsharkFrame frame;
    frame.isMalformed = packet.find_child_by_attribute("name", "_ws.malformed");
    const auto management = packet.find_child_by_attribute("name", "wlan.mgt");
    const auto fixed = management.find_child_by_attribute("name", "wlan.fixed.all");
    frame.capabilities = shown(fixed, "wlan.fixed.capabilities");
    frame.beaconInterval = shown(fixed, "wlan.fixed.beacon");
    const auto tagged = management.find_child_by_attribute("name", "wlan.tagged.all");
    for (const pugi::xml_node node : tagged.children("field")) {
        if (isElement(node)) {
            frame.elements.push_back(elementOf(node, tagged.attribute("pos").as_uint()));
        }
    }
    return frame;
}

std::string filterFor(const std::set<std::uint64_t>& numbers) {
    std::string filter;
    for (const std::uint64_t number : numbers) {
        filter += (filter.empty() ? "" : ",") + std::to_string(number);
    }
    return "frame.number in {" + filter + '}';
}

// tshark reads settings from the user's folder, which are not the test's.
ProgramResult runTshark(std::vector<std::string> words) {
    const TemporaryFolder folder;
    const ScopedEnvironment home("HOME", folder.path().c_str());
    const ScopedEnvironment settings("XDG_CONFIG_HOME", folder.path().c_str());
    words.insert(words.begin(), findTshark().value_or("tshark"));
    return runProgram(std::move(words));
}

}  // namespace

std::optional<std::string> tsharkVersion() {
    if (!findTshark()) return std::nullopt;
    const ProgramResult result = runTshark({"--version"});
    return result.output.substr(0, result.output.find('\n'));
}

std::map<std::uint64_t, TsharkFrame> readByTshark(const std::string& path,
                                                  const std::set<std::uint64_t>& numbers) {
    const ProgramResult result =
        runTshark({"-n", "-r", path, "-T", "pdml", "-J", "wlan.mgt", "-Y", filterFor(numbers)});
    EXPECT_EQ(result.status, 0) << path << ": " << result.errors;
    pugi::xml_document document;
    const auto parsed = document.load_buffer(result.output.data(), result.output.size());
    EXPECT_TRUE(parsed) << path << ": " << parsed.description();
    std::map<std::uint64_t, TsharkFrame> frames;
    for (const pugi::xml_node packet : document.child("pdml").children("packet")) {
        const auto info = packet.find_child_by_attribute("name", "geninfo");
        frames.emplace(std::stoull(shown(info, "num")), frameOf(packet));
    }
    return frames;
}

}  // namespace halvane::testing
