#include "tools/halvane/output/surroundings.h"

#include <charconv>
#include <clocale>
#include <cstdlib>
#include <langinfo.h>
#include <locale.h>
#include <string_view>
#include <sys/ioctl.h>
#include <system_error>
#include <unistd.h>

namespace halvane::tool {

namespace {

constexpr const char* kLocaleVariables[] = {"LC_ALL", "LC_CTYPE", "LANG"};

std::string valueOf(const char* name, const Variables& variables) {
    const char* value = variables(name);
    return value ? value : "";
}

std::string localeOf(const Variables& variables) {
    for (const char* name : kLocaleVariables) {
        if (std::string value = valueOf(name, variables); !value.empty()) return value;
    }
    return {};
}

// Whether this is a name of UTF-8: "UTF-8", "utf8".
bool namesUTF8(std::string_view characterSet) {
    std::string letters;
    for (const char character : characterSet) {
        if (character == '-') continue;
        const bool isUpper = character >= 'A' && character <= 'Z';
        letters += isUpper ? static_cast<char>(character - 'A' + 'a') : character;
    }
    return letters == "utf8";
}

// Whether the system has a locale of this name, and its characters are UTF-8.
bool isInstalledAsUTF8(const std::string& name) {
    const ::locale_t locale = ::newlocale(LC_CTYPE_MASK, name.c_str(), nullptr);
    if (!locale) return false;
    const bool isUTF8 = namesUTF8(::nl_langinfo_l(CODESET, locale));
    ::freelocale(locale);
    return isUTF8;
}

// A locale's name is language[_territory][.character set][@modifier].
bool isUTF8Locale(const std::string& name) {
    const std::string base = name.substr(0, name.find('@'));
    const std::size_t dot = base.find('.');
    if (dot != std::string::npos) return namesUTF8(std::string_view(base).substr(dot + 1));
    return !name.empty() && isInstalledAsUTF8(name);
}

std::optional<std::size_t> sizeOf(const std::string& text, unsigned short ofTerminal) {
    unsigned short size = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, size);
    if (error == std::errc() && rest == end && size > 0) return size;
    if (ofTerminal > 0) return ofTerminal;
    return std::nullopt;
}

}  // namespace

Surroundings surroundingsOf(std::FILE* stream, const Variables& variables) {
    const int descriptor = ::fileno(stream);
    winsize size{};
    const bool isTerminal = ::isatty(descriptor) == 1;
    if (!isTerminal || ::ioctl(descriptor, TIOCGWINSZ, &size) != 0) size = {};
    return {
        .isTerminal = isTerminal,
        .columns = sizeOf(valueOf("COLUMNS", variables), size.ws_col),
        .lines = sizeOf(valueOf("LINES", variables), size.ws_row),
        .isUTF8 = isUTF8Locale(localeOf(variables)),
        .term = valueOf("TERM", variables),
        .colorTerm = valueOf("COLORTERM", variables),
        .noColor = valueOf("NO_COLOR", variables),
    };
}

Surroundings surroundingsOf(std::FILE* stream) {
    return surroundingsOf(stream, [](const char* name) { return std::getenv(name); });
}

}  // namespace halvane::tool
