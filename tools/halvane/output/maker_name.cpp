#include "tools/halvane/output/maker_name.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <optional>
#include <span>
#include <vector>

namespace halvane::tool {

namespace {

using namespace std::string_view_literals;
using Words = std::vector<std::string>;

// In small letters and without dots.
constexpr std::array kLegalForms = {
    "ab"sv,   "ag"sv,      "aps"sv,   "as"sv,      "asa"sv,          "bhd"sv,
    "bv"sv,   "co"sv,      "coltd"sv, "company"sv, "corp"sv,         "corporate"sv,
    "a/s"sv,  "z"sv,       "sp"sv,    "o"sv,       "corporation"sv,  "doo"sv,
    "eg"sv,   "ev"sv,      "gmbh"sv,  "inc"sv,     "incorporated"sv, "jsc"sv,
    "kft"sv,  "kg"sv,      "kgaa"sv,  "kk"sv,      "limited"sv,      "limitada"sv,
    "llc"sv,  "llp"sv,     "lp"sv,    "ltd"sv,     "ltda"sv,         "mbh"sv,
    "nv"sv,   "oo"sv,      "ooo"sv,   "oy"sv,      "oyj"sv,          "pjsc"sv,
    "plc"sv,  "private"sv, "pte"sv,   "pty"sv,     "pvt"sv,          "sa"sv,
    "sarl"sv, "sas"sv,     "sau"sv,   "sdn"sv,     "se"sv,           "sl"sv,
    "slu"sv,  "spa"sv,     "spzoo"sv, "srl"sv,     "sro"sv,          "zao"sv,
    "zoo"sv,  "zrt"sv,
};

// In small letters. The names of some end in "city" besides.
constexpr std::array kTowns = {
    "beijing"sv,   "changsha"sv, "chengdu"sv,   "chongqing"sv, "dongguan"sv, "foshan"sv,
    "fujian"sv,    "fuzhou"sv,   "guangdong"sv, "guangzhou"sv, "hangzhou"sv, "hefei"sv,
    "huizhou"sv,   "jiangsu"sv,  "jiaxing"sv,   "jinan"sv,     "kunshan"sv,  "nanjing"sv,
    "nanning"sv,   "ningbo"sv,   "qingdao"sv,   "quanzhou"sv,  "shandong"sv, "shanghai"sv,
    "shenyang"sv,  "shenzhen"sv, "sichuan"sv,   "suzhou"sv,    "taipei"sv,   "tianjin"sv,
    "wuhan"sv,     "wuxi"sv,     "xiamen"sv,    "xian"sv,      "zhejiang"sv, "zhengzhou"sv,
    "zhongshan"sv, "zhuhai"sv,
};

// What many do and no maker is called by: a town before these is a part of the name.
constexpr std::array kTrades = {
    "communication"sv, "communications"sv, "electric"sv, "electronic"sv, "electronics"sv,
    "industrial"sv,    "information"sv,    "network"sv,  "networks"sv,   "systems"sv,
    "technologies"sv,  "technology"sv,     "telecom"sv,
};

// Words that lead to another one.
constexpr std::array kLinks = {"&"sv, "+"sv, "-"sv, "and"sv, "of"sv, "the"sv, "und"sv};

constexpr bool isSmall(char letter) {
    return letter >= 'a' && letter <= 'z';
}

constexpr bool isCapital(char letter) {
    return letter >= 'A' && letter <= 'Z';
}

constexpr char smallOf(char letter) {
    return isCapital(letter) ? static_cast<char>(letter + ('a' - 'A')) : letter;
}

std::string smallOf(std::string_view text) {
    std::string small(text);
    std::ranges::transform(small, small.begin(), [](char letter) { return smallOf(letter); });
    return small;
}

bool isAmong(std::span<const std::string_view> list, std::string_view word) {
    return std::ranges::find(list, word) != list.end();
}

bool isLegalForm(std::string_view word) {
    std::string form = smallOf(word);
    std::erase(form, '.');
    return form.empty() || isAmong(kLegalForms, form);
}

// What a text of several octets, of UTF-8 in wide form too, stands for.
struct Sign {
    std::string_view octets;
    char meaning;
};
constexpr Sign kSigns[] = {
    {"(", '('},
    {"\xEF\xBC\x88", '('},
    {")", ')'},
    {"\xEF\xBC\x89", ')'},
    {",", ' '},
    {";", ' '},
    {"\xEF\xBC\x8C", ' '},
    {" ", ' '},
    {"\t", ' '},
    {"\r", ' '},
    {"\n", ' '},
    {"\xE3\x80\x80", ' '},
    {"[", '('},
    {"]", ')'},
};

// Splits at blanks and commas, and leaves what is in brackets out, to the end if they stay open.
Words wordsOf(std::string_view name) {
    Words words;
    bool isInWord = false;
    int depth = 0;
    while (!name.empty()) {
        const auto* const sign = std::ranges::find_if(
            kSigns, [name](const Sign& each) { return name.starts_with(each.octets); });
        const bool isSign = sign != std::end(kSigns);
        if (isSign) {
            depth += sign->meaning == '(' ? 1 : 0;
            depth -= sign->meaning == ')' && depth > 0 ? 1 : 0;
            isInWord = false;
        } else if (depth == 0) {
            if (!isInWord) words.emplace_back();
            words.back() += name.front();
            isInWord = true;
        }
        name.remove_prefix(isSign ? sign->octets.size() : 1);
    }
    return words;
}

// "Acme, a Great Company".
void dropDescription(Words& words) {
    const auto article = std::find_if(words.begin() + 1, words.end(), [](const std::string& word) {
        return word == "a" || word == "an" || word == "dba";
    });
    words.erase(article, words.end());
}

// "Acme.Inc" lacks the blank before its legal form. Initials such as "A.S.A" are left whole.
void dropFormBehindDot(std::string& word) {
    constexpr std::size_t kLeastName = 3;
    constexpr std::size_t kLeastForm = 2;
    const std::size_t dot = word.rfind('.', word.find_last_not_of('.'));
    if (dot == std::string::npos || word.find('.') < kLeastName) return;
    const std::string_view form = std::string_view(word).substr(dot + 1);
    if (form.size() >= kLeastForm && isLegalForm(form)) word.resize(dot);
}

void dropLegalForms(Words& words) {
    while (words.size() > 1 &&
           (isLegalForm(words.back()) || isAmong(kLinks, smallOf(words.back())))) {
        words.pop_back();
    }
    dropFormBehindDot(words.back());
}

// The number of words at the start that name a town.
std::size_t townWords(const Words& words) {
    const std::string first = smallOf(words.front());
    const std::string second = words.size() > 1 ? smallOf(words[1]) : "";
    if (first == "hong" && second == "kong") return 2;
    if (!isAmong(kTowns, first)) return 0;
    return second == "city" ? 2 : 1;
}

void dropTown(Words& words) {
    const auto town = static_cast<std::ptrdiff_t>(townWords(words));
    const bool isNamed =
        std::any_of(words.begin() + town, words.end(),
                    [](const std::string& word) { return !isAmong(kTrades, smallOf(word)); });
    if (isNamed) words.erase(words.begin(), words.begin() + town);
}

bool isAbbreviation(std::string_view word) {
    return word.find_first_of("AEIOU") == std::string_view::npos;
}

std::string capitalised(std::string_view word) {
    std::string text(word);
    bool isInside = false;
    for (char& letter : text) {
        if (isInside) letter = smallOf(letter);
        isInside = isCapital(letter) || isSmall(letter);
    }
    return text;
}

void calm(Words& words) {
    if (words.size() == 1 && words.front().size() <= 3) return;
    for (std::string& word : words) {
        if (!isAbbreviation(word)) word = capitalised(word);
    }
}

std::size_t characters(std::string_view text) {
    return static_cast<std::size_t>(std::ranges::count_if(
        text, [](char octet) { return (static_cast<std::uint8_t>(octet) & 0xC0) != 0x80; }));
}

void keepWhatFits(Words& words, std::size_t cells) {
    std::size_t used = characters(words.front());
    std::size_t count = 1;
    for (; count < words.size(); ++count) {
        used += 1 + characters(words[count]);
        if (used > cells) break;
    }
    words.resize(count);
    while (words.size() > 1 && isAmong(kLinks, smallOf(words.back()))) words.pop_back();
}

}  // namespace

std::string shortMakerName(std::string_view name, std::size_t cells) {
    const bool isLoud = std::ranges::none_of(name, isSmall);
    Words words = wordsOf(name);
    if (words.empty()) return {};
    dropDescription(words);
    dropLegalForms(words);
    dropTown(words);
    if (isLoud) calm(words);
    keepWhatFits(words, cells);
    std::string text = words.front();
    for (std::size_t i = 1; i < words.size(); ++i) text += " " + words[i];
    return text;
}

std::string makerKey(std::string_view shortName) {
    return smallOf(shortName);
}

}  // namespace halvane::tool
