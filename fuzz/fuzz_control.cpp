// Any message of hostapd's control interface: it reads the same from any copy, values stand in it,
// elements of a station are whole, and a cut event names no station but the whole one's.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "fuzz/require.h"
#include "tools/halvaned/hostapd/control_message.h"

using namespace halvane::hosting;

namespace {

bool standsIn(std::string_view part, std::string_view whole) {
    return part.empty() || (part.data() >= whole.data() &&
                            part.data() + part.size() <= whole.data() + whole.size());
}

void checkEvent(std::string_view message) {
    const ControlEvent event = readEvent(message);
    REQUIRE(standsIn(event.text, message));
    if (event.kind <= ControlEvent::Kind::KeysInstalled) {
        REQUIRE(event.station && message.find('-') != std::string_view::npos);
    }
    REQUIRE(readEvent(event.text).text.size() <= event.text.size());
}

void checkReply(std::string_view message) {
    const ControlReply reply = readReply(message);
    if (reply != ControlReply::Text) REQUIRE(!isEvent(message) && message.size() >= 2);
    if (const auto value = valueIn(message, "state")) {
        REQUIRE(standsIn(*value, message));
        REQUIRE(value->find('\n') == std::string_view::npos);
    }
}

void checkStation(std::string_view message) {
    const auto station = readStation(message);
    if (!station) return;
    REQUIRE(message.size() >= 12);
    if (station->aid) REQUIRE(*station->aid >= 1 && *station->aid <= 2007);
    const auto& elements = station->elements;
    REQUIRE(elements.size() <= message.size());
    std::size_t at = 0;
    while (at < elements.size()) {
        REQUIRE(elements.size() - at >= 2 && elements[at + 1] > 0);
        at += 2U + elements[at + 1];
    }
    REQUIRE(at == elements.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // A copy of the exact size, so that a sanitizer sees what reads beyond it.
    const auto copy = std::make_unique<char[]>(size);
    std::copy_n(data, size, copy.get());
    const std::string_view message(copy.get(), size);
    checkEvent(message);
    checkReply(message);
    checkStation(message);
    return 0;
}
