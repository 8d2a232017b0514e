// Any text as the daemon's state: what was read can be written unless a role has characters of XML
// 1.1, and reads back equal.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "halvane/model/bss_config.h"

#include "fuzz/byte_source.h"
#include "fuzz/require.h"
#include "tools/halvaned/state/daemon_state.h"
#include "tools/halvaned/state/state_text.h"

using halvane::fuzzing::ByteSource;
using namespace halvane::hosting;

namespace {

// Returns whether the state has a text.
bool readsBack(const DaemonState& state) {
    const auto text = textOf(state);
    REQUIRE(text || !text.error().empty());
    if (!text) return false;
    REQUIRE(text->size() <= kLargestState);
    const auto read = stateFromText(*text);
    REQUIRE(read.has_value());
    REQUIRE(*read == state);
    return true;
}

void checkText(std::string_view text) {
    const auto state = stateFromText(text);
    REQUIRE(state || !state.error().empty());
    if (state) readsBack(*state);
}

// Any values, most of which a state may have.
DaemonState stateFrom(ByteSource& source) {
    DaemonState state;
    while (!source.empty()) {
        InterfaceState& interface = state.interfaces[source.text(16)];
        interface.isEnabled = source.flag();
        interface.isStarted = source.flag();
        if (source.flag()) interface.role = source.text(16);
        while (source.flag()) {
            auto configuration = halvane::HalvaneBSSConfig::init();
            configuration.setSSID_error(source.text(40));
            configuration.setPassphrase(source.bytes(64));
            configuration.setChannel(source.integer<std::int64_t>());
            interface.configurations.push_back(configuration);
        }
    }
    return state;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    checkText({reinterpret_cast<const char*>(data), size});
    ByteSource source(data, size);
    readsBack(stateFrom(source));
    return 0;
}
