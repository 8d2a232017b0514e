// What the tool reads beside captures, and shows of it.
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "bench/capture_input.h"
#include "bench/foreign_bytes.h"
#include "bench/growth.h"
#include "tools/halvane/argument.h"
#include "tools/halvane/escape_text.h"
#include "tools/halvane/hex_input.h"
#include "tools/halvane/ssid_argument.h"
#include "tools/halvane/text_table.h"

using namespace halvane::tool;

namespace bench {

namespace {

// The size of a table of two columns, n rows, and one cell of `longest` characters.
std::size_t tableSize(std::size_t rows, std::size_t longest) {
    const auto row = [longest](std::size_t i) {
        return std::vector<std::string>{std::string(i == 0 ? longest : 1, 'a'), "b"};
    };
    TableLayout layout;
    layout.addColumn("NAME", Align::Left);
    layout.addColumn("ROLE", Align::Left);
    for (std::size_t i = 0; i < rows; ++i) layout.fit(row(i));
    std::size_t size = layout.titles().size();
    for (std::size_t i = 0; i < rows; ++i) size += layout.line(row(i)).size();
    return size;
}

void addTableRows() {
    const auto sizes = [](std::size_t n) { return n; };
    addGrowth("text table: rows", 4096, sizes, [](std::size_t n) { return tableSize(n, 1) > n; });
    addGrowth("text table: rows and one long cell", 4096, sizes,
              [](std::size_t n) { return tableSize(n, n) > n; });
}

void addInputRows() {
    addGrowth(
        "hexadecimal file", 262144,
        [](std::size_t n) {
            const std::string text = repeated("a7:\n", n / 4);
            return TemporaryFile(Bytes(text.begin(), text.end()));
        },
        [](const TemporaryFile& file) {
            std::string error;
            return readHexFile(file.path(), error).has_value();
        });
    addGrowth(
        "escapeText", 262144, [](std::size_t n) { return repeated("\x1B\xE2\x82", n / 3); },
        [](const std::string& text) { return escapeText(text).size() > text.size(); });
    addGrowth(
        "SSID argument, refused", 262144, [](std::size_t n) { return std::string(n, 'a'); },
        [](const std::string& text) {
            return std::holds_alternative<UsageError>(ssidOf(text, false)) &&
                   std::holds_alternative<UsageError>(ssidOf(text, true));
        });
    addGrowth(
        "number argument", 262144, [](std::size_t n) { return std::string(n, '0') + "7"; },
        [](const std::string& text) { return decimalOf(text) == 7 && signedDecimalOf(text) == 7; });
}

}  // namespace

void addToolRows() {
    addTableRows();
    addInputRows();
}

}  // namespace bench
