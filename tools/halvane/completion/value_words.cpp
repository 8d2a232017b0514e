#include "tools/halvane/completion/value_words.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>
#include <iterator>
#include <optional>
#include <utility>

#include "halvane/daemon/daemon_log_controls.h"
#include "halvane/regulatory/country.h"
#include "halvane/regulatory/sku.h"

#include "tools/halvane/networks/network_columns.h"
#include "tools/halvane/options/network_conditions.h"

namespace halvane::tool {

namespace {

using Kind = ValueWords::Kind;
using Words = std::vector<std::string>;

// --- Words that the row itself tells ---

Words piecesOf(std::string_view text, std::string_view separator) {
    Words pieces;
    while (true) {
        const std::size_t end = text.find(separator);
        pieces.emplace_back(text.substr(0, end));
        if (end == text.npos) return pieces;
        text.remove_prefix(end + separator.size());
    }
}

// "2.4", "ssid" and "6E" are words to type, "NAME" and "ADDRESS[/MASK]" stand for others.
bool isTyped(std::string_view word) {
    return !word.empty() && (std::isdigit(static_cast<unsigned char>(word[0])) != 0 ||
                             std::ranges::all_of(word, [](unsigned char letter) {
                                 return std::islower(letter) != 0;
                             }));
}

// The words of "text (default), json or plist" and of "Open,WEP,WPA".
Words listedWords(std::string_view help) {
    Words words;
    const bool hasBlanks = help.find(", ") != help.npos || help.find(" or ") != help.npos;
    for (const std::string& part : piecesOf(help, hasBlanks ? ", " : ",")) {
        for (const std::string& word : piecesOf(part, " or ")) {
            words.push_back(word.substr(0, word.find(' ')));
        }
    }
    return words;
}

// --- Words that stand elsewhere ---

ListKind listKindOf(std::string_view command) {
    if (command == "scan") return ListKind::Scan;
    return command == "watch" ? ListKind::Watch : ListKind::Captures;
}

Words columnWords(std::string_view command) {
    Words words;
    for (const NetworkColumn& column : networkColumns(listKindOf(command))) {
        if (column.value == nullptr) continue;
        std::string name(column.layout.name);
        if (std::ranges::count(words, name) == 0) words.push_back(std::move(name));
    }
    return words;
}

Words orderWords(std::string_view command) {
    Words words = columnWords(command);
    const std::size_t count = words.size();
    for (std::size_t i = 0; i < count; ++i) words.push_back('-' + words[i]);
    return words;
}

// Those that every shell passes on as one word.
Words plainWords(const std::vector<std::string_view>& all) {
    Words words;
    for (const std::string_view word : all) {
        const bool isPlain = word.find_first_of(" '\"\\$`;&|<>()*?") == word.npos;
        if (isPlain && std::ranges::count(words, word) == 0) words.emplace_back(word);
    }
    return words;
}

Words generationChoices(std::string_view) {
    Words words = plainWords(generationWords());
    for (const char* const generation : {"4+", "5+", "6+", "6E+", "7+"}) {
        words.emplace_back(generation);
    }
    return words;
}

Words skuNames(std::string_view) {
    Words words;
    for (const HalvaneSKU& sku : HalvaneSKU::createDefaultSKUList()) {
        if (sku.shortName()) words.push_back(*sku.shortName());
    }
    return words;
}

Words countryNames(std::string_view) {
    Words words;
    for (const HalvaneSKU& sku : HalvaneSKU::createDefaultSKUList()) {
        for (const HalvaneCountry& country : sku.countries()) {
            const auto& name = country.isoName();
            if (name && std::ranges::count(words, *name) == 0) words.push_back(*name);
        }
    }
    std::ranges::sort(words);
    return words;
}

Words loggingWords(std::string_view) {
    Words words = {"show", "set"};
    for (const std::string_view category : kDaemonLogCategories) {
        words.push_back(std::string(category) + '=');
    }
    return words;
}

// The rows whose words stand elsewhere, by the name of the option and of its value. An argument has
// one name only.
struct KnownRow {
    std::string_view option;
    std::string_view value;
    Kind kind;
    Words (*words)(std::string_view command);
};
constexpr KnownRow kKnownRows[] = {
    {"security", "NAME", Kind::Words, [](auto) { return plainWords(securityWords()); }},
    {"generation", "4|5|6|6E|7", Kind::Words, generationChoices},
    {"findings", "SEVERITY", Kind::Words, [](auto) { return plainWords(severityWords()); }},
    {"columns", "NAMES", Kind::List, columnWords},
    {"sort", "NAMES", Kind::List, orderWords},
    {"sku", "NAME", Kind::Words, skuNames},
    {"NAME|ISO", "", Kind::Words, countryNames},
    {"check N", "", Kind::Words, [](auto) { return Words{"check"}; }},
    {"ROLE", "", Kind::Words, [](auto) { return Words{"AP"}; }},
    {"show | set CATEGORY=CONTROL...", "", Kind::Words, loggingWords},
};

std::string_view textOf(const char* text) {
    return text != nullptr ? text : "";
}

std::optional<ValueWords> knownWords(std::string_view command, std::string_view option,
                                     std::string_view value) {
    const auto* const known = std::ranges::find_if(kKnownRows, [&](const KnownRow& row) {
        return row.option == option && row.value == value;
    });
    if (known == std::end(kKnownRows)) return std::nullopt;
    return ValueWords{known->kind, known->words(command)};
}

// Values whose help is the list of their words.
constexpr std::array<std::string_view, 4> kListedValues = {"FORMAT", "PROGRAM", "BAND", "WIDTH"};

}  // namespace

ValueWords valueWordsOf(std::string_view command, const CLIOption& row) {
    const bool isArgument = row.type == kCLIArgument;
    const std::string_view option = textOf(row.longName);
    const std::string_view value = isArgument ? "" : textOf(row.argName);
    if (auto known = knownWords(command, option, value)) return *std::move(known);
    const std::string_view name = isArgument ? option : value;
    if (name.starts_with("INTERFACE")) return {Kind::Interfaces};
    if (name == "COMMAND...") return {Kind::Commands};
    if (name.find("FILE") != name.npos) return {Kind::Files};
    if (name == "WORDS") return {Kind::List, listedWords(textOf(row.shortHelp))};
    if (std::ranges::count(kListedValues, name) > 0) {
        return {Kind::Words, listedWords(textOf(row.shortHelp))};
    }
    Words words = piecesOf(name, "|");
    if (std::ranges::all_of(words, isTyped)) return {Kind::Words, std::move(words)};
    return {};
}

}  // namespace halvane::tool
