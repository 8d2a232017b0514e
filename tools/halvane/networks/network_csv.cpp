#include "tools/halvane/networks/network_csv.h"

#include <array>
#include <charconv>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/base/escaped_text.h"

#include "tools/halvane/output/standard_output.h"

namespace halvane::tool {

namespace {

constexpr std::string_view kNameColumn = "ssid";

std::string csvField(std::string_view text) {
    if (text.find_first_of(",\"\r\n") == std::string_view::npos) return std::string(text);
    std::string field = "\"";
    for (const char sign : text) {
        if (sign == '"') field += '"';
        field += sign;
    }
    return field + '"';
}

std::string fieldOf(const PlainValue& value) {
    if (!value.number) return csvField(escapedText(value.text));
    constexpr int kDigits = 10;
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), *value.number,
                                   std::chars_format::general, kDigits);
    return std::string(text.data(), end.ptr);
}

std::vector<const NetworkColumn*> allColumns(ListKind list) {
    std::vector<const NetworkColumn*> columns;
    for (const NetworkColumn& column : networkColumns(list)) {
        if (column.value != nullptr) columns.push_back(&column);
    }
    return columns;
}

void putLine(const std::vector<std::string>& fields, std::FILE* stream) {
    std::string line;
    for (const std::string& field : fields) {
        if (&field != &fields.front()) line += ',';
        line += field;
    }
    put(line + '\n', stream);
}

}  // namespace

void printCSV(std::span<const Network> networks, std::span<const NetworkColumn* const> columns,
              const CellSurroundings& surroundings, std::FILE* stream) {
    const auto all = allColumns(surroundings.list);
    if (columns.empty()) columns = all;
    std::vector<std::string> names;
    for (const NetworkColumn* const column : columns) {
        names.emplace_back(column->layout.name);
        if (column->layout.name == kNameColumn) names.emplace_back("ssidHex");
    }
    putLine(names, stream);
    for (const Network& network : networks) {
        std::vector<std::string> fields;
        for (const NetworkColumn* const column : columns) {
            fields.push_back(fieldOf(column->value(network, surroundings)));
            if (column->layout.name != kNameColumn) continue;
            const auto& ssid = network.profile.ssid;
            fields.push_back(ssid ? ssid->value.buffer().hex() : std::string());
        }
        putLine(fields, stream);
    }
}

}  // namespace halvane::tool
