// What the tool reads, apart from captures, and what it prints.
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/escaped_text.h"
#include "halvane/base/property_list_value.h"
#include "halvane/daemon/daemon_events.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/client.h"
#include "halvane/model/interface.h"
#include "halvane/regulatory/channel.h"

#include "bench/capture_input.h"
#include "bench/foreign_bytes.h"
#include "bench/growth.h"
#include "tools/halvane/input/hex_input.h"
#include "tools/halvane/options/argument.h"
#include "tools/halvane/options/ssid_argument.h"
#include "tools/halvane/output/config_json.h"
#include "tools/halvane/output/format.h"
#include "tools/halvane/output/json_writer.h"
#include "tools/halvane/output/model_json.h"
#include "tools/halvane/output/station_event.h"
#include "tools/halvane/output/text_table.h"

using halvane::ByteBuffer;
using halvane::escapedText;
using halvane::HalvaneBSSConfig;
using halvane::HalvaneChannel;
using halvane::HalvaneClient;
using halvane::HalvaneInterface;
using halvane::PropertyListDictionary;
using halvane::StationChange;
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
        [](const TemporaryFile& file) { return readHexFile(file.path()).has_value(); });
    addGrowth(
        "escapedText", 262144, [](std::size_t n) { return repeated("\x1B\xE2\x82", n / 3); },
        [](const std::string& text) { return escapedText(text).size() > text.size(); });
    addGrowth(
        "SSID argument, refused", 262144, [](std::size_t n) { return std::string(n, 'a'); },
        [](const std::string& text) { return !ssidOf(text, false) && !ssidOf(text, true); });
    addGrowth(
        "number argument", 262144, [](std::size_t n) { return std::string(n, '0') + "7"; },
        [](const std::string& text) { return decimalOf(text) == 7 && signedDecimalOf(text) == 7; });
}

// Records of the daemon, up to their JSON text.
template <typename Record>
void addJSON(const char* row, std::size_t most, Record (*make)(std::size_t)) {
    addGrowth(row, most, make, [](const Record& record) {
        JSONWriter writer;
        writeJSON(writer, record);
        return writer.text().size() > 2;
    });
}

void addJSONRows() {
    addJSON<HalvaneBSSConfig>("JSON: a configuration of a long name", 262144, [](std::size_t n) {
        auto config = HalvaneBSSConfig::init();
        config.setWpsDeviceName(repeated("\"", n));
        return config;
    });
    addJSON<HalvaneBSSConfig>("JSON: a configuration of a long passphrase", 262144,
                              [](std::size_t n) {
                                  PropertyListDictionary skeleton;
                                  skeleton.set("Passphrase", ByteBuffer(Bytes(n)));
                                  return HalvaneBSSConfig::initWithSkeletonRepresentation(skeleton);
                              });
    addJSON<HalvaneInterface>("JSON: an interface of channels", 4096, [](std::size_t n) {
        PropertyListDictionary skeleton;
        skeleton.set("InterfaceName", "wlan0");
        skeleton.set("Role", "AP");
        skeleton.set("Subsystem", "nl80211");
        auto record = HalvaneInterface::initWithSkeletonRepresentation(skeleton).value();
        record.setAvailableChannels(std::vector<HalvaneChannel>(
            n, HalvaneChannel::initWithChannel_withFrequency_isRadarProne(6, 2437, false)));
        return record;
    });
    addJSON<HalvaneClient>("JSON: a client of elements", 16384, [](std::size_t n) {
        auto client = HalvaneClient::initWithMAC({2, 0, 0, 0, 0, 1});
        client.setInformationElements(ByteBuffer(fallingRateElements(n)));
        return client;
    });
    addGrowth(
        "watch: an event of a long name", 262144,
        [](std::size_t n) {
            return StationChange{.address = {}, .interface = repeated("\x1B\"", n / 2)};
        },
        [](const StationChange& change) {
            const auto sizeAs = [&](Format format) {
                return StationEventLines(format, {}).linesOf(change, {}).size();
            };
            return sizeAs(Format::Text) > change.interface.size() &&
                   sizeAs(Format::JSON) > change.interface.size();
        });
}

}  // namespace

void addToolRows() {
    addTableRows();
    addInputRows();
    addJSONRows();
}

}  // namespace bench
